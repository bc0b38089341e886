#include "torvi/pattern/dependency_extension.h"

#include "torvi/core/action_body.h"
#include "torvi/core/navigation.h"
#include "torvi/core/object_pointer.h"
#include "torvi/core/tolerance.h"
#include "torvi/host/class_registration.h"
#include "torvi/pattern/object_wrapper.h"

using Quorl::ErrorStatus;

ZnRxClass* ZnDbCenterMarkPatternAssocDependencyPE::gpDesc = nullptr;

void ZnDbCenterMarkPatternAssocDependencyPE::rxInit() {
  torviRegisterPlainClass(gpDesc, className(), ZnDbAssocDependencyPE::className(),
                          []() -> ZnRxObject* { return new ZnDbCenterMarkPatternAssocDependencyPE; });
}

namespace {

// Whether the action that owns the dependency is led from that object at all.
bool isLed(const ZnDbAssocDependency* dependency, const ZnDbObject* object) {
  const ZnDbAssocAction* action = dependency ? dependency->owningAction() : nullptr;
  ZnDbHolder<ZnDbAssocActionBody> body(action ? action->actionBody() : ZnDbObjectId());
  if (!body.isOpen()) return false;
  if (body->isKindOf(ZnDbTorviActionBody::desc())) return true;
  return !ZnDbLine::cast(object) && (body->isKindOf(ZnDbAssocRadialDimActionBody::desc()) ||
                                     body->isKindOf(ZnDbAssocDiametricDimActionBody::desc()));
}

// Null for what has no shape.
std::unique_ptr<ZnGeCurve3d> shapeOf(const ZnDbCurve* curve) {
  ZnGeCurve3d* shape = nullptr;
  if (curve) curve->getZnGeCurve(shape, ZnGeContext::gTol);
  return std::unique_ptr<ZnGeCurve3d>(shape);
}

// Whether both ends of the piece lie on the entity's curve.
bool covers(ZnDbObjectId id, const ZnGeCurve3d& piece) {
  ZnDbHolder<ZnDbCurve> entity(id);
  const std::unique_ptr<ZnGeCurve3d> whole = shapeOf(entity.object());
  if (!whole) return false;
  ZnGeInterval ends;
  piece.getInterval(ends);
  return whole->isOn(piece.evalPoint(ends.lowerBound()), coveringTolerance()) &&
         whole->isOn(piece.evalPoint(ends.upperBound()), coveringTolerance());
}

} // namespace

ErrorStatus ZnDbCenterMarkPatternAssocDependencyPE::redirectDependency(
    const ZnDbObject* object, const ZnDbCompoundObjectId& compoundId, const ZnDbAssocDependency* dependency,
    ZnDbCompoundObjectId& newCompoundId) const {
  newCompoundId = compoundId;
  ZnDbObjectId whole;
  if (!isLed(dependency, object) || !findCoveringCenterLine(ZnDbCurve::cast(object), whole))
    return Quorl::eOk;
  ZnArray<ZnDbObjectId> path;
  if (compoundId.getFullPath(path) != Quorl::eOk) return Quorl::eOk;
  path.last() = whole;
  newCompoundId.setFullPath(path);
  return Quorl::eOk;
}

bool ZnDbCenterMarkPatternAssocDependencyPE::findCoveringCenterLine(const ZnDbCurve* curve,
                                                                    ZnDbObjectId& id) {
  id.setNull();
  const ZnDbTorviObjectPointer<ZnDbCenterMarkPatternObjectWrapper> pattern(
      torvi::centerObjectWithCurve(curve).reference);
  const std::unique_ptr<ZnGeCurve3d> piece = shapeOf(curve);
  ZnArray<ZnString> keys;
  if (pattern.openStatus() != Quorl::eOk || pattern->getCenterLineDependencyKeys(keys) != Quorl::eOk ||
      !piece)
    return false;
  const bool isLine = ZnDbLine::cast(curve) != nullptr;
  for (const ZnString& key : keys) {
    const ZnDbObjectId whole = pattern->getOutputEdge(key);
    if (whole.isDerivedFrom(ZnDbLine::desc()) != isLine || !covers(whole, *piece)) continue;
    id = whole;
    return true;
  }
  return false;
}
