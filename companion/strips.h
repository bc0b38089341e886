// Finds strips: long rectangles with nothing in them.
#pragma once

#include <vector>

#include "companion/round_edges.h"
#include "companion/straight_edges.h"

namespace companion {

struct Strip {
  int sides[2] = {0, 0}; // the long ones, positions in the given straight edges
  double length = 0.0, width = 0.0;
  ZnGePoint3d middle;
};

// Rectangles of four edges that meet at their corners, more than three times as long as wide, in the order of
// their first long sides; where edges lie one upon the other, each place counts once. What holds an end of
// another edge, the center of a round one, or one of the places of other content, is no bare strip.
std::vector<Strip> findStrips(const std::vector<StraightEdge>& straight, const std::vector<RoundEdge>& round,
                              const std::vector<ZnGePoint3d>& content = {});

} // namespace companion
