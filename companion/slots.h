// Finds slots: two parallel edges of one length whose ends half circles join.
#pragma once

#include <vector>

#include "companion/round_edges.h"
#include "companion/straight_edges.h"

namespace companion {

// The half circle at one end of a slot: one arc, or two that make one up.
struct SlotEnd {
  std::vector<int> arcs; // positions in the given round edges
  ZnGePoint3d center;
};

struct Slot {
  int sides[2] = {0, 0}; // positions in the given straight edges
  SlotEnd ends[2];
  double radius = 0.0;
  double length = 0.0; // of a side
};

// In the order of their first arcs. Where several slots lie around the same two centers, as a groove's inner
// and outer edge, only the outermost is given. The edges may belong to one entity or to several; what counts
// is that they meet. Costs little more than time in proportion to the number of edges.
std::vector<Slot> findSlots(const std::vector<StraightEdge>& straight, const std::vector<RoundEdge>& round);

} // namespace companion
