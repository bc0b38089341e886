// Items of the text format: what the group codes mean, and how values are spelled.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quorl/file/object_record.h"

enum class ZnTdocType {
  kNone,
  kObject,
  kHandle,
  kText,
  kPoint,
  kDouble,
  kInt16,
  kInt32,
  kInt64,
  kBool,
  kMarker,
  kBytes,
  kReference
};

namespace Quorl {

// Lines longer than this are refused by writer and reader alike, so that a damaged file can't be taken for
// one endless text.
constexpr size_t kLongestLine = size_t{1} << 24;

ZnTdocType tdocType(int code);
// Codes 330 to 369 stand for a kind of reference, ten codes each.
ZnReferenceKind tdocReferenceKind(int code);
int tdocReferenceCode(ZnReferenceKind kind);
// The steps from a point's code to that of its y and its z.
constexpr int kToY = 10, kToZ = 20;

// Spelling. A double is as short as reads back exactly; in texts backslash and the characters that end lines
// are escaped.
void appendInteger(std::string& out, std::int64_t value);
void appendDouble(std::string& out, double value);
void appendHex(std::string& out, std::uint64_t value);
void appendHexBytes(std::string& out, std::string_view bytes);
void appendEscaped(std::string& out, std::string_view text);

// Reading; false, and the target open, unless the whole text is one value. Blanks are no part of a value.
bool parseInteger(std::string_view text, std::int64_t& value);
bool parseDouble(std::string_view text, double& value);
bool parseHex(std::string_view text, std::uint64_t& value);
bool parseHexBytes(std::string_view text, std::string& bytes); // appends
bool unescape(std::string_view text, std::string& plain);

// Splits pairs of lines, code and value, off a text. Lines end in a newline each.
class TdocLines {
public:
  explicit TdocLines(std::string_view text, size_t firstLine = 1)
      : text_(text)
      , line_(firstLine) {}
  bool atEnd() const { return at_ >= text_.size(); }
  size_t position() const { return at_; }
  size_t line() const { return line_; } // number of the next code's line
  // The next pair; false with the fault told, and nothing consumed.
  bool next(int& code, std::string_view& value);
  const char* fault() const { return fault_; }
  const char* expected() const { return expected_; }
  std::string_view rest() const { return text_.substr(at_); }
  void moveTo(size_t position, size_t line) {
    at_ = position;
    line_ = line;
  }

private:
  bool fail(const char* fault, const char* expected);
  bool lineAt(size_t& at, std::string_view& line);
  std::string_view text_;
  size_t at_ = 0, line_ = 1;
  const char *fault_ = "", *expected_ = "";
};

} // namespace Quorl
