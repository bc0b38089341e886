#include "quorl/base/atom.h"

#include <deque>
#include <unordered_map>

#include "quorl/base/string.h"

struct ZnAtom::Entry {
  std::wstring text;
  mutable const Entry* folded = nullptr;
};

namespace {

struct AtomTable {
  std::deque<ZnAtom::Entry> entries;
  std::unordered_map<std::wstring_view, const ZnAtom::Entry*> byText;
};

AtomTable& atomTable() {
  // Never destroyed: texts with atoms outlive every static object of every module.
  static AtomTable* table = new AtomTable;
  return *table;
}

} // namespace

ZnAtom ZnAtom::of(std::wstring_view text) {
  const ZnAtom known = existing(text);
  if (!known.isNull() || text.empty()) return known;
  AtomTable& table = atomTable();
  table.entries.push_back({std::wstring(text), nullptr});
  const Entry* entry = &table.entries.back();
  table.byText.emplace(entry->text, entry);
  return ZnAtom(entry);
}

ZnAtom ZnAtom::existing(std::wstring_view text) {
  if (text.empty()) return {};
  const AtomTable& table = atomTable();
  const auto found = table.byText.find(text);
  return found == table.byText.end() ? ZnAtom() : ZnAtom(found->second);
}

std::wstring_view ZnAtom::text() const {
  return entry_ ? std::wstring_view(entry_->text) : std::wstring_view();
}

ZnAtom ZnAtom::folded() const {
  if (!entry_) return {};
  if (!entry_->folded) {
    std::wstring lower(entry_->text);
    for (wchar_t& c : lower) c = Quorl::foldCase(c);
    entry_->folded = of(lower).entry_;
  }
  return ZnAtom(entry_->folded);
}
