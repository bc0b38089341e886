#include "quorl/base/string.h"

#include <charconv>
#include <cwchar>
#include <cwctype>
#include <locale.h>
#include <vector>
#include <wctype.h>

#include "quorl/base/resource.h"

struct ZnString::Rep {
  std::uint32_t references = 1;
  ZnAtom atom;
  std::wstring text;
};

ZnString::ZnString(const wchar_t* text)
    : ZnString(text ? std::wstring_view(text) : std::wstring_view()) {}

ZnString::ZnString(std::wstring_view text) {
  if (!text.empty()) rep_ = new Rep{1, {}, std::wstring(text)};
}

ZnString::ZnString(ZnAtom atom)
    : ZnString(atom.text()) {
  if (rep_) rep_->atom = atom;
}

ZnString& ZnString::operator=(const ZnString& other) noexcept {
  other.retain();
  release();
  rep_ = other.rep_;
  return *this;
}

ZnString& ZnString::operator=(ZnString&& other) noexcept {
  std::swap(rep_, other.rep_);
  return *this;
}

void ZnString::retain() const noexcept {
  if (rep_) ++rep_->references;
}

void ZnString::release() noexcept {
  if (rep_ && --rep_->references == 0) delete rep_;
}

ZnString ZnString::fromUtf8(std::string_view bytes) { return ZnString(Quorl::fromUtf8(bytes)); }

std::string ZnString::utf8() const { return Quorl::toUtf8(view()); }

std::wstring_view ZnString::view() const {
  return rep_ ? std::wstring_view(rep_->text) : std::wstring_view();
}

const wchar_t* ZnString::c_str() const { return rep_ ? rep_->text.c_str() : L""; }

ZnAtom ZnString::atom() const {
  if (!rep_) return {};
  if (rep_->atom.isNull()) rep_->atom = ZnAtom::of(rep_->text);
  return rep_->atom;
}

int ZnString::find(std::wstring_view part) const {
  const size_t at = view().find(part);
  return at == std::wstring_view::npos ? -1 : static_cast<int>(at);
}

ZnString ZnString::left(int count) const { return count < 0 ? ZnString() : mid(0, count); }

ZnString ZnString::mid(int from, int count) const {
  if (from < 0 || from >= length()) return {};
  const size_t wanted = count < 0 ? std::wstring_view::npos : static_cast<size_t>(count);
  return ZnString(view().substr(static_cast<size_t>(from), wanted));
}

int ZnString::compareNoCase(std::wstring_view other) const {
  const std::wstring_view own = view();
  const size_t shared = std::min(own.size(), other.size());
  for (size_t i = 0; i < shared; ++i) {
    const wchar_t a = Quorl::foldCase(own[i]), b = Quorl::foldCase(other[i]);
    if (a != b) return a < b ? -1 : 1;
  }
  return own.size() == other.size() ? 0 : (own.size() < other.size() ? -1 : 1);
}

ZnString& ZnString::operator+=(std::wstring_view tail) {
  if (tail.empty()) return *this;
  if (rep_ && rep_->references == 1) {
    // Nobody shares the buffer: a text that is built piece by piece grows in place.
    rep_->text += tail;
    rep_->atom = {};
    return *this;
  }
  std::wstring joined(view());
  joined += tail;
  return *this = ZnString(joined);
}

ZnString& ZnString::trimLeft(std::wstring_view set) {
  const size_t first = view().find_first_not_of(set);
  return *this = first == std::wstring_view::npos ? ZnString() : ZnString(view().substr(first));
}

ZnString& ZnString::trimRight(std::wstring_view set) {
  const size_t last = view().find_last_not_of(set);
  return *this = last == std::wstring_view::npos ? ZnString() : ZnString(view().substr(0, last + 1));
}

namespace {

// The C library reads "%s" as a narrow text; the host's texts are wide.
std::wstring withWideTexts(const wchar_t* pattern) {
  std::wstring wide;
  for (const wchar_t* p = pattern; *p; ++p) {
    wide += *p;
    if (*p != L'%') continue;
    for (++p; *p && !std::iswalpha(static_cast<wint_t>(*p)) && *p != L'%'; ++p) wide += *p;
    if (!*p) {
      // A percent sign that ends the pattern stands for itself.
      if (wide.back() == L'%') wide += L'%';
      break;
    }
    if (*p == L's') wide += L'l';
    wide += *p;
  }
  return wide;
}

} // namespace

ZnString& ZnString::format(const wchar_t* pattern, ...) {
  va_list arguments;
  va_start(arguments, pattern);
  formatV(pattern, arguments);
  va_end(arguments);
  return *this;
}

ZnString& ZnString::formatV(const wchar_t* pattern, va_list arguments) {
  const std::wstring wide = withWideTexts(pattern);
  std::vector<wchar_t> buffer(256);
  for (;;) {
    va_list again;
    va_copy(again, arguments);
    const int written = std::vswprintf(buffer.data(), buffer.size(), wide.c_str(), again);
    va_end(again);
    if (written >= 0) return *this = ZnString(std::wstring_view(buffer.data(), static_cast<size_t>(written)));
    // The wide form does not tell how much it needs; beyond a megabyte the pattern itself is at fault.
    if (buffer.size() > (1u << 20)) return *this = ZnString();
    buffer.resize(buffer.size() * 4);
  }
}

ZnDbHandle ZnString::asZnDbHandle(int flags) const {
  const std::string digits = utf8();
  std::uint64_t value = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, 16);
  const bool whole = stop == end;
  if (error != std::errc() || ((flags & 2) && !whole)) return {};
  return ZnDbHandle(value);
}

bool ZnString::parseVal(double& value) const {
  // Numbers are ASCII and short; a longer run of digits than this says nothing more.
  constexpr size_t kLongest = 512;
  char text[kLongest];
  std::wstring_view wide = view();
  const size_t start = wide.find_first_not_of(L" \t\n\v\f\r");
  if (start == std::wstring_view::npos) return false;
  wide.remove_prefix(start);
  if (wide.front() == L'+') {
    wide.remove_prefix(1);
    if (wide.starts_with(L'-')) return false; // a number has one sign
  }
  size_t count = 0;
  while (count < std::min(wide.size(), kLongest) && wide[count] > 0 && wide[count] < 128) {
    text[count] = static_cast<char>(wide[count]);
    ++count;
  }
  double number = 0.0;
  const auto [stop, error] = std::from_chars(text, text + count, number);
  if (error != std::errc()) return false;
  value = number;
  return true;
}

bool ZnString::loadString(const ZnRxResourceInstance& instance, unsigned number) {
  const wchar_t* text = instance.text(number);
  *this = ZnString(text);
  return text != nullptr;
}

ZnString handleText(ZnDbHandle handle) {
  char digits[17];
  const auto [end, error] = std::to_chars(digits, digits + 16, handle.value, 16);
  std::wstring text;
  for (const char* p = digits; p != end; ++p) text += static_cast<wchar_t>(*p >= 'a' ? *p - 'a' + 'A' : *p);
  return ZnString(text);
}

namespace Quorl {

wchar_t foldWide(wchar_t c) {
  // Not the process's locale, which is "C" unless somebody asks for more and would fold nothing here.
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return static_cast<wchar_t>(towlower_l(static_cast<wint_t>(c), unicode));
}

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool isCharacter(std::uint32_t code) { return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF); }

} // namespace

void appendUtf8(std::string& bytes, char32_t character) {
  const std::uint32_t c = isCharacter(character) ? character : kReplacement;
  // The lead byte tells how many bytes of six bits follow; the first of four has room for all characters.
  const int following = c < 0x80 ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
  constexpr std::uint32_t kLead[] = {0, 0xC0, 0xE0, 0xF0};
  bytes += static_cast<char>(kLead[following] | (c >> (6 * following)));
  for (int i = following - 1; i >= 0; --i) bytes += static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3F));
}

std::string toUtf8(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (const wchar_t wide : text) appendUtf8(bytes, static_cast<char32_t>(wide));
  return bytes;
}

namespace {

// One character from at on; at moves past it, or past one byte where the bytes are malformed.
std::uint32_t decodeOne(std::string_view bytes, size_t& at) {
  const auto lead = static_cast<unsigned char>(bytes[at++]);
  if (lead < 0x80) return lead;
  const int extra = lead >= 0xF0 && lead < 0xF8   ? 3
                    : lead >= 0xE0 && lead < 0xF0 ? 2
                    : lead >= 0xC2 && lead < 0xE0 ? 1
                                                  : 0;
  if (extra == 0 || at + static_cast<size_t>(extra) > bytes.size()) return kReplacement;
  std::uint32_t value = lead & (0x3Fu >> extra);
  for (int i = 0; i < extra; ++i) {
    const auto next = static_cast<unsigned char>(bytes[at + static_cast<size_t>(i)]);
    if ((next & 0xC0) != 0x80) return kReplacement;
    value = (value << 6) | (next & 0x3Fu);
  }
  // The shortest form of a character is the only one; longer ones hide what they spell.
  constexpr std::uint32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  if (value < kLeast[extra] || !isCharacter(value)) return kReplacement;
  at += static_cast<size_t>(extra);
  return value;
}

} // namespace

std::wstring fromUtf8(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  for (size_t at = 0; at < bytes.size();) text += static_cast<wchar_t>(decodeOne(bytes, at));
  return text;
}

} // namespace Quorl
