// Reads numbers, words and separators off a piece of attribute text.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace interchange {

class NumberScanner {
public:
  explicit NumberScanner(std::string_view text)
      : text_(text) {}

  bool atEnd() const { return at_ == text_.size(); }
  std::size_t position() const { return at_; }
  // The next character, or 0 at the end.
  char peek() const { return atEnd() ? '\0' : text_[at_]; }
  void skip() { ++at_; }
  void skipSpaces();
  // White space with at most one comma in it. Returns whether a comma was met.
  bool skipSeparator();
  // A decimal number with optional sign and exponent, directly at the position. Too large ones are refused
  // like any other text, too small ones are zero; nothing is consumed then.
  std::optional<double> number();
  // A single 0 or 1, which may be glued to what follows.
  std::optional<bool> flag();
  // The longest run of letters, '%' and '-'; may be empty.
  std::string_view word();
  // What is left, shortened for a message.
  std::string_view rest() const;

private:
  std::string_view text_;
  std::size_t at_ = 0;
};

std::string_view trimmed(std::string_view text);

} // namespace interchange
