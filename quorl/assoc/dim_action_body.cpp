#include "quorl/assoc/dim_action_body.h"

#include "quorl/assoc/dependency.h"
#include "quorl/assoc/dim_follow.h"
#include "quorl/assoc/edge_action_param.h"
#include "quorl/assoc/evaluation_pointer.h"
#include "quorl/assoc/manager.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/id_mapping.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbAssocDimActionBody, ZnDbAssocActionBody)

namespace {

const ZnString& edgeName() {
  static const ZnString name(L"Edge");
  return name;
}

const ZnString& dimensionName() {
  static const ZnString name(L"DimensionDepId");
  return name;
}

} // namespace

ZnDbObjectId ZnDbAssocDimActionBody::dimensionId() const {
  ZnDbEvalVariant value;
  ZnDbObjectId dependencyId;
  if (getValueParam(dimensionName(), value) != Quorl::eOk || value.getValue(dependencyId) != Quorl::eOk)
    return {};
  const ZnDbHolder<ZnDbAssocDependency> dependency(dependencyId);
  return dependency.isOpen() ? dependency->dependentOnObject() : ZnDbObjectId();
}

ErrorStatus ZnDbAssocDimActionBody::setDimension(ZnDbObjectId dimension) {
  if (!dimension.isDerivedFrom(ZnDbDimension::desc())) return Quorl::eWrongObjectClass;
  ZnDbObjectId id;
  if (const ErrorStatus status = addDependency(nullptr, nullptr, true, true, 0, id); status != Quorl::eOk)
    return status;
  ZnDbHolder<ZnDbAssocDependency> dependency;
  if (const ErrorStatus status = dependency.openForWrite(id); status != Quorl::eOk) return status;
  const ErrorStatus status = dependency->attachToObject(ZnDbCompoundObjectId(dimension));
  return status == Quorl::eOk ? setValueParam(dimensionName(), ZnDbEvalVariant(id)) : status;
}

ZnDbEdgeRef ZnDbAssocDimActionBody::edge() const {
  ZnArray<ZnDbEdgeRef> edges;
  const ZnDbHolder<ZnDbAssocEdgeActionParam> param(paramAtName(edgeName()));
  if (param.isOpen()) param->edgeRefs(edges);
  return edges.isEmpty() ? ZnDbEdgeRef() : edges[0];
}

ErrorStatus ZnDbAssocDimActionBody::setEdge(const ZnDbEdgeRef& edge) {
  ZnDbObjectId id = paramAtName(edgeName());
  int index = 0;
  if (id.isNull())
    if (const ErrorStatus status = addParam(edgeName(), ZnDbAssocEdgeActionParam::desc(), id, index);
        status != Quorl::eOk)
      return status;
  ZnDbHolder<ZnDbAssocEdgeActionParam> param;
  if (const ErrorStatus status = param.openForWrite(id); status != Quorl::eOk) return status;
  return param->setEdgeRef(edge);
}

void ZnDbAssocDimActionBody::evaluateOverride() {
  evaluateDependencies();
  const ZnDbObjectId dimensionId = this->dimensionId();
  if (dimensionId.isErased()) {
    setStatus(kErasedAssocStatus);
    return;
  }
  const ZnDbEdgeRef measured = edge();
  std::unique_ptr<ZnGeCurve3d> curve;
  // A dimension whose edge is gone stays where it is.
  if (measured.entity().topId().isErased()) return;
  if (measured.evaluateCurve(curve) != Quorl::eOk || curve->type() != ZnGe::kCircularArc3d) {
    setStatus(kFailedToEvaluateAssocStatus);
    return;
  }
  auto& circle = static_cast<ZnGeCircArc3d&>(*curve);
  circle.transformBy(zndbToSheet(measured.entity()));
  ZnDbEvalPointer<ZnDbDimension> dimension(dimensionId, true, true);
  const ErrorStatus status = dimension.isOpen() ? follow(*dimension, circle) : dimension.status();
  if (status == Quorl::eOk) return;
  if (ZnDbAssocEvaluationCallback* callback = currentEvaluationCallback())
    callback->reportFailure(action(), status, dimensionId, nullptr, nullptr);
  setStatus(kFailedToEvaluateAssocStatus);
}

ErrorStatus ZnDbAssocDimActionBody::addMoreObjectsToDeepCloneOverride(ZnDbIdMapping& mapping,
                                                                      ZnArray<ZnDbObjectId>& more) const {
  ZnDbIdPair pair(dimensionId());
  ZnDbIdPair source(edge().entity().topId());
  // A copied dimension follows the copy of what it measures; without one it is a plain dimension.
  if (mapping.compute(pair) && mapping.compute(source)) more.append(parentAction());
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocDimActionBody::post(const ZnRxClass* bodyClass, const ZnDbEdgeRef& edge,
                                         ZnDbObjectId dimension, ZnDbObjectId& bodyId) {
  bodyId.setNull();
  if (dimension.isErased() || !dimension.isDerivedFrom(ZnDbDimension::desc())) return Quorl::eInvalidInput;
  ZnDbObjectId actionId;
  const ZnDbObjectId space = dimension.slot()->object->ownerId();
  ErrorStatus status = createActionAndActionBodyAndPostToDatabase(bodyClass, space, actionId, bodyId);
  if (status != Quorl::eOk) return status;
  {
    ZnDbHolder<ZnDbAssocDimActionBody> body;
    status = body.openForWrite(bodyId);
    if (status == Quorl::eOk) status = body->setEdge(edge);
    if (status == Quorl::eOk) status = body->setDimension(dimension);
    if (status == Quorl::eOk) status = body->setStatus(kChangedDirectlyAssocStatus);
  }
  if (status != Quorl::eOk) return status;
  ZnDbAssocManager::evaluateTopLevelNetwork(dimension.database());
  return Quorl::eOk;
}
