// Numbers of twice the digits against numbers of a hundred.
#include <gtest/gtest.h>

#include <boost/multiprecision/cpp_bin_float.hpp>
#include <random>

#include "quorl/ge/double_double.h"

namespace {

using Exact = boost::multiprecision::cpp_bin_float_100;
using ZnGe::DoubleDouble;

Exact exact(const DoubleDouble& a) { return Exact(a.high) + Exact(a.low); }

// Sums cancel down to the low parts; their error counts against the operands, that of the others against the
// result.
TEST(DoubleDoubles, HoldTwiceTheDigits) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  const auto number = [&] {
    const double high = std::ldexp(unit(random), int(unit(random) * 40));
    return ZnGe::twoSum(high, high * unit(random) * 0x1p-53);
  };
  const Exact share(0x1p-101);
  for (int i = 0; i < 1000; ++i) {
    const DoubleDouble a = number();
    const DoubleDouble b = i % 2 == 0 ? number() : DoubleDouble(-a.high) + a.low * unit(random);
    const Exact x = exact(a), y = exact(b);
    EXPECT_LE(abs(exact(a + b) - (x + y)), share * (abs(x) + abs(y)));
    EXPECT_LE(abs(exact(a - b) - (x - y)), share * (abs(x) + abs(y)));
    EXPECT_LE(abs(exact(a * b) - x * y), share * abs(x * y));
    EXPECT_LE(abs(exact(a / b) - x / y), share * abs(x / y));
    EXPECT_LE(abs(exact(ZnGe::sqrt(a * a)) - abs(x)), share * abs(x));
    EXPECT_EQ(exact(ZnGe::twoProduct(a.high, b.high)), Exact(a.high) * Exact(b.high));
    EXPECT_EQ(a < b, x < y);
  }
  EXPECT_EQ(ZnGe::sqrt(0.0), DoubleDouble());
}

} // namespace
