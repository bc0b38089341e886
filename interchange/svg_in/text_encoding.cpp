#include "interchange/svg_in/text_encoding.h"

#include "quorl/base/string.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace interchange {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

std::string fromUtf16(std::string_view bytes, bool bigEndian) {
  const auto unit = [&](std::size_t i) -> char32_t {
    const auto low = static_cast<std::uint8_t>(bytes[i + (bigEndian ? 1 : 0)]);
    const auto high = static_cast<std::uint8_t>(bytes[i + (bigEndian ? 0 : 1)]);
    return static_cast<char32_t>(high << 8 | low);
  };
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    char32_t code = unit(i);
    if (code >= 0xD800 && code < 0xE000) {
      const char32_t next = i + 3 < bytes.size() ? unit(i + 2) : 0;
      const bool pairs = code < 0xDC00 && next >= 0xDC00 && next < 0xE000;
      code = pairs ? 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00) : kReplacement;
      if (pairs) i += 2;
    }
    Quorl::appendUtf8(text, code);
  }
  return text;
}

bool declaresLatin(std::string_view bytes) {
  const std::string_view declaration = bytes.substr(0, bytes.find("?>"));
  if (!declaration.starts_with("<?xml")) return false;
  std::string lower(declaration);
  for (char& c : lower) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  for (const std::string_view name :
       std::array<std::string_view, 3>{"iso-8859-1", "latin1", "windows-1252"}) {
    if (lower.find(name) != std::string::npos) return true;
  }
  return false;
}

} // namespace

std::string toUtf8(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return std::string(bytes.substr(3));
  if (bytes.starts_with("\xFE\xFF")) return fromUtf16(bytes.substr(2), true);
  if (bytes.starts_with("\xFF\xFE")) return fromUtf16(bytes.substr(2), false);
  if (!declaresLatin(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) Quorl::appendUtf8(text, static_cast<std::uint8_t>(c));
  return text;
}

} // namespace interchange
