// Objects under names: the dictionary that the registry of the process is made of.
#pragma once

#include <utility>
#include <vector>

#include "quorl/rx/class_members.h"

class ZnRxDictionary : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxDictionary)

public:
  using Entry = std::pair<ZnString, ZnRxObject*>;

  // An owning dictionary deletes what it still holds when it goes and what a new object displaces.
  explicit ZnRxDictionary(bool ownsObjects = false)
      : owns_(ownsObjects) {}
  ~ZnRxDictionary() override;
  ZnRxDictionary(const ZnRxDictionary&) = delete;
  ZnRxDictionary& operator=(const ZnRxDictionary&) = delete;

  // Names differ by case. Null when there is no such entry.
  virtual ZnRxObject* at(std::wstring_view name) const;
  bool has(std::wstring_view name) const { return at(name) != nullptr; }
  // Puts the object under the name, at the end or in the place of the object that stood there.
  // eInvalidInput for an empty name or a null object. The displaced object is deleted by an owning
  // dictionary, else forgotten.
  virtual Quorl::ErrorStatus put(std::wstring_view name, ZnRxObject* object);
  // Takes the entry out; the object belongs to the caller, null when there was none.
  virtual ZnRxObject* remove(std::wstring_view name);

  // A copy of the entries, in order of insertion; changes during a walk don't disturb it.
  virtual std::vector<Entry> entries() const { return entries_; }
  int entryCount() const { return static_cast<int>(entries().size()); }
  bool isOwner() const { return owns_; }

private:
  std::vector<Entry>::const_iterator find(std::wstring_view name) const;

  std::vector<Entry> entries_;
  bool owns_ = false;
};
