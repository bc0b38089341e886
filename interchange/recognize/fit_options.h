// What a caller may say about how near is near enough.
#pragma once

#include "interchange/tolerance.h"

namespace interchange {

struct FitOptions {
  // Largest deviation of a circle as a part of its radius; stricter limits by kind of piece stay below it.
  double circleTolerance = tolerance::kCircleDeviation;
  // Fewer equal sides stay a polygon.
  int polygonSides = 16;
  // Millimetres on the page of one unit of the contour, by which absolute tolerances are divided.
  double millimetresPerUnit = 1;

  double rounding() const { return tolerance::kRounding / millimetresPerUnit; }
  double join() const { return tolerance::kJoin / millimetresPerUnit; }
};

} // namespace interchange
