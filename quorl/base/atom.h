// Interned texts: two equal texts have the same atom, so that names are compared as pointers.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

// An atom lives as long as the process. The null atom stands for the empty text.
class ZnAtom {
public:
  ZnAtom() = default;
  // The atom of the text, made on first request.
  static ZnAtom of(std::wstring_view text);
  // The atom of the text if there is one, else null; allocates nothing.
  static ZnAtom existing(std::wstring_view text);

  std::wstring_view text() const;
  bool isNull() const { return entry_ == nullptr; }
  // The atom of the text in lower case (ASCII letters by hand, others by the wide facility), kept with this
  // one.
  ZnAtom folded() const;
  size_t hash() const { return std::hash<const void*>()(entry_); }

  friend bool operator==(ZnAtom a, ZnAtom b) { return a.entry_ == b.entry_; }
  friend bool operator<(ZnAtom a, ZnAtom b) { return a.text() < b.text(); }

  struct Entry;
  const Entry* address() const { return entry_; }
  static ZnAtom fromAddress(const Entry* entry) { return ZnAtom(entry); }

private:
  explicit ZnAtom(const Entry* entry)
      : entry_(entry) {}
  const Entry* entry_ = nullptr;
};

template<> struct std::hash<ZnAtom> {
  size_t operator()(ZnAtom atom) const { return atom.hash(); }
};
