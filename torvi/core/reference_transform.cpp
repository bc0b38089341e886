#include "torvi/core/reference_transform.h"

#include <cmath>

#include "torvi/core/tolerance.h"

namespace torvi {

namespace {

struct Parts {
  explicit Parts(const ZnGeMatrix3d& transform) { transform.getCoordSystem(origin, x, y, z); }
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
};

bool isExactly(const ZnGeVector3d& a, const ZnGeVector3d& b) {
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool isUnit(double length) { return std::fabs(length - 1.0) <= kAxisRounding; }

bool isRigid(const Parts& parts) {
  return isUnit(parts.x.length()) && isUnit(parts.z.length()) &&
         std::fabs(parts.x.dotProduct(parts.z)) <= kAxisRounding &&
         (parts.z.crossProduct(parts.x) - parts.y).length() <= kAxisRounding;
}

} // namespace

bool areExactlyEqual(const ZnGeMatrix3d& a, const ZnGeMatrix3d& b) {
  const Parts first(a), second(b);
  return isExactly(first.origin.asVector(), second.origin.asVector()) && isExactly(first.x, second.x) &&
         isExactly(first.y, second.y) && isExactly(first.z, second.z);
}

double scaleOf(const ZnGeMatrix3d& transform) {
  const double scale = transform.scale();
  return isUnit(scale) ? 1.0 : scale;
}

ZnGeMatrix3d rigidPartOf(const ZnGeMatrix3d& transform) {
  const Parts parts(transform);
  if (isRigid(parts)) return transform;
  const ZnGeVector3d z = parts.z / parts.z.length();
  const ZnGeVector3d across = parts.x - z * parts.x.dotProduct(z), x = across / across.length();
  return {parts.origin, x, z.crossProduct(x), z};
}

} // namespace torvi
