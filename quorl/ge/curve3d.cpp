#include "quorl/ge/curve3d.h"

#include <algorithm>

ZnGeInterval ZnGeCurve3d::interval() const {
  ZnGeInterval result;
  getInterval(result);
  return result;
}

double ZnGeCurve3d::paramOf(const ZnGePoint3d& point, const ZnGeTol& tol) const {
  const double param = nearestParam(point);
  const ZnGeInterval range = interval();
  if (!range.isBounded()) return param;
  // A generous tolerance of the caller must not bend the answer, so the snap is never wider than gTol.
  const double snap = std::min(tol.equalPoint(), ZnGeContext::gTol.equalPoint());
  const ZnGePoint3d nearest = evalPoint(param);
  if (nearest.distanceTo(evalPoint(range.lowerBound())) <= snap) return range.lowerBound();
  if (nearest.distanceTo(evalPoint(range.upperBound())) <= snap) return range.upperBound();
  return param;
}

ZnGePoint3d ZnGeCurve3d::closestPointTo(const ZnGePoint3d& point, const ZnGeTol&) const {
  return evalPoint(nearestParam(point));
}

void ZnGeCurve3d::getClosestPointTo(const ZnGePoint3d& point, ZnGePointOnCurve3d& result,
                                    const ZnGeTol&) const {
  result = ZnGePointOnCurve3d(*this, nearestParam(point));
}

double ZnGeCurve3d::distanceTo(const ZnGePoint3d& point) const {
  return closestPointTo(point).distanceTo(point);
}

bool ZnGeCurve3d::isOn(const ZnGePoint3d& point, const ZnGeTol& tol) const {
  return closestPointTo(point).isEqualTo(point, tol);
}

bool ZnGeCurve3d::isOn(const ZnGePoint3d& point, double& param, const ZnGeTol& tol) const {
  if (!isOn(point, tol)) return false;
  param = paramOf(point, tol);
  return true;
}

bool ZnGeCurve3d::isDegenerate(const ZnGeTol& tol) const {
  ZnGe::EntityId kind;
  return isDegenerate(kind, tol);
}

bool ZnGeCurve3d::isClosed(const ZnGeTol& tol) const {
  const ZnGeInterval range = interval();
  if (!range.isBounded() || isDegenerate(tol)) return false;
  return evalPoint(range.lowerBound()).isEqualTo(evalPoint(range.upperBound()), tol);
}
