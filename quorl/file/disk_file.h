// Files on disk: one that is read, and one that takes another's place only when it is whole.
#pragma once

#include "quorl/file/byte_stream.h"

class ZnDiskSource : public ZnByteSource {
public:
  explicit ZnDiskSource(const std::string& path);
  ~ZnDiskSource() override;
  ZnDiskSource(const ZnDiskSource&) = delete;
  ZnDiskSource& operator=(const ZnDiskSource&) = delete;

  // Why the file can't be read; empty when it can.
  const std::string& fault() const { return fault_; }
  std::uint64_t size() const override { return size_; }
  bool read(std::uint64_t offset, size_t count, std::string& bytes) const override;

private:
  int descriptor_ = -1;
  std::uint64_t size_ = 0;
  std::string fault_;
};

// The whole of a regular file; where that can't be had, false, and why not in the system's words.
bool zndbReadFile(const std::string& path, std::string& bytes, std::string& fault);

// Writes into a temporary file beside the target. Until commit succeeds the target stays what it was; without
// a commit the temporary goes with this.
class ZnAtomicFile : public ZnByteSink {
public:
  explicit ZnAtomicFile(const std::string& path);
  ~ZnAtomicFile() override;
  ZnAtomicFile(const ZnAtomicFile&) = delete;
  ZnAtomicFile& operator=(const ZnAtomicFile&) = delete;

  const std::string& fault() const { return fault_; } // of the first failure; empty without one
  bool write(std::string_view bytes) override;
  bool rewrite(std::uint64_t offset, std::string_view bytes) override;
  // Flushes to the disk and renames. A target that is a link stays one: what it points to is replaced.
  bool commit();

private:
  bool fail(const char* doing);
  bool putAll(std::uint64_t offset, std::string_view bytes);
  void takeOverMode();

  std::string target_, temporary_, fault_;
  int descriptor_ = -1;
  std::uint64_t written_ = 0;
};
