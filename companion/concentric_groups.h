// Groups circles by their center, so that circles round one center can share one mark.
#pragma once

#include <vector>

#include "torvi/host/geometry.h"
#include "torvi/host/place_index.h"

namespace companion {

// Circles have to come in descending order of radius: the first of a group sets how near the others must be.
class ConcentricGroups {
public:
  // The number of the circle's group, counted from 0; the next free number when it is the first there.
  int groupOf(const ZnGeCircArc3d& circle);
  int count() const { return static_cast<int>(groups_.size()); }

private:
  struct Group {
    ZnGePoint3d center;
    ZnGeVector3d normal;
    double reach = 0.0; // largest distance of another center
  };
  bool holds(const Group& group, const ZnGeCircArc3d& circle) const;

  std::vector<Group> groups_;
  ZnGePlaceIndex3d index_; // of where each group may hold a center
};

} // namespace companion
