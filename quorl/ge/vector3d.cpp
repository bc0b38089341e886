#include "quorl/ge/vector3d.h"

#include "quorl/ge/angles.h"
#include "quorl/ge/matrix3d.h"
#include "quorl/ge/planar_ent.h"

double ZnGeVector3d::angleTo(const ZnGeVector3d& v) const {
  // The arc tangent of both products stays accurate where the arc cosine loses half of the digits.
  return std::atan2(crossProduct(v).length(), dotProduct(v));
}

double ZnGeVector3d::angleTo(const ZnGeVector3d& v, const ZnGeVector3d& reference) const {
  const double unsignedAngle = angleTo(v);
  const bool isClockwise = crossProduct(v).dotProduct(reference) < 0.0;
  return ZnGe::normalizeAngle(isClockwise ? ZnGe::kTwoPi - unsignedAngle : unsignedAngle);
}

ZnGeVector3d& ZnGeVector3d::set(double xValue, double yValue, double zValue) {
  return *this = {xValue, yValue, zValue};
}

ZnGeVector3d& ZnGeVector3d::set(const ZnGePlanarEnt& plane, const ZnGeVector2d& v) {
  ZnGePoint3d origin;
  ZnGeVector3d uAxis, vAxis;
  plane.getCoordSystem(origin, uAxis, vAxis);
  return *this = uAxis * v.x + vAxis * v.y;
}

ZnGeVector3d& ZnGeVector3d::normalize(const ZnGeTol& tol) {
  const double size = length();
  if (size > tol.equalVector()) *this /= size;
  return *this;
}

ZnGeVector3d& ZnGeVector3d::rotateBy(double angle, const ZnGeVector3d& axis) {
  return *this = ZnGeMatrix3d::rotation(angle, axis) * *this;
}

ZnGeVector3d& ZnGeVector3d::transformBy(const ZnGeMatrix3d& matrix) { return *this = matrix * *this; }

ZnGeVector3d& ZnGeVector3d::setToProduct(const ZnGeMatrix3d& matrix, const ZnGeVector3d& v) {
  return *this = matrix * v;
}

ZnGeVector3d ZnGeVector3d::perpVector() const {
  // What most normals are: the same result without roots.
  if (x == 0.0 && y == 0.0 && z != 0.0) return z > 0.0 ? kXAxis : -kXAxis;
  const double size = length();
  if (!(size > 0.0)) return kXAxis;
  const double limit = ZnGe::kArbitraryAxisLimit * size;
  const bool isNearZAxis = std::fabs(x) < limit && std::fabs(y) < limit;
  const ZnGeVector3d perpendicular = (isNearZAxis ? kYAxis : kZAxis).crossProduct(*this / size);
  return perpendicular / perpendicular.length();
}

ZnGeVector2d ZnGeVector3d::convert2d(const ZnGePlanarEnt& plane) const {
  ZnGePoint3d origin;
  ZnGeVector3d uAxis, vAxis;
  plane.getCoordSystem(origin, uAxis, vAxis);
  return {dotProduct(uAxis), dotProduct(vAxis)};
}

bool ZnGeVector3d::isParallelTo(const ZnGeVector3d& v, const ZnGeTol& tol) const {
  if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
  return crossProduct(v).length() <= tol.equalVector() * length() * v.length();
}

bool ZnGeVector3d::isCodirectionalTo(const ZnGeVector3d& v, const ZnGeTol& tol) const {
  return dotProduct(v) > 0.0 && isParallelTo(v, tol);
}

bool ZnGeVector3d::isPerpendicularTo(const ZnGeVector3d& v, const ZnGeTol& tol) const {
  if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
  return std::fabs(dotProduct(v)) <= tol.equalVector() * length() * v.length();
}
