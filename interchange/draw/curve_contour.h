// Geometry curves as contours of the drawing plane, seen from above.
#pragma once

#include "interchange/recognize/contour.h"

#include "quorl/ge/curve3d.h"

namespace interchange {

inline ZnGePoint2d seenFromAbove(const ZnGePoint3d& point) { return {point.x, point.y}; }
inline ZnGeVector2d seenFromAbove(const ZnGeVector3d& vector) { return {vector.x, vector.y}; }

// Appends the image of the curve under the map, looked at along the z axis. Lines, circular and elliptic arcs
// are exact under every map; other curves become lines that keep to them by the chord height (in units of the
// image). An unbounded curve adds nothing.
void appendCurve(const ZnGeCurve3d& curve, const ZnGeMatrix3d& map, double chordHeight, Contour& contour);

} // namespace interchange
