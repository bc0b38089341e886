#include "quorl/rx/class_dictionary.h"

ZNRX_DEFINE_CLASS(ZnRxClassDictionary, ZnRxDictionary)

ZnRxObject* ZnRxClassDictionary::at(std::wstring_view name) const {
  return znrxFindZnRxClass(ZnString(name));
}

Quorl::ErrorStatus ZnRxClassDictionary::put(std::wstring_view, ZnRxObject*) { return Quorl::eNotProvided; }

ZnRxObject* ZnRxClassDictionary::remove(std::wstring_view name) {
  ZnRxClass* cls = znrxFindZnRxClass(ZnString(name));
  removeZnRxClass(cls);
  return cls;
}

std::vector<ZnRxDictionary::Entry> ZnRxClassDictionary::entries() const {
  std::vector<Entry> classes;
  for (ZnRxClass* cls : znrxClasses()) classes.emplace_back(cls->name(), cls);
  return classes;
}
