// The ends of straight edges, found by place: which edges go on from a point.
#pragma once

#include <vector>

#include "companion/straight_edges.h"
#include "torvi/host/place_index.h"

namespace companion {

// An edge seen from one of its ends.
struct EdgeFromEnd {
  int edge = 0; // position in the given array
  ZnGePoint3d here, there;
  ZnGeVector3d way() const { return there - here; }
};

class EdgeEnds {
public:
  // The edges outlive the index.
  explicit EdgeEnds(const std::vector<StraightEdge>& edges);
  // Edges with an end within reach of the point; of a heap of them the first few, since drawings in which
  // many edges end in one place would otherwise cost all pairs of them.
  std::vector<EdgeFromEnd> at(const ZnGePoint3d& point, double reach) const;

private:
  const std::vector<StraightEdge>& edges_;
  ZnGePlaceIndex2d index_;
};

} // namespace companion
