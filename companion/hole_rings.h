// Rings in a set of places: three and more on one circle, with a reason to see a ring in them.
#pragma once

#include <vector>

#include "torvi/host/geometry.h"

namespace companion {

// A circle or an arc of the drawing, a place where a ring may have its middle.
struct RingWitness {
  ZnGePoint2d center;
  double radius = 0.0;
  double span = 0.0; // radians
  int source = -1;   // the caller's own number
};

enum class RingEvidence {
  kConcentric, // with a witness
  kFiveOrMore,
  kEqualSpacing, // of four and more about the middle of the part's outline
};

struct HoleRing {
  std::vector<int> members; // positions in the given array, by angle
  ZnGePoint2d center;
  double radius = 0.0;
  RingEvidence evidence = RingEvidence::kFiveOrMore;
  int witness = -1; // the source of the witness
};

struct RingQuestion {
  const std::vector<ZnGePoint2d>& places;
  double holeRadius = 0.0; // of each place
  double tolerance = 0.0;  // how far a place may lie off the circle
  const std::vector<RingWitness>& witnesses;
  const ZnGePoint2d* partMiddle = nullptr;
};

// All rings that have evidence, the more members the earlier; they may share places. Three places always lie
// on a circle and so do the corners of a rectangle, so the fit alone is none. Neither is a witness of the
// places' own size (a hole of a grid has four equally near neighbours), a small arc (the rounding of a
// corner), nor one in the middle of four corners, unless these are those of a square or the circle through
// them is drawn.
std::vector<HoleRing> findRings(const RingQuestion& question);

} // namespace companion
