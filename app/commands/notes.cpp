#include "app/commands/notes.h"

#include <fmt/format.h>

#include "app/failure.h"

namespace app {

void tellImport(const Drawing& drawing, const Console& console) {
  const interchange::ImportReport* import = drawing.import();
  if (!import) return;
  if (!import->document.hasPhysicalSize && !import->document.unitReason.empty())
    console.note(fmt::format("{}: {}", drawing.path(), import->document.unitReason));
  for (const Failure& problem : import->problems) console.note(problem.text());
  if (!import->skipped.empty())
    console.note(fmt::format("{}: {} passed over; a report names what and where", drawing.path(),
                             import->skipped.size() == 1
                                 ? std::string("1 element")
                                 : fmt::format("{} elements", import->skipped.size())));
}

} // namespace app
