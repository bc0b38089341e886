#include "torvi/core/edge_relations.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "torvi/core/tolerance.h"

using ZnGe::DoubleDouble;
using ZnGe::DoubleDoubleVector;

namespace torvi {

namespace {

double largestCoordinate(const ZnGePoint3d& point) {
  return std::max({std::fabs(point.x), std::fabs(point.y), std::fabs(point.z)});
}

// How far a point may be from where it was meant.
double roundingOf(std::initializer_list<ZnGePoint3d> points) {
  double largest = 0.0;
  for (const ZnGePoint3d& point : points) largest = std::max(largest, largestCoordinate(point));
  return kCoordinateRounding * largest;
}

double roundingOf(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second) {
  return roundingOf({first.startPoint(), first.endPoint(), second.startPoint(), second.endPoint()});
}

DoubleDoubleVector exactSpan(const ZnGeLineSeg3d& edge) {
  return DoubleDoubleVector::between(edge.startPoint(), edge.endPoint());
}

// By how much a line strays at a parameter when the ends of its edge stray by one.
double strayAt(const DoubleDouble& param) { return std::fabs(param.high) + std::fabs(1.0 - param.high); }

bool hasLength(const ZnGeLineSeg3d& edge) { return edge.length() > ZnGeContext::gTol.equalPoint(); }

// An end within reach of the meeting point is the meeting point; of two the nearer.
double settledAtEnd(const DoubleDouble& param, double reach) {
  const double end = param < 0.5 ? 0.0 : 1.0;
  return std::fabs((param - end).high) <= reach ? end : param.high;
}

} // namespace

// With the spans a and b, the way w between the starts and n = a x b, the lines pass each other at the
// parameters (w x b).n / n.n and (w x a).n / n.n, w.n / |n| apart. Even edges that were drawn in one plane
// pass each other so unless the plane is one of the coordinate planes; the sine of their angle tells how much
// further than across a line its crossing strays along it.
std::optional<EdgeMeeting> EdgeMeeting::of(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second) {
  if (!hasLength(first) || !hasLength(second) || areParallel(first, second)) return std::nullopt;
  const DoubleDoubleVector a = exactSpan(first), b = exactSpan(second), n = cross(a, b);
  const DoubleDoubleVector w = DoubleDoubleVector::between(first.startPoint(), second.startPoint());
  const DoubleDouble params[] = {dot(cross(w, b), n) / dot(n, n), dot(cross(w, a), n) / dot(n, n)};
  const double across = roundingOf(first, second) * (strayAt(params[0]) + strayAt(params[1]));
  const double apart = std::fabs((dot(w, n) / length(n)).high);
  if (apart > centerLineTolerance().equalPoint() + across) return std::nullopt;

  EdgeMeeting meeting;
  meeting.base_ = first.startPoint();
  meeting.fromBase_ = (a * params[0] + w + b * params[1]) * 0.5;
  const double lengths[] = {first.length(), second.length()};
  const double sine = length(n).high / (lengths[0] * lengths[1]);
  for (int i = 0; i < 2; ++i) {
    meeting.params_[i] = params[i];
    const double reach = (ZnGeContext::gTol.equalPoint() + across / sine) / lengths[i];
    meeting.settledParams_[i] = settledAtEnd(params[i], reach);
  }
  return meeting;
}

ZnGeVector3d EdgeMeeting::wayFrom(const ZnGePoint3d& place) const {
  return (DoubleDoubleVector::between(place, base_) + fromBase_).rounded();
}

bool areParallel(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second) {
  if (!hasLength(first) || !hasLength(second)) return false;
  ZnGeTol tol = centerLineTolerance();
  const double turn = roundingOf(first, second) * (1.0 / first.length() + 1.0 / second.length());
  tol.setEqualVector(tol.equalVector() + turn);
  return first.isParallelTo(second, tol);
}

bool areColinear(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second) {
  const ZnGeTol& tol = centerLineTolerance();
  return areParallel(first, second) && isOnLineOf(first, second.startPoint(), tol) &&
         isOnLineOf(first, second.endPoint(), tol) && isOnLineOf(second, first.startPoint(), tol) &&
         isOnLineOf(second, first.endPoint(), tol);
}

bool haveOneMiddle(const ZnGeLineSeg3d& first, const ZnGeLineSeg3d& second) {
  const double apart = first.midPoint().distanceTo(second.midPoint());
  return apart <= ZnGeContext::gTol.equalPoint() + roundingOf(first, second);
}

bool isOnLineOf(const ZnGeLineSeg3d& edge, const ZnGePoint3d& point, const ZnGeTol& tol) {
  if (!hasLength(edge)) return false;
  const DoubleDoubleVector along = exactSpan(edge);
  const DoubleDoubleVector to = DoubleDoubleVector::between(edge.startPoint(), point);
  const double beside = (length(cross(to, along)) / length(along)).high;
  const double stray = 1.0 + strayAt(dot(to, along) / dot(along, along));
  return beside <= tol.equalPoint() + stray * roundingOf({edge.startPoint(), edge.endPoint(), point});
}

bool isSamePoint(const ZnGePoint3d& a, const ZnGePoint3d& b) {
  return a.distanceTo(b) <= ZnGeContext::gTol.equalPoint() + roundingOf({a, b});
}

} // namespace torvi
