#include "quorl/file/tdoc_items.h"

#include <algorithm>
#include <charconv>

namespace Quorl {

namespace {

struct CodeRange {
  int first, last;
  ZnTdocType type;
};

constexpr CodeRange kRanges[] = {
    {0, 0, ZnTdocType::kObject},    {5, 5, ZnTdocType::kHandle},        {1, 9, ZnTdocType::kText},
    {10, 19, ZnTdocType::kPoint},   {20, 59, ZnTdocType::kDouble},      {60, 79, ZnTdocType::kInt16},
    {90, 99, ZnTdocType::kInt32},   {100, 100, ZnTdocType::kMarker},    {140, 149, ZnTdocType::kDouble},
    {160, 169, ZnTdocType::kInt64}, {290, 299, ZnTdocType::kBool},      {300, 309, ZnTdocType::kText},
    {310, 319, ZnTdocType::kBytes}, {330, 369, ZnTdocType::kReference},
};

constexpr int kFirstReference = 330, kCodesEach = 10;
constexpr char kDigits[] = "0123456789ABCDEF";

int digitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

template<class T, class... Options> bool parseWhole(std::string_view text, T& value, Options... options) {
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, options...);
  return error == std::errc() && stop == end;
}

} // namespace

ZnTdocType tdocType(int code) {
  for (const CodeRange& range : kRanges)
    if (code >= range.first && code <= range.last) return range.type;
  return ZnTdocType::kNone;
}

ZnReferenceKind tdocReferenceKind(int code) {
  return static_cast<ZnReferenceKind>((code - kFirstReference) / kCodesEach);
}

int tdocReferenceCode(ZnReferenceKind kind) { return kFirstReference + kCodesEach * static_cast<int>(kind); }

void appendInteger(std::string& out, std::int64_t value) {
  char digits[24];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void appendDouble(std::string& out, double value) {
  char digits[32];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void appendHex(std::string& out, std::uint64_t value) {
  char digits[16];
  int count = 0;
  do digits[count++] = kDigits[value & 0xF];
  while (value >>= 4);
  while (count > 0) out += digits[--count];
}

void appendHexBytes(std::string& out, std::string_view bytes) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    out += kDigits[byte >> 4];
    out += kDigits[byte & 0xF];
  }
}

void appendEscaped(std::string& out, std::string_view text) {
  for (const char c : text) {
    if (c == '\n')
      out += "\\n";
    else if (c == '\r')
      out += "\\r";
    else if (c == '\\')
      out += "\\\\";
    else
      out += c;
  }
}

bool parseInteger(std::string_view text, std::int64_t& value) { return parseWhole(text, value); }

bool parseDouble(std::string_view text, double& value) { return parseWhole(text, value); }

bool parseHex(std::string_view text, std::uint64_t& value) { return parseWhole(text, value, 16); }

bool parseHexBytes(std::string_view text, std::string& bytes) {
  if (text.size() % 2) return false;
  bytes.reserve(bytes.size() + text.size() / 2);
  for (size_t i = 0; i < text.size(); i += 2) {
    const int high = digitValue(text[i]), low = digitValue(text[i + 1]);
    if (high < 0 || low < 0) return false;
    bytes += static_cast<char>(high * 16 + low);
  }
  return true;
}

bool unescape(std::string_view text, std::string& plain) {
  plain.clear();
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      plain += text[i];
      continue;
    }
    const char escaped = ++i < text.size() ? text[i] : '\0';
    if (escaped == 'n')
      plain += '\n';
    else if (escaped == 'r')
      plain += '\r';
    else if (escaped == '\\')
      plain += '\\';
    else
      return false;
  }
  return true;
}

static_assert(kLongestLine == 16 * 1024 * 1024, "as the message says");

bool TdocLines::fail(const char* fault, const char* expected) {
  fault_ = fault;
  expected_ = expected;
  return false;
}

bool TdocLines::lineAt(size_t& at, std::string_view& line) {
  const size_t end = text_.find('\n', at);
  if (end == std::string_view::npos) return fail("the line does not end", "a line end");
  if (end - at > kLongestLine) return fail("the line is too long", "16 MiB at most");
  line = text_.substr(at, end - at);
  at = end + 1;
  return true;
}

bool TdocLines::next(int& code, std::string_view& value) {
  size_t at = at_;
  std::string_view codeText;
  if (!lineAt(at, codeText)) return false;
  if (!parseWhole(codeText, code)) return fail("the group code is no number", "a whole number");
  if (at >= text_.size()) return fail("the value's line is missing", "a value for the group code");
  if (!lineAt(at, value)) return false;
  at_ = at;
  line_ += 2;
  return true;
}

} // namespace Quorl
