// Finds the patterns that a person would see in the holes of a drawing: rings and rows of equal holes of one
// part, each with the reason why it is taken for one.
#pragma once

#include <vector>

#include "companion/hole_rings.h"
#include "companion/outlines.h"

namespace companion {

// A hole, by the largest of the circles about one center.
struct Hole {
  Disc disc;
  PartOfDisc part;
  bool canJoin = true;   // whether it may become the member of a pattern
  bool hasInner = false; // whether another circle stands about its center, as in a washer
};

enum class PatternEvidence { kConcentric, kFiveOrMore, kEqualSpacing, kEqualSteps };

struct FoundPattern {
  bool isRing = false;
  std::vector<int> holes; // positions in the given array, in order along ring or row
  PatternEvidence evidence = PatternEvidence::kEqualSteps;
  int witness = -1;    // of kConcentric: the source of the circle or arc that is concentric with the ring
  bool hasGap = false; // of a row: one place is empty
  ZnGePoint2d center;  // of a ring
  double pitchRadius = 0.0;
  double step = 0.0; // of a row
};

struct PatternQuestion {
  const std::vector<Hole>& holes;
  const std::vector<RingWitness>& witnesses;
  const std::vector<Outline>& outlines;
  // How far a hole may lie off the ring or row that it is taken into, as a share of its radius, if that is
  // more than what rounding explains.
  double placeShare = 0.0;
};

// Each hole ends in at most one pattern. Holes that no outline holds belong together, but no row of theirs
// runs across a line, and where outlines show what is a part a disc with a circle in it is a part of its own.
std::vector<FoundPattern> findPatterns(const PatternQuestion& question);

} // namespace companion
