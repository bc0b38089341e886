// Where the bytes of a file come from and go to: a file on disk, or memory.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class ZnByteSink {
public:
  virtual ~ZnByteSink() = default;
  // Appends; false when the bytes can't be kept.
  virtual bool write(std::string_view bytes) = 0;
  // Replaces bytes that were written before.
  virtual bool rewrite(std::uint64_t offset, std::string_view bytes) = 0;
};

class ZnByteSource {
public:
  virtual ~ZnByteSource() = default;
  virtual std::uint64_t size() const = 0;
  // Exactly those bytes, which lie within the size; false when they can't be had.
  virtual bool read(std::uint64_t offset, size_t count, std::string& bytes) const = 0;
};

class ZnStringSink : public ZnByteSink {
public:
  explicit ZnStringSink(std::string& bytes)
      : bytes_(bytes) {}
  bool write(std::string_view bytes) override {
    bytes_ += bytes;
    return true;
  }
  bool rewrite(std::uint64_t offset, std::string_view bytes) override {
    bytes_.replace(offset, bytes.size(), bytes);
    return true;
  }

private:
  std::string& bytes_;
};

class ZnStringSource : public ZnByteSource {
public:
  explicit ZnStringSource(std::string_view bytes)
      : bytes_(bytes) {}
  std::uint64_t size() const override { return bytes_.size(); }
  bool read(std::uint64_t offset, size_t count, std::string& bytes) const override {
    bytes.assign(bytes_.substr(offset, count));
    return true;
  }

private:
  std::string_view bytes_;
};
