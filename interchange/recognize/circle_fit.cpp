#include "interchange/recognize/circle_fit.h"

#include "interchange/tolerance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace interchange {

namespace {

// Steps along a piece when its distance from a circle is measured. A cubic near an arc leaves it at most
// three times each way, so that two dozen steps see every swing.
constexpr int kSteps = 24;

} // namespace

void CircleFit::add(ZnGePoint2d point, double weight) {
  const ZnGeVector2d p = point - origin_;
  const double z = p.lengthSquared();
  w_ += weight;
  x_ += weight * p.x;
  y_ += weight * p.y;
  z_ += weight * z;
  xx_ += weight * p.x * p.x;
  xy_ += weight * p.x * p.y;
  yy_ += weight * p.y * p.y;
  xz_ += weight * p.x * z;
  yz_ += weight * p.y * z;
}

void CircleFit::add(const Segment& segment) {
  const ZnGePoint2d middle = segment.at(0.5);
  const double weight = segment.start.distanceTo(middle) + middle.distanceTo(segment.end);
  add(segment.start, weight / 2);
  add(segment.end, weight / 2);
  if (segment.kind == SegmentKind::Line) return; // the middle of a side is where a polygon is farthest off
  add(middle, weight);
  if (segment.kind != SegmentKind::Arc) return;
  // An arc of nearly a turn has its ends in one place; the quarters hold the circle open.
  add(segment.at(0.25), weight);
  add(segment.at(0.75), weight);
}

// With the means taken out, the two normal equations for the center are a symmetric 2 x 2 system.
std::optional<CenterRadius> CircleFit::solve() const {
  if (!(w_ > 0)) return std::nullopt;
  const double mx = x_ / w_, my = y_ / w_, mz = z_ / w_;
  const double sxx = xx_ / w_ - mx * mx, syy = yy_ / w_ - my * my, sxy = xy_ / w_ - mx * my;
  const double sxz = xz_ / w_ - mx * mz, syz = yz_ / w_ - my * mz;
  const double det = sxx * syy - sxy * sxy;
  const double spread = sxx + syy;
  if (!(det > tolerance::kFlatMap * spread * spread) || !(spread > 0)) return std::nullopt;
  const ZnGeVector2d center{(sxz * syy - syz * sxy) / (2 * det), (syz * sxx - sxz * sxy) / (2 * det)};
  const double squared = mz - 2 * (center.x * mx + center.y * my) + center.lengthSquared();
  if (!(squared > 0)) return std::nullopt;
  return CenterRadius{origin_ + center, std::sqrt(squared)};
}

double largestDeviation(std::span<const Segment> segments, const CenterRadius& circle) {
  double largest = 0;
  for (const Segment& segment : segments) {
    std::array<double, kSteps + 1> off;
    for (int i = 0; i <= kSteps; ++i) {
      const double radius = segment.at(static_cast<double>(i) / kSteps).distanceTo(circle.center);
      off[static_cast<std::size_t>(i)] = std::abs(radius - circle.radius);
    }
    const auto most = std::max_element(off.begin(), off.end());
    largest = std::fmax(largest, *most);
    if (most == off.begin() || most + 1 == off.end()) continue;
    // The vertex of the parabola through the three highest is where the curve is farthest off.
    const double bend = 2 * *most - most[-1] - most[1];
    const double slope = most[1] - most[-1];
    if (bend > 0) largest = std::fmax(largest, *most + slope * slope / (8 * bend));
  }
  return largest;
}

double sweepAbout(const Segment& segment, ZnGePoint2d center) {
  double sweep = 0;
  ZnGeVector2d last = segment.start - center;
  constexpr int kParts = 4; // a whole turn in one arc still has parts of less than half a turn
  for (int i = 1; i <= kParts; ++i) {
    const ZnGeVector2d next = segment.at(static_cast<double>(i) / kParts) - center;
    sweep += last.signedAngleTo(next);
    last = next;
  }
  return sweep;
}

} // namespace interchange
