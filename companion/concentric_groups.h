// Groups circles by their center, so that circles round one center can share one mark.
#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "torvi/host/geometry.h"

namespace companion {

// Circles have to come in descending order of radius: the first of a group sets how near the others must be.
// A circle costs time in proportion to the number of orders of magnitude among the radii, not to that of the
// circles.
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
  // A cell of the grid whose cells measure two to the power of the level.
  struct Cell {
    int level = 0;
    std::int64_t x = 0, y = 0, z = 0;
    friend bool operator==(const Cell&, const Cell&) = default;
  };
  struct CellHash {
    size_t operator()(const Cell& cell) const;
  };

  int findAt(int level, const ZnGeCircArc3d& circle) const;
  bool holds(const Group& group, const ZnGeCircArc3d& circle) const;

  std::vector<Group> groups_;
  std::vector<int> levels_; // in use, descending
  std::unordered_map<Cell, std::vector<int>, CellHash> cells_;
};

} // namespace companion
