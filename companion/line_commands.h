// The commands CENTERLINE and EDGEEXTENSION: what stands between two straight edges. Also the making of one
// center line, which others use too.
#pragma once

#include <optional>
#include <vector>

#include "exchange/center_commands.h"
#include "torvi/host/association.h"
#include "torvi/host/commands.h"

namespace companion {

// Two edges, and for each the point at which it is picked, in the coordinates of the current space.
struct PickedEdges {
  std::vector<ZnDbFullSubentPath> paths;
  std::vector<std::optional<ZnGePoint3d>> picks; // where there is none for an edge, its middle counts
};

// A center line between the edges, or nothing at all; why says what was wrong in a few words.
Quorl::ErrorStatus createLine(ZnDbDatabase& database, const PickedEdges& edges, ZnDbObjectId& lineId,
                              ZnString& why);

// What they take and tell stands in exchange/center_commands.h; two edges each.
Quorl::ErrorStatus centerLine(ZnRxCommandContext& context);
Quorl::ErrorStatus edgeExtension(ZnRxCommandContext& context);

// Whether the object stands between two edges.
bool isBetweenEdges(ZnDbObjectId centerObject);
// Ties it to the edges, which it follows from now on.
Quorl::ErrorStatus reassociateBetweenEdges(ZnRxCommandContext& context, ZnDbDatabase& database,
                                           const exchange::CenterWish& wish, ZnDbObjectId centerObject);

} // namespace companion
