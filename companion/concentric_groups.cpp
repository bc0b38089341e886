#include "companion/concentric_groups.h"

#include <algorithm>
#include <cmath>

#include "companion/tolerance.h"

namespace companion {

namespace {

// The smallest level whose cells are at least twice as wide as the reach, so that whatever lies within reach
// of a point stands in one of the eight cells around the cell corner nearest to it.
int levelOf(double reach) { return static_cast<int>(std::ceil(std::log2(2.0 * reach))); }

std::int64_t cellIndex(double coordinate, int level) {
  // Drawings end long before this; beyond it neighbouring cells would be one number.
  constexpr double kLargest = 4.0e18;
  const double index = std::floor(std::ldexp(coordinate, -level));
  return static_cast<std::int64_t>(std::clamp(index, -kLargest, kLargest));
}

} // namespace

size_t ConcentricGroups::CellHash::operator()(const Cell& cell) const {
  std::uint64_t hash = static_cast<std::uint64_t>(cell.level);
  for (const std::int64_t part : {cell.x, cell.y, cell.z}) {
    hash ^= static_cast<std::uint64_t>(part);
    hash *= 0x9E3779B97F4A7C15u; // an odd number without pattern
    hash ^= hash >> 32;
  }
  return hash;
}

bool ConcentricGroups::holds(const Group& group, const ZnGeCircArc3d& circle) const {
  const double reach =
      std::max(std::min(group.reach, circle.radius() * kConcentricShareOfSmaller), kLeastConcentricDistance);
  return group.center.distanceTo(circle.center()) <= reach &&
         group.normal.crossProduct(circle.normal()).length() <= kSamePlaneSine;
}

int ConcentricGroups::findAt(int level, const ZnGeCircArc3d& circle) const {
  const ZnGePoint3d& center = circle.center();
  const double half = std::ldexp(0.5, level);
  const std::int64_t x = cellIndex(center.x - half, level);
  const std::int64_t y = cellIndex(center.y - half, level);
  const std::int64_t z = cellIndex(center.z - half, level);
  int first = -1;
  for (int corner = 0; corner < 8; ++corner) {
    const auto found = cells_.find({level, x + (corner & 1), y + (corner >> 1 & 1), z + (corner >> 2)});
    if (found == cells_.end()) continue;
    for (const int index : found->second)
      if ((first < 0 || index < first) && holds(groups_[static_cast<size_t>(index)], circle)) first = index;
  }
  return first;
}

int ConcentricGroups::groupOf(const ZnGeCircArc3d& circle) {
  for (const int level : levels_)
    if (const int found = findAt(level, circle); found >= 0) return found;
  Group group{circle.center(), circle.normal(),
              std::max(circle.radius() * kConcentricShareOfLarger, kLeastConcentricDistance)};
  const int level = levelOf(group.reach);
  if (levels_.empty() || levels_.back() != level) levels_.push_back(level);
  const int index = count();
  groups_.push_back(group);
  const ZnGePoint3d& center = group.center;
  cells_[{level, cellIndex(center.x, level), cellIndex(center.y, level), cellIndex(center.z, level)}]
      .push_back(index);
  return index;
}

} // namespace companion
