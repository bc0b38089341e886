#include "quorl/file/atomic_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

const ZnDiskCalls ZnDiskCalls::kSystem = {mkostemps, pwrite, fsync, std::rename};
const ZnDiskCalls* ZnAtomicFile::calls_ = &ZnDiskCalls::kSystem;

namespace {

// The name says nothing of the target, so that it fits where the target's own has the last letter allowed.
constexpr char kPattern[] = ".quorl-XXXXXX.part";
constexpr int kSuffixLength = 5;

constexpr mode_t kNewFile = 0666, kPermissions = 07777, kAnyWriter = 0222, kRaised = S_ISUID | S_ISGID;

constexpr auto kSameUser = static_cast<uid_t>(-1);

// Some systems of files know no permissions; a save there is none the worse for it.
bool allowsMode(int descriptor, mode_t mode) {
  return fchmod(descriptor, mode) == 0 || errno == EPERM || errno == ENOTSUP;
}

// Where a link leads, so that the rename does not put a file in its place.
std::string resolved(const std::string& path) {
  constexpr int kLongestChain = 40; // as the system has it
  std::error_code error;
  std::filesystem::path place = path;
  for (int i = 0; i < kLongestChain && std::filesystem::is_symlink(place, error); ++i)
    place = place.parent_path() / std::filesystem::read_symlink(place, error);
  return place.string();
}

std::string folderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

} // namespace

ZnAtomicFile::ZnAtomicFile(const std::string& path)
    : target_(path) {
  if (!isTargetUsable()) return;
  isStream_ ? makeNameless() : makeBeside();
}

ZnAtomicFile::~ZnAtomicFile() {
  if (descriptor_ >= 0) close(descriptor_);
  const ZnSignalsHeld held;
  if (!temporary_.empty()) unlink(temporary_.c_str());
  part_.leave();
}

bool ZnAtomicFile::fail(const char* doing) {
  if (fault_.empty()) fault_ = std::string("can't ") + doing + ": " + std::strerror(errno);
  return false;
}

bool ZnAtomicFile::refuse(const char* why) {
  fault_ = why;
  return false;
}

// What would make the last step fail is told before anybody works for it.
bool ZnAtomicFile::isTargetUsable() {
  struct stat about {};
  if (stat(target_.c_str(), &about) != 0) {
    if (errno != ENOENT) return fail("be written");
    target_ = resolved(target_);
    return true;
  }
  if (S_ISDIR(about.st_mode)) return refuse("it is a folder");
  isStream_ = !S_ISREG(about.st_mode);
  if (isStream_) return true;
  target_ = resolved(target_);
  // The rename would not ask: it needs the folder alone. Who may do anything is told all the same.
  const bool isWritable =
      (about.st_mode & kAnyWriter) != 0 && faccessat(AT_FDCWD, target_.c_str(), W_OK, AT_EACCESS) == 0;
  return isWritable || refuse("it is read-only");
}

void ZnAtomicFile::makeBeside() {
  temporary_ = (std::filesystem::path(target_).parent_path() / kPattern).string();
  {
    const ZnSignalsHeld held;
    descriptor_ = calls_->make(temporary_.data(), kSuffixLength, O_CLOEXEC);
    if (descriptor_ >= 0) part_.enter(temporary_.c_str());
  }
  if (descriptor_ < 0) {
    fail("make a file in its folder");
    temporary_.clear();
  } else if (!takeOverPermissions()) {
    fail("take over its permissions");
  }
}

// What a stream gets is gathered where no name is left behind.
void ZnAtomicFile::makeNameless() {
  std::error_code error;
  std::string name = (std::filesystem::temp_directory_path(error) / kPattern).string();
  const ZnSignalsHeld held;
  descriptor_ = calls_->make(name.data(), kSuffixLength, O_CLOEXEC);
  if (descriptor_ < 0)
    fail("make a temporary file");
  else
    unlink(name.c_str());
}

// A temporary is private at first; the file is as open as the one that it replaces, or as a new one. To whom
// it belongs only some may say; who may not must not pass on the rights of another's name either.
bool ZnAtomicFile::takeOverPermissions() {
  struct stat about {};
  if (stat(target_.c_str(), &about) == 0) {
    const bool isOwn = about.st_uid == geteuid() && about.st_gid == getegid();
    const bool isGiven = isOwn || fchown(descriptor_, about.st_uid, about.st_gid) == 0;
    if (!isGiven) (void)!fchown(descriptor_, kSameUser, about.st_gid); // the group alone is often allowed
    const mode_t mode = about.st_mode & kPermissions;
    return allowsMode(descriptor_, isGiven ? mode : mode & ~kRaised);
  }
  const mode_t mask = umask(0);
  umask(mask);
  return allowsMode(descriptor_, kNewFile & ~mask);
}

bool ZnAtomicFile::putAll(std::uint64_t offset, std::string_view bytes) {
  if (!fault_.empty()) return false;
  for (size_t done = 0; done < bytes.size();) {
    const ssize_t put = calls_->write(descriptor_, bytes.data() + done, bytes.size() - done,
                                      static_cast<off_t>(offset + done));
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return fail("be written");
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

bool ZnAtomicFile::flush() {
  if (!fault_.empty() || isStream_ || descriptor_ < 0) return fault_.empty();
  const bool flushed = calls_->flush(descriptor_) == 0 || fail("be flushed to the disk");
  // Many files may wait for their turn; the system lets a process have open far fewer.
  const bool closed = close(std::exchange(descriptor_, -1)) == 0 || fail("be flushed to the disk");
  return flushed && closed;
}

bool ZnAtomicFile::copyToStream() {
  const int stream = open(target_.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
  if (stream < 0) return fail("be written to");
  std::string piece(std::min<std::uint64_t>(written_, 1 << 20), '\0');
  for (std::uint64_t at = 0; at < written_ && fault_.empty();) {
    const ssize_t got = pread(descriptor_, piece.data(), piece.size(), static_cast<off_t>(at));
    if (got <= 0) fail("read back what is to be written");
    for (ssize_t done = 0; done < got && fault_.empty();) {
      const ssize_t put = ::write(stream, piece.data() + done, static_cast<size_t>(got - done));
      if (put > 0)
        done += put;
      else if (put == 0 || errno != EINTR)
        fail("be written to");
    }
    at += static_cast<std::uint64_t>(std::max<ssize_t>(got, 0));
  }
  if (close(stream) != 0) fail("be written to");
  return fault_.empty();
}

bool ZnAtomicFile::commit() {
  if (!flush()) return false;
  if (isStream_) return copyToStream();
  // Opened before, so that nothing after the rename can fail but the disk.
  const int folder = open(folderOf(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const bool renamed = putInPlace();
  // Some systems of files know no such flush; a folder may be open to writing and not to reading.
  const bool flushed =
      !renamed || folder < 0 || calls_->flush(folder) == 0 || errno == EINVAL || errno == ENOTSUP;
  if (!flushed) fail("be flushed to the disk with its folder");
  if (folder >= 0) close(folder);
  return renamed && flushed;
}

bool ZnAtomicFile::putInPlace() {
  const ZnSignalsHeld held;
  if (calls_->rename(temporary_.c_str(), target_.c_str()) != 0) return fail("be put in place");
  part_.leave();
  temporary_.clear();
  return true;
}
