// Arc lengths by quadrature.
#pragma once

#include <boost/math/quadrature/gauss.hpp>

#include <cmath>

#include "quorl/ge/tolerance.h"

namespace ZnGe {

// Integral of a smooth function by Gauss's rule with five points (exact for polynomials of degree 9).
template<class Speed> double gaussStep(const Speed& speed, double low, double high) {
  return boost::math::quadrature::gauss<double, 5>::integrate(speed, low, high);
}

// Boost's own adaptive rule compares an error that does not shrink with the range against a bound that
// does, so that it never ends at this precision. Halves the range until the halves agree with the whole. The
// depth is bounded: at a cusp the speed has a corner, where halving converges slowly and the rest no longer
// matters.
template<class Speed>
double arcLength(const Speed& speed, double low, double high, double whole, double scale, int depth) {
  const double middle = 0.5 * (low + high);
  const double first = gaussStep(speed, low, middle), second = gaussStep(speed, middle, high);
  const bool agrees = std::fabs(first + second - whole) <= kLengthRatio * scale;
  if (agrees || depth <= 0) return first + second;
  return arcLength(speed, low, middle, first, scale, depth - 1) +
         arcLength(speed, middle, high, second, scale, depth - 1);
}

template<class Speed> double arcLength(const Speed& speed, double low, double high) {
  constexpr int kMaxDepth = 24;
  const double whole = gaussStep(speed, low, high);
  return arcLength(speed, low, high, whole, std::fabs(whole), kMaxDepth);
}

} // namespace ZnGe
