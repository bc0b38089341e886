#include "interchange/draw/contour_measure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace interchange {

namespace {

constexpr int kSteps = 16; // of the quadrature along one piece

Point2 derivative(const Segment& segment, double t) {
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

// Five-point Gauss-Legendre quadrature of the speed.
double lengthBetween(const Segment& segment, double from, double to) {
  constexpr std::array<double, 3> nodes{0, 0.5384693101056831, 0.9061798459386640};
  constexpr std::array<double, 3> weights{0.5688888888888889, 0.4786286704993665, 0.2369268850561891};
  const double middle = 0.5 * (from + to), half = 0.5 * (to - from);
  double sum = weights[0] * length(derivative(segment, middle));
  for (std::size_t i = 1; i < nodes.size(); ++i)
    for (const double side : {-1.0, 1.0})
      sum += weights[i] * length(derivative(segment, middle + side * half * nodes[i]));
  return half * sum;
}

bool hasConstantSpeed(const Segment& segment) {
  if (segment.kind == SegmentKind::Line) return true;
  return segment.kind == SegmentKind::Arc && length(segment.arc.u) == length(segment.arc.v) &&
         dot(segment.arc.u, segment.arc.v) == 0;
}

double lengthOf(const Segment& segment) {
  if (hasConstantSpeed(segment)) return length(derivative(segment, 0));
  double sum = 0;
  for (int i = 0; i < kSteps; ++i)
    sum += lengthBetween(segment, static_cast<double>(i) / kSteps, static_cast<double>(i + 1) / kSteps);
  return sum;
}

Segment cubicPart(const Segment& whole, double from, double to) {
  // The blossom of the cubic gives the control points of any part.
  const auto blossom = [&whole](double a, double b, double c) {
    const auto mix = [](Point2 p, Point2 q, double t) { return (1 - t) * p + t * q; };
    const Point2 p01 = mix(whole.start, whole.control1, a), p12 = mix(whole.control1, whole.control2, a);
    const Point2 p23 = mix(whole.control2, whole.end, a);
    return mix(mix(p01, p12, b), mix(p12, p23, b), c);
  };
  return Segment::cubic(blossom(from, from, from), blossom(from, from, to), blossom(from, to, to),
                        blossom(to, to, to));
}

} // namespace

ContourMeasure::ContourMeasure(const Contour& contour)
    : contour_(contour) {
  double end = 0;
  for (const Segment& segment : contour.segments) ends_.push_back(end += lengthOf(segment));
}

// Newton's method on the arc length, from the chord's guess; it stays within the piece.
double ContourMeasure::paramAt(std::size_t index, double target) const {
  const Segment& segment = contour_.segments[index];
  const double whole = ends_[index] - (index == 0 ? 0 : ends_[index - 1]);
  if (!(whole > 0)) return 0;
  if (hasConstantSpeed(segment)) return std::clamp(target / whole, 0.0, 1.0);
  double walked = 0;
  int step = 0;
  double stretch = 0;
  for (; step < kSteps; ++step) {
    stretch =
        lengthBetween(segment, static_cast<double>(step) / kSteps, static_cast<double>(step + 1) / kSteps);
    if (walked + stretch >= target || step + 1 == kSteps) break;
    walked += stretch;
  }
  const double lower = static_cast<double>(step) / kSteps, upper = static_cast<double>(step + 1) / kSteps;
  double t = stretch > 0 ? std::clamp(lower + (target - walked) / stretch / kSteps, lower, upper) : lower;
  for (int i = 0; i < 4; ++i) {
    const double speed = interchange::length(derivative(segment, t));
    if (!(speed > 0)) break;
    t = std::clamp(t - (walked + lengthBetween(segment, lower, t) - target) / speed, lower, upper);
  }
  return t;
}

Point2 ContourMeasure::pointAt(double at) const {
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

// Pieces of an eighth of a turn: the tangent handles of 4/3 tan(sweep / 4) then leave the ellipse by about
// four millionths of its radius.
std::vector<Segment> asCubics(const Segment& segment) {
  if (segment.kind != SegmentKind::Arc) return {segment};
  const EllipticArc& arc = segment.arc;
  const int count = std::max(1, static_cast<int>(std::ceil(std::abs(arc.sweep) / (std::numbers::pi / 4))));
  const double step = arc.sweep / count;
  const double handle = 4.0 / 3.0 * std::tan(step / 4);
  const auto tangent = [&arc](double angle) { return std::cos(angle) * arc.v - std::sin(angle) * arc.u; };
  std::vector<Segment> cubics;
  for (int i = 0; i < count; ++i) {
    const double from = arc.start + i * step, to = from + step;
    const Point2 start = i == 0 ? segment.start : cubics.back().end;
    const Point2 end = i + 1 == count ? segment.end : arc.at(to);
    cubics.push_back(Segment::cubic(start, start + handle * tangent(from), end - handle * tangent(to), end));
  }
  return cubics;
}

} // namespace interchange
