#include "app/drawing.h"

#include <fmt/format.h>

#include "app/evaluation.h"
#include "app/output_batch.h"
#include "interchange/draw/annotated_svg.h"
#include "interchange/draw/picture_writer.h"
#include "interchange/import/scene_import.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/core/undo.h"
#include "quorl/edit/external_drawing.h"
#include "quorl/file/atomic_file.h"
#include "quorl/file/disk_file.h"
#include "quorl/file/drawing_file.h"
#include "quorl/file/recovery.h"

namespace app {

namespace {

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

bool Drawing::recover(const std::string& path, std::vector<Failure>& findings, Failure& failure) {
  ZnRecovery recovery = zndbRecoverDrawing(path);
  findings.assign(recovery.findings.begin(), recovery.findings.end());
  failure = recovery.error;
  if (!recovery.database) return false;
  path_ = path;
  take(std::move(recovery.database));
  return true;
}

std::vector<Failure> Drawing::readExternals() {
  std::vector<Failure> faults;
  for (const ZnFileError& error : zndbReloadDrawings(*database_)) faults.push_back(error);
  for (const std::string& fault : evaluate(*database_)) {
    Failure failure;
    failure.set(path_, 0, fault);
    faults.push_back(failure);
  }
  database_->undoRecorder().clear();
  return faults;
}

bool Drawing::write(ZnAtomicFile& file, const std::string& target, Failure& failure,
                    const std::vector<const ZnDbEntity*>& extra) const {
  return write(*database_, file, target, failure, extra);
}

bool Drawing::write(ZnDbDatabase& database, ZnAtomicFile& file, const std::string& target, Failure& failure,
                    const std::vector<const ZnDbEntity*>& extra) {
  const std::optional<Format> format = formatOf(target);
  if (!format)
    return failure.set(target, 0, "can't be written by its ending", "one of " + listOfEndings(isAny));
  if (isOwn(*format)) {
    ZnFileError error;
    if (zndbWriteDrawing(database, target, file, error) == Quorl::eOk) return true;
    failure = error;
    return failed(failure, target);
  }
  std::string bytes;
  return interchange::makePicture(database, target, {}, bytes, failure, extra) &&
         writeBytes(bytes, file, target, failure);
}

bool Drawing::writeOntoSource(const std::vector<ZnDbObjectId>& annotation, ZnAtomicFile& file,
                              const std::string& target, Failure& failure) const {
  std::string source, annotated, fault;
  if (!zndbReadFile(path_, source, fault))
    return failure.set(path_, 0, "can't be read again: " + fault, "the SVG that the drawing was read from");
  if (!interchange::annotateSvg(source, import_->page, *database_, annotation, {}, annotated, failure))
    return failed(failure, path_);
  return writeBytes(annotated, file, target, failure);
}

} // namespace app
