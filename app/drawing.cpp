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

bool setFrom(Failure& failure, const interchange::Error& error) {
  return failure.set(error.file, error.line, error.what, error.expected);
}

// Messages name the file that the user asked for, not the one that is written in its place.
bool setFrom(Failure& failure, const interchange::PictureError& error, const std::string& target) {
  return failure.set(target, 0, error.what, error.expected);
}

bool setFrom(Failure& failure, const ZnFileError& error, const std::string& file) {
  const std::string place = error.place.empty() ? "" : error.place + ": ";
  return failure.set(file, static_cast<int>(error.line), place + error.what, error.expected);
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
    interchange::Error error;
    if (!interchange::importSvgFile(path, options, *database_, import_.emplace(), error))
      return setFrom(failure, error);
  } else {
    ZnFileError error;
    std::unique_ptr<ZnDbDatabase> database = zndbOpenDrawing(path, error);
    if (!database) return setFrom(failure, error, path);
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
    return zndbSaveDrawing(*database_, file, error) == Quorl::eOk || setFrom(failure, error, target);
  }
  interchange::PictureError error;
  return interchange::writePicture(*database_, file, {}, error, extra) || setFrom(failure, error, target);
}

bool Drawing::writeOntoSource(const std::vector<ZnDbObjectId>& annotation, const std::string& file,
                              const std::string& target, Failure& failure) const {
  interchange::PictureError error;
  return interchange::writeAnnotatedSvg(path_, import_->page, *database_, annotation, file, {}, error) ||
         setFrom(failure, error, target);
}

} // namespace app
