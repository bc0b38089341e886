// Picking by a point: the edge that lies nearest to it.
#pragma once

#include "quorl/db/database.h"
#include "quorl/db/subent.h"

namespace app {

// Generated content stands in blocks without a name of their own, such as those of center objects. Its edges
// often cross or touch those that were drawn; this decides which are meant where both are near.
enum class Pick { kDrawnOnly, kDrawnFirst, kGeneratedFirst };

// The visible edge of the current space, also one seen through block references, that is nearest to the point
// (in the space's coordinates); of equally near ones the first in drawing order. False when there is none.
bool nearestEdge(const ZnDbDatabase& database, const ZnGePoint3d& point, Pick pick, ZnDbFullSubentPath& path);

} // namespace app
