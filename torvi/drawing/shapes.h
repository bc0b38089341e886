// Measures on segments and circles; no database. Lengths are drawing units, angles radians.
#pragma once

#include <array>
#include <numbers>

#include "torvi/host/geometry.h"

namespace torvi {

constexpr double kFullTurn = 2.0 * std::numbers::pi;

// Moves both ends outward by these lengths; negative ones shorten. False, and nothing moved, for a line
// without length.
bool extendLine(ZnGeLineSeg3d& line, double startBy, double endBy);

// Four points that divide the arc's own interval, the first at its start, the last quarter left open.
std::array<ZnGePoint3d, 4> quarterPoints(const ZnGeCircArc3d& arc);
// Origin at the center, x to the first quarter point, z along the normal.
ZnGeMatrix3d circleCoordinates(const ZnGeCircArc3d& arc);

} // namespace torvi
