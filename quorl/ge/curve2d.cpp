#include "quorl/ge/curve2d.h"

#include <algorithm>

double ZnGeCurve2d::paramOf(const ZnGePoint2d& point, const ZnGeTol& tol) const {
  const double param = nearestParam(point);
  ZnGeInterval range;
  getInterval(range);
  if (!range.isBounded()) return param;
  // A generous tolerance of the caller must not bend the answer, so the snap is never wider than gTol.
  const double snap = std::min(tol.equalPoint(), ZnGeContext::gTol.equalPoint());
  const ZnGePoint2d nearest = evalPoint(param);
  if (nearest.distanceTo(evalPoint(range.lowerBound())) <= snap) return range.lowerBound();
  if (nearest.distanceTo(evalPoint(range.upperBound())) <= snap) return range.upperBound();
  return param;
}

ZnGePoint2d ZnGeCurve2d::closestPointTo(const ZnGePoint2d& point, const ZnGeTol&) const {
  return evalPoint(nearestParam(point));
}

bool ZnGeCurve2d::isOn(const ZnGePoint2d& point, const ZnGeTol& tol) const {
  return closestPointTo(point).isEqualTo(point, tol);
}

bool ZnGeCurve2d::isOn(const ZnGePoint2d& point, double& param, const ZnGeTol& tol) const {
  if (!isOn(point, tol)) return false;
  param = paramOf(point, tol);
  return true;
}

bool ZnGeCurve2d::isDegenerate(const ZnGeTol& tol) const {
  ZnGe::EntityId kind;
  return isDegenerate(kind, tol);
}
