// How two straight edges stand to each other, at every size and in every place: worked out with twice the
// digits of a double, so that what a relation leaves open is the rounding of the coordinates that came in.
// That rounding grows with the coordinates and with the way from an edge to where it is extended to; it is
// allowed for beside the tolerance for what a person drew. All coordinates are of one space.
#pragma once

#include <optional>

#include "torvi/host/export.h"
#include "torvi/host/geometry.h"

namespace torvi {

// Where the unbounded lines of two edges meet: midway between the places where they pass each other.
class TORVI_EXPORT EdgeMeeting {
public:
  // None for edges that are parallel or skew by the tolerance for lines, and for edges without length.
  static std::optional<EdgeMeeting> of(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second);

  ZnGePoint3d point() const { return base_ + fromBase_; }
  // Along an edge, 0 at its start and 1 at its end.
  const ZnGe::DoubleDouble& param(int edge) const { return params_[edge]; }
  // The same for decisions: exactly 0 or 1 when that end was meant to be the meeting point, by gTol.
  double settledParam(int edge) const { return settledParams_[edge]; }
  // Whether the edge itself comes to the meeting point.
  bool isOnEdge(int edge) const { return settledParams_[edge] >= 0.0 && settledParams_[edge] <= 1.0; }
  // To the meeting point, rounded once: a short way far from the origin keeps its digits.
  ZnGeVector3d wayFrom(const ZnGePoint3d& place) const;
  // To the same, unrounded, from a place near by: the start of the first edge.
  const ZnGePoint3d& base() const { return base_; }
  const ZnGe::DoubleDoubleVector& fromBase() const { return fromBase_; }

private:
  ZnGePoint3d base_;
  ZnGe::DoubleDoubleVector fromBase_;
  ZnGe::DoubleDouble params_[2];
  double settledParams_[2] = {};
};

// By the tolerance for lines; false for edges without length.
TORVI_EXPORT bool areParallel(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second);
TORVI_EXPORT bool areColinear(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second);

// By gTol; an edge without length counts as its point.
TORVI_EXPORT bool haveOneMiddle(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second);

// Whether a point is on the unbounded line of an edge, by equalPoint; false for an edge without length.
TORVI_EXPORT bool isOnLineOf(const ZnGeLineSeg3d& edge, const ZnGePoint3d& point, const ZnGeTol& tol);

// Whether two points that came on different ways were meant to be one, by gTol.
TORVI_EXPORT bool isSamePoint(const ZnGePoint3d& a, const ZnGePoint3d& b);

} // namespace torvi
