// A direction with length in a plane.
#pragma once

#include <cmath>

#include "quorl/ge/context.h"

class ZnGeMatrix2d;

class ZnGeVector2d {
public:
  double x = 0.0;
  double y = 0.0;

  static const ZnGeVector2d kXAxis;
  static const ZnGeVector2d kYAxis;

  constexpr ZnGeVector2d() = default;
  constexpr ZnGeVector2d(double xValue, double yValue)
      : x(xValue)
      , y(yValue) {}

  // Arithmetic
  constexpr ZnGeVector2d operator+(const ZnGeVector2d& v) const { return {x + v.x, y + v.y}; }
  constexpr ZnGeVector2d operator-(const ZnGeVector2d& v) const { return {x - v.x, y - v.y}; }
  constexpr ZnGeVector2d operator-() const { return {-x, -y}; }
  constexpr ZnGeVector2d operator*(double factor) const { return {x * factor, y * factor}; }
  constexpr ZnGeVector2d operator/(double divisor) const { return {x / divisor, y / divisor}; }
  constexpr ZnGeVector2d& operator+=(const ZnGeVector2d& v) { return *this = *this + v; }
  constexpr ZnGeVector2d& operator-=(const ZnGeVector2d& v) { return *this = *this - v; }
  constexpr ZnGeVector2d& operator*=(double factor) { return *this = *this * factor; }

  // Measures
  double length() const { return std::hypot(x, y); }
  constexpr double lengthSquared() const { return x * x + y * y; }
  constexpr double dotProduct(const ZnGeVector2d& v) const { return x * v.x + y * v.y; }
  // Positive when v lies counterclockwise of this vector.
  constexpr double crossProduct(const ZnGeVector2d& v) const { return x * v.y - y * v.x; }
  // From the x axis, counterclockwise, in [0, 2 pi); 0 for the zero vector.
  double angle() const;
  // The same in (-pi, pi].
  double signedAngle() const { return std::atan2(y, x); }
  // Unsigned, in [0, pi]; 0 when either vector is zero.
  double angleTo(const ZnGeVector2d& v) const;
  // By how much this vector turns counterclockwise to point along v, in [-pi, pi].
  double signedAngleTo(const ZnGeVector2d& v) const { return std::atan2(crossProduct(v), dotProduct(v)); }

  // Change in place
  // A vector no longer than equalVector is left as it is.
  ZnGeVector2d& normalize(const ZnGeTol& tol = ZnGeContext::gTol);
  ZnGeVector2d normal(const ZnGeTol& tol = ZnGeContext::gTol) const {
    return ZnGeVector2d(*this).normalize(tol);
  }
  ZnGeVector2d& negate() { return *this = -*this; }
  ZnGeVector2d& rotateBy(double angle);
  ZnGeVector2d& transformBy(const ZnGeMatrix2d& matrix);
  // Turned by a quarter counterclockwise, same length.
  constexpr ZnGeVector2d perpVector() const { return {-y, x}; }

  // Relations; a vector no longer than equalVector has no direction and is parallel and codirectional to
  // nothing.
  bool isEqualTo(const ZnGeVector2d& v, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool isZeroLength(const ZnGeTol& tol = ZnGeContext::gTol) const { return length() <= tol.equalVector(); }
  bool isParallelTo(const ZnGeVector2d& v, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool isCodirectionalTo(const ZnGeVector2d& v, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool operator==(const ZnGeVector2d& v) const { return isEqualTo(v); }
  bool operator!=(const ZnGeVector2d& v) const { return !isEqualTo(v); }
};

constexpr ZnGeVector2d operator*(double factor, const ZnGeVector2d& v) { return v * factor; }

inline constexpr ZnGeVector2d ZnGeVector2d::kXAxis{1.0, 0.0};
inline constexpr ZnGeVector2d ZnGeVector2d::kYAxis{0.0, 1.0};
