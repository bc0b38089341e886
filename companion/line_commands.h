// The making of one center line between two straight edges, as the command CENTERLINE and others do it.
#pragma once

#include <optional>
#include <vector>

#include "torvi/host/association.h"

namespace companion {

// Two edges, and for each the point at which it is picked, in the coordinates of the current space.
struct PickedEdges {
  std::vector<ZnDbFullSubentPath> paths;
  std::vector<std::optional<ZnGePoint3d>> picks; // where there is none for an edge, its middle counts
};

// A center line between the edges, or nothing at all; why says what was wrong in a few words.
Quorl::ErrorStatus createLine(ZnDbDatabase& database, const PickedEdges& edges, ZnDbObjectId& lineId,
                              ZnString& why);

} // namespace companion
