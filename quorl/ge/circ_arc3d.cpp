#include "quorl/ge/circ_arc3d.h"

#include <algorithm>

#include "quorl/ge/conic_span.h"
#include "quorl/ge/plane.h"

namespace {

ZnGeVector3d unitOr(const ZnGeVector3d& v, const ZnGeVector3d& fallback) {
  const double size = v.length();
  return size > 0.0 ? v / size : fallback;
}

// The part of the reference that is perpendicular to the unit normal, as a unit vector.
ZnGeVector3d perpendicularPart(const ZnGeVector3d& reference, const ZnGeVector3d& normal) {
  const ZnGeVector3d part = reference - normal * reference.dotProduct(normal);
  const bool isAlongNormal = !(part.length() > ZnGe::kSingularRatio * reference.length());
  return isAlongNormal ? normal.perpVector() : part / part.length();
}

ZnGe::ConicSpan spanOf(const ZnGeCircArc3d& arc) {
  return {arc.center(), arc.referenceVector() * arc.radius(),
          arc.normal().crossProduct(arc.referenceVector()) * arc.radius(), arc.startAng(), arc.endAng()};
}

} // namespace

ZnGeCircArc3d::ZnGeCircArc3d(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius)
    : center_(center)
    , normal_(unitOr(normal, ZnGeVector3d::kZAxis))
    , reference_(normal_.perpVector())
    , radius_(std::fabs(radius)) {}

ZnGeCircArc3d::ZnGeCircArc3d(const ZnGePoint3d& center, const ZnGeVector3d& normal,
                             const ZnGeVector3d& reference, double radius, double startAng, double endAng)
    : center_(center)
    , normal_(unitOr(normal, ZnGeVector3d::kZAxis))
    , reference_(perpendicularPart(reference, normal_))
    , radius_(std::fabs(radius)) {
  setAngles(startAng, endAng);
}

void ZnGeCircArc3d::getPlane(ZnGePlane& plane) const { plane.set(center_, normal_); }

ZnGeCircArc3d& ZnGeCircArc3d::setCenter(const ZnGePoint3d& center) {
  center_ = center;
  return *this;
}

ZnGeCircArc3d& ZnGeCircArc3d::setRadius(double radius) {
  radius_ = std::fabs(radius);
  return *this;
}

ZnGeCircArc3d& ZnGeCircArc3d::setAngles(double startAng, double endAng) {
  const double span = ZnGe::endAngleAbove(startAng, endAng) - startAng;
  start_ = ZnGe::normalizeAngle(startAng);
  // An end that needs no turning is kept to the last bit.
  end_ = start_ == startAng ? ZnGe::endAngleAbove(startAng, endAng) : start_ + span;
  return *this;
}

ZnGeCircArc3d& ZnGeCircArc3d::transformBy(const ZnGeMatrix3d& matrix) {
  const ZnGeVector3d first = matrix * reference_;
  const ZnGeVector3d second = matrix * normal_.crossProduct(reference_);
  const ZnGeVector3d across = first.crossProduct(second);
  center_.transformBy(matrix);
  radius_ *= std::max(first.length(), second.length());
  // A map that flattens the plane of the arc leaves no normal; the old one stands in.
  if (!(across.length() > ZnGe::kSingularRatio * first.length() * second.length())) return *this;
  normal_ = across / across.length();
  reference_ = perpendicularPart(first, normal_);
  return *this;
}

bool ZnGeCircArc3d::isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  const auto& arc = static_cast<const ZnGeCircArc3d&>(other);
  if (!center_.isEqualTo(arc.center_, tol) || std::fabs(radius_ - arc.radius_) > tol.equalPoint())
    return false;
  if (!normal_.isEqualTo(arc.normal_, tol) || isClosed(tol) != arc.isClosed(tol)) return false;
  // Equal ends alone would not tell a short arc from a nearly full one.
  const bool isSameLength = std::fabs(length() - arc.length()) <= 2.0 * tol.equalPoint();
  return isClosed(tol) || (isSameLength && startPoint().isEqualTo(arc.startPoint(), tol) &&
                           endPoint().isEqualTo(arc.endPoint(), tol));
}

ZnGePoint3d ZnGeCircArc3d::evalPoint(double param) const { return spanOf(*this).pointAt(param); }

ZnGeVector3d ZnGeCircArc3d::evaluateDerivative(double param) const {
  return spanOf(*this).derivativeAt(param);
}

ZnGeCircArc3d& ZnGeCircArc3d::reverseParam() {
  normal_.negate();
  // Seen from the other side every angle changes its sign; a full circle from 0 keeps its own.
  return setAngles(-end_, -start_);
}

bool ZnGeCircArc3d::isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol) const {
  const bool isPoint = radius_ <= tol.equalPoint() || length() <= tol.equalPoint();
  kind = isPoint ? ZnGe::kPointEntity3d : ZnGe::kCircularArc3d;
  return isPoint;
}

ZnGeBoundBlock3d ZnGeCircArc3d::boundBox() const { return spanOf(*this).box(); }

void ZnGeCircArc3d::appendSamplePoints(double chordHeight, std::vector<ZnGePoint3d>& points) const {
  spanOf(*this).appendSamples(chordHeight, points);
}

double ZnGeCircArc3d::nearestParam(const ZnGePoint3d& point) const {
  const ZnGeVector3d toPoint = point - center_;
  const double x = toPoint.dotProduct(reference_);
  const double y = toPoint.dotProduct(normal_.crossProduct(reference_));
  if (x == 0.0 && y == 0.0) return start_;
  return spanOf(*this).clampParam(std::atan2(y, x));
}
