#include "torvi/core/action_body_utils.h"

#include <memory>

#include "torvi/drawing/ask.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/linetypes.h"
#include "torvi/style/set_layer.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

ErrorStatus ZnDbTorviActionBodyUtils::createAnonymousBlockTableRecord(ZnDbDatabase* database,
                                                                      ZnDbObjectId& id) {
  if (!database) return Quorl::eInvalidInput;
  ZnDbHolder<ZnDbBlockTable> table;
  if (const ErrorStatus status = table.openForWrite(database->blockTableId()); status != Quorl::eOk)
    return status;
  ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
  record->setName(L"*U");
  return table->add(id, record.object());
}

ErrorStatus ZnDbTorviActionBodyUtils::createCenterBlockRef(const ZnDbEntity* entity, ZnDbObjectId& btrId,
                                                           ZnDbObjectId& refId, ZnDbDatabase* database) {
  if (!entity || !entity->database()) return Quorl::eInvalidInput;
  if (createAnonymousBlockTableRecord(entity->database(), btrId) != Quorl::eOk) return Quorl::eInvalidInput;
  ZnDbHolder<ZnDbBlockReference> reference(new ZnDbBlockReference(ZnGePoint3d::kOrigin, btrId));
  setCenterRotation(reference.object(), entity);
  if (!database) database = zndbHostApplicationServices()->workingDatabase();
  ZnDbHolder<ZnDbBlockTableRecord> space;
  if (!database || space.openForWrite(database->currentSpaceId()) != Quorl::eOk) return Quorl::eInvalidInput;
  ZnDbObjectId id;
  if (space->appendZnDbEntity(id, reference.object()) != Quorl::eOk) return Quorl::eInvalidInput;
  reference->setDatabaseDefaults();
  reference->setLinetype(torvi::centerLinetypeId(reference->database()), true);
  reference->setLinetypeScale(ZnTorviStyle::getCenterLinetypeScale(), true);
  ZnTorviSetLayer::setCenterLayer(reference.object());
  refId = id;
  return Quorl::eOk;
}

// An entity in the plane of the user coordinate system that faces the other way has its x axis mirrored; the
// reference is turned to match.
void ZnDbTorviActionBodyUtils::setCenterRotation(ZnDbBlockReference* reference, const ZnDbEntity* entity) {
  const ZnGeTol& tol = ZnGeContext::gTol;
  const ZnGeMatrix3d ucs = zndbUcsMatrix();
  reference->setBlockTransform(ucs);
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
  ucs.getCoordSystem(origin, x, y, z);
  ZnGeVector3d normal = z;
  ZnGePlane plane;
  if (entity && entity->getPlane(plane) == Quorl::eOk) normal = plane.normal();
  if (!plane.isOn(origin, tol)) return;
  z.normalize(tol);
  if (!normal.isEqualTo(-z, tol)) return;
  reference->setRotation(ZnGeVector3d::kXAxis.angleTo(x, normal));
}

ErrorStatus ZnDbTorviActionBodyUtils::createSubBlockForEntities(ZnDbBlockTableRecord* parentRecord,
                                                                ZnArray<ZnDbEntity*> entities,
                                                                ZnDbObjectId& refId,
                                                                ZnArray<ZnDbObjectId>& ids) {
  ids.removeAll();
  ZnDbObjectId btrId;
  createAnonymousBlockTableRecord(parentRecord->database(), btrId);
  ZnDbBlockTableRecord* record = nullptr;
  if (const ErrorStatus status = zndbOpenObject(record, btrId, ZnDbOpenMode::kForWrite); status != Quorl::eOk)
    return status;
  ErrorStatus status = Quorl::eOk;
  for (int i = 0; i < entities.length() && status == Quorl::eOk; ++i) {
    ZnDbObjectId id;
    status = record->appendZnDbEntity(id, entities[i]);
    if (status != Quorl::eOk) break;
    entities[i]->close();
    ids.append(id);
  }
  record->close();
  if (status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbBlockReference> reference(new ZnDbBlockReference);
  reference->setBlockTableRecord(btrId);
  return parentRecord->appendZnDbEntity(refId, reference.object());
}

ZnDbObjectId ZnDbTorviActionBodyUtils::getBTRIdFromBlockRef(ZnDbObjectId refId) {
  return torvi::blockOfReference(refId);
}

ErrorStatus ZnDbTorviActionBodyUtils::setBTRIdForBlockRef(ZnDbObjectId refId, ZnDbObjectId btrId) {
  ZnDbHolder<ZnDbBlockReference> reference;
  if (reference.openForWrite(refId) != Quorl::eOk) return Quorl::eInvalidInput;
  return reference->setBlockTableRecord(btrId);
}

ZnDbObjectId ZnDbTorviActionBodyUtils::getBtrOfEntity(ZnDbObjectId entityId) {
  return torvi::ask<ZnDbEntity>(entityId, ZnDbObjectId(), &ZnDbEntity::ownerId);
}

bool ZnDbTorviActionBodyUtils::isEdgeFromBlockRef(const ZnDbEdgeRef& edge) {
  ZnArray<ZnDbObjectId> path;
  if (edge.entity().getPath(path) != Quorl::eOk || path.isEmpty()) return false;
  return !path.first().isNull() && path.first().isDerivedFrom(ZnDbBlockReference::desc());
}

ZnDbObjectId ZnDbTorviActionBodyUtils::mapId(const ZnDbIdMapping& idMap, ZnDbObjectId id) {
  ZnDbIdPair pair(id, ZnDbObjectId(), false, false, true);
  idMap.compute(pair);
  return pair.value();
}

void ZnDbTorviActionBodyUtils::ensureClonedCenterLineOwnedByDestBTR(ZnDbObjectId entityId,
                                                                    ZnDbObjectId refId) {
  if (refId.isNull()) return;
  const ZnDbObjectId wanted = getBtrOfEntity(entityId);
  if (wanted == getBtrOfEntity(refId)) return;
  ZnDbHolder<ZnDbBlockTableRecord> record;
  if (record.openForWrite(wanted) == Quorl::eOk) record->assumeOwnershipOf(ZnArray<ZnDbObjectId>{refId});
}

void ZnDbTorviActionBodyUtils::deleteCurves(ZnArray<ZnGeCurve3d*>& curves) {
  for (ZnGeCurve3d* curve : curves) delete curve;
  curves.setLogicalLength(0);
}
