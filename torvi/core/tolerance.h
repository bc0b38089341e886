// The module's tolerances, each with its reason.
#pragma once

#include "torvi/host/geometry.h"

// The least slack of a comparison that scales with its operands: below it rounding alone can decide.
constexpr double kLeastScaledTolerance = 1e-12;

// For relations between two lines: wider than equality of points, since a direction is the difference of two
// points that may stand close together.
inline const ZnGeTol& centerLineTolerance() {
  static const ZnGeTol tol = [] {
    ZnGeTol value;
    value.setEqualPoint(1e-8);
    value.setEqualVector(1e-8);
    return value;
  }();
  return tol;
}
