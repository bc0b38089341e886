#include "torvi/core/action_body_utils.h"
#include "torvi/core/layout.h"
#include "torvi/core/new_entities.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/drawing/blocks.h"

using Quorl::ErrorStatus;

// Brings the block's keyed entities in line with the wanted keys. Ids come out so that id i belongs to curve
// i: those of the wanted keys in order, then the stale ones of an object without edges, nested references
// last.
ErrorStatus ZnDbTorviLayout::reconcileOutputEntities(ZnArray<ZnDbObjectId>& ids,
                                                     const ZnArray<ZnString>& keys,
                                                     ZnDbTorviObjectWrapper& wrapper, bool associative) {
  ZnArray<ZnString> existingKeys;
  if (const ErrorStatus status = wrapper.getOutputEdgeKeys(existingKeys); status != Quorl::eOk) return status;
  ZnArray<ZnString> seenKeys;
  ZnArray<ZnDbObjectId> subBlocks;
  for (const ZnString& key : keys) {
    if (seenKeys.contains(key)) continue;
    seenKeys.append(key);
    existingKeys.remove(key);
    if (const ErrorStatus status = wantedOutput(key, wrapper, ids, subBlocks); status != Quorl::eOk)
      return status;
  }
  for (const ZnString& key : existingKeys)
    if (const ErrorStatus status = staleOutput(key, wrapper, associative, ids, subBlocks);
        status != Quorl::eOk)
      return status;
  ids.append(subBlocks);
  return Quorl::eOk;
}

ErrorStatus ZnDbTorviLayout::wantedOutput(const ZnString& key, ZnDbTorviObjectWrapper& wrapper,
                                          ZnArray<ZnDbObjectId>& ids, ZnArray<ZnDbObjectId>& subBlocks) {
  const ZnDbObjectId id = wrapper.getOutputEdge(key);
  if (id.isNull()) return createOutput(key, wrapper, ids, subBlocks);
  // An undo may have erased it; it is the same output all the same.
  torvi::uneraseObject(id);
  if (id.isDerivedFrom(ZnDbBlockReference::desc())) {
    subBlocks.append(id);
    // What was purged went with its members.
    torvi::curvesOfReference(id, ids, true);
  } else if (id.isDerivedFrom(ZnDbLine::desc()) || id.isDerivedFrom(ZnDbArc::desc())) {
    ids.append(id);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbTorviLayout::createOutput(const ZnString& key, ZnDbTorviObjectWrapper& wrapper,
                                          ZnArray<ZnDbObjectId>& ids, ZnArray<ZnDbObjectId>& subBlocks) {
  ZnDbHolder<ZnDbBlockReference> reference;
  if (const ErrorStatus status = reference.open(centerObject_); status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbBlockTableRecord> record;
  if (const ErrorStatus status = record.openForWrite(reference->blockTableRecord()); status != Quorl::eOk)
    return status;
  torvi::NewEntities made;
  const ZnArray<ZnDbEntity*>& entities = made.entities;
  if (const ErrorStatus status = createEntitiesForKey(made.entities, key); status != Quorl::eOk)
    return status;
  if (entities.isEmpty()) return Quorl::eInvalidInput;
  ZnDbObjectId id;
  if (entities.length() == 1) {
    if (const ErrorStatus status = record->appendZnDbEntity(id, entities[0]); status != Quorl::eOk)
      return status;
    entities[0]->close();
    ids.append(id);
  } else {
    ZnArray<ZnDbObjectId> members;
    const ErrorStatus status =
        ZnDbTorviActionBodyUtils::createSubBlockForEntities(record.object(), entities, id, members);
    if (status != Quorl::eOk) return status;
    ids.append(members);
    subBlocks.append(id);
  }
  return wrapper.setOutputEdge(key, id);
}

ErrorStatus ZnDbTorviLayout::staleOutput(const ZnString& key, ZnDbTorviObjectWrapper& wrapper,
                                         bool associative, ZnArray<ZnDbObjectId>& ids,
                                         ZnArray<ZnDbObjectId>& subBlocks) {
  const ZnDbObjectId id = wrapper.getOutputEdge(key);
  // A key may name anything; only what is drawn is an output.
  if (id.isNull() || id.isErased() || !id.isDerivedFrom(ZnDbEntity::desc())) return Quorl::eOk;
  const bool nested = id.isDerivedFrom(ZnDbBlockReference::desc());
  // An object that lost its edges keeps what it shows.
  if (!associative) {
    if (!nested) {
      ids.append(id);
      return Quorl::eOk;
    }
    subBlocks.append(id);
    return torvi::curvesOfReference(id, ids, false);
  }
  ZnArray<ZnDbObjectId> toErase;
  if (nested) {
    ZnDbHolder<ZnDbBlockReference> reference;
    if (const ErrorStatus status = reference.open(id); status != Quorl::eOk) return status;
    torvi::curvesOfReference(id, toErase, false);
    toErase.append(id);
    toErase.append(reference->blockTableRecord());
  } else {
    toErase.append(id);
  }
  for (const ZnDbObjectId gone : toErase) {
    ZnDbHolder<ZnDbObject> object;
    if (object.openForWrite(gone, false, true) == Quorl::eOk) object->erase();
  }
  return Quorl::eOk;
}
