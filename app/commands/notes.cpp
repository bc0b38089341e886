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
    console.note(fmt::format("{}: {} elements passed over; the report names them", drawing.path(),
                             import->skipped.size()));
}

} // namespace app
