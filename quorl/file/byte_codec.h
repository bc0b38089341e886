// Numbers and texts as bytes: little endian on every machine, counts in as few bytes as they need.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

static_assert(std::endian::native == std::endian::little,
              "fixed-width values are copied as they lie in memory");

// Small values of either sign become small counts.
constexpr std::uint64_t zndbZigzag(std::int64_t value) {
  return (static_cast<std::uint64_t>(value) << 1) ^ static_cast<std::uint64_t>(value >> 63);
}
constexpr std::int64_t zndbUnzigzag(std::uint64_t value) {
  return static_cast<std::int64_t>(value >> 1) ^ -static_cast<std::int64_t>(value & 1);
}

// Appends to a string of the caller.
class ZnByteWriter {
public:
  explicit ZnByteWriter(std::string& bytes)
      : bytes_(bytes) {}

  template<class T> void put(T value) {
    static_assert(std::is_arithmetic_v<T>);
    bytes_.append(reinterpret_cast<const char*>(&value), sizeof(T));
  }
  void putCount(std::uint64_t value) {
    for (; value >= 0x80; value >>= 7) bytes_ += static_cast<char>((value & 0x7F) | 0x80);
    bytes_ += static_cast<char>(value);
  }
  // The length goes ahead.
  void putText(std::string_view text) {
    putCount(text.size());
    bytes_ += text;
  }

private:
  std::string& bytes_;
};

// Reads bytes of the caller, which must outlive it. The first read that does not fit makes it bad; from then
// on every read gives nothing.
class ZnByteReader {
public:
  ZnByteReader() = default;
  explicit ZnByteReader(std::string_view bytes)
      : bytes_(bytes) {}

  bool isGood() const { return good_; }
  void setBad() { good_ = false; }
  size_t position() const { return at_; }
  size_t remaining() const { return bytes_.size() - at_; }
  bool atEnd() const { return good_ && remaining() == 0; }

  template<class T> T take() {
    static_assert(std::is_arithmetic_v<T>);
    T value{};
    if (const std::string_view raw = takeRaw(sizeof(T)); good_) std::memcpy(&value, raw.data(), sizeof(T));
    return value;
  }
  std::uint64_t takeCount() {
    std::uint64_t value = 0;
    for (int shift = 0; shift < 64; shift += 7) {
      const auto byte = take<unsigned char>();
      // The tenth byte has room for one bit, and a trailing zero would be a second spelling of the value.
      if (!good_ || (shift == 63 && byte > 1) || (shift > 0 && byte == 0)) break;
      value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
      if (byte < 0x80) return value;
    }
    good_ = false;
    return 0;
  }
  std::string_view takeRaw(std::uint64_t count) {
    if (!good_ || count > remaining()) {
      good_ = false;
      return {};
    }
    const std::string_view raw = bytes_.substr(at_, count);
    at_ += count;
    return raw;
  }
  std::string_view takeText() { return takeRaw(takeCount()); }

private:
  std::string_view bytes_;
  size_t at_ = 0;
  bool good_ = true;
};
