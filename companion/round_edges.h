// Finds the round edges of a space, also those seen through block references.
#pragma once

#include <vector>

#include "companion/tolerance.h"
#include "torvi/host/association.h"

namespace companion {

struct RoundEdge {
  ZnDbFullSubentPath path;
  ZnGeCircArc3d curve; // in the coordinates of the space
  double span() const { return curve.endAng() - curve.startAng(); }
  bool isFullCircle() const { return span() >= 2.0 * ZnGe::kPi - kSpanSlack; }
};

// Circles, arcs and arc segments of polylines that show, in drawing order, a reference's content at its
// place. What a reference distorts into an ellipse is no round edge. Center objects are passed over: what
// they draw is theirs.
std::vector<RoundEdge> visibleRoundEdges(ZnDbObjectId space);

} // namespace companion
