#include <unordered_set>

#include "torvi/core/action_body.h"
#include "torvi/core/object_pointer.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace {

void appendOnce(ZnArray<ZnDbObjectId>& ids, ZnDbObjectId id) {
  if (!ids.contains(id)) ids.append(id);
}

// Bodies of center objects among the actions with the wanted kinds of dependency on the object.
void appendCenterBodies(const ZnDbObject* object, bool readWanted, bool writeWanted,
                        ZnArray<ZnDbObjectId>& bodies) {
  ZnArray<ZnDbObjectId> actions;
  ZnDbAssocAction::getActionsDependentOnObject(object, readWanted, writeWanted, actions);
  for (const ZnDbObjectId actionId : actions) {
    ZnDbHolder<ZnDbAssocAction> action(actionId);
    if (action.isOpen() && action->actionBody().isDerivedFrom(ZnDbTorviActionBody::desc()))
      appendOnce(bodies, action->actionBody());
  }
}

} // namespace

// Asked dozens of times in one evaluation: it reads slots alone, and its array keeps its memory.
ZnDbObjectId ZnTorviLyxUtils::getTorviActionBodyId(ZnDbObjectId blockRefId) {
  if (!blockRefId.isValid() || !blockRefId.isDerivedFrom(ZnDbBlockReference::desc())) return {};
  static ZnArray<ZnDbObjectId> actions;
  actions.removeAll();
  ZnDbAssocAction::getActionsDependentOnObject(blockRefId, false, true, actions);
  for (const ZnDbObjectId actionId : actions) {
    ZnDbHolder<ZnDbAssocAction> action(actionId);
    if (action.isOpen() && action->actionBody().isDerivedFrom(ZnDbTorviActionBody::desc()))
      return action->actionBody();
  }
  return {};
}

ZnDbObjectId ZnTorviLyxUtils::getTorviActionBodyId(ZnDbBlockReference* ref) {
  return getTorviActionBodyId(getTorviObjIdFromObj(ref));
}

ZnDbObjectId ZnTorviLyxUtils::getTorviFromActionBodyId(const ZnDbObjectId& bodyId) {
  ZnDbHolder<ZnDbTorviActionBody> body(bodyId);
  return body.isOpen() ? body->centerObjectId() : ZnDbObjectId();
}

ZnDbObjectId ZnTorviLyxUtils::getTorviObjIdFromObj(ZnDbBlockReference* ref) {
  if (!ref) return {};
  ZnDbHolder<ZnDbBlockTableRecord> block(ref->blockTableRecord());
  ZnArray<ZnDbObjectId> ids;
  if (!block.isOpen() || block->getBlockReferenceIds(ids, true, false) != Quorl::eOk || ids.isEmpty())
    return {};
  return ids.first();
}

ZnDbObjectId ZnTorviLyxUtils::getTorviObjIdFromBlockTableRecord(const ZnDbBlockTableRecord& block,
                                                                ZnDbObjectId& subEntId) {
  subEntId.setNull();
  if (!block.isAnonymous() || block.isLayout()) return {};
  ZnDbObjectId inner;
  if (block.countReferences(inner) != 1) return {};
  if (ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper>(inner).openStatus() == Quorl::eOk) return inner;
  ZnDbHolder<ZnDbBlockReference> reference(inner);
  if (!reference.isOpen()) return {};
  ZnDbHolder<ZnDbBlockTableRecord> outerBlock(reference->ownerId());
  ZnDbObjectId outer;
  if (!outerBlock.isOpen() || outerBlock->countReferences(outer) != 1) return {};
  if (ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper>(outer).openStatus() != Quorl::eOk) return {};
  subEntId = inner;
  return outer;
}

void ZnTorviLyxUtils::getTorviSubEntIdsFromBlockTableRecord(ZnArray<ZnDbObjectId>& ids,
                                                            const ZnDbBlockTableRecord& block) {
  for (const ZnDbObjectId id : block.entityIds())
    if (!id.isErased()) ids.append(id);
}

void ZnTorviLyxUtils::getCenterActionBodiesOfBlockRef(const ZnDbObjectId& refId,
                                                      ZnArray<ZnDbObjectId>& bodies) {
  ZnDbHolder<ZnDbBlockReference> reference(refId, true);
  if (reference.isOpen()) appendCenterBodies(reference.object(), false, true, bodies);
}

void ZnTorviLyxUtils::getAllTorviActionBodiesDependOnBlkRef(ZnDbObjectId refId,
                                                            ZnArray<ZnDbObjectId>& bodies) {
  ZnDbHolder<ZnDbBlockReference> reference(refId, true);
  if (reference.isOpen()) appendCenterBodies(reference.object(), true, true, bodies);
}

void ZnTorviLyxUtils::getAllTorviActionBodiesDependOnBTR(ZnDbObjectId blockId,
                                                         ZnArray<ZnDbObjectId>& bodies) {
  ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  ZnArray<ZnDbObjectId> references;
  if (!block.isOpen() || block->getBlockReferenceIds(references, true, false) != Quorl::eOk) return;
  for (const ZnDbObjectId id : references) getAllTorviActionBodiesDependOnBlkRef(id, bodies);
}

namespace {

// Spaces, in which networks of actions hang.
ZnArray<ZnDbObjectId> spacesOf(ZnDbDatabase* db) {
  ZnArray<ZnDbObjectId> spaces;
  ZnDbHolder<ZnDbBlockTable> table(db->blockTableId());
  if (!table.isOpen()) return spaces;
  for (const ZnDbObjectId id : table->recordIds()) {
    ZnDbHolder<ZnDbBlockTableRecord> record(id);
    if (!record.isOpen()) continue;
    const ZnString& name = record->name();
    if (record->isLayout() || name.equalsNoCase(L"*Paper_Space") || name.equalsNoCase(L"*Model_Space"))
      appendOnce(spaces, id);
  }
  return spaces;
}

} // namespace

void ZnTorviLyxUtils::getAllCenterActionIds(ZnDbDatabase* db, ZnArray<ZnDbObjectId>& actions) {
  if (!db) return;
  // A set beside the array: drawings hold center objects by the hundred thousand.
  std::unordered_set<ZnDbObjectId> seen;
  for (const ZnDbObjectId id : actions) seen.insert(id);
  for (const ZnDbObjectId space : spacesOf(db)) {
    ZnDbHolder<ZnDbAssocNetwork> network(ZnDbAssocNetwork::getInstanceFromObject(space, false, true, L""));
    if (!network.isOpen()) continue;
    for (const ZnDbObjectId id : network->getActions()) {
      ZnDbHolder<ZnDbAssocAction> action(id);
      if (action.isOpen() && action->actionBody().isDerivedFrom(ZnDbTorviActionBody::desc()) &&
          seen.insert(id).second)
        actions.append(id);
    }
  }
}

void ZnTorviLyxUtils::getCenterLinesDependOnEnt(const ZnDbObjectId& entityId,
                                                ZnArray<ZnDbObjectId>& centerIds) {
  ZnArray<ZnDbObjectId> actions;
  ZnDbAssocAction::getActionsDependentOnObject(entityId, true, false, actions);
  for (const ZnDbObjectId actionId : actions) {
    ZnDbHolder<ZnDbAssocAction> action(actionId);
    if (!action.isOpen() ||
        ZnDbTorviObjectWrapper::getCenterTypeFromActionBody(action->actionBody()) != kCenterLine)
      continue;
    if (const ZnDbObjectId center = getTorviFromActionBodyId(action->actionBody()); !center.isNull())
      centerIds.append(center);
  }
}

ErrorStatus ZnTorviLyxUtils::getEntitesIdsFromBlkRef(const ZnDbObjectId& refId, ZnArray<ZnDbObjectId>& ids,
                                                     bool unerase) {
  ZnDbHolder<ZnDbBlockReference> reference;
  if (const ErrorStatus status = reference.open(refId); status != Quorl::eOk) return status;
  const ZnDbObjectId blockId = reference->blockTableRecord();
  if (unerase) uneraseObject(blockId);
  ZnDbHolder<ZnDbBlockTableRecord> block;
  if (const ErrorStatus status = block.open(blockId); status != Quorl::eOk) return status;
  for (const ZnDbObjectId id : block->entityIds()) {
    if (id.isErased() && !unerase) continue;
    if (unerase) uneraseObject(id);
    if (id.isDerivedFrom(ZnDbLine::desc()) || id.isDerivedFrom(ZnDbArc::desc())) {
      appendOnce(ids, id);
    } else if (id.isDerivedFrom(ZnDbBlockReference::desc())) {
      if (const ErrorStatus status = getEntitesIdsFromBlkRef(id, ids, unerase); status != Quorl::eOk)
        return status;
    }
  }
  return Quorl::eOk;
}

ZnDbObjectId ZnTorviLyxUtils::getModelSpaceBTRId(ZnDbDatabase* db) {
  ZnDbObjectId id;
  if (!db) return id;
  ZnDbHolder<ZnDbBlockTable> table(db->blockTableId());
  if (table.isOpen()) table->getIdAt(L"*Model_Space", id);
  return id;
}

ZnDbObjectId ZnTorviLyxUtils::getCurrentLayoutBTRId() {
  const ZnDbDatabase* db = zndbHostApplicationServices()->workingDatabase();
  return db ? db->currentSpaceId() : ZnDbObjectId();
}

ZnDbObjectId ZnTorviLyxUtils::activeViewportId() {
  const ZnDbHostApplicationServices* services = zndbHostApplicationServices();
  return services ? services->activeViewportId() : ZnDbObjectId();
}

void ZnTorviLyxUtils::uneraseObject(const ZnDbObjectId& id) {
  if (id.isNull() || !id.isErased()) return;
  ZnDbHolder<ZnDbObject> object;
  if (object.openForWrite(id, true, true) == Quorl::eOk) object->erase(false);
}
