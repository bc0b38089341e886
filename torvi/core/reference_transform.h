// What the transform of a center object's reference says, apart from what rounding has left in it.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/geometry.h"

namespace torvi {

// To the last bit.
bool areExactlyEqual(const ZnGeMatrix3d& a, const ZnGeMatrix3d& b);

// The length of the longest axis; exactly 1 for axes that turning and mirroring alone have made what they
// are.
TORVI_EXPORT double scaleOf(const ZnGeMatrix3d& transform);

// The place and the directions of the x and z axes without scale, shear and mirroring: z stays, x is turned
// to be perpendicular to it, and y follows from both. A transform that has none of these comes back to the
// last bit, so that an object that follows nothing but itself does not creep.
TORVI_EXPORT ZnGeMatrix3d rigidPartOf(const ZnGeMatrix3d& transform);

} // namespace torvi
