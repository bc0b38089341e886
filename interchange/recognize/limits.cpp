#include "interchange/recognize/limits.h"

#include "interchange/tolerance.h"

#include <cmath>

namespace interchange {

// Written so that an undefined number fails the comparison.
bool isUsable(const ZnGeVector2d& vector) {
  return std::abs(vector.x) <= tolerance::kLargestCoordinate &&
         std::abs(vector.y) <= tolerance::kLargestCoordinate;
}

bool isUsable(const ZnGePoint2d& point) { return isUsable(point.asVector()); }

bool isFinite(const ZnGeMatrix2d& map) {
  const auto finite = [](double x, double y) { return std::isfinite(x) && std::isfinite(y); };
  return finite(map.origin().x, map.origin().y) && finite(map.xAxis().x, map.xAxis().y) &&
         finite(map.yAxis().x, map.yAxis().y);
}

} // namespace interchange
