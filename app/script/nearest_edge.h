// Picking by a point: the edge that lies nearest to it.
#pragma once

#include "app/script/space_index.h"
#include "quorl/db/entity/subent.h"

namespace app {

// Generated content stands in blocks without a name of their own, such as those of center objects. Its edges
// often cross or touch those that were drawn; this decides which are meant where both are near.
enum class Pick { kDrawnOnly, kDrawnFirst, kGeneratedFirst };

struct PickedEdge {
  ZnDbFullSubentPath path;
  double distance = 0.0;
};

// The visible edge of the current space, also one seen through block references, that is nearest to the point
// (in the space's coordinates); of equally near ones that of the entity that was made first. False when there
// is none. How far is too far is the caller's to say.
bool nearestEdge(SpaceIndex& index, const ZnGePoint3d& point, Pick pick, PickedEdge& edge);

// How far from an edge a point may lie and still mean it, in drawing units.
double pickReach(SpaceIndex& index);

} // namespace app
