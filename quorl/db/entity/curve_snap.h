// Snap points of geometry curves.
#pragma once

#include <memory>
#include <vector>

#include "quorl/base/array.h"
#include "quorl/db/core/line_weight.h"
#include "quorl/ge/curve3d.h"

// Appends the snap points of a chain of curves for one mode. End, mid, center and quadrant points are all
// that the curves have; near gives the one point of the chain that is nearest to pickPoint, perpendicular and
// tangent those seen from lastPoint. Points that coincide are given once. All are of the space of the curves.
void zndbAppendSnapPoints(ZnDb::ObjectSnapMode mode, const std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces,
                          const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                          ZnArray<ZnGePoint3d>& snapPoints);
