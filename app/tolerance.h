// The program's tolerances, each with its reason.
#pragma once

#include "interchange/tolerance.h"

namespace app {

// Points that people type are rounded. Where drawn and generated edges are both as near as this, in drawing
// units, nearness does not tell which one is meant.
constexpr double kPickSlack = 0.01;

// How far from an edge a typed point may lie and still mean it, as a share of the drawing's diagonal: as far
// as a person who aims at it misses on a screen.
constexpr double kPickReach = 0.01;

// Numbers that a user gives reach as far as those of files, or what is drawn could not be read again; a size
// below the least has neither length nor direction there.
constexpr double kLargestNumber = interchange::tolerance::kLargestCoordinate;
constexpr double kLeastSize = interchange::tolerance::kZeroLength;

} // namespace app
