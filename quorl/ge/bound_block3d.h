// A box along the world axes: the extents of geometry.
#pragma once

#include "quorl/ge/matrix3d.h"

class ZnGeBoundBlock3d {
public:
  // Empty: it holds no point and adds nothing to another box.
  ZnGeBoundBlock3d() = default;
  // The box of two opposite corners, in any order.
  ZnGeBoundBlock3d(const ZnGePoint3d& corner, const ZnGePoint3d& opposite);

  bool isEmpty() const { return isEmpty_; }
  // The origin while the box is empty.
  const ZnGePoint3d& min() const { return min_; }
  const ZnGePoint3d& max() const { return max_; }
  ZnGePoint3d center() const { return min_ + (max_ - min_) * 0.5; }
  ZnGeVector3d diagonal() const { return max_ - min_; }

  // Both grow the box and return it.
  ZnGeBoundBlock3d& addPoint(const ZnGePoint3d& point);
  ZnGeBoundBlock3d& addBox(const ZnGeBoundBlock3d& box);
  // The box along the world axes around the transformed box; usually larger than that of what was inside.
  ZnGeBoundBlock3d& transformBy(const ZnGeMatrix3d& matrix);

  // Points outside by no more than equalPoint along each axis are contained.
  bool contains(const ZnGePoint3d& point, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool contains(const ZnGeBoundBlock3d& box, const ZnGeTol& tol = ZnGeContext::gTol) const;
  // 0 inside; infinity for an empty box.
  double distanceTo(const ZnGePoint3d& point) const;

private:
  ZnGePoint3d min_;
  ZnGePoint3d max_;
  bool isEmpty_ = true;
};
