#include "interchange/recognize/contour.h"

#include "interchange/recognize/limits.h"
#include "interchange/tolerance.h"

#include "quorl/ge/angles.h"

#include <cmath>

namespace interchange {

ZnGePoint2d EllipticArc::at(double angle) const { return center + std::cos(angle) * u + std::sin(angle) * v; }

// The squared radius (u cos + v sin)^2 is extremal where tan(2 t) = 2 u.v / (u.u - v.v).
double EllipticArc::principalAxes(ZnGeVector2d& major, ZnGeVector2d& minor) const {
  const double angle = 0.5 * std::atan2(2 * u.dotProduct(v), u.lengthSquared() - v.lengthSquared());
  major = std::cos(angle) * u + std::sin(angle) * v;
  minor = std::cos(angle) * v - std::sin(angle) * u;
  return angle;
}

bool EllipticArc::isWholeTurn() const { return std::abs(sweep) > ZnGe::kTwoPi - tolerance::kZeroLength; }

bool EllipticArc::isCircular(double rounding) const {
  ZnGeVector2d major, minor;
  principalAxes(major, minor);
  const double longer = major.length();
  // Rounding may explain a difference on a small circle, but never more than a percent.
  const double slack = std::fmax(tolerance::kAxesDiffer * longer, std::fmin(rounding, longer / 100));
  return longer - minor.length() <= slack;
}

Segment Segment::line(ZnGePoint2d start, ZnGePoint2d end) {
  Segment segment;
  segment.start = start;
  segment.end = end;
  return segment;
}

Segment Segment::cubic(ZnGePoint2d start, ZnGePoint2d control1, ZnGePoint2d control2, ZnGePoint2d end) {
  Segment segment = line(start, end);
  segment.kind = SegmentKind::Cubic;
  segment.control1 = control1;
  segment.control2 = control2;
  return segment;
}

Segment Segment::quadratic(ZnGePoint2d start, ZnGePoint2d control, ZnGePoint2d end) {
  return cubic(start, start + (2.0 / 3.0) * (control - start), end + (2.0 / 3.0) * (control - end), end);
}

Segment Segment::ellipticArc(const EllipticArc& arc) {
  Segment segment = line(arc.at(arc.start), arc.at(arc.start + arc.sweep));
  segment.kind = SegmentKind::Arc;
  segment.arc = arc;
  return segment;
}

ZnGePoint2d Segment::at(double t) const {
  const double s = 1 - t;
  switch (kind) {
  case SegmentKind::Line:
    break;
  case SegmentKind::Cubic:
    return ZnGePoint2d::kOrigin + (s * s * s) * start.asVector() + (3 * s * s * t) * control1.asVector() +
           (3 * s * t * t) * control2.asVector() + (t * t * t) * end.asVector();
  case SegmentKind::Arc:
    return arc.at(arc.start + t * arc.sweep);
  }
  return ZnGePoint2d::kOrigin + s * start.asVector() + t * end.asVector();
}

namespace {

// Ends of a cubic may carry their control point on top of them; the next one then gives the direction.
ZnGeVector2d firstDirection(ZnGePoint2d from, ZnGePoint2d first, ZnGePoint2d second, ZnGePoint2d last) {
  if ((first - from).length() > tolerance::kZeroLength) return first - from;
  if ((second - from).length() > tolerance::kZeroLength) return second - from;
  return last - from;
}

ZnGeVector2d arcTangent(const EllipticArc& arc, double angle) {
  const ZnGeVector2d growing = std::cos(angle) * arc.v - std::sin(angle) * arc.u;
  return arc.sweep < 0 ? -growing : growing;
}

} // namespace

ZnGeVector2d Segment::startTangent() const {
  if (kind == SegmentKind::Cubic) return firstDirection(start, control1, control2, end);
  return kind == SegmentKind::Arc ? arcTangent(arc, arc.start) : end - start;
}

ZnGeVector2d Segment::endTangent() const {
  if (kind == SegmentKind::Cubic) return -firstDirection(end, control2, control1, start);
  return kind == SegmentKind::Arc ? arcTangent(arc, arc.start + arc.sweep) : end - start;
}

void Contour::transform(const ZnGeMatrix2d& map) {
  for (Segment& segment : segments) {
    segment.start = map * segment.start;
    segment.end = map * segment.end;
    segment.control1 = map * segment.control1;
    segment.control2 = map * segment.control2;
    segment.arc.center = map * segment.arc.center;
    segment.arc.u = map * segment.arc.u;
    segment.arc.v = map * segment.arc.v;
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
