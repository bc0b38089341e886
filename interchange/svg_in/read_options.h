// What the caller of the SVG reader decides.
#pragma once

#include "interchange/recognize/fit_options.h"

#include <cstddef>
#include <optional>

namespace interchange {

// The id of the group that an annotated document carries.
inline constexpr const char* kAnnotationId = "quorl-annotation";

enum class LengthUnit { Pixel, Millimetre, Centimetre, Inch, Point, Pica };

struct ReadOptions {
  // Pixels to the inch. Given, it overrules what the file hints at; otherwise 96 or the file's hint.
  std::optional<double> dpi;
  // The meaning of one user unit in files without a physical size. Files with one ignore it.
  std::optional<LengthUnit> unit;
  // Limits of the circle finder; millimetresPerUnit is set by the reader.
  FitOptions fit;
  // A reference may repeat a thing that repeats a thing; beyond this many elements in all the file is
  // refused.
  std::size_t largestExpansion = 1000000;
  // Bytes of path data in all. A byte becomes some sixty on the way to circles, and nobody draws as much.
  std::size_t largestPathData = std::size_t{32} << 20;
  // Passes over what an earlier annotation has put into the document: it will be made anew.
  bool withoutAnnotation = false;
};

} // namespace interchange
