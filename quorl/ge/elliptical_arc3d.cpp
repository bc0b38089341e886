#include "quorl/ge/elliptical_arc3d.h"

#include <algorithm>
#include <cmath>

#include "quorl/ge/arc_length.h"
#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/conic_span.h"
#include "quorl/ge/polynomial_roots.h"

namespace {

ZnGe::ConicSpan spanOf(const ZnGeEllipticalArc3d& arc) {
  return {arc.center(), arc.majorAxis(), arc.minorAxis(), arc.startParam(), arc.endParam()};
}

// Calls `visit` with every parameter at which the distance from the point (x, y), in the frame of the half
// axes a and b, to the full ellipse can be least.
//
// The derivative of half the squared distance is k sin t cos t + a x sin t - b y cos t with k = b^2 - a^2.
// Substituting the tangent of half the angle makes it a quartic in u; the half of the ellipse around t = 0
// has u in [-1, 1], and the other half is the same problem for the point (-x, -y).
template<class Visit> void visitFootPoints(double a, double b, double x, double y, const Visit& visit) {
  const double k = b * b - a * a;
  for (const double side : {1.0, -1.0}) {
    const double along = side * a * x, across = side * b * y;
    const ZnGe::QuarticRoots roots =
        ZnGe::quarticRootsInUnitRange({-across, 2.0 * (along + k), 0.0, 2.0 * (along - k), across});
    for (int i = 0; i < roots.count; ++i) {
      visit(2.0 * std::atan(roots.values[i]) + (side < 0.0 ? ZnGe::kPi : 0.0));
    }
  }
}

} // namespace

ZnGeEllipticalArc3d::ZnGeEllipticalArc3d(const ZnGePoint3d& center, const ZnGeVector3d& majorAxis,
                                         const ZnGeVector3d& minorAxis, double startParam, double endParam)
    : center_(center) {
  setConjugate(majorAxis, minorAxis, startParam, endParam);
}

ZnGeEllipticalArc3d::ZnGeEllipticalArc3d(const ZnGeCircArc3d& arc)
    : center_(arc.center())
    , major_(arc.referenceVector() * arc.radius())
    , minor_(arc.normal().crossProduct(arc.referenceVector()) * arc.radius())
    , start_(arc.startAng())
    , end_(arc.endAng()) {}

// The squared radius of p cos t + q sin t is extreme where tan 2t = 2 p.q / (p.p - q.q); the arc tangent of
// both parts picks the maximum. Equal perpendicular vectors are a circle, whose axes are left alone.
void ZnGeEllipticalArc3d::setConjugate(const ZnGeVector3d& first, const ZnGeVector3d& second,
                                       double startParam, double endParam) {
  const double mixed = first.dotProduct(second);
  const double excess = first.lengthSquared() - second.lengthSquared();
  const double limit = ZnGe::kSingularRatio * (first.lengthSquared() + second.lengthSquared());
  const bool isPrincipal = std::fabs(mixed) <= limit && excess >= -limit;
  major_ = first;
  minor_ = second;
  setParams(startParam, endParam);
  if (isPrincipal) return;
  const double shift = 0.5 * std::atan2(2.0 * mixed, excess);
  const auto [s, c] = ZnGe::sinCos(shift);
  major_ = first * c + second * s;
  minor_ = second * c - first * s;
  const double span = end_ - start_;
  setParams(startParam - shift, startParam - shift + span);
}

ZnGeVector3d ZnGeEllipticalArc3d::normal() const {
  const ZnGeVector3d across = major_.crossProduct(minor_);
  const double size = across.length();
  return size > 0.0 ? across / size : major_.perpVector();
}

ZnGeEllipticalArc3d& ZnGeEllipticalArc3d::setCenter(const ZnGePoint3d& center) {
  center_ = center;
  return *this;
}

ZnGeEllipticalArc3d& ZnGeEllipticalArc3d::setParams(double startParam, double endParam) {
  const double raisedEnd = ZnGe::endAngleAbove(startParam, endParam);
  start_ = ZnGe::normalizeAngle(startParam);
  // An end that needs no turning is kept to the last bit.
  end_ = start_ == startParam ? raisedEnd : start_ + (raisedEnd - startParam);
  return *this;
}

ZnGeEllipticalArc3d& ZnGeEllipticalArc3d::transformBy(const ZnGeMatrix3d& matrix) {
  center_.transformBy(matrix);
  setConjugate(matrix * major_, matrix * minor_, start_, end_);
  return *this;
}

bool ZnGeEllipticalArc3d::isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  const auto& arc = static_cast<const ZnGeEllipticalArc3d&>(other);
  // Five points determine a conic, and their order the sense.
  const auto isSameAt = [&](double share) {
    return evalPoint(start_ + (end_ - start_) * share)
        .isEqualTo(arc.evalPoint(arc.start_ + (arc.end_ - arc.start_) * share), tol);
  };
  return center_.isEqualTo(arc.center_, tol) && isSameAt(0.0) && isSameAt(0.25) && isSameAt(0.5) &&
         isSameAt(0.75) && isSameAt(1.0);
}

ZnGePoint3d ZnGeEllipticalArc3d::evalPoint(double param) const { return spanOf(*this).pointAt(param); }

ZnGeVector3d ZnGeEllipticalArc3d::evaluateDerivative(double param) const {
  return spanOf(*this).derivativeAt(param);
}

ZnGeEllipticalArc3d& ZnGeEllipticalArc3d::reverseParam() {
  minor_.negate();
  // Seen from the other side every parameter changes its sign.
  return setParams(-end_, -start_);
}

bool ZnGeEllipticalArc3d::isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol) const {
  kind = ZnGe::kEllipticalArc3d;
  if (length() <= tol.equalPoint()) {
    kind = ZnGe::kPointEntity3d;
  } else if (minorRadius() <= tol.equalPoint()) {
    kind = ZnGe::kLineSeg3d;
  }
  return kind != ZnGe::kEllipticalArc3d;
}

double ZnGeEllipticalArc3d::length() const {
  const ZnGe::ConicSpan span = spanOf(*this);
  const auto speed = [&span](double t) { return span.derivativeAt(t).length(); };
  // Broken at the quarter points, where a flat ellipse turns sharply.
  double sum = 0.0;
  for (double low = start_; low < end_;) {
    const double nextQuarter = (std::floor(low / ZnGe::kHalfPi) + 1.0) * ZnGe::kHalfPi;
    const double high = std::min(end_, nextQuarter > low ? nextQuarter : nextQuarter + ZnGe::kHalfPi);
    sum += ZnGe::arcLength(speed, low, high);
    low = high;
  }
  return sum;
}

ZnGeBoundBlock3d ZnGeEllipticalArc3d::boundBox() const { return spanOf(*this).box(); }

void ZnGeEllipticalArc3d::appendSamplePoints(double chordHeight, std::vector<ZnGePoint3d>& points) const {
  spanOf(*this).appendSamples(chordHeight, points);
}

double ZnGeEllipticalArc3d::nearestParam(const ZnGePoint3d& point) const {
  const ZnGe::ConicSpan span = spanOf(*this);
  double best = start_;
  double bestDistance = point.distanceTo(span.pointAt(start_));
  const auto consider = [&](double param) {
    // Outside the span clampParam gives an end, which is a candidate of its own right.
    const double inside = span.clampParam(param);
    const double distance = point.distanceTo(span.pointAt(inside));
    if (distance < bestDistance) best = inside, bestDistance = distance;
  };
  consider(end_);

  const double a = majorRadius(), b = minorRadius();
  if (!(a > 0.0)) return best;
  const ZnGeVector3d toPoint = point - center_;
  const double x = toPoint.dotProduct(major_) / a;
  const double y = b > 0.0 ? toPoint.dotProduct(minor_) / b : 0.0;
  // Feet at two of the vertices lie at the very ends of the ranges that are searched below, where rounding
  // may hide them.
  for (int quarter = 0; quarter < 4; ++quarter) consider(quarter * ZnGe::kHalfPi);
  // To unit size, so that the precision of the roots does not depend on the drawing's.
  visitFootPoints(1.0, b / a, x / a, y / a, consider);
  return best;
}
