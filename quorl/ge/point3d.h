// A position in space, in drawing units.
#pragma once

#include "quorl/ge/point2d.h"
#include "quorl/ge/vector3d.h"

class ZnGePoint3d {
public:
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  static const ZnGePoint3d kOrigin;

  constexpr ZnGePoint3d() = default;
  constexpr ZnGePoint3d(double xValue, double yValue, double zValue)
      : x(xValue)
      , y(yValue)
      , z(zValue) {}
  // The point of a plane at these plane coordinates.
  ZnGePoint3d(const ZnGePlanarEnt& plane, const ZnGePoint2d& p) { set(plane, p); }

  // Arithmetic
  constexpr ZnGePoint3d operator+(const ZnGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr ZnGePoint3d operator-(const ZnGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  constexpr ZnGeVector3d operator-(const ZnGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
  constexpr ZnGePoint3d& operator+=(const ZnGeVector3d& v) { return *this = *this + v; }
  constexpr ZnGePoint3d& operator-=(const ZnGeVector3d& v) { return *this = *this - v; }
  // The vector from the origin to this point.
  constexpr ZnGeVector3d asVector() const { return {x, y, z}; }

  double distanceTo(const ZnGePoint3d& p) const { return (*this - p).length(); }

  // Change in place
  ZnGePoint3d& set(double xValue, double yValue, double zValue);
  ZnGePoint3d& set(const ZnGePlanarEnt& plane, const ZnGePoint2d& p);
  ZnGePoint3d& setToProduct(const ZnGeMatrix3d& matrix, const ZnGePoint3d& p);
  ZnGePoint3d& transformBy(const ZnGeMatrix3d& matrix);

  // Coordinates in a plane of the point's projection on it.
  ZnGePoint2d convert2d(const ZnGePlanarEnt& plane) const;

  bool isEqualTo(const ZnGePoint3d& p, const ZnGeTol& tol = ZnGeContext::gTol) const {
    return distanceTo(p) <= tol.equalPoint();
  }
  bool operator==(const ZnGePoint3d& p) const { return isEqualTo(p); }
  bool operator!=(const ZnGePoint3d& p) const { return !isEqualTo(p); }
};

inline constexpr ZnGePoint3d ZnGePoint3d::kOrigin{0.0, 0.0, 0.0};
