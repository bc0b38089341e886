// Curves under any affine map.
#pragma once

#include <memory>

#include "quorl/ge/curve3d.h"

// A new curve, the exact image of the given one: a circular arc becomes elliptic where the map demands it.
// A map that flattens the arc's plane gives the elliptic arc without area.
std::unique_ptr<ZnGeCurve3d> zndbTransformedCurve(const ZnGeCurve3d& curve, const ZnGeMatrix3d& transform);
