#include "interchange/draw/contour_measure.h"

#include "quorl/ge/angles.h"
#include "quorl/ge/arc_length.h"

#include <algorithm>
#include <cmath>

namespace interchange {

namespace {

// A place on a piece is found to this share of the piece's length.
constexpr double kLengthShare = 1e-12;

ZnGeVector2d derivative(const Segment& segment, double t) {
  switch (segment.kind) {
  case SegmentKind::Line:
    break;
  case SegmentKind::Cubic: {
    const double s = 1 - t;
    return (3 * s * s) * (segment.control1 - segment.start) +
           (6 * s * t) * (segment.control2 - segment.control1) +
           (3 * t * t) * (segment.end - segment.control2);
  }
  case SegmentKind::Arc: {
    const double angle = segment.arc.start + t * segment.arc.sweep;
    return segment.arc.sweep * (std::cos(angle) * segment.arc.v - std::sin(angle) * segment.arc.u);
  }
  }
  return segment.end - segment.start;
}

double lengthBetween(const Segment& segment, double from, double to) {
  return ZnGe::arcLength([&segment](double t) { return derivative(segment, t).length(); }, from, to);
}

bool hasConstantSpeed(const Segment& segment) {
  if (segment.kind == SegmentKind::Line) return true;
  return segment.kind == SegmentKind::Arc && segment.arc.u.length() == segment.arc.v.length() &&
         segment.arc.u.dotProduct(segment.arc.v) == 0;
}

double lengthOf(const Segment& segment) {
  return hasConstantSpeed(segment) ? derivative(segment, 0).length() : lengthBetween(segment, 0, 1);
}

Segment cubicPart(const Segment& whole, double from, double to) {
  // The blossom of the cubic gives the control points of any part.
  const auto blossom = [&whole](double a, double b, double c) {
    const auto mix = [](ZnGePoint2d p, ZnGePoint2d q, double t) {
      return ZnGePoint2d::kOrigin + (1 - t) * p.asVector() + t * q.asVector();
    };
    const ZnGePoint2d p01 = mix(whole.start, whole.control1, a), p12 = mix(whole.control1, whole.control2, a);
    const ZnGePoint2d p23 = mix(whole.control2, whole.end, a);
    return mix(mix(p01, p12, b), mix(p12, p23, b), c);
  };
  return Segment::cubic(blossom(from, from, from), blossom(from, from, to), blossom(from, to, to),
                        blossom(to, to, to));
}

// The piece between two of its parameters, 0 <= from <= to <= 1.
Segment subSegment(const Segment& segment, double from, double to) {
  if (!(from > 0) && !(to < 1)) return segment;
  switch (segment.kind) {
  case SegmentKind::Line:
    break;
  case SegmentKind::Cubic:
    return cubicPart(segment, from, to);
  case SegmentKind::Arc: {
    EllipticArc arc = segment.arc;
    arc.start += from * arc.sweep;
    arc.sweep *= to - from;
    return Segment::ellipticArc(arc);
  }
  }
  return Segment::line(segment.at(from), segment.at(to));
}

} // namespace

ContourMeasure::ContourMeasure(const Contour& contour)
    : contour_(contour) {
  double end = 0;
  for (const Segment& segment : contour.segments) ends_.push_back(end += lengthOf(segment));
}

// Newton's method on the arc length, kept between the parameters that are known to be too low and too high.
double ContourMeasure::paramAt(std::size_t index, double target) const {
  constexpr int kMostSteps = 40;
  const Segment& segment = contour_.segments[index];
  const double whole = ends_[index] - (index == 0 ? 0 : ends_[index - 1]);
  if (!(whole > 0)) return 0;
  double t = std::clamp(target / whole, 0.0, 1.0);
  if (hasConstantSpeed(segment)) return t;
  double low = 0, high = 1;
  for (int i = 0; i < kMostSteps; ++i) {
    const double off = lengthBetween(segment, 0, t) - target;
    if (std::abs(off) <= kLengthShare * whole) break;
    (off < 0 ? low : high) = t;
    const double next = t - off / derivative(segment, t).length();
    t = next > low && next < high ? next : 0.5 * (low + high);
  }
  return t;
}

ZnGePoint2d ContourMeasure::pointAt(double at) const {
  if (ends_.empty()) return {};
  const auto found = std::lower_bound(ends_.begin(), ends_.end(), at);
  const std::size_t index =
      std::min<std::size_t>(static_cast<std::size_t>(found - ends_.begin()), ends_.size() - 1);
  return contour_.segments[index].at(paramAt(index, at - (index == 0 ? 0 : ends_[index - 1])));
}

Contour ContourMeasure::part(double from, double to) const {
  Contour part;
  const double whole = length();
  appendPart(std::max(from, 0.0), std::min(to, whole), part);
  if (contour_.closed && to > whole) appendPart(0, std::min(to - whole, whole), part);
  return part;
}

void ContourMeasure::appendPart(double from, double to, Contour& part) const {
  for (std::size_t i = 0; i < ends_.size(); ++i) {
    const double begin = i == 0 ? 0 : ends_[i - 1];
    if (ends_[i] <= from || begin >= to) continue;
    const double first = from <= begin ? 0 : paramAt(i, from - begin);
    const double last = to >= ends_[i] ? 1 : paramAt(i, to - begin);
    if (last > first) part.segments.push_back(subSegment(contour_.segments[i], first, last));
  }
}

// Pieces of an eighth of a turn: the tangent handles of 4/3 tan(sweep / 4) then leave the ellipse by about
// four millionths of its radius.
std::vector<Segment> asCubics(const Segment& segment) {
  if (segment.kind != SegmentKind::Arc) return {segment};
  const EllipticArc& arc = segment.arc;
  const int count = std::max(1, static_cast<int>(std::ceil(std::abs(arc.sweep) / (ZnGe::kPi / 4))));
  const double step = arc.sweep / count;
  const double handle = 4.0 / 3.0 * std::tan(step / 4);
  const auto tangent = [&arc](double angle) { return std::cos(angle) * arc.v - std::sin(angle) * arc.u; };
  std::vector<Segment> cubics;
  for (int i = 0; i < count; ++i) {
    const double from = arc.start + i * step, to = from + step;
    const ZnGePoint2d start = i == 0 ? segment.start : cubics.back().end;
    const ZnGePoint2d end = i + 1 == count ? segment.end : arc.at(to);
    cubics.push_back(Segment::cubic(start, start + handle * tangent(from), end - handle * tangent(to), end));
  }
  return cubics;
}

} // namespace interchange
