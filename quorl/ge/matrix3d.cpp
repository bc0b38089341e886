#include "quorl/ge/matrix3d.h"

#include <algorithm>

#include "quorl/base/assert.h"
#include "quorl/ge/angles.h"
#include "quorl/ge/planar_ent.h"

namespace {

// The map with the axes of `linear` that leaves the center where it is.
ZnGeMatrix3d aboutCenter(const ZnGeVector3d& xAxis, const ZnGeVector3d& yAxis, const ZnGeVector3d& zAxis,
                         const ZnGePoint3d& center) {
  const ZnGeMatrix3d linear(ZnGePoint3d::kOrigin, xAxis, yAxis, zAxis);
  return {center - linear * center.asVector(), xAxis, yAxis, zAxis};
}

double componentOf(const ZnGeVector3d& v, int row) { return row == 0 ? v.x : (row == 1 ? v.y : v.z); }

void setComponentOf(ZnGeVector3d& v, int row, double value) {
  (row == 0 ? v.x : (row == 1 ? v.y : v.z)) = value;
}

} // namespace

double ZnGeMatrix3d::operator()(int row, int column) const {
  QUORL_ASSERT(row >= 0 && row < 4 && column >= 0 && column < 4);
  if (row == 3) return column == 3 ? 1.0 : 0.0;
  const ZnGeVector3d columns[] = {x_, y_, z_, origin_.asVector()};
  return componentOf(columns[column], row);
}

void ZnGeMatrix3d::setElement(int row, int column, double value) {
  QUORL_ASSERT(row >= 0 && row < 3 && column >= 0 && column < 4);
  ZnGeVector3d columns[] = {x_, y_, z_, origin_.asVector()};
  setComponentOf(columns[column], row, value);
  *this = {ZnGePoint3d::kOrigin + columns[3], columns[0], columns[1], columns[2]};
}

ZnGeMatrix3d& ZnGeMatrix3d::setToTranslation(const ZnGeVector3d& v) {
  *this = ZnGeMatrix3d();
  return setTranslation(v);
}

// Rotation of each axis a about the unit axis k by Rodrigues' formula:
// a cos + (k x a) sin + k (k.a) (1 - cos).
ZnGeMatrix3d& ZnGeMatrix3d::setToRotation(double angle, const ZnGeVector3d& axis, const ZnGePoint3d& center) {
  const double size = axis.length();
  if (!(size > 0.0)) return setToIdentity();
  const ZnGeVector3d k = axis / size;
  const auto [s, c] = ZnGe::sinCos(angle);
  const auto turned = [&k, s = s, c = c](const ZnGeVector3d& a) {
    return a * c + k.crossProduct(a) * s + k * (k.dotProduct(a) * (1.0 - c));
  };
  return *this = aboutCenter(turned(ZnGeVector3d::kXAxis), turned(ZnGeVector3d::kYAxis),
                             turned(ZnGeVector3d::kZAxis), center);
}

ZnGeMatrix3d& ZnGeMatrix3d::setCoordSystem(const ZnGePoint3d& origin, const ZnGeVector3d& xAxis,
                                           const ZnGeVector3d& yAxis, const ZnGeVector3d& zAxis) {
  return *this = {origin, xAxis, yAxis, zAxis};
}

ZnGeMatrix3d ZnGeMatrix3d::translation(const ZnGeVector3d& v) { return ZnGeMatrix3d().setToTranslation(v); }

ZnGeMatrix3d ZnGeMatrix3d::rotation(double angle, const ZnGeVector3d& axis, const ZnGePoint3d& center) {
  return ZnGeMatrix3d().setToRotation(angle, axis, center);
}

ZnGeMatrix3d ZnGeMatrix3d::scaling(double factor, const ZnGePoint3d& center) {
  return scaling(ZnGeVector3d(factor, factor, factor), center);
}

ZnGeMatrix3d ZnGeMatrix3d::scaling(const ZnGeVector3d& factors, const ZnGePoint3d& center) {
  return aboutCenter({factors.x, 0.0, 0.0}, {0.0, factors.y, 0.0}, {0.0, 0.0, factors.z}, center);
}

ZnGeMatrix3d ZnGeMatrix3d::mirroring(const ZnGePlanarEnt& plane) {
  const ZnGeVector3d n = plane.normal();
  return aboutCenter(ZnGeVector3d::kXAxis - 2.0 * n.x * n, ZnGeVector3d::kYAxis - 2.0 * n.y * n,
                     ZnGeVector3d::kZAxis - 2.0 * n.z * n, plane.pointOnPlane());
}

ZnGeMatrix3d ZnGeMatrix3d::mirroring(const ZnGePoint3d& center) { return scaling(-1.0, center); }

ZnGeMatrix3d ZnGeMatrix3d::planeToWorld(const ZnGeVector3d& normal) {
  const double size = normal.length();
  const ZnGeVector3d z = size > 0.0 ? normal / size : ZnGeVector3d::kZAxis;
  const ZnGeVector3d x = z.perpVector();
  return {ZnGePoint3d::kOrigin, x, z.crossProduct(x), z};
}

ZnGeMatrix3d ZnGeMatrix3d::worldToPlane(const ZnGeVector3d& normal) { return planeToWorld(normal).inverse(); }

void ZnGeMatrix3d::getCoordSystem(ZnGePoint3d& origin, ZnGeVector3d& xAxis, ZnGeVector3d& yAxis,
                                  ZnGeVector3d& zAxis) const {
  origin = origin_;
  xAxis = x_;
  yAxis = y_;
  zAxis = z_;
}

ZnGeMatrix3d& ZnGeMatrix3d::setTranslation(const ZnGeVector3d& v) {
  origin_ = ZnGePoint3d::kOrigin + v;
  return *this;
}

double ZnGeMatrix3d::scale() const {
  const double longest = std::sqrt(std::max({x_.lengthSquared(), y_.lengthSquared(), z_.lengthSquared()}));
  return std::fabs(longest - 1.0) <= ZnGe::kUnitScaleRounding ? 1.0 : longest;
}

// Compared with the volume of a box of the same axis lengths, so that small drawings are not singular.
bool ZnGeMatrix3d::isSingular() const {
  const double boxVolume = x_.length() * y_.length() * z_.length();
  return !(std::fabs(det()) > ZnGe::kSingularRatio * boxVolume);
}

bool ZnGeMatrix3d::isUniformlyScaled(const ZnGeTol& tol) const {
  const double largest = scale();
  if (!(largest > 0.0)) return false;
  const double limit = tol.equalVector();
  const ZnGeVector3d x = x_ / largest, y = y_ / largest, z = z_ / largest;
  const auto isUnit = [limit](const ZnGeVector3d& v) { return std::fabs(v.length() - 1.0) <= limit; };
  return isUnit(x) && isUnit(y) && isUnit(z) && std::fabs(x.dotProduct(y)) <= limit &&
         std::fabs(y.dotProduct(z)) <= limit && std::fabs(z.dotProduct(x)) <= limit;
}

bool ZnGeMatrix3d::isEqualTo(const ZnGeMatrix3d& m, const ZnGeTol& tol) const {
  return origin_.isEqualTo(m.origin_, tol) && x_.isEqualTo(m.x_, tol) && y_.isEqualTo(m.y_, tol) &&
         z_.isEqualTo(m.z_, tol);
}

// The rows of the inverse are the cross products of the axes over the determinant (Cramer's rule).
ZnGeMatrix3d ZnGeMatrix3d::inverse() const {
  if (isSingular()) return ZnGeMatrix3d();
  const double d = det();
  const ZnGeVector3d r0 = y_.crossProduct(z_) / d;
  const ZnGeVector3d r1 = z_.crossProduct(x_) / d;
  const ZnGeVector3d r2 = x_.crossProduct(y_) / d;
  const ZnGeMatrix3d linear(ZnGePoint3d::kOrigin, {r0.x, r1.x, r2.x}, {r0.y, r1.y, r2.y}, {r0.z, r1.z, r2.z});
  return {ZnGePoint3d::kOrigin - linear * origin_.asVector(), linear.x_, linear.y_, linear.z_};
}
