// The arc that the bulge of a polyline segment stands for.
#pragma once

#include "quorl/ge/circ_arc3d.h"

namespace ZnGe {

// The arc from start to end whose quarter span has the tangent |bulge|. A positive bulge runs
// counterclockwise about the normal; for a negative one the arc has the opposite normal, so that it still
// runs from start to end. The arc's reference vector points to its start, which has the angle 0. False, with
// the arc untouched, when the bulge is 0 or not finite, the points are equal, or the chord isn't
// perpendicular to the normal (by tol).
bool arcFromBulge(const ZnGePoint3d& start, const ZnGePoint3d& end, double bulge, const ZnGeVector3d& normal,
                  ZnGeCircArc3d& arc, const ZnGeTol& tol = ZnGeContext::gTol);

} // namespace ZnGe
