// The votes by which the analysis of a pattern finds what most of its centers agree on. Plain functions over
// centers in plane coordinates. The first fixedCount centers are the user's own (0 for none): with one or two
// of them every candidate passes through these, with three or more only they vote.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

// The center, rounded, of most of the circles through three centers. Triples within a fifteenth of half a
// turn say nothing about a center and don't vote; false when no triple does. Cubic in the number of centers.
TORVI_EXPORT bool votePitchCenter(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                                  ZnGePoint2d& pitchCenter);

// The distance that most centers have from the pitch center, within the tolerance; false when all lie on it.
// Of distances with as many votes that of the center named first counts.
TORVI_EXPORT bool votePitchRadius(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                                  const ZnGePoint2d& pitchCenter, double& radius);

// The direction of most of the lines through two centers, that of the two farthest apart among these, to the
// right or straight up. Lines count as parallel as far as the tolerance of their ends allows. Of directions
// with as many lines that with the centers named first counts.
struct ZnPatternDirectionVote {
  int lines = 0; // through two centers that are not one place
  int votes = 0; // of them, for the direction
  ZnGeVector2d direction;
};
TORVI_EXPORT ZnPatternDirectionVote voteDirection(const ZnArray<ZnGePoint2d>& centers, int fixedCount,
                                                  const ZnGeTol& tol);

// The center on whose line in that direction most centers lie: of such lines the one with the center named
// first.
TORVI_EXPORT ZnGePoint2d voteLinePoint(const ZnArray<ZnGePoint2d>& centers, int fixedCount,
                                       const ZnGeTol& tol, const ZnGeVector2d& direction);
