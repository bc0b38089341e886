// Tells whether a closed contour is a circle, in whichever way it is spelled.
#pragma once

#include "interchange/recognize/contour.h"
#include "interchange/recognize/fit_options.h"
#include "interchange/recognize/shape.h"

#include <optional>

namespace interchange {

// The circle that a closed contour stands for. Nothing for open contours and for those that merely come
// near: ellipses, ovals of arcs, polygons with few or unequal sides, rounds with a flat, a key or corners.
// The center and radius are those of the circle that the author drew: through the points where its pieces
// touch it. Linear in the number of pieces.
std::optional<Circle> findCircle(const Contour& contour, const FitOptions& options);

} // namespace interchange
