#include "quorl/file/disk_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

ZnDiskSource::ZnDiskSource(const std::string& path)
    // Opening a pipe would wait for somebody to write into it; it is refused all the same.
    : descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
  struct stat about {};
  if (descriptor_ < 0 || fstat(descriptor_, &about) != 0)
    fault_ = std::strerror(errno);
  else if (!S_ISREG(about.st_mode))
    fault_ = S_ISDIR(about.st_mode) ? "it is a folder" : "it is no regular file";
  else
    size_ = static_cast<std::uint64_t>(about.st_size);
}

ZnDiskSource::~ZnDiskSource() {
  if (descriptor_ >= 0) close(descriptor_);
}

bool ZnDiskSource::read(std::uint64_t offset, size_t count, std::string& bytes) const {
  bytes.resize(count);
  for (size_t done = 0; done < count;) {
    const ssize_t got =
        pread(descriptor_, bytes.data() + done, count - done, static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false; // an end here means that the file shrank since it was opened
    done += static_cast<size_t>(got);
  }
  return true;
}

bool zndbReadFile(const std::string& path, std::string& bytes, std::string& fault) {
  const ZnDiskSource source(path);
  fault = source.fault();
  if (fault.empty() && !source.read(0, source.size(), bytes)) fault = "it ends before its size";
  return fault.empty();
}

namespace {

// Where a link leads, so that the rename does not put a file in its place.
std::string resolved(const std::string& path) {
  std::error_code none;
  const std::filesystem::path real = std::filesystem::canonical(path, none);
  return none ? path : real.string();
}

} // namespace

ZnAtomicFile::ZnAtomicFile(const std::string& path)
    : target_(resolved(path))
    , temporary_(target_ + ".XXXXXX") {
  descriptor_ = mkostemp(temporary_.data(), O_CLOEXEC);
  if (descriptor_ < 0)
    fail("make a temporary file");
  else
    takeOverMode();
}

ZnAtomicFile::~ZnAtomicFile() {
  if (descriptor_ < 0) return;
  close(descriptor_);
  unlink(temporary_.c_str());
}

// A temporary is private at first; the drawing is as open as the one that it replaces, or as a new file.
void ZnAtomicFile::takeOverMode() {
  constexpr mode_t kNewFile = 0666, kPermissions = 07777;
  struct stat about {};
  if (stat(target_.c_str(), &about) == 0) {
    fchmod(descriptor_, about.st_mode & kPermissions);
    return;
  }
  const mode_t mask = umask(0);
  umask(mask);
  fchmod(descriptor_, kNewFile & ~mask);
}

bool ZnAtomicFile::fail(const char* doing) {
  if (fault_.empty()) fault_ = std::string("can't ") + doing + ": " + std::strerror(errno);
  return false;
}

bool ZnAtomicFile::putAll(std::uint64_t offset, std::string_view bytes) {
  if (!fault_.empty()) return false;
  for (size_t done = 0; done < bytes.size();) {
    const ssize_t put =
        pwrite(descriptor_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return fail("write");
    done += static_cast<size_t>(put);
  }
  return true;
}

bool ZnAtomicFile::write(std::string_view bytes) {
  if (!putAll(written_, bytes)) return false;
  written_ += bytes.size();
  return true;
}

bool ZnAtomicFile::rewrite(std::uint64_t offset, std::string_view bytes) { return putAll(offset, bytes); }

bool ZnAtomicFile::commit() {
  if (!fault_.empty()) return false;
  if (fsync(descriptor_) != 0) return fail("flush to the disk");
  if (rename(temporary_.c_str(), target_.c_str()) != 0) return fail("put the file in place");
  close(descriptor_);
  descriptor_ = -1;
  // The name itself is on the disk only when the folder is; a failure here leaves a whole file either way.
  const std::string folder = std::filesystem::path(target_).parent_path().string();
  const int handle = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle >= 0) {
    fsync(handle);
    close(handle);
  }
  return true;
}
