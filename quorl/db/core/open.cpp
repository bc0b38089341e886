#include "quorl/db/core/open.h"

#include "quorl/db/core/object_access.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/layer_table.h"

using Quorl::ErrorStatus;

ErrorStatus ZnDbObjectAccess::exists(ZnDbObjectId id, bool openErased) {
  if (id.isNull()) return Quorl::eNullObjectId;
  if (!id.isValid()) return Quorl::ePermanentlyErased;
  if (id.isErased() && !openErased) return Quorl::eWasErased;
  return Quorl::eOk;
}

ErrorStatus ZnDbObjectAccess::notLocked(const ZnDbObject* object) {
  const auto* entity = ZnDbEntity::cast(object);
  if (!entity || !entity->layerId().isValid()) return Quorl::eOk;
  const auto* layer = ZnDbLayerTableRecord::cast(entity->layerId().slot()->object);
  return layer && layer->isLocked() ? Quorl::eOnLockedLayer : Quorl::eOk;
}

namespace {

ErrorStatus openStrictly(ZnDbObject*& object, ZnDbObjectId id, ZnDbOpenMode mode, bool openErased,
                         bool evenIfLocked) {
  object = nullptr;
  if (const ErrorStatus status = ZnDbObjectAccess::exists(id, openErased); status != Quorl::eOk)
    return status;
  ZnDbSlot* slot = id.slot();
  switch (mode) {
  case ZnDbOpenMode::kForRead:
    if (slot->writers) return Quorl::eWasOpenForWrite;
    ++slot->readers;
    break;
  case ZnDbOpenMode::kForWrite:
    if (slot->writers) return Quorl::eWasOpenForWrite;
    if (slot->readers) return Quorl::eWasOpenForRead;
    if (!evenIfLocked && ZnDbObjectAccess::notLocked(slot->object) != Quorl::eOk)
      return Quorl::eOnLockedLayer;
    ++slot->writers;
    break;
  case ZnDbOpenMode::kForNotify:
    // Looks on while others have it open as they like.
    ++slot->readers;
    break;
  }
  object = slot->object;
  return Quorl::eOk;
}

} // namespace

ErrorStatus zndbOpenObject(ZnDbObject*& object, ZnDbObjectId id, ZnDbOpenMode mode, bool openErased) {
  return openStrictly(object, id, mode, openErased, false);
}

ErrorStatus zndbForceOpenObjectOnLockedLayer(ZnDbObject*& object, ZnDbObjectId id) {
  return openStrictly(object, id, ZnDbOpenMode::kForWrite, false, true);
}

ErrorStatus accessZnDbObjectForRead(ZnDbObject*& object, ZnDbObjectId id, const ZnRxClass* cls,
                                    bool openErased) {
  object = nullptr;
  if (const ErrorStatus status = ZnDbObjectAccess::exists(id, openErased); status != Quorl::eOk)
    return status;
  if (cls && !id.isDerivedFrom(cls)) return Quorl::eWrongObjectClass;
  ++id.slot()->readers;
  object = id.slot()->object;
  return Quorl::eOk;
}

ErrorStatus accessZnDbObjectForWrite(ZnDbObject*& object, ZnDbObjectId id, const ZnRxClass* cls,
                                     bool openErased, bool evenIfLocked, int ownReaders) {
  object = nullptr;
  if (const ErrorStatus status = ZnDbObjectAccess::exists(id, openErased); status != Quorl::eOk)
    return status;
  if (cls && !id.isDerivedFrom(cls)) return Quorl::eWrongObjectClass;
  ZnDbSlot* slot = id.slot();
  if (!slot->writers && !slot->evaluating && slot->readers > ownReaders) return Quorl::eWasOpenForRead;
  if (!evenIfLocked && ZnDbObjectAccess::notLocked(slot->object) != Quorl::eOk) return Quorl::eOnLockedLayer;
  ++slot->writers;
  object = slot->object;
  return Quorl::eOk;
}

void revertZnDbObjectFromWrite(ZnDbObject* object) {
  ZnDbSlot* slot = ZnDbObjectAccess::slot(object);
  QUORL_ASSERT(slot && slot->writers > 0);
  if (--slot->writers == 0) ZnDbObjectAccess::finishWrite(object);
}

void endZnDbObjectRead(ZnDbObject* object) {
  ZnDbSlot* slot = ZnDbObjectAccess::slot(object);
  QUORL_ASSERT(slot && slot->readers > 0);
  --slot->readers;
}
