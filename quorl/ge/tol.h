// The pair of tolerances that every comparison of the library takes.
#pragma once

#include "quorl/ge/tolerance.h"

class ZnGeTol {
public:
  // Both limits are inclusive: a distance of exactly equalPoint() still counts as equal.
  constexpr ZnGeTol() = default;
  constexpr ZnGeTol(double equalPoint, double equalVector)
      : equalPoint_(equalPoint)
      , equalVector_(equalVector) {}

  // Distance in drawing units up to which two points are one.
  constexpr double equalPoint() const { return equalPoint_; }
  // Length up to which a vector is zero, difference up to which two vectors are equal, and sine (or cosine)
  // up to which two directions are parallel (or perpendicular).
  constexpr double equalVector() const { return equalVector_; }

  constexpr void setEqualPoint(double value) { equalPoint_ = value; }
  constexpr void setEqualVector(double value) { equalVector_ = value; }

private:
  double equalPoint_ = ZnGe::kDefaultEqualPoint;
  double equalVector_ = ZnGe::kDefaultEqualVector;
};
