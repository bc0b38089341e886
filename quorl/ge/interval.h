// A range of curve parameters, possibly without limit on either side.
#pragma once

#include <limits>

#include "quorl/ge/tolerance.h"

class ZnGeInterval {
public:
  // Unbounded on both sides; the tolerance is used by contains().
  explicit constexpr ZnGeInterval(double tol = ZnGe::kDefaultEqualPoint)
      : tol_(tol) {}
  // Requires lower <= upper; an infinite bound means no limit on that side.
  constexpr ZnGeInterval(double lower, double upper, double tol = ZnGe::kDefaultEqualPoint)
      : lower_(lower)
      , upper_(upper)
      , tol_(tol) {}

  // Minus or plus infinity where there is no limit.
  constexpr double lowerBound() const { return lower_; }
  constexpr double upperBound() const { return upper_; }
  constexpr double tolerance() const { return tol_; }
  constexpr bool isBounded() const { return lower_ > -kNoLimit && upper_ < kNoLimit; }
  constexpr double length() const { return upper_ - lower_; }
  constexpr double middle() const { return lower_ + 0.5 * (upper_ - lower_); }

  // Values outside by no more than the interval's tolerance are contained.
  constexpr bool contains(double param) const { return param >= lower_ - tol_ && param <= upper_ + tol_; }
  // The nearest value within the bounds.
  constexpr double clamp(double param) const {
    return param < lower_ ? lower_ : (param > upper_ ? upper_ : param);
  }

private:
  static constexpr double kNoLimit = std::numeric_limits<double>::infinity();
  double lower_ = -kNoLimit;
  double upper_ = kNoLimit;
  double tol_ = ZnGe::kDefaultEqualPoint;
};
