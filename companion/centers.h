// The centers of a drawing: circles and arcs grouped by what they stand around.
#pragma once

#include <vector>

#include "companion/round_edges.h"

namespace companion {

struct Center {
  std::vector<const RoundEdge*> edges; // outermost first; of equal ones the longer arc, then drawing order
  bool isMarked = false;               // a center object follows one of its circles already
  const RoundEdge& outermost() const { return *edges.front(); }
  // The largest full circle, or else the outermost arc: a hole in the round end of a bar is a hole.
  const RoundEdge& hole() const;
};

// In drawing order of the outermost edges. A marked circle without an edge among the given ones makes no
// center of its own.
std::vector<Center> centersOf(const std::vector<const RoundEdge*>& edges,
                              const std::vector<ZnGeCircArc3d>& marked);

// The circles and arcs that the center objects of the space follow now.
std::vector<ZnGeCircArc3d> markedCircles(ZnDbObjectId space);

} // namespace companion
