// A file on disk that is read.
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
