#include "interchange/svg_in/number_scanner.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace interchange {

namespace {

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

} // namespace

void NumberScanner::skipSpaces() {
  while (!atEnd() && isSpace(text_[at_])) ++at_;
}

bool NumberScanner::skipSeparator() {
  skipSpaces();
  if (peek() != ',') return false;
  ++at_;
  skipSpaces();
  return true;
}

std::optional<double> NumberScanner::number() {
  std::size_t first = at_;
  if (first < text_.size() && text_[first] == '+') ++first; // from_chars knows no plus
  const std::size_t sign = first < text_.size() && first == at_ && text_[first] == '-' ? 1 : 0;
  const std::size_t digit = first + sign;
  // from_chars would also take "inf" and "nan".
  const bool dotted = digit + 1 < text_.size() && text_[digit] == '.' && isDigit(text_[digit + 1]);
  if (digit >= text_.size() || !(isDigit(text_[digit]) || dotted)) return std::nullopt;
  double value = 0;
  const auto [end, error] = std::from_chars(text_.data() + first, text_.data() + text_.size(), value);
  const std::size_t after = static_cast<std::size_t>(end - text_.data());
  if (error == std::errc::result_out_of_range) {
    const std::string_view digits = text_.substr(first, after - first);
    const bool tiny = digits.find("e-") != digits.npos || digits.find("E-") != digits.npos;
    if (!tiny) return std::nullopt;
    value = 0;
  } else if (error != std::errc() || !std::isfinite(value)) {
    return std::nullopt;
  }
  at_ = after;
  return value;
}

std::optional<bool> NumberScanner::flag() {
  const char c = peek();
  if (c != '0' && c != '1') return std::nullopt;
  ++at_;
  return c == '1';
}

std::string_view NumberScanner::word() {
  const std::size_t first = at_;
  while (!atEnd() && (isLetter(text_[at_]) || text_[at_] == '%' || text_[at_] == '-')) ++at_;
  return text_.substr(first, at_ - first);
}

std::string_view NumberScanner::rest() const {
  constexpr std::size_t kShown = 20;
  return text_.substr(at_, kShown);
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

} // namespace interchange
