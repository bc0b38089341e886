// Numbers of twice the digits of a double, for the few places where the difference of large numbers decides:
// the sum of two doubles of which the second is the rounding error of the first. By the classical error-free
// transformations: the sum of Knuth and the product of Dekker, here with the machine's fused operation.
#pragma once

#include <cmath>

#include "quorl/ge/point3d.h"

namespace ZnGe {

// About 31 decimal digits. The range is that of a double.
struct DoubleDouble {
  double high = 0.0;
  double low = 0.0; // at most half a unit in the last place of high

  constexpr DoubleDouble() = default;
  constexpr DoubleDouble(double value)
      : high(value) {}
  constexpr DoubleDouble(double highPart, double lowPart)
      : high(highPart)
      , low(lowPart) {}
};

// Exact. The short form is for |a| >= |b|.
constexpr DoubleDouble shortTwoSum(double a, double b) {
  const double sum = a + b;
  return {sum, b - (sum - a)};
}

constexpr DoubleDouble twoSum(double a, double b) {
  const double sum = a + b, ofB = sum - a;
  return {sum, (a - (sum - ofB)) + (b - ofB)};
}

inline DoubleDouble twoProduct(double a, double b) {
  const double product = a * b;
  return {product, std::fma(a, b, -product)};
}

constexpr DoubleDouble operator-(const DoubleDouble& a) { return {-a.high, -a.low}; }

constexpr DoubleDouble operator+(const DoubleDouble& a, const DoubleDouble& b) {
  const DoubleDouble high = twoSum(a.high, b.high), low = twoSum(a.low, b.low);
  const DoubleDouble sum = shortTwoSum(high.high, high.low + low.high);
  return shortTwoSum(sum.high, sum.low + low.low);
}

constexpr DoubleDouble operator-(const DoubleDouble& a, const DoubleDouble& b) { return a + -b; }

inline DoubleDouble operator*(const DoubleDouble& a, const DoubleDouble& b) {
  const DoubleDouble product = twoProduct(a.high, b.high);
  return shortTwoSum(product.high, product.low + (a.high * b.low + a.low * b.high));
}

// Long division: each digit is a double.
inline DoubleDouble operator/(const DoubleDouble& a, const DoubleDouble& b) {
  const double first = a.high / b.high;
  DoubleDouble rest = a - b * first;
  const double second = rest.high / b.high;
  rest = rest - b * second;
  return shortTwoSum(first, second) + rest.high / b.high;
}

constexpr bool operator<(const DoubleDouble& a, const DoubleDouble& b) {
  return a.high < b.high || (a.high == b.high && a.low < b.low);
}
constexpr bool operator==(const DoubleDouble& a, const DoubleDouble& b) {
  return a.high == b.high && a.low == b.low;
}

// One step of Newton's from the root of the high part; 0 for what is not positive.
inline DoubleDouble sqrt(const DoubleDouble& a) {
  if (!(a.high > 0.0)) return {};
  const double root = std::sqrt(a.high);
  return shortTwoSum(root, (a - twoProduct(root, root)).high / (2.0 * root));
}

struct DoubleDoubleVector {
  DoubleDouble x, y, z;

  // Exact: the difference of two doubles is a double and its rounding error.
  static constexpr DoubleDoubleVector between(const ZnGePoint3d& from, const ZnGePoint3d& to) {
    return {twoSum(to.x, -from.x), twoSum(to.y, -from.y), twoSum(to.z, -from.z)};
  }
  constexpr ZnGeVector3d rounded() const { return {x.high, y.high, z.high}; }
};

constexpr DoubleDoubleVector operator+(const DoubleDoubleVector& a, const DoubleDoubleVector& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}

constexpr DoubleDoubleVector operator-(const DoubleDoubleVector& a, const DoubleDoubleVector& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline DoubleDoubleVector operator*(const DoubleDoubleVector& a, const DoubleDouble& factor) {
  return {a.x * factor, a.y * factor, a.z * factor};
}

inline DoubleDouble dot(const DoubleDoubleVector& a, const DoubleDoubleVector& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline DoubleDoubleVector cross(const DoubleDoubleVector& a, const DoubleDoubleVector& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline DoubleDouble length(const DoubleDoubleVector& a) { return sqrt(dot(a, a)); }

// The point at the vector's tip, rounded once.
constexpr ZnGePoint3d operator+(const ZnGePoint3d& base, const DoubleDoubleVector& v) {
  return {(v.x + base.x).high, (v.y + base.y).high, (v.z + base.z).high};
}

} // namespace ZnGe
