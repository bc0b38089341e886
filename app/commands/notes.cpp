#include "app/commands/notes.h"

#include <fmt/format.h>

namespace app {

void tellImport(const Drawing& drawing, const Console& console) {
  const interchange::ImportReport* import = drawing.import();
  if (!import) return;
  if (!import->document.hasPhysicalSize && !import->document.unitReason.empty())
    console.note(fmt::format("{}: {}", drawing.path(), import->document.unitReason));
  for (const interchange::Error& problem : import->problems)
    console.note(Failure{problem.file, problem.line, problem.what, problem.expected}.text());
  if (!import->skipped.empty())
    console.note(fmt::format("{}: {} passed over; a report names what and where", drawing.path(),
                             import->skipped.size() == 1
                                 ? std::string("1 element")
                                 : fmt::format("{} elements", import->skipped.size())));
}

} // namespace app
