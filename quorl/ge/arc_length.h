// Private to the library: arc lengths by quadrature.
#pragma once

#include <cmath>

#include "quorl/ge/tolerance.h"

namespace ZnGe {

// Integral of a smooth function by Gauss's rule with five points (exact for polynomials of degree 9).
template<class Speed> double gaussStep(const Speed& speed, double low, double high) {
  // Abscissae sqrt(5 -/+ 2 sqrt(10/7)) / 3 and their weights (322 +/- 13 sqrt 70) / 900, the middle 128/225.
  const double inner = std::sqrt(5.0 - 2.0 * std::sqrt(10.0 / 7.0)) / 3.0;
  const double outer = std::sqrt(5.0 + 2.0 * std::sqrt(10.0 / 7.0)) / 3.0;
  const double innerWeight = (322.0 + 13.0 * std::sqrt(70.0)) / 900.0;
  const double outerWeight = (322.0 - 13.0 * std::sqrt(70.0)) / 900.0;
  const double middle = 0.5 * (low + high), half = 0.5 * (high - low);
  return half * (128.0 / 225.0 * speed(middle) +
                 innerWeight * (speed(middle - half * inner) + speed(middle + half * inner)) +
                 outerWeight * (speed(middle - half * outer) + speed(middle + half * outer)));
}

// Halves the range until the halves agree with the whole. The depth is bounded: at a cusp the speed has a
// corner, where halving converges slowly and the rest no longer matters.
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
