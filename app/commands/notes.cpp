#include "app/commands/notes.h"

#include <fmt/format.h>

#include "app/failure.h"
#include "quorl/edit/external_drawing.h"

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

void readExternals(Drawing& drawing, const Console& console) {
  if (zndbExternalDrawings(drawing.database()).empty()) return;
  for (const Failure& fault : drawing.readExternals())
    console.note(fault.text() + "; it is shown as it was last read");
}

std::string counted(size_t count, const char* what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

bool isOwnDrawing(const std::string& path, Failure& failure) {
  const std::optional<Format> format = formatOf(path);
  return (format && isOwn(*format)) ||
         failure.set(path, 0, "is no drawing of our own by its ending", namesOfEndings(isOwn));
}

} // namespace app
