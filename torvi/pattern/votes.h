// The votes by which the analysis of a pattern finds what most of its centers agree on. Plain functions over
// centers in plane coordinates. The first fixedCount centers are the user's own (0 for none): with one or two
// of them every candidate passes through these, with three or more only they vote.
#pragma once

#include <optional>

#include "torvi/host/export.h"
#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"
#include "torvi/pattern/pitch_circle.h"

// The circle on which most centers lie, laid through them. Triples within 15 degrees say
// nothing about a center and don't vote; false when no triple does. Where more than half of all lie about the
// former center there is no vote. Of many centers, the circle that holds an eighth of all or more is found,
// and smaller ones whose centers were named one after another; the cost is linear.
TORVI_EXPORT bool votePitchCircle(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                                  const std::optional<ZnGePoint2d>& formerCenter, ZnPitchCircle& circle);

// The distance that most centers have from the pitch center, within the tolerance; false when all lie on it.
// Of distances with as many votes that of the center named first counts.
TORVI_EXPORT bool votePitchRadius(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                                  const ZnGePoint2d& pitchCenter, double& radius);

// The line through two centers on which a row lies. Its direction is that of most of the lines through two
// centers, which count as parallel as far as the tolerance of their ends allows, and of those with that
// direction it is the one on which most centers lie. Of lines with as many that of the centers named first
// counts, of lines through the same ones that of the two farthest apart.
struct ZnPatternLineVote {
  int lines = 0; // through two centers that are not one place
  int votes = 0; // of them, for the direction
  ZnGePoint2d from;
  ZnGeVector2d way; // from one center to the other, to the right or straight up
};
TORVI_EXPORT ZnPatternLineVote voteLine(const ZnArray<ZnGePoint2d>& centers, int fixedCount,
                                        const ZnGeTol& tol);

// The center on whose line in that direction most centers lie: of such lines the one with the center named
// first.
TORVI_EXPORT ZnGePoint2d voteLinePoint(const ZnArray<ZnGePoint2d>& centers, int fixedCount,
                                       const ZnGeTol& tol, const ZnGeVector2d& direction);
