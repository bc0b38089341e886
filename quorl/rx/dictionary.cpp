#include "quorl/rx/dictionary.h"

#include <algorithm>

ZNRX_DEFINE_CLASS(ZnRxDictionary, ZnRxObject)

ZnRxDictionary::~ZnRxDictionary() {
  if (!owns_) return;
  for (const Entry& entry : entries_) delete entry.second;
}

std::vector<ZnRxDictionary::Entry>::const_iterator ZnRxDictionary::find(std::wstring_view name) const {
  return std::find_if(entries_.begin(), entries_.end(),
                      [name](const Entry& entry) { return entry.first.view() == name; });
}

ZnRxObject* ZnRxDictionary::at(std::wstring_view name) const {
  const auto found = find(name);
  return found == entries_.end() ? nullptr : found->second;
}

Quorl::ErrorStatus ZnRxDictionary::put(std::wstring_view name, ZnRxObject* object) {
  if (name.empty() || !object) return Quorl::eInvalidInput;
  const auto found = find(name);
  if (found == entries_.end()) {
    entries_.emplace_back(ZnString(name), object);
    return Quorl::eOk;
  }
  Entry& entry = entries_[static_cast<size_t>(found - entries_.begin())];
  ZnRxObject* displaced = std::exchange(entry.second, object);
  if (owns_ && displaced != object) delete displaced;
  return Quorl::eOk;
}

ZnRxObject* ZnRxDictionary::remove(std::wstring_view name) {
  const auto found = find(name);
  if (found == entries_.end()) return nullptr;
  ZnRxObject* object = found->second;
  entries_.erase(found);
  return object;
}
