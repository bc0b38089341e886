#include "app/drawing.h"

#include <fmt/format.h>

#include "app/evaluation.h"
#include "interchange/draw/annotated_svg.h"
#include "interchange/draw/picture_writer.h"
#include "interchange/import/scene_import.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/core/undo.h"
#include "quorl/file/drawing_file.h"

namespace app {

namespace {

// Messages name the file that the user asked for, not the one that is written in its place.
bool failed(Failure& failure, const std::string& target) {
  failure.file = target;
  return false;
}

} // namespace

Drawing::Drawing() { take(std::make_unique<ZnDbDatabase>()); }

Drawing::~Drawing() { take(nullptr); }

// The new one works before the old one goes, so that no one meets a drawing that is gone.
void Drawing::take(std::unique_ptr<ZnDbDatabase> database) {
  zndbHostApplicationServices()->setWorkingDatabase(database.get());
  database_ = std::move(database);
}

bool Drawing::open(const std::string& path, const interchange::ReadOptions& options, Failure& failure) {
  const std::optional<Format> format = formatOf(path);
  if (!format || !isReadable(*format))
    return failure.set(path, 0, "can't be read by its ending", "one of " + listOfEndings(isReadable));
  path_ = path;
  if (*format == Format::kSvg) {
    take(std::make_unique<ZnDbDatabase>());
    if (!interchange::importSvgFile(path, options, *database_, import_.emplace(), failure)) return false;
  } else {
    ZnFileError error;
    std::unique_ptr<ZnDbDatabase> database = zndbOpenDrawing(path, error);
    if (!database) {
      failure = error;
      return failed(failure, path);
    }
    take(std::move(database));
  }
  // Reading is no change that a user could want to take back.
  database_->undoRecorder().clear();
  return true;
}

bool Drawing::write(const std::string& file, const std::string& target, Failure& failure,
                    const std::vector<const ZnDbEntity*>& extra) const {
  const std::optional<Format> format = formatOf(target);
  if (!format)
    return failure.set(target, 0, "can't be written by its ending", "one of " + listOfEndings(isAny));
  if (isOwn(*format)) {
    ZnFileError error;
    if (zndbSaveDrawing(*database_, file, error) == Quorl::eOk) return true;
    failure = error;
    return failed(failure, target);
  }
  return interchange::writePicture(*database_, file, {}, failure, extra) || failed(failure, target);
}

bool Drawing::writeOntoSource(const std::vector<ZnDbObjectId>& annotation, const std::string& file,
                              const std::string& target, Failure& failure) const {
  return interchange::writeAnnotatedSvg(path_, import_->page, *database_, annotation, file, {}, failure) ||
         failed(failure, target);
}

} // namespace app
