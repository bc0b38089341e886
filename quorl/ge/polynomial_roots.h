// Private to the library: all real roots of a small polynomial in the range -1 to 1.
#pragma once

#include <array>

namespace ZnGe {

// Roots in ascending order; only the first `count` values are set.
struct QuarticRoots {
  std::array<double, 4> values{};
  int count = 0;
};

// Roots of c[0] + c[1] x + ... + c[4] x^4 in [-1, 1] where the polynomial changes its sign; one where it only
// touches zero may be left out. Leading coefficients may be zero.
QuarticRoots quarticRootsInUnitRange(const std::array<double, 5>& c);

} // namespace ZnGe
