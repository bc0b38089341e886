// A contour as drawn: straight, cubic and elliptic pieces end to end, before anything is recognized.
#pragma once

#include "quorl/ge/matrix2d.h"

#include <vector>

namespace interchange {

// center + cos(angle) u + sin(angle) v; u and v are any conjugate half diameters, so that an affine map of
// the arc maps the three and leaves the angles. sweep is signed in the sense from u to v.
struct EllipticArc {
  ZnGePoint2d center;
  ZnGeVector2d u{1, 0};
  ZnGeVector2d v{0, 1};
  double start = 0;
  double sweep = 0;

  ZnGePoint2d at(double angle) const;
  // The half axes: major first and perpendicular to minor. Returns the angle of the major axis' end.
  double principalAxes(ZnGeVector2d& major, ZnGeVector2d& minor) const;
  bool isWholeTurn() const;
  // Equal half axes but for the rounding of the numbers; `rounding` is absolute.
  bool isCircular(double rounding) const;
};

enum class SegmentKind { Line, Cubic, Arc };

struct Segment {
  SegmentKind kind = SegmentKind::Line;
  ZnGePoint2d start;
  ZnGePoint2d end;
  ZnGePoint2d control1; // cubic only
  ZnGePoint2d control2; // cubic only
  EllipticArc arc;      // arc only; start and end hold its ends

  static Segment line(ZnGePoint2d start, ZnGePoint2d end);
  static Segment cubic(ZnGePoint2d start, ZnGePoint2d control1, ZnGePoint2d control2, ZnGePoint2d end);
  // The same curve with one degree more.
  static Segment quadratic(ZnGePoint2d start, ZnGePoint2d control, ZnGePoint2d end);
  static Segment ellipticArc(const EllipticArc& arc);

  // Point at 0..1 of the piece.
  ZnGePoint2d at(double t) const;
  // Directions of travel, not normalised; a cubic with coinciding control points takes the next one.
  ZnGeVector2d startTangent() const;
  ZnGeVector2d endTangent() const;
};

struct Contour {
  std::vector<Segment> segments;
  bool closed = false;

  void transform(const ZnGeMatrix2d& map);
  // False when a point is infinite, undefined or absurdly far: nothing can be fitted to it.
  bool isUsable() const;
};

} // namespace interchange
