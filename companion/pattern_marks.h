// Makes center mark patterns of the holes in which the pattern search sees some.
#pragma once

#include "companion/centers.h"
#include "companion/pattern_search.h"
#include "torvi/host/commands.h"

namespace companion {

struct PatternSettings {
  // How far a hole may be moved to lie exactly on its ring or row, as a share of its radius; 0 for not at
  // all. Positions that a file gives as rounded decimals never fit a curve exactly, and a pattern follows
  // only what does.
  double alignShare = 0.0;
};

struct MadePattern {
  ZnDbObjectId id;
  FoundPattern found;           // holes are positions in the given centers
  double aligned = 0.0;         // the farthest that a hole was moved, drawing units
  bool showsCenterMark = false; // the pattern itself marks its pitch center
};

// Each pattern that the pattern kind's own analysis confirms, with every hole on its chain, is made; of the
// others nothing is left behind, and refused counts them. All round edges of the drawing may witness a ring.
// Only full circles of unmarked centers in the plane of the first one join.
std::vector<MadePattern> makePatterns(ZnDbDatabase& database, const std::vector<RoundEdge>& edges,
                                      const std::vector<Center>& centers, const PatternSettings& settings,
                                      int& refused);

// Why the pattern is one, in words for the report.
std::string evidenceText(const FoundPattern& found, const std::vector<RoundEdge>& edges);

} // namespace companion
