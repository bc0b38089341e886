// A file that takes another's place only when it is whole.
#pragma once

#include <sys/types.h>

#include "quorl/file/byte_stream.h"
#include "quorl/file/part_files.h"

// The calls by which a file could fail to be saved. Tests put others in their place.
struct ZnDiskCalls {
  int (*make)(char* pattern, int suffixLength, int flags);
  ssize_t (*write)(int descriptor, const void* bytes, size_t count, off_t offset);
  int (*flush)(int descriptor);
  int (*rename)(const char* from, const char* to);

  static const ZnDiskCalls kSystem;
};

// Writes into a temporary file in the target's folder. Until it is put in place the target stays what it was;
// a file that never is goes with this, or with the process where that handles its signals (part_files.h).
// What takes a target's place has its permissions and, where the system allows it, its owner. A target that
// is a link stays one: what it points to is replaced. A read-only target is refused, not replaced. Devices
// and pipes can't be replaced: they get all bytes, one after another, when the file would be put in place.
class ZnAtomicFile : public ZnByteSink {
public:
  explicit ZnAtomicFile(const std::string& path);
  ~ZnAtomicFile() override;
  ZnAtomicFile(const ZnAtomicFile&) = delete;
  ZnAtomicFile& operator=(const ZnAtomicFile&) = delete;

  const std::string& fault() const { return fault_; } // of the first failure; empty without one
  bool isStream() const { return isStream_; }         // a device or pipe
  bool write(std::string_view bytes) override;
  bool rewrite(std::uint64_t offset, std::string_view bytes) override;
  // To the disk, under the temporary name. Nothing can be written afterwards.
  bool flush();
  // Flushes if that was not done, and puts the file in place. False, too, when the folder can't be flushed:
  // the new file is in place then, but could be the old one again after a loss of power.
  bool commit();

  // For tests: the calls that all files use from now on.
  static void useCalls(const ZnDiskCalls& calls) { calls_ = &calls; }

private:
  bool fail(const char* doing);
  bool refuse(const char* why);
  bool isTargetUsable();
  void makeBeside();
  void makeNameless();
  bool takeOverPermissions();
  bool putAll(std::uint64_t offset, std::string_view bytes);
  bool copyToStream();
  bool putInPlace();

  static const ZnDiskCalls* calls_;
  std::string target_, temporary_, fault_;
  ZnPartFile part_;
  bool isStream_ = false;
  int descriptor_ = -1;
  std::uint64_t written_ = 0;
};
