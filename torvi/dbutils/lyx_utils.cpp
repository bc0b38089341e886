// The operations by which callers outside know what the folders below do, and what is asked of them alone.
#include "torvi/dbutils/lyx_utils.h"

#include <cmath>

#include "torvi/centerline/direction_marks.h"
#include "torvi/core/evaluation.h"
#include "torvi/core/navigation.h"
#include "torvi/core/object_pointer.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/dependencies.h"
#include "torvi/drawing/edge_curves.h"
#include "torvi/drawing/linetypes.h"
#include "torvi/drawing/shapes.h"
#include "torvi/drawing/views.h"
#include "torvi/lifecycle/updates.h"
#include "torvi/pattern/action_body.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;
using Utils = ZnTorviLyxUtils;
using Ids = ZnArray<ZnDbObjectId>;

// Identification

bool Utils::isCenterObject(ZnDbObjectId id, ZnDbTorviType type) {
  ZnResBufList context;
  return isCenterObject(id, type, context);
}

bool Utils::isCenterObject(ZnDbObjectId id, ZnDbTorviType type, ZnResBufList& context) {
  ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(id);
  return wrapper.openStatus() == Quorl::eOk && isCenterObject(wrapper.object(), type, context);
}

bool Utils::isCenterObject(const ZnDbTorviObjectWrapper* wrapper, ZnDbTorviType type, ZnResBufList& context) {
  if (!wrapper) return false;
  const torvi::Kind* kind = torvi::kindOfType(type);
  if (kind && kind->tellContext && wrapper->centerType() == type) kind->tellContext(*wrapper, context);
  return true;
}

bool Utils::isCenterObjectOfType(ZnDbObjectId id, ZnDbTorviType type) {
  const ZnDbTorviType found = torvi::centerObjectOf(id).kind;
  return found != kTorviNone && (type == kTorviAny || type == found);
}

bool Utils::isCenterObjectCurve(const ZnDbCurve* curve, ZnDbObjectId& id, ZnDbTorviType& type) {
  const torvi::CenterObject found = torvi::centerObjectWithCurve(curve);
  if (found.kind == kTorviNone) return false;
  id = found.reference;
  type = found.kind;
  return true;
}

bool Utils::getTorviPatternContext(const ZnDbTorviObjectWrapper* wrapper, bool& isFullPCD,
                                   bool& showCenterMark) {
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body(wrapper ? wrapper->actionBody() : ZnDbObjectId());
  if (!body.isOpen()) return false;
  isFullPCD = body->isFullPCD();
  showCenterMark = body->showCenterMark();
  return true;
}

bool Utils::isCenterMirrored(ZnDbObjectId id) { return torvi::isMirrored(id); }

bool Utils::isAnyCenterMarksOnLayer(ZnDbLayerTableRecord* layer, const Ids& actions) {
  return torvi::isAnyMarkOnLayer(layer, actions);
}

// Navigation

ZnDbObjectId Utils::getTorviActionBodyId(ZnDbObjectId blockRefId) {
  return torvi::bodyOfReference(blockRefId);
}

ZnDbObjectId Utils::getTorviActionBodyId(ZnDbBlockReference* ref) {
  return torvi::bodyOfReference(getTorviObjIdFromObj(ref));
}

ZnDbObjectId Utils::getTorviFromActionBodyId(const ZnDbObjectId& bodyId) {
  return torvi::referenceOfBody(bodyId);
}

ZnDbObjectId Utils::getTorviObjIdFromObj(ZnDbBlockReference* ref) {
  return torvi::firstReferenceOfSameBlock(ref);
}

ZnDbObjectId Utils::getTorviObjIdFromBlockTableRecord(const ZnDbBlockTableRecord& block,
                                                      ZnDbObjectId& subEntId) {
  return torvi::centerObjectWithBlock(block, subEntId).reference;
}

void Utils::getTorviSubEntIdsFromBlockTableRecord(Ids& ids, const ZnDbBlockTableRecord& block) {
  for (const ZnDbObjectId id : block.entityIds())
    if (!id.isErased()) ids.append(id);
}

void Utils::getCenterActionBodiesOfBlockRef(const ZnDbObjectId& refId, Ids& bodies) {
  torvi::appendBodiesOn(refId, false, bodies);
}

void Utils::getAllTorviActionBodiesDependOnBlkRef(ZnDbObjectId refId, Ids& bodies) {
  torvi::appendBodiesOn(refId, true, bodies);
}

void Utils::getAllTorviActionBodiesDependOnBTR(ZnDbObjectId blockId, Ids& bodies) {
  ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  Ids references;
  if (!block.isOpen() || block->getBlockReferenceIds(references, true, false) != Quorl::eOk) return;
  for (const ZnDbObjectId id : references) torvi::appendBodiesOn(id, true, bodies);
}

void Utils::getAllCenterActionIds(ZnDbDatabase* db, Ids& actions) {
  if (db) torvi::appendCenterActions(*db, actions);
}

void Utils::getAllCenterMarkActions(Ids& actions, ZnDbDatabase* db) {
  if (db) torvi::appendCenterMarkActions(*db, actions);
}

void Utils::getCenterLinesDependOnEnt(const ZnDbObjectId& entityId, Ids& centerIds) {
  Ids actions;
  ZnDbAssocAction::getActionsDependentOnObject(entityId, true, false, actions);
  for (const ZnDbObjectId actionId : actions) {
    ZnDbHolder<ZnDbAssocAction> action(actionId);
    if (!action.isOpen() ||
        ZnDbTorviObjectWrapper::getCenterTypeFromActionBody(action->actionBody()) != kCenterLine)
      continue;
    if (const ZnDbObjectId center = torvi::referenceOfBody(action->actionBody()); !center.isNull())
      centerIds.append(center);
  }
}

ErrorStatus Utils::getEntitesIdsFromBlkRef(const ZnDbObjectId& refId, Ids& ids, bool unerase) {
  return torvi::curvesOfReference(refId, ids, unerase);
}

ZnDbObjectId Utils::getViewportIdFromEdgeRef(const ZnDbEdgeRef& edge) { return torvi::viewportOfEdge(edge); }

ZnDbObjectId Utils::getModelSpaceBTRId(ZnDbDatabase* db) { return torvi::modelSpaceId(db); }

ZnDbObjectId Utils::getCurrentLayoutBTRId() {
  const ZnDbDatabase* db = zndbHostApplicationServices()->workingDatabase();
  return db ? db->currentSpaceId() : ZnDbObjectId();
}

ZnDbObjectId Utils::activeViewportId() { return torvi::activeViewportId(); }

// Views and paths

bool Utils::isTranSpatialPath(const ZnDbFullSubentPath& path) { return torvi::beginsWithViewport(path); }

bool Utils::isSubEntityPath(const ZnDbFullSubentPath& path) {
  return !path.objectIds().isEmpty() && path.subentId().index() == 0;
}

ZnGeMatrix3d Utils::msWcsToPsWcs(const ZnDbObjectId& viewportId) { return torvi::modelToPaper(viewportId); }

double Utils::viewScale(const ZnDbObjectId& viewportId) { return torvi::viewScale(viewportId); }

bool Utils::isInBrevixView(const ZnDbObjectId& id) { return torvi::isInDrawingView(id); }
bool Utils::isInBrevixView(const ZnDbFullSubentPath& path) { return torvi::isInDrawingView(path); }
bool Utils::isInBrevixView(const ZnDbEdgeRef& edge) { return torvi::isInDrawingView(edge); }

bool Utils::getBrevixView(const ZnDbEdgeRef& edge, ZnDbObjectId& viewportId, ZnDbObjectId* viewRepId,
                          ZnDbObjectId* viewId) {
  return torvi::findDrawingView(edge, viewportId, viewRepId, viewId);
}

bool Utils::isCenterReferenceToBrevixView(const ZnDbObjectId& centerId) {
  return torvi::isCenterOfDrawingView(centerId);
}

ZnGeCurve3d* Utils::getBrevixProjectedCurve(const ZnDbEdgeRef& edge) { return torvi::projectedCurve(edge); }

// Curves

ZnGeCurve3d* Utils::evaluatedZnDbEdgeCurve(const ZnDbEdgeRef& edge, bool fullCircle) {
  return torvi::evaluatedEdgeCurve(edge, fullCircle).release();
}

ErrorStatus Utils::createEdgeRef(const ZnDbFullSubentPath& path, ZnDbEdgeRef& edge) {
  return torvi::createEdgeRef(path, edge);
}

ErrorStatus Utils::extendLine(ZnGeLineSeg3d& line, double startBy, double endBy) {
  return torvi::extendLine(line, startBy, endBy) ? Quorl::eOk : Quorl::eInvalidInput;
}

ZnGeLineSeg3d Utils::getExtendedLine(const ZnGeLineSeg3d& line, double startBy, double endBy) {
  ZnGeLineSeg3d extended(line);
  torvi::extendLine(extended, startBy, endBy);
  return extended;
}

bool Utils::fuzzyEqual(double a, double b, double tolerance) { return std::fabs(a - b) <= tolerance; }

ErrorStatus Utils::getCircleQuadrantPoints(const ZnGeCircArc3d& arc, ZnArray<ZnGePoint3d>& points) {
  points.removeAll();
  for (const ZnGePoint3d& point : torvi::quarterPoints(arc)) points.append(point);
  return Quorl::eOk;
}

ErrorStatus Utils::calcCircleEcs(const ZnGeCircArc3d& arc, ZnGeMatrix3d& ecs) {
  ecs = torvi::circleCoordinates(arc);
  return Quorl::eOk;
}

bool Utils::checkForArc() { return torvi::isArcSpanChecked(); }

void Utils::uneraseObject(const ZnDbObjectId& id) { torvi::uneraseObject(id); }

// Linetypes

ZnDbObjectId Utils::getLineTypeByName(ZnDbDatabase* db, const ZnString& name) {
  return torvi::linetypeByName(db, name);
}

ErrorStatus Utils::ensureCenterLinetypeLoaded(ZnDbDatabase* db) {
  return torvi::ensureCenterLinetypeLoaded(db);
}

ZnDbObjectId Utils::getCenterLineTypeId(ZnDbDatabase* db) { return torvi::centerLinetypeId(db); }

ZnDbObjectId Utils::getContinuousLineTypeId(ZnDbDatabase* db) { return torvi::crossHairLinetypeId(db); }

const ZnCmTransparency& Utils::getByBlockTransparency() { return torvi::byBlockTransparency(); }

// Evaluation

ErrorStatus Utils::explicitlyEvaluateActionBody(ZnDbObjectId bodyId) {
  return torvi::evaluateNetworkFor(bodyId);
}

ErrorStatus Utils::evaluateAction(ZnDbObjectId actionId) { return torvi::evaluateAlone(actionId); }

void Utils::markCenterLinesNotToKeepDirection(const Ids& ids) { torvi::markNotToKeepDirection(ids); }

void Utils::unmarkCenterLinesNotToKeepDirection() { torvi::unmarkAllNotToKeepDirection(); }

bool Utils::isCenterLineNotToKeepDirection(const ZnDbObjectId& id) { return torvi::isNotToKeepDirection(id); }

void Utils::printCenterDisassociatedMessage(ZnDbObjectId bodyId) { torvi::printDisassociated(bodyId); }

// Updates of whole drawings

void Utils::updateAllCenterActions(ZnDbDatabase* db) { torvi::updateAllCenters(db); }

void Utils::updateAllCenterMarks(ZnDbDatabase* db) { torvi::updateAllCenterMarks(db); }

void Utils::updateAllByLayerLinetypeCenterMarks(ZnDbDatabase* db, ZnDbLayerTableRecord* layer) {
  torvi::updateMarksWithLayersLinetype(db, layer);
}

void Utils::updateAllAssocDimensionsOnBrevixCenter(ZnDbDatabase* db) {
  torvi::updateDimensionsOnViewCenters(db);
}

void Utils::updateCenterObjDependOnViewport(ZnDbObjectId viewportId) {
  torvi::updateCentersSeenThrough(viewportId);
}

void Utils::getAllLocalBlockTableRecords(Ids& blocks, ZnDbDatabase* db) {
  torvi::appendLocalBlocks(db, blocks);
}

bool& Utils::m_bRecordUpdate = torvi::recordsViewports;

bool Utils::getRecordUpdate() { return m_bRecordUpdate; }

void Utils::setRecordUpdate(bool record) { m_bRecordUpdate = record; }

Ids& Utils::viewportsToUpdate() { return torvi::viewportsToUpdate(); }

bool Utils::isAssocEvalRelaxed() { return torvi::isEvaluationRelaxed; }

void Utils::setAssocEvalRelaxed(bool relaxed) { torvi::isEvaluationRelaxed = relaxed; }

bool Utils::isLongTransactionActive() { return torvi::isLongTransactionActive(); }

bool Utils::isLongTransactionActive(ZnDbDatabase* db) { return torvi::isLongTransactionActive(db); }

void Utils::setIsLongTransactionActive(ZnDbDatabase* db, bool active) {
  torvi::setLongTransactionActive(db, active);
}

// Dependencies

ErrorStatus Utils::addReadWriteDependencyToObject(ZnDbAssocActionBody* body, ZnDbObjectId object,
                                                  ZnDbObjectId& dependencyId) {
  return torvi::addDependencyTo(*body, object, torvi::DependencyAccess::kReadWrite, dependencyId);
}

ErrorStatus Utils::addReadOnlyDependencyToObject(ZnDbAssocActionBody* body, ZnDbObjectId object,
                                                 ZnDbObjectId& dependencyId) {
  return torvi::addDependencyTo(*body, object, torvi::DependencyAccess::kRead, dependencyId);
}

ErrorStatus Utils::setCenterDependencyId(ZnDbObjectId bodyId, ZnDbObjectId centerId) {
  ZnDbHolder<ZnDbTorviActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  ZnDbObjectId dependencyId;
  if (addReadWriteDependencyToObject(body.object(), centerId, dependencyId) != Quorl::eOk)
    return Quorl::eInvalidInput;
  return body->setCenterDepId(dependencyId);
}

void Utils::deleteCenterDependenciesOnObject(ZnDbObjectId refId) {
  Ids bodies;
  torvi::appendBodiesOn(refId, true, bodies);
  for (const ZnDbObjectId id : bodies) {
    ZnDbHolder<ZnDbAssocActionBody> body(id);
    if (body.isOpen()) body->removeAllDependencies(true);
  }
}
