// A contour as drawn: straight, cubic and elliptic pieces end to end, before anything is recognized.
#pragma once

#include "interchange/recognize/plane.h"

#include <vector>

namespace interchange {

// center + cos(angle) u + sin(angle) v; u and v are any conjugate half diameters, so that an affine map of
// the arc maps the three and leaves the angles. sweep is signed in the sense from u to v.
struct EllipticArc {
  Point2 center;
  Point2 u{1, 0};
  Point2 v{0, 1};
  double start = 0;
  double sweep = 0;

  Point2 at(double angle) const;
  // The half axes: major first and perpendicular to minor. Returns the angle of the major axis' end.
  double principalAxes(Point2& major, Point2& minor) const;
  // Equal half axes but for the rounding of the numbers; `rounding` is absolute.
  bool isCircular(double rounding) const;
};

enum class SegmentKind { Line, Cubic, Arc };

struct Segment {
  SegmentKind kind = SegmentKind::Line;
  Point2 start;
  Point2 end;
  Point2 control1; // cubic only
  Point2 control2; // cubic only
  EllipticArc arc; // arc only; start and end hold its ends

  static Segment line(Point2 start, Point2 end);
  static Segment cubic(Point2 start, Point2 control1, Point2 control2, Point2 end);
  // The same curve with one degree more.
  static Segment quadratic(Point2 start, Point2 control, Point2 end);
  static Segment ellipticArc(const EllipticArc& arc);

  // Point at 0..1 of the piece.
  Point2 at(double t) const;
  // Directions of travel, not normalised; a cubic with coinciding control points takes the next one.
  Point2 startTangent() const;
  Point2 endTangent() const;
};

struct Contour {
  std::vector<Segment> segments;
  bool closed = false;

  void transform(const Affine& map);
  // False when a point is infinite, undefined or absurdly far: nothing can be fitted to it.
  bool isUsable() const;
};

} // namespace interchange
