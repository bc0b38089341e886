#include "quorl/db/table/dictionary.h"

#include <algorithm>

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbDictionary, ZnDbObject, L"DICTIONARY")

// The youngest entry of a name counts: older ones of that name were erased or replaced.
const ZnDbDictionary::Entry* ZnDbDictionary::entry(const ZnString& name) const {
  for (size_t i = entries_.size(); i-- > 0;)
    if (!entries_[i].id.isErased() && entries_[i].name.equalsNoCase(name)) return &entries_[i];
  return nullptr;
}

ErrorStatus ZnDbDictionary::getAt(const ZnString& name, ZnDbObjectId& id) const {
  const Entry* found = entry(name);
  id = found ? found->id : ZnDbObjectId();
  return found ? Quorl::eOk : Quorl::eKeyNotFound;
}

ErrorStatus ZnDbDictionary::getAt(const ZnString& name, ZnDbObject*& object, ZnDbOpenMode mode) const {
  object = nullptr;
  ZnDbObjectId id;
  if (const ErrorStatus status = getAt(name, id); status != Quorl::eOk) return status;
  return zndbOpenObject(object, id, mode);
}

ErrorStatus ZnDbDictionary::setAt(const ZnString& name, ZnDbObject* object, ZnDbObjectId& id) {
  id.setNull();
  if (!object) return Quorl::eNullObjectPointer;
  if (name.isEmpty()) return Quorl::eInvalidName;
  if (!database()) return Quorl::eNotInDatabase;
  if (object->database()) return Quorl::eAlreadyInDatabase;
  if (has(name)) {
    if (const ErrorStatus status = remove(name); status != Quorl::eOk) return status;
  }
  assertWriteEnabled();
  const ErrorStatus status = database()->addObject(object, objectId(), id);
  if (status == Quorl::eOk) entries_.push_back({name, id});
  return status;
}

ErrorStatus ZnDbDictionary::remove(const ZnString& name) {
  const Entry* found = entry(name);
  if (!found) return Quorl::eKeyNotFound;
  ZnDbHolder<ZnDbObject> object;
  if (const ErrorStatus status = object.openForWrite(found->id); status != Quorl::eOk) return status;
  assertWriteEnabled();
  return object->erase(true);
}

bool ZnDbDictionary::has(const ZnString& name) const { return entry(name) != nullptr; }

int ZnDbDictionary::entryCount() const {
  return static_cast<int>(
      std::count_if(entries_.begin(), entries_.end(), [](const Entry& e) { return !e.id.isErased(); }));
}

ErrorStatus ZnDbDictionary::subErase(bool erasing) {
  if (erasing &&
      (database()->headerIds().needs(objectId()) || database()->getLayoutDictionary() == objectId()))
    return Quorl::eInUse;
  if (!erasing) return Quorl::eOk;
  std::vector<ZnDbObjectId> ids;
  for (const Entry& e : entries_) ids.push_back(e.id);
  erasedTogether_.erase(ids);
  return Quorl::eOk;
}

void ZnDbDictionary::subBringBack() { erasedTogether_.bringBack(); }

template<class Walk> void ZnDbDictionary::describe(Walk& walk) {
  struct Keep {
    bool isFiled(const Entry& e) const { return !e.id.isErased(); }
    bool isKept(const Entry& e) const { return !e.id.isNull(); }
  };
  walk.section(className(), 0, 0);
  const auto fields = [](auto& inner, Entry& e) {
    inner.field(3, L"entry name", e.name);
    inner.id(ZnReferenceKind::kHardOwner, 360, L"entry", e.id);
  };
  walk.list(3, L"entries", entries_, fields, Keep());
}

ZNDB_DEFINE_FIELDS(ZnDbDictionary, ZnDbObject)

void ZnDbDictionary::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbObject::audit(faults, fix);
  for (size_t i = 0; i < entries_.size(); ++i) {
    const ZnDbObjectId id = entries_[i].id;
    if (id.isValid() && id.slot()->object->ownerId() == objectId()) continue;
    faults.push_back(L"dictionary " + handleText(handle()) + L": entry " + entries_[i].name +
                     L" names no object of it");
    if (fix) entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(i--));
  }
}
