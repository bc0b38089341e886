#include "quorl/ge/matrix2d.h"

#include "quorl/ge/angles.h"

ZnGeMatrix2d ZnGeMatrix2d::rotation(double angle, const ZnGePoint2d& center) {
  const auto [s, c] = ZnGe::sinCos(angle);
  const ZnGeMatrix2d turn(ZnGePoint2d::kOrigin, {c, s}, {-s, c});
  return {center - turn * center.asVector(), turn.x_, turn.y_};
}

// Written so that an undefined determinant counts as singular.
bool ZnGeMatrix2d::isSingular() const {
  const double area = x_.length() * y_.length();
  return !(std::fabs(det()) > ZnGe::kSingularRatio * area) || !std::isfinite(det());
}

bool ZnGeMatrix2d::isUniformlyScaled(const ZnGeTol& tol) const {
  const double slack = tol.equalVector() * scale();
  const auto isNear = [slack](const ZnGeVector2d& v, const ZnGeVector2d& w) {
    return std::fabs(v.x - w.x) <= slack && std::fabs(v.y - w.y) <= slack;
  };
  return isNear(y_, x_.perpVector()) || isNear(y_, -x_.perpVector());
}

ZnGeMatrix2d ZnGeMatrix2d::inverse() const {
  if (isSingular()) return kIdentity;
  const double area = det();
  const ZnGeMatrix2d linear(ZnGePoint2d::kOrigin, {y_.y / area, -x_.y / area}, {-y_.x / area, x_.x / area});
  return {ZnGePoint2d::kOrigin - linear * origin_.asVector(), linear.x_, linear.y_};
}
