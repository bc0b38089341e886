// The votes by which the analysis of a pattern finds what most of its centers agree on. Plain functions over
// centers in plane coordinates. The first fixedCount centers are the user's own (0 for none): with one or two
// of them every candidate passes through these, with three or more only they vote.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/geometry.h"
#include "torvi/host/runtime.h"

// A value counted in steps: all that round to the same multiple are one.
inline double roundedToStep(double value, double step) { return std::round(value / step) * step; }

// The center, rounded, of most of the circles through three centers. Triples within a fifteenth of half a
// turn say nothing about a center and don't vote; false when no triple does. Cubic in the number of centers.
TORVI_EXPORT bool votePitchCenter(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                                  ZnGePoint2d& pitchCenter);

// The distance, rounded, that most centers have from the pitch center; false when all lie on it.
TORVI_EXPORT bool votePitchRadius(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                                  const ZnGePoint2d& pitchCenter, double& radius);

// The direction, in [0, pi), of most of the lines through two centers.
struct ZnPatternDirectionVote {
  int values = 0; // how many different directions got a vote
  double angle = 0.0;
};
TORVI_EXPORT ZnPatternDirectionVote voteDirection(const ZnArray<ZnGePoint2d>& centers, int fixedCount,
                                                  const ZnGeTol& tol);

// A point of the line in that direction that passes through most centers: where it meets the y axis, or the x
// axis if it is parallel to y.
TORVI_EXPORT ZnGePoint2d voteLinePoint(const ZnArray<ZnGePoint2d>& centers, int fixedCount,
                                       const ZnGeTol& tol, const ZnGeVector2d& direction);
