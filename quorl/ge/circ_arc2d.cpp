#include "quorl/ge/circ_arc2d.h"

#include <algorithm>

#include "quorl/ge/circumcenter.h"

ZnGeCircArc2d::ZnGeCircArc2d(const ZnGePoint2d& center, double radius)
    : center_(center)
    , radius_(std::fabs(radius)) {}

ZnGeCircArc2d::ZnGeCircArc2d(const ZnGePoint2d& first, const ZnGePoint2d& second, const ZnGePoint2d& third)
    : center_(first)
    , radius_(0.0)
    , end_(0.0) {
  const ZnGeVector2d b = second - first;
  const ZnGeVector2d c = third - first;
  if (!ZnGe::spanCircle(b, c, b.length(), c.length(), third.distanceTo(second))) return;

  const ZnGeVector2d offset = ZnGe::circumcenterOffset(b, c);
  radius_ = offset.length();
  center_ = first + offset;
  reference_ = -offset / radius_;
  isClockwise_ = b.crossProduct(c) < 0.0;
  const ZnGeVector2d toThird = third - center_;
  end_ = ZnGe::normalizeAngle(std::atan2(toThird.dotProduct(secondAxis()), toThird.dotProduct(reference_)));
}

ZnGeCircArc2d& ZnGeCircArc2d::transformBy(const ZnGeMatrix2d& matrix) {
  const ZnGeVector2d first = matrix * reference_;
  const ZnGeVector2d second = matrix * secondAxis();
  center_.transformBy(matrix);
  radius_ *= std::max(first.length(), second.length());
  if (matrix.det() < 0.0) isClockwise_ = !isClockwise_;
  if (first.length() > 0.0) reference_ = first / first.length();
  return *this;
}

bool ZnGeCircArc2d::isEqualTo(const ZnGeEntity2d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  const auto& arc = static_cast<const ZnGeCircArc2d&>(other);
  if (!center_.isEqualTo(arc.center_, tol) || std::fabs(radius_ - arc.radius_) > tol.equalPoint())
    return false;
  if (isClockwise_ != arc.isClockwise_ || isFull() != arc.isFull()) return false;
  const double lengthChange = radius_ * std::fabs((end_ - start_) - (arc.end_ - arc.start_));
  return isFull() ||
         (lengthChange <= 2.0 * tol.equalPoint() && startPoint().isEqualTo(arc.startPoint(), tol) &&
          endPoint().isEqualTo(arc.endPoint(), tol));
}

ZnGePoint2d ZnGeCircArc2d::evalPoint(double param) const {
  const auto [s, c] = ZnGe::sinCos(param);
  return center_ + (reference_ * c + secondAxis() * s) * radius_;
}

bool ZnGeCircArc2d::isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol) const {
  const double span = end_ - start_;
  const double sagitta = radius_ * (1.0 - std::cos(0.5 * span));
  kind = ZnGe::kCircularArc2d;
  if (radius_ <= tol.equalPoint() || radius_ * span <= tol.equalPoint()) {
    kind = ZnGe::kPointEntity3d;
  } else if (sagitta <= tol.equalPoint()) {
    kind = ZnGe::kLine2d;
  }
  return kind != ZnGe::kCircularArc2d;
}

double ZnGeCircArc2d::nearestParam(const ZnGePoint2d& point) const {
  const ZnGeVector2d toPoint = point - center_;
  const double x = toPoint.dotProduct(reference_);
  const double y = toPoint.dotProduct(secondAxis());
  // Every point of the circle is as near to its center.
  if (x == 0.0 && y == 0.0) return start_;
  double angle = ZnGe::normalizeAngle(std::atan2(y, x));
  if (angle < start_) angle += ZnGe::kTwoPi;
  if (angle <= end_) return angle;
  return angle - end_ <= start_ + ZnGe::kTwoPi - angle ? end_ : start_;
}

bool ZnGeCircArc2d::isFull() const { return startPoint().isEqualTo(endPoint()) && end_ - start_ > ZnGe::kPi; }
