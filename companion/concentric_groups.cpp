#include "companion/concentric_groups.h"

#include <algorithm>

#include "companion/tolerance.h"

namespace companion {

bool ConcentricGroups::holds(const Group& group, const ZnGeCircArc3d& circle) const {
  const double reach =
      std::max(std::min(group.reach, circle.radius() * kConcentricShareOfSmaller), kLeastConcentricDistance);
  return group.center.distanceTo(circle.center()) <= reach &&
         group.normal.crossProduct(circle.normal()).length() <= kSamePlaneSine;
}

// Of several groups the first one, which has the largest circles.
int ConcentricGroups::groupOf(const ZnGeCircArc3d& circle) {
  const ZnGePoint3d& center = circle.center();
  for (const int index : index_.meeting({center, center}))
    if (holds(groups_[static_cast<size_t>(index)], circle)) return index;
  const Group group{center, circle.normal(),
                    std::max(circle.radius() * kConcentricShareOfLarger, kLeastConcentricDistance)};
  const int index = count();
  groups_.push_back(group);
  // Twice as wide, so that rounding never leaves out what the distance admits.
  const ZnGeVector3d around = ZnGeVector3d(1.0, 1.0, 1.0) * (2.0 * group.reach);
  index_.insert({center - around, center + around}, index);
  return index;
}

} // namespace companion
