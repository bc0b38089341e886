#include "quorl/ge/polynomial_roots.h"

#include <cmath>

#include "quorl/ge/tolerance.h"

namespace ZnGe {

namespace {

using Coefficients = std::array<double, 5>;

double valueAt(const Coefficients& c, double x) {
  return (((c[4] * x + c[3]) * x + c[2]) * x + c[1]) * x + c[0];
}

Coefficients derivative(const Coefficients& c) { return {c[1], 2.0 * c[2], 3.0 * c[3], 4.0 * c[4], 0.0}; }

double bisect(const Coefficients& c, double low, double high) {
  const bool isNegativeLow = valueAt(c, low) < 0.0;
  while (high - low > kParamRatio) {
    const double middle = 0.5 * (low + high);
    if (middle <= low || middle >= high) break;
    ((valueAt(c, middle) < 0.0) == isNegativeLow ? low : high) = middle;
  }
  return 0.5 * (low + high);
}

} // namespace

// Between neighbouring roots of its derivative a polynomial is monotone and has at most one root. Starting
// from the third derivative, which is a straight line, each step up finds all roots of the next one: nothing
// can slip through between sampling points, as it would in a search on a grid.
QuarticRoots quarticRootsInUnitRange(const std::array<double, 5>& c) {
  std::array<Coefficients, 4> chain{c};
  for (int i = 1; i < 4; ++i) chain[i] = derivative(chain[i - 1]);

  QuarticRoots roots;
  for (int level = 3; level >= 0; --level) {
    QuarticRoots next;
    double low = -1.0;
    for (int i = 0; i <= roots.count; ++i) {
      const double high = i < roots.count ? roots.values[i] : 1.0;
      const double atLow = valueAt(chain[level], low), atHigh = valueAt(chain[level], high);
      const bool changesSign = (atLow < 0.0) != (atHigh < 0.0);
      if (changesSign && next.count < 4) next.values[next.count++] = bisect(chain[level], low, high);
      low = high;
    }
    roots = next;
  }
  return roots;
}

} // namespace ZnGe
