#include "quorl/ge/bound_block3d.h"

#include <algorithm>
#include <limits>

namespace {

ZnGePoint3d lowerOf(const ZnGePoint3d& a, const ZnGePoint3d& b) {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
}

ZnGePoint3d upperOf(const ZnGePoint3d& a, const ZnGePoint3d& b) {
  return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

// Whether a is no greater than b along each axis, by up to `slack`.
bool isBelow(const ZnGePoint3d& a, const ZnGePoint3d& b, double slack) {
  return a.x <= b.x + slack && a.y <= b.y + slack && a.z <= b.z + slack;
}

} // namespace

ZnGeBoundBlock3d::ZnGeBoundBlock3d(const ZnGePoint3d& corner, const ZnGePoint3d& opposite)
    : min_(lowerOf(corner, opposite))
    , max_(upperOf(corner, opposite))
    , isEmpty_(false) {}

ZnGeBoundBlock3d& ZnGeBoundBlock3d::addPoint(const ZnGePoint3d& point) {
  return addBox(ZnGeBoundBlock3d(point, point));
}

ZnGeBoundBlock3d& ZnGeBoundBlock3d::addBox(const ZnGeBoundBlock3d& box) {
  if (box.isEmpty_) return *this;
  if (isEmpty_) return *this = box;
  min_ = lowerOf(min_, box.min_);
  max_ = upperOf(max_, box.max_);
  return *this;
}

// Each world coordinate of the image is a sum of three independent terms, one for each side of the box: the
// extremes of the sum are the sums of the extremes.
ZnGeBoundBlock3d& ZnGeBoundBlock3d::transformBy(const ZnGeMatrix3d& matrix) {
  if (isEmpty_) return *this;
  const ZnGePoint3d corner = matrix * min_;
  const ZnGeVector3d size = diagonal();
  ZnGePoint3d lower = corner, upper = corner;
  for (const ZnGeVector3d& side :
       {matrix * ZnGeVector3d(size.x, 0.0, 0.0), matrix * ZnGeVector3d(0.0, size.y, 0.0),
        matrix * ZnGeVector3d(0.0, 0.0, size.z)}) {
    lower += ZnGeVector3d(std::min(side.x, 0.0), std::min(side.y, 0.0), std::min(side.z, 0.0));
    upper += ZnGeVector3d(std::max(side.x, 0.0), std::max(side.y, 0.0), std::max(side.z, 0.0));
  }
  return *this = ZnGeBoundBlock3d(lower, upper);
}

bool ZnGeBoundBlock3d::contains(const ZnGePoint3d& point, const ZnGeTol& tol) const {
  return !isEmpty_ && isBelow(min_, point, tol.equalPoint()) && isBelow(point, max_, tol.equalPoint());
}

bool ZnGeBoundBlock3d::contains(const ZnGeBoundBlock3d& box, const ZnGeTol& tol) const {
  return !box.isEmpty_ && contains(box.min_, tol) && contains(box.max_, tol);
}

double ZnGeBoundBlock3d::distanceTo(const ZnGePoint3d& point) const {
  if (isEmpty_) return std::numeric_limits<double>::infinity();
  const auto outside = [](double value, double low, double high) {
    return std::max({low - value, value - high, 0.0});
  };
  return ZnGeVector3d(outside(point.x, min_.x, max_.x), outside(point.y, min_.y, max_.y),
                      outside(point.z, min_.z, max_.z))
      .length();
}
