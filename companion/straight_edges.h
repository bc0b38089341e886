// Finds the straight edges of a space, also those seen through block references.
#pragma once

#include <vector>

#include "torvi/host/association.h"

namespace companion {

struct StraightEdge {
  ZnDbFullSubentPath path;
  ZnGeLineSeg3d line; // in the coordinates of the space
};

// Lines and straight segments of polylines that show, in drawing order, a reference's content at its place.
// What has no length is none. Center objects are passed over: what they draw is theirs.
std::vector<StraightEdge> visibleStraightEdges(ZnDbObjectId space);

} // namespace companion
