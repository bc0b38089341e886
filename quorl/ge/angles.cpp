#include "quorl/ge/angles.h"

#include <algorithm>
#include <cmath>

namespace ZnGe {

double normalizeAngle(double angle) {
  double turned = std::fmod(angle, kTwoPi);
  if (turned < 0.0) turned += kTwoPi;
  // Also turns a negative zero into a plain one.
  return turned == 0.0 || turned >= kTwoPi ? 0.0 : turned;
}

SinCos sinCos(double angle) {
  static constexpr SinCos kQuarters[] = {{0.0, 1.0}, {1.0, 0.0}, {0.0, -1.0}, {-1.0, 0.0}};
  const double quarters = std::round(angle / kHalfPi);
  if (std::isfinite(angle) && quarters * kHalfPi == angle) {
    const double index = std::fmod(quarters, 4.0);
    return kQuarters[static_cast<int>(index < 0.0 ? index + 4.0 : index)];
  }
  return {std::sin(angle), std::cos(angle)};
}

bool isAngleBetween(double angle, double start, double end) {
  return normalizeAngle(angle - start) <= end - start;
}

double endAngleAbove(double start, double end) {
  if (end < start) {
    end += kTwoPi * std::ceil((start - end) / kTwoPi);
    // Rounding may leave the sum a hair below the start.
    if (end < start) end += kTwoPi;
  }
  return std::min(end, start + kTwoPi);
}

} // namespace ZnGe
