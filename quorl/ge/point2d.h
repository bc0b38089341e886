// A position in a plane.
#pragma once

#include "quorl/ge/vector2d.h"

class ZnGePoint2d {
public:
  double x = 0.0;
  double y = 0.0;

  static const ZnGePoint2d kOrigin;

  constexpr ZnGePoint2d() = default;
  constexpr ZnGePoint2d(double xValue, double yValue)
      : x(xValue)
      , y(yValue) {}

  // Arithmetic
  constexpr ZnGePoint2d operator+(const ZnGeVector2d& v) const { return {x + v.x, y + v.y}; }
  constexpr ZnGePoint2d operator-(const ZnGeVector2d& v) const { return {x - v.x, y - v.y}; }
  constexpr ZnGeVector2d operator-(const ZnGePoint2d& p) const { return {x - p.x, y - p.y}; }
  constexpr ZnGePoint2d& operator+=(const ZnGeVector2d& v) { return *this = *this + v; }
  constexpr ZnGePoint2d& operator-=(const ZnGeVector2d& v) { return *this = *this - v; }
  // The vector from the origin to this point.
  constexpr ZnGeVector2d asVector() const { return {x, y}; }

  double distanceTo(const ZnGePoint2d& p) const { return (*this - p).length(); }

  ZnGePoint2d& transformBy(const ZnGeMatrix2d& matrix);

  bool isEqualTo(const ZnGePoint2d& p, const ZnGeTol& tol = ZnGeContext::gTol) const {
    return distanceTo(p) <= tol.equalPoint();
  }
  bool operator==(const ZnGePoint2d& p) const { return isEqualTo(p); }
  bool operator!=(const ZnGePoint2d& p) const { return !isEqualTo(p); }
};

inline constexpr ZnGePoint2d ZnGePoint2d::kOrigin{0.0, 0.0};
