// The d attribute of a path.
#pragma once

#include "interchange/recognize/contour.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace interchange {

struct PathError {
  std::size_t position = 0; // in the text
  std::string what;
  std::string expected;
};

struct PathData {
  std::vector<Contour> contours; // of the subpaths with at least one piece, in user units
  std::optional<PathError> error;
};

// Reads as far as the text is right, which is what a renderer draws of a damaged path. Linear.
PathData parsePath(std::string_view text);

// The arc through two points with given radii, as the A command says: radii that are too small grow, zero
// radii give a line, equal ends give nothing at all.
std::optional<Segment> arcBetween(ZnGePoint2d start, ZnGePoint2d end, double rx, double ry,
                                  double tiltDegrees, bool large, bool positive);

} // namespace interchange
