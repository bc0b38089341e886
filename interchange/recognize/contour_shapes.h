// From a drawn contour to the shapes that stand for it.
#pragma once

#include "interchange/recognize/contour.h"
#include "interchange/recognize/fit_options.h"
#include "interchange/recognize/shape.h"

#include <vector>

namespace interchange {

// Drops pieces without length, closes the gap of a contour that is marked closed and marks one closed whose
// ends meet. Call it once before shapesOf; an empty contour afterwards has no extent. Returns how many corner
// loops, curves of a tenth of a millimetre back to their start, were dropped from a larger outline.
int tidy(Contour& contour, const FitOptions& options);

// One shape where one can say it all: a line, a circle, an arc, an ellipse, a spline, or a polyline with
// bulges. A contour with free curves or elliptic arcs beside other pieces becomes a chain of shapes in
// drawing order, a closed one starting where the kind of its pieces changes.
std::vector<Shape> shapesOf(const Contour& contour, const FitOptions& options);

} // namespace interchange
