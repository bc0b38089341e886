// What setters and readers ask of geometry before they take it.
#pragma once

#include <cmath>

#include "quorl/base/error_status.h"
#include "quorl/ge/matrix3d.h"

namespace Quorl {

inline bool isFinite(double value) { return std::isfinite(value); }
inline bool isFinite(const ZnGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); }
inline bool isFinite(const ZnGePoint3d& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}
inline bool isFinite(const ZnGeVector3d& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
inline bool isFinite(const ZnGeMatrix3d& m) {
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
  m.getCoordSystem(origin, x, y, z);
  return isFinite(origin) && isFinite(x) && isFinite(y) && isFinite(z);
}

// A stored normal.
inline bool isUnit(const ZnGeVector3d& v) { return isFinite(v) && v.isUnitLength(); }

// Sets target to the unit vector. eInvalidInput for what is not finite, eDegenerateGeometry for zero.
inline ErrorStatus takeNormal(const ZnGeVector3d& normal, ZnGeVector3d& target) {
  if (!isFinite(normal)) return eInvalidInput;
  if (normal.isZeroLength()) return eDegenerateGeometry;
  target = normal.normal();
  return eOk;
}

} // namespace Quorl
