// Rows in a set of places: three and more in equal steps on one line.
#pragma once

#include <functional>
#include <vector>

#include "torvi/host/geometry.h"

namespace companion {

struct HoleRow {
  std::vector<int> members; // positions in the given array, in order along the row
  double step = 0.0;
  bool hasGap = false; // one place of the row is empty
};

// Whether something stands between two places, so that no row runs from one to the other.
using Separates = std::function<bool(const ZnGePoint2d& from, const ZnGePoint2d& to)>;

// Rows without a place in common. The places lie as they should within the tolerance. Of the ways to lay rows
// through a group of places the one is taken that leaves out the fewest, then has the fewest rows, then runs
// along x, or else y, then has the shortest steps: a grid becomes its longer rows, a staggered one its
// straight ones. A row with an empty place needs four members, since three of four are found everywhere; and
// three in a row must be neighbours.
std::vector<HoleRow> findRows(const std::vector<ZnGePoint2d>& places, double tolerance,
                              const Separates& separates);

} // namespace companion
