#include "quorl/ge/conic_span.h"

#include <algorithm>
#include <cmath>

namespace ZnGe {

namespace {

// Widens [low, high] by the extremes of u cos t + v sin t that the span reaches: they lie where the two parts
// pull alike, at atan2(v, u), and half a turn on.
void addExtremes(const ConicSpan& span, double center, double u, double v, double& low, double& high) {
  const double peak = std::atan2(v, u);
  const double reach = std::hypot(u, v);
  if (isAngleBetween(peak, span.start, span.end)) high = std::max(high, center + reach);
  if (isAngleBetween(peak + kPi, span.start, span.end)) low = std::min(low, center - reach);
}

} // namespace

ZnGePoint3d ConicSpan::pointAt(double param) const {
  const auto [s, c] = sinCos(param);
  return center + u * c + v * s;
}

ZnGeVector3d ConicSpan::derivativeAt(double param) const {
  const auto [s, c] = sinCos(param);
  return v * c - u * s;
}

ZnGeBoundBlock3d ConicSpan::box() const {
  const ZnGeBoundBlock3d ends(pointAt(start), pointAt(end));
  ZnGePoint3d low = ends.min(), high = ends.max();
  addExtremes(*this, center.x, u.x, v.x, low.x, high.x);
  addExtremes(*this, center.y, u.y, v.y, low.y, high.y);
  addExtremes(*this, center.z, u.z, v.z, low.z, high.z);
  return {low, high};
}

// A chord over the angle a departs from a circle of radius r by r (1 - cos(a/2)). An ellipse is the image of
// the unit circle under a map that stretches no direction by more than its longer half axis, which bounds its
// chords in the same way.
void ConicSpan::appendSamples(double chordHeight, std::vector<ZnGePoint3d>& points) const {
  const double size = std::max(u.length(), v.length());
  const double ratio = size > 0.0 ? std::max(chordHeight / size, kFinestChordRatio) : 1.0;
  // A quarter turn is the widest step: coarser, and a circle is no longer seen as round.
  const double step = ratio < 1.0 ? std::min(2.0 * std::acos(1.0 - ratio), kHalfPi) : kHalfPi;
  const int count = std::max(1, static_cast<int>(std::ceil((end - start) / step)));
  points.reserve(points.size() + count + 1);
  for (int i = 0; i < count; ++i) points.push_back(pointAt(start + (end - start) * i / count));
  points.push_back(pointAt(end));
}

double ConicSpan::clampParam(double param) const {
  double angle = normalizeAngle(param);
  if (angle < start) angle += kTwoPi;
  if (angle <= end) return angle;
  return angle - end <= start + kTwoPi - angle ? end : start;
}

} // namespace ZnGe
