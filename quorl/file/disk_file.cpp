#include "quorl/file/disk_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
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
