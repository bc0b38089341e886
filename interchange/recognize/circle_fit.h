// Least squares circle through weighted points, point by point, without keeping them.
#pragma once

#include "interchange/recognize/contour.h"

#include "quorl/ge/matrix2d.h"

#include <optional>
#include <span>

namespace interchange {

struct CenterRadius {
  ZnGePoint2d center;
  double radius = 0;
};

// Minimises the sum of w (|p - center|^2 - radius^2)^2 (Kasa's linear fit).
class CircleFit {
public:
  // Points are summed about the origin given here; choose one of the points, or digits are lost.
  explicit CircleFit(ZnGePoint2d origin)
      : origin_(origin) {}

  void add(ZnGePoint2d point, double weight);
  // The ends and the points between at which a cubic drawn for a circle touches it: its middle. Weighted
  // with the chord, so that seams and stubs do not pull.
  void add(const Segment& segment);
  // Nothing for fewer than three points or points on one line.
  std::optional<CenterRadius> solve() const;

private:
  ZnGePoint2d origin_;
  double w_ = 0, x_ = 0, y_ = 0, xx_ = 0, xy_ = 0, yy_ = 0, xz_ = 0, yz_ = 0, z_ = 0;
};

// Largest distance of the drawn curve from the circle, found at fixed steps along each piece.
double largestDeviation(std::span<const Segment> segments, const CenterRadius& circle);

// Angle that the piece runs through about the center, signed, also beyond half a turn.
double sweepAbout(const Segment& segment, ZnGePoint2d center);

} // namespace interchange
