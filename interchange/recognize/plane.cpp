#include "interchange/recognize/plane.h"

#include "interchange/tolerance.h"

#include <algorithm>
#include <cmath>

namespace interchange {

double length(Point2 v) { return std::hypot(v.x, v.y); }

double distance(Point2 p, Point2 q) { return length(q - p); }

double direction(Point2 v) { return std::atan2(v.y, v.x); }

double angleBetween(Point2 v, Point2 w) { return std::atan2(cross(v, w), dot(v, w)); }

bool isUsable(Point2 p) {
  // Written so that an undefined number fails the comparison.
  return std::abs(p.x) <= tolerance::kLargestCoordinate && std::abs(p.y) <= tolerance::kLargestCoordinate;
}

double Affine::meanScale() const { return std::sqrt(std::abs(determinant())); }

bool Affine::isSimilarity() const {
  const double size = std::max(std::hypot(a, b), std::hypot(c, d));
  const double slack = tolerance::kSimilarity * size;
  const bool turned = std::abs(a - d) <= slack && std::abs(b + c) <= slack;
  const bool mirrored = std::abs(a + d) <= slack && std::abs(b - c) <= slack;
  return turned || mirrored;
}

bool Affine::isFinite() const {
  return std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d) && std::isfinite(e) &&
         std::isfinite(f);
}

Affine Affine::rotation(double radians) {
  const double cosine = std::cos(radians);
  const double sine = std::sin(radians);
  return {cosine, sine, -sine, cosine, 0, 0};
}

Affine operator*(const Affine& outer, const Affine& inner) {
  const Point2 x = outer.applyVector({inner.a, inner.b});
  const Point2 y = outer.applyVector({inner.c, inner.d});
  const Point2 o = outer.apply({inner.e, inner.f});
  return {x.x, x.y, y.x, y.y, o.x, o.y};
}

} // namespace interchange
