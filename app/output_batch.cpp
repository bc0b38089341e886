#include "app/output_batch.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include <fmt/format.h>

namespace fs = std::filesystem;

namespace app {

OutputBatch::~OutputBatch() {
  std::error_code ignored;
  for (const Pending& pending : pending_) fs::remove(pending.file, ignored);
}

namespace {

// Devices and pipes can't be replaced, only written to.
bool isStream(const fs::path& target) {
  std::error_code ignored;
  const fs::file_status status = fs::status(target, ignored);
  return fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status);
}

// A link stays one: what it points to is replaced.
fs::path placeOf(const fs::path& target) {
  std::error_code error;
  const fs::path place = fs::is_symlink(target, error) ? fs::weakly_canonical(target, error) : target;
  return error ? target : place;
}

bool copyInto(const std::string& file, const std::string& stream) {
  std::ifstream from(file, std::ios::binary);
  std::ofstream to(stream, std::ios::binary);
  to << from.rdbuf();
  return to.flush().good();
}

} // namespace

std::string OutputBatch::pendingFor(const std::string& target) {
  for (const Pending& pending : pending_)
    if (pending.target == target) return pending.file;
  std::error_code ignored;
  const fs::path place = placeOf(target);
  const fs::path folder = isStream(target) ? fs::temp_directory_path(ignored) : place.parent_path();
  // The process id keeps programs that run at the same time apart.
  const std::string name = fmt::format(".{}.{}-{}.part{}", place.stem().string(), ::getpid(), ++count_,
                                       fs::path(target).extension().string());
  pending_.push_back({target, (folder / name).string()});
  return pending_.back().file;
}

bool OutputBatch::commit(Failure& failure) {
  while (!pending_.empty()) {
    const Pending pending = pending_.front();
    if (isStream(pending.target)) {
      if (!copyInto(pending.file, pending.target))
        return failure.set(pending.target, 0, "can't be written to", "a device or pipe that takes it");
      std::error_code ignored;
      fs::remove(pending.file, ignored);
    } else {
      std::error_code error;
      fs::rename(pending.file, placeOf(pending.target), error);
      if (error)
        return failure.set(pending.target, 0, "can't be put in place: " + error.message(),
                           "a file, or a new name, in a folder that can be written to");
    }
    pending_.erase(pending_.begin());
  }
  return true;
}

} // namespace app
