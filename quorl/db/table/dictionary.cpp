#include "quorl/db/table/dictionary.h"

#include <algorithm>

#include "quorl/db/core/database.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbDictionary, ZnDbObject, L"DICTIONARY")

namespace {
constexpr std::int16_t kVersion = 0;
}

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
  for (const Entry& e : entries_) {
    ZnDbHolder<ZnDbObject> object;
    if (object.openForWrite(e.id, true) == Quorl::eOk && object->isErased() != erasing)
      object->erase(erasing);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbDictionary::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  // For undo the erased entries count too: undoing brings their objects back.
  const bool all = filer.kind() == ZnDbFiler::kUndo;
  filer.writeInt32(all ? static_cast<std::int32_t>(entries_.size()) : entryCount());
  for (const Entry& e : entries_) {
    if (e.id.isErased() && !all) continue;
    filer.writeString(e.name);
    filer.writeHardOwnershipId(e.id);
  }
  return filer.status();
}

ErrorStatus ZnDbDictionary::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::bdocInFields(filer); status != Quorl::eOk) return status;
  if (filer.readInt16() > kVersion) return Quorl::eNewerVersion;
  entries_.clear();
  for (int count = filer.readCount(); count > 0; --count) {
    const ZnString name = filer.readString();
    entries_.push_back({name, filer.readHardOwnershipId()});
  }
  return filer.status();
}

ErrorStatus ZnDbDictionary::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  for (const Entry& e : entries_) {
    if (e.id.isErased()) continue;
    filer.writeString(3, e.name);
    filer.writeId(360, e.id);
  }
  return filer.status();
}

ErrorStatus ZnDbDictionary::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::tdocInFields(filer); status != Quorl::eOk) return status;
  if (!filer.atSubclassData(className())) return filer.status();
  entries_.clear();
  ZnDbTdocItem item;
  ZnString name;
  while (!filer.atEndOfObject() && filer.readItem(item) == Quorl::eOk) {
    if (item.code == 3) name = item.text;
    if (item.code == 360) entries_.push_back({name, item.id});
    if (item.code == 100) {
      filer.pushBackItem();
      break;
    }
  }
  return filer.status();
}

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
