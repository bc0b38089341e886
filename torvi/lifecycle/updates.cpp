#include "torvi/lifecycle/updates.h"

#include <algorithm>
#include <vector>

#include "torvi/core/action_body.h"
#include "torvi/core/evaluation.h"
#include "torvi/core/navigation.h"
#include "torvi/core/temp_callback.h"
#include "torvi/drawing/ask.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/views.h"

namespace torvi {

namespace {

using Ids = ZnArray<ZnDbObjectId>;

std::vector<const ZnDbDatabase*>& longTransactions() {
  static std::vector<const ZnDbDatabase*> drawings;
  return drawings;
}

ZnDbObjectId bodyOfAction(ZnDbObjectId actionId) {
  return ask<ZnDbAssocAction>(actionId, ZnDbObjectId(), &ZnDbAssocAction::actionBody);
}

bool needsUpdate(ZnDbObjectId bodyId) {
  return ask<ZnDbTorviActionBody>(bodyId, false, &ZnDbTorviActionBody::doesActionNeedUpdate);
}

bool hasLinetypeByLayer(ZnDbObjectId entityId) {
  return ask<ZnDbEntity>(entityId, false, [](const ZnDbEntity& entity) {
    return entity.linetypeId() == entity.database()->byLayerLinetype();
  });
}

Quorl::ErrorStatus markChanged(ZnDbObjectId actionId) {
  return change<ZnDbAssocAction>(actionId, [](ZnDbAssocAction& action) {
    action.setStatus(kChangedDirectlyAssocStatus, true, false);
    return Quorl::eOk;
  });
}

// What reads the center object, such as a dimension's action.
bool markReadersOf(ZnDbObjectId centerId) {
  Ids actions;
  ZnDbAssocAction::getActionsDependentOnObject(centerId, true, false, actions);
  bool marked = false;
  for (const ZnDbObjectId id : actions) marked |= markChanged(id) == Quorl::eOk;
  return marked;
}

// One dimension: the first of its geometries that is a center object of a drawing view brings it up to date.
void updateOnViewCenter(ZnDbObjectId associationId) {
  ZnDbHolder<ZnDbDimAssoc> association;
  if (association.openForWrite(associationId) != Quorl::eOk || !association->isTransSpatial()) return;
  Ids ids;
  association->getDimAssocGeomIds(ids);
  if (std::none_of(ids.begin(), ids.end(), isCenterOfDrawingView)) return;
  association->updateXrefSubentPath();
  association->updateDimension(true, false);
}

// Files by this version and maintenance version, or later, were drawn as center objects are drawn here.
constexpr int kSettledVersion = 31;
constexpr int kSettledMaintenance = 125;

bool isFromOldFile(const ZnDbDatabase& db) {
  const int version = db.originalFileSavedByVersion();
  return version < kSettledVersion ||
         (version == kSettledVersion && db.originalFileSavedByMaintenanceVersion() < kSettledMaintenance);
}

} // namespace

bool recordsViewports = false;
bool isEvaluationRelaxed = false;

ZnArray<ZnDbObjectId>& viewportsToUpdate() {
  static Ids viewports;
  return viewports;
}

void updateAllCenters(ZnDbDatabase* db) {
  if (!db) db = zndbHostApplicationServices()->workingDatabase();
  if (!db) return;
  Ids actions;
  appendCenterActions(*db, actions);
  for (const ZnDbObjectId id : actions)
    if (needsUpdate(bodyOfAction(id))) evaluateAlone(id);
}

void updateAllCenterMarks(ZnDbDatabase* db) {
  Ids actions;
  if (db) appendCenterMarkActions(*db, actions);
  for (const ZnDbObjectId id : actions) evaluateAlone(id);
}

bool isAnyMarkOnLayer(const ZnDbLayerTableRecord* layer, const Ids& actions) {
  if (!layer) return false;
  for (const ZnDbObjectId actionId : actions) {
    if (!isCenterMarkAction(actionId)) continue;
    ZnDbHolder<ZnDbEntity> center(referenceOfBody(bodyOfAction(actionId)));
    if (center.isOpen() && center->layerId() == layer->objectId()) return true;
  }
  return false;
}

void updateMarksWithLayersLinetype(ZnDbDatabase* db, const ZnDbLayerTableRecord* layer) {
  Ids actions;
  if (db) appendCenterMarkActions(*db, actions);
  if (actions.isEmpty() || (layer && !isAnyMarkOnLayer(layer, actions))) return;
  for (const ZnDbObjectId id : actions)
    if (hasLinetypeByLayer(referenceOfBody(bodyOfAction(id)))) evaluateAlone(id);
}

void updateCentersSeenThrough(ZnDbObjectId viewport) {
  Ids actions, bodies;
  if (!ZnDbHolder<ZnDbViewport>(viewport).isOpen()) return;
  ZnDbAssocAction::getActionsDependentOnObject(viewport, true, true, actions);
  for (const ZnDbObjectId id : actions)
    if (const ZnDbObjectId body = bodyOfAction(id); needsUpdate(body)) bodies.append(body);
  for (const ZnDbObjectId body : bodies) evaluateAlone(ZnDbAssocActionBody::parentAction(body));
  ZnDbDatabase* db = nullptr;
  bool marked = false;
  for (const ZnDbObjectId body : bodies) {
    const ZnDbObjectId center = referenceOfBody(body);
    if (!db) db = center.database();
    marked |= markReadersOf(center);
  }
  if (marked) ZnDbAssocManager::evaluateTopLevelNetwork(db, nullptr, 0);
}

void updateDimensionsOnViewCenters(ZnDbDatabase* db) {
  if (!db) return;
  ZnDbHolder<ZnDbBlockTable> table(db->blockTableId());
  if (!table.isOpen()) return;
  for (const ZnDbObjectId blockId : table->recordIds()) {
    ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
    if (!block.isOpen()) continue;
    for (const ZnDbObjectId id : block->entityIds())
      if (!id.isErased() && id.isDerivedFrom(ZnDbDimension::desc()))
        // Closed again by then: the update writes it.
        updateOnViewCenter(ask<ZnDbDimension>(id, ZnDbObjectId(), ZnDbDimAssoc::of));
  }
}

void upgradeOldCenterActions(ZnDbDatabase* db) {
  if (!db || !isFromOldFile(*db)) return;
  Ids actions;
  appendCenterActions(*db, actions);
  for (const ZnDbObjectId id : actions) {
    ZnDbHolder<ZnDbTorviActionBody> body(bodyOfAction(id));
    if (body.isOpen() && body.upgrade() == Quorl::eOk && !body->doesActionMatchCurrentGeometry())
      body->breakAssociativity();
  }
}

void appendLocalBlocks(ZnDbDatabase* db, Ids& blocks) {
  if (!db || db->getLayoutDictionary().isNull()) return;
  ZnDbHolder<ZnDbBlockTable> table(db->blockTableId());
  if (!table.isOpen()) return;
  for (const ZnDbObjectId id : table->recordIds())
    if (ZnDbHolder<ZnDbBlockTableRecord> block(id); block.isOpen() && !block->isFromExternalReference())
      blocks.append(id);
}

void setLongTransactionActive(ZnDbDatabase* db, bool active) {
  auto& drawings = longTransactions();
  if (active)
    drawings.push_back(db);
  else if (const auto found = std::find(drawings.begin(), drawings.end(), db); found != drawings.end())
    drawings.erase(found);
}

bool isLongTransactionActive(const ZnDbDatabase* db) {
  const auto& drawings = longTransactions();
  return std::find(drawings.begin(), drawings.end(), db) != drawings.end();
}

bool isLongTransactionActive() {
  if (zndbCurrentGlobals().isLongTransactionActive) return true;
  const ZnDbDatabase* working = zndbHostApplicationServices()->workingDatabase();
  return working && isLongTransactionActive(working);
}

void forgetUpdatesOf(const ZnDbDatabase* db) {
  Ids others;
  for (const ZnDbObjectId id : viewportsToUpdate())
    if (db && id.database() != db) others.append(id);
  viewportsToUpdate() = others;
  std::erase_if(longTransactions(), [db](const ZnDbDatabase* active) { return !db || active == db; });
  if (db) return;
  recordsViewports = isEvaluationRelaxed = false;
}

} // namespace torvi
