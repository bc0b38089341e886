#include "torvi/core/builder.h"

#include <memory>

#include "torvi/core/evaluation.h"
#include "torvi/core/navigation.h"
#include "torvi/drawing/linetypes.h"
#include "torvi/style/set_layer.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

ZnTorviBuilder::ZnTorviBuilder(ZnRxClass* bodyClass, ZnDbDatabase* database)
    : bodyClass_(bodyClass)
    , database_(database ? database : zndbHostApplicationServices()->workingDatabase()) {}

ZnRxClass* ZnTorviBuilder::bodyClassNamed(const wchar_t* name, ZnRxClass*& stored) {
  if (!stored) stored = znrxFindZnRxClass(name);
  return stored;
}

ErrorStatus ZnTorviBuilder::subAddInputEdgeToBody(ZnDbTorviActionBody*, const ZnDbEdgeRef&) const {
  return Quorl::eOk;
}
ErrorStatus ZnTorviBuilder::subClearInputEdgesFromBody(ZnDbTorviActionBody*) const { return Quorl::eOk; }
ErrorStatus ZnTorviBuilder::subReassociateActionBodyToInputEdge(ZnDbObjectId) const { return Quorl::eOk; }
ErrorStatus ZnTorviBuilder::subLoadTorvi(ZnDbTorviObjectWrapper*) { return Quorl::eOk; }
ErrorStatus ZnTorviBuilder::subModifyTorvi(ZnDbObjectId) const { return Quorl::eOk; }

ErrorStatus ZnTorviBuilder::createTorvi(ZnDbObjectId& centerId) const {
  ZnDbObjectId bodyId;
  if (const ErrorStatus status = createActionAndActionBody(bodyId); status != Quorl::eOk) return status;
  if (const ErrorStatus status = createEntitiesInBTR(bodyId, centerId, database_); status != Quorl::eOk)
    return status;
  return torvi::evaluateNetworkFor(bodyId);
}

ErrorStatus ZnTorviBuilder::createActionAndActionBody(ZnDbObjectId& bodyId) const {
  if (!database_) return Quorl::eNoDatabase;
  ZnDbObjectId actionId;
  ErrorStatus status = ZnDbAssocActionBody::createActionAndActionBodyAndPostToDatabase(
      bodyClass_, database_->currentSpaceId(), actionId, bodyId);
  if (status == Quorl::eOk) status = clearInputEdgesFromBody(bodyId);
  if (status == Quorl::eOk) status = addInputEdgesToBody(bodyId, inputEdges_);
  return status == Quorl::eOk ? initValuesInBody(bodyId) : status;
}

ErrorStatus ZnTorviBuilder::createEntitiesInBTR(ZnDbObjectId bodyId, ZnDbObjectId& centerId,
                                                ZnDbDatabase* database) const {
  ZnDbHolder<ZnDbTorviActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  const ErrorStatus status = body->createCenterEntity(database);
  if (status == Quorl::eOk) centerId = body->centerObjectId();
  return status;
}

// The counter starts at 0 for every call: during an edit the hook sees the parameter at that place of the
// body, which may be an older one.
ErrorStatus ZnTorviBuilder::addInputEdgesToBody(ZnDbObjectId bodyId,
                                                const ZnArray<ZnDbEdgeRef>& edges) const {
  ZnDbHolder<ZnDbTorviActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  for (int i = 0; i < edges.length(); ++i) {
    ZnDbObjectId paramId;
    int paramIndex = 0;
    ErrorStatus status = body->addParam(ZnDbTorviActionBodyBase::inputEdgeParamName(),
                                        ZnDbAssocEdgeActionParam::desc(), paramId, paramIndex);
    if (status == Quorl::eOk) status = body->setEdgeRef(paramIndex, edges[i]);
    if (status == Quorl::eOk) status = subAddInputEdgeToBody(body.object(), body->getInputEdge(i));
    if (status != Quorl::eOk) return status;
  }
  return Quorl::eOk;
}

ErrorStatus ZnTorviBuilder::clearInputEdgesFromBody(ZnDbObjectId bodyId) const {
  ZnDbHolder<ZnDbTorviActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  for (const ZnDbObjectId id : body->paramsAtName(ZnDbTorviActionBodyBase::inputEdgeParamName()))
    if (const ErrorStatus status = body->removeParam(id, true); status != Quorl::eOk) return status;
  return subClearInputEdgesFromBody(body.object());
}

ErrorStatus ZnTorviBuilder::setInputEdgesToBody(ZnDbObjectId bodyId) const {
  const ErrorStatus status = clearInputEdgesFromBody(bodyId);
  return status == Quorl::eOk ? addInputEdgesToBody(bodyId, inputEdges_) : status;
}

ErrorStatus ZnTorviBuilder::reassociateActionBodyToInputEdge(ZnDbObjectId bodyId) const {
  if (!bodyId.isValid()) return Quorl::eInvalidInput;
  const ErrorStatus status = setInputEdgesToBody(bodyId);
  return status == Quorl::eOk ? subReassociateActionBodyToInputEdge(bodyId) : status;
}

ErrorStatus ZnTorviBuilder::reassociateTorvi(ZnDbObjectId centerId) const {
  const ZnDbObjectId bodyId = torvi::bodyOfReference(centerId);
  if (const ErrorStatus status = reassociateActionBodyToInputEdge(bodyId); status != Quorl::eOk)
    return status;
  return torvi::evaluateNetworkFor(bodyId);
}

ErrorStatus ZnTorviBuilder::createTorviTransients(const ZnGePoint3d* pickPoint,
                                                  ZnArray<ZnDbCurve*>& curves) const {
  const std::unique_ptr<ZnDbTorviLayout> layout(getLayout());
  if (!layout) return Quorl::eNotProvided;
  ZnArray<ZnGeCurve3d*> shapes;
  ZnArray<ZnString> keys, madeKeys;
  ZnArray<ZnDbEntity*> made;
  const ErrorStatus status = layout->createTransients(inputEdges_, pickPoint, shapes, keys);
  if (status == Quorl::eOk) {
    ZnDbObjectId layerId;
    ZnTorviSetLayer::getCenterLayerId(database_, layerId);
    torvi::ensureCenterLinetypeLoaded(database_);
    const ZnDbObjectId linetypeId = torvi::linetypeByName(database_, ZnTorviStyle::getCenterLineTypeName());
    const double scale = ZnTorviStyle::getCenterLinetypeScale();
    for (int i = 0; i < shapes.length(); ++i) {
      ZnDbCurve* curve = nullptr;
      if (zndbConvertGelibCurveToZnDbCurve(*shapes[i], curve, nullptr, ZnGeContext::gTol) != Quorl::eOk)
        continue;
      // The curve is in no database where a name could be looked up; the id is that of the name.
      curve->setLayer(layerId, true);
      curve->setLinetype(linetypeId, true);
      curve->setLinetypeScale(scale, true);
      curves.append(curve);
      made.append(curve);
      // A shape that is left out leaves its key out too: the layout tells entities apart by their keys.
      if (i < keys.length()) madeKeys.append(keys[i]);
    }
  }
  for (const ZnGeCurve3d* shape : shapes) delete shape;
  layout->adjustEntities(made, madeKeys);
  return status;
}
