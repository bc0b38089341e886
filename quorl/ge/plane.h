// An unbounded plane. A default one is the xy plane.
#pragma once

#include "quorl/ge/planar_ent.h"

class ZnGePlane : public ZnGePlanarEnt {
public:
  ZnGePlane() = default;
  // The u axis is the normal's perpVector. A zero normal counts as z.
  ZnGePlane(const ZnGePoint3d& origin, const ZnGeVector3d& normal) { set(origin, normal); }
  // Plane coordinates along these axes; v is made perpendicular to u. Parallel axes give the plane of the
  // first constructor with normal z.
  ZnGePlane(const ZnGePoint3d& origin, const ZnGeVector3d& uAxis, const ZnGeVector3d& vAxis);
  ZnGePlane& set(const ZnGePoint3d& origin, const ZnGeVector3d& normal);

  ZnGe::EntityId type() const override { return ZnGe::kPlane; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kPlane || ZnGePlanarEnt::isKindOf(id);
  }
  ZnGePlane* copy() const override { return new ZnGePlane(*this); }
};
