// The host's wide text. Copies share one buffer until one of them changes; the buffer remembers its
// atom, so that a constant name is interned once. Shared buffers belong to the main thread.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <string>
#include <string_view>

#include "quorl/base/atom.h"
#include "quorl/base/handle.h"

class ZnRxResourceInstance;

class ZnString {
public:
  ZnString() noexcept = default;
  ZnString(const wchar_t* text); // null counts as empty
  ZnString(std::wstring_view text);
  ZnString(const std::wstring& text)
      : ZnString(std::wstring_view(text)) {}
  ZnString(ZnAtom atom);
  ZnString(const ZnString& other) noexcept
      : rep_(other.rep_) {
    retain();
  }
  ZnString(ZnString&& other) noexcept
      : rep_(other.rep_) {
    other.rep_ = nullptr;
  }
  ZnString& operator=(const ZnString& other) noexcept;
  ZnString& operator=(ZnString&& other) noexcept;
  ~ZnString() { release(); }

  static ZnString fromUtf8(std::string_view bytes); // a malformed byte becomes U+FFFD
  std::string utf8() const;

  // Reading
  std::wstring_view view() const;
  const wchar_t* c_str() const;
  int length() const { return static_cast<int>(view().size()); }
  bool isEmpty() const { return rep_ == nullptr; }
  wchar_t last() const { return isEmpty() ? L'\0' : view().back(); }
  ZnAtom atom() const;
  int find(std::wstring_view part) const;       // position of the first occurrence, or -1
  ZnString left(int count) const;               // none for a negative count
  ZnString mid(int from, int count = -1) const; // count -1: to the end

  // Comparing. compareNoCase folds ASCII letters by hand and others with the wide lower-case function.
  int compare(std::wstring_view other) const { return view().compare(other); }
  int compareNoCase(std::wstring_view other) const;
  bool equalsNoCase(std::wstring_view other) const { return compareNoCase(other) == 0; }

  // Changing
  ZnString& operator+=(std::wstring_view tail);
  void clear() {
    release();
    rep_ = nullptr;
  }
  ZnString& trimLeft(std::wstring_view set = L" \t\r\n"); // drops leading characters that are in the set
  ZnString& trimRight(std::wstring_view set = L" \t\r\n");
  // As the standard's formatted output; "%s" takes a wide text.
  ZnString& format(const wchar_t* pattern, ...);
  // The same for callers with variable arguments of their own, which are not used up.
  ZnString& formatV(const wchar_t* pattern, va_list arguments);

  // Reading numbers. The flag 2 refuses a text with anything but hexadecimal digits; without it the
  // leading digits count. An unreadable text gives the null handle.
  ZnDbHandle asZnDbHandle(int flags = 0) const;
  // A leading number in the "C" locale; false and value untouched when there is none.
  bool parseVal(double& value) const;

  // The text of that number, or empty and false.
  bool loadString(const ZnRxResourceInstance& instance, unsigned number);

  friend bool operator==(const ZnString& a, const ZnString& b) {
    return a.rep_ == b.rep_ || a.view() == b.view();
  }
  friend bool operator==(const ZnString& a, const wchar_t* b) { return a.view() == std::wstring_view(b); }
  friend bool operator<(const ZnString& a, const ZnString& b) { return a.view() < b.view(); }
  friend ZnString operator+(const ZnString& a, std::wstring_view b) {
    ZnString sum(a);
    return sum += b;
  }
  friend ZnString operator+(const ZnString& a, const wchar_t* b) { return a + std::wstring_view(b); }
  friend ZnString operator+(const ZnString& a, const ZnString& b) {
    ZnString sum(a);
    return sum += b.view();
  }
  friend ZnString operator+(const wchar_t* a, const ZnString& b) {
    ZnString sum(a);
    return sum += b.view();
  }
  operator std::wstring_view() const { return view(); }

private:
  struct Rep;
  void retain() const noexcept;
  void release() noexcept;
  Rep* rep_ = nullptr; // null for the empty text
};

// "1A" for 26, the spelling of handles in files and messages.
ZnString handleText(ZnDbHandle handle);

namespace Quorl {
// What is no character becomes U+FFFD.
void appendUtf8(std::string& bytes, char32_t character);
std::string toUtf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view bytes);
wchar_t foldWide(wchar_t c); // for characters above 127
inline wchar_t foldCase(wchar_t c) {
  if (c < 128) return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + (L'a' - L'A')) : c;
  return foldWide(c);
}
} // namespace Quorl
