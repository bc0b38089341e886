#include "interchange/recognize/contour.h"

#include "interchange/tolerance.h"

#include <cmath>

namespace interchange {

Point2 EllipticArc::at(double angle) const { return center + std::cos(angle) * u + std::sin(angle) * v; }

// The squared radius (u cos + v sin)^2 is extremal where tan(2 t) = 2 u.v / (u.u - v.v).
double EllipticArc::principalAxes(Point2& major, Point2& minor) const {
  const double angle = 0.5 * std::atan2(2 * dot(u, v), dot(u, u) - dot(v, v));
  major = std::cos(angle) * u + std::sin(angle) * v;
  minor = std::cos(angle) * v - std::sin(angle) * u;
  return angle;
}

bool EllipticArc::isCircular(double rounding) const {
  Point2 major, minor;
  principalAxes(major, minor);
  const double longer = length(major);
  // Rounding may explain a difference on a small circle, but never more than a percent.
  const double slack = std::fmax(tolerance::kAxesDiffer * longer, std::fmin(rounding, longer / 100));
  return longer - length(minor) <= slack;
}

Segment Segment::line(Point2 start, Point2 end) {
  Segment segment;
  segment.start = start;
  segment.end = end;
  return segment;
}

Segment Segment::cubic(Point2 start, Point2 control1, Point2 control2, Point2 end) {
  Segment segment = line(start, end);
  segment.kind = SegmentKind::Cubic;
  segment.control1 = control1;
  segment.control2 = control2;
  return segment;
}

Segment Segment::quadratic(Point2 start, Point2 control, Point2 end) {
  return cubic(start, start + (2.0 / 3.0) * (control - start), end + (2.0 / 3.0) * (control - end), end);
}

Segment Segment::ellipticArc(const EllipticArc& arc) {
  Segment segment = line(arc.at(arc.start), arc.at(arc.start + arc.sweep));
  segment.kind = SegmentKind::Arc;
  segment.arc = arc;
  return segment;
}

Point2 Segment::at(double t) const {
  const double s = 1 - t;
  switch (kind) {
  case SegmentKind::Line:
    break;
  case SegmentKind::Cubic:
    return (s * s * s) * start + (3 * s * s * t) * control1 + (3 * s * t * t) * control2 + (t * t * t) * end;
  case SegmentKind::Arc:
    return arc.at(arc.start + t * arc.sweep);
  }
  return s * start + t * end;
}

namespace {

// Ends of a cubic may carry their control point on top of them; the next one then gives the direction.
Point2 firstDirection(Point2 from, Point2 first, Point2 second, Point2 last) {
  if (length(first - from) > tolerance::kZeroLength) return first - from;
  if (length(second - from) > tolerance::kZeroLength) return second - from;
  return last - from;
}

Point2 arcTangent(const EllipticArc& arc, double angle) {
  const Point2 growing = std::cos(angle) * arc.v - std::sin(angle) * arc.u;
  return arc.sweep < 0 ? -1.0 * growing : growing;
}

} // namespace

Point2 Segment::startTangent() const {
  if (kind == SegmentKind::Cubic) return firstDirection(start, control1, control2, end);
  return kind == SegmentKind::Arc ? arcTangent(arc, arc.start) : end - start;
}

Point2 Segment::endTangent() const {
  if (kind == SegmentKind::Cubic) return -1.0 * firstDirection(end, control2, control1, start);
  return kind == SegmentKind::Arc ? arcTangent(arc, arc.start + arc.sweep) : end - start;
}

void Contour::transform(const Affine& map) {
  for (Segment& segment : segments) {
    segment.start = map.apply(segment.start);
    segment.end = map.apply(segment.end);
    segment.control1 = map.apply(segment.control1);
    segment.control2 = map.apply(segment.control2);
    segment.arc.center = map.apply(segment.arc.center);
    segment.arc.u = map.applyVector(segment.arc.u);
    segment.arc.v = map.applyVector(segment.arc.v);
  }
}

bool Contour::isUsable() const {
  for (const Segment& segment : segments) {
    bool usable = interchange::isUsable(segment.start) && interchange::isUsable(segment.end);
    if (segment.kind == SegmentKind::Cubic) {
      usable = usable && interchange::isUsable(segment.control1) && interchange::isUsable(segment.control2);
    } else if (segment.kind == SegmentKind::Arc) {
      usable = usable && interchange::isUsable(segment.arc.center) && interchange::isUsable(segment.arc.u) &&
               interchange::isUsable(segment.arc.v) && std::isfinite(segment.arc.sweep);
    }
    if (!usable) return false;
  }
  return true;
}

} // namespace interchange
