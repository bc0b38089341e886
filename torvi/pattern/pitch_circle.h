// A circle through centers that are a little off it.
#pragma once

#include <vector>

#include "torvi/host/export.h"
#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

// In plane coordinates.
struct ZnPitchCircle {
  ZnGePoint2d center;
  double radius = 0.0;
};

// The positions of the centers within the reach of the circle, in their order.
std::vector<int> centersNear(const ZnArray<ZnGePoint2d>& centers, const ZnPitchCircle& circle, double reach);

// Lays the circle through the centers next to it, all of which count alike, until those within the reach stay
// the same; where that would lose one although some circle has all within the reach, it is that circle. It
// depends on these alone and not on where the circle came from. The circle stays as it is where
// fewer than three are next to it, and where another holds fewer.
TORVI_EXPORT void fitPitchCircle(const ZnArray<ZnGePoint2d>& centers, double reach, ZnPitchCircle& circle);
