// A direction with length in space.
#pragma once

#include <cmath>

#include "quorl/ge/context.h"
#include "quorl/ge/vector2d.h"

class ZnGeMatrix3d;
class ZnGePlanarEnt;

class ZnGeVector3d {
public:
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  static const ZnGeVector3d kIdentity; // the zero vector, neutral in addition
  static const ZnGeVector3d kXAxis;
  static const ZnGeVector3d kYAxis;
  static const ZnGeVector3d kZAxis;

  constexpr ZnGeVector3d() = default;
  constexpr ZnGeVector3d(double xValue, double yValue, double zValue)
      : x(xValue)
      , y(yValue)
      , z(zValue) {}
  // The vector of a plane with these plane coordinates.
  ZnGeVector3d(const ZnGePlanarEnt& plane, const ZnGeVector2d& v) { set(plane, v); }

  // Arithmetic
  constexpr ZnGeVector3d operator+(const ZnGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  constexpr ZnGeVector3d operator-(const ZnGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  constexpr ZnGeVector3d operator-() const { return {-x, -y, -z}; }
  constexpr ZnGeVector3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
  constexpr ZnGeVector3d operator/(double divisor) const { return {x / divisor, y / divisor, z / divisor}; }
  constexpr ZnGeVector3d& operator+=(const ZnGeVector3d& v) { return *this = *this + v; }
  constexpr ZnGeVector3d& operator-=(const ZnGeVector3d& v) { return *this = *this - v; }
  constexpr ZnGeVector3d& operator*=(double factor) { return *this = *this * factor; }
  constexpr ZnGeVector3d& operator/=(double divisor) { return *this = *this / divisor; }

  // Measures
  double length() const { return std::sqrt(lengthSquared()); }
  constexpr double lengthSquared() const { return x * x + y * y + z * z; }
  constexpr double dotProduct(const ZnGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
  constexpr ZnGeVector3d crossProduct(const ZnGeVector3d& v) const {
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
  }
  // Unsigned, in [0, pi]; 0 when either vector is zero.
  double angleTo(const ZnGeVector3d& v) const;
  // Counterclockwise as seen from the tip of the reference, in [0, 2 pi).
  double angleTo(const ZnGeVector3d& v, const ZnGeVector3d& reference) const;

  // Change in place
  ZnGeVector3d& set(double xValue, double yValue, double zValue);
  ZnGeVector3d& set(const ZnGePlanarEnt& plane, const ZnGeVector2d& v);
  // A vector no longer than equalVector is left as it is.
  ZnGeVector3d& normalize(const ZnGeTol& tol = ZnGeContext::gTol);
  ZnGeVector3d normal(const ZnGeTol& tol = ZnGeContext::gTol) const {
    return ZnGeVector3d(*this).normalize(tol);
  }
  constexpr ZnGeVector3d& negate() { return *this = -*this; }
  // Counterclockwise about the axis; a zero axis leaves the vector as it is.
  ZnGeVector3d& rotateBy(double angle, const ZnGeVector3d& axis);
  // Translation does not act on vectors.
  ZnGeVector3d& transformBy(const ZnGeMatrix3d& matrix);
  ZnGeVector3d& setToProduct(const ZnGeMatrix3d& matrix, const ZnGeVector3d& v);

  // A unit vector perpendicular to this one: the x axis of the entity plane with this normal, so y cross this
  // when this is close to the z axis and z cross this otherwise. The x axis for the zero vector.
  ZnGeVector3d perpVector() const;
  // Coordinates along the axes of a plane; the part along its normal is dropped.
  ZnGeVector2d convert2d(const ZnGePlanarEnt& plane) const;

  // Relations; a vector no longer than equalVector has no direction and is parallel, codirectional and
  // perpendicular to nothing.
  bool isEqualTo(const ZnGeVector3d& v, const ZnGeTol& tol = ZnGeContext::gTol) const {
    return (*this - v).length() <= tol.equalVector();
  }
  bool isZeroLength(const ZnGeTol& tol = ZnGeContext::gTol) const { return length() <= tol.equalVector(); }
  bool isUnitLength(const ZnGeTol& tol = ZnGeContext::gTol) const {
    return std::fabs(length() - 1.0) <= tol.equalVector();
  }
  bool isParallelTo(const ZnGeVector3d& v, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool isCodirectionalTo(const ZnGeVector3d& v, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool isPerpendicularTo(const ZnGeVector3d& v, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool operator==(const ZnGeVector3d& v) const { return isEqualTo(v); }
  bool operator!=(const ZnGeVector3d& v) const { return !isEqualTo(v); }
};

constexpr ZnGeVector3d operator*(double factor, const ZnGeVector3d& v) { return v * factor; }

inline constexpr ZnGeVector3d ZnGeVector3d::kIdentity{0.0, 0.0, 0.0};
inline constexpr ZnGeVector3d ZnGeVector3d::kXAxis{1.0, 0.0, 0.0};
inline constexpr ZnGeVector3d ZnGeVector3d::kYAxis{0.0, 1.0, 0.0};
inline constexpr ZnGeVector3d ZnGeVector3d::kZAxis{0.0, 0.0, 1.0};
