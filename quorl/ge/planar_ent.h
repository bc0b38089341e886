// Flat surfaces: an origin, two axes for plane coordinates, and a normal.
#pragma once

#include "quorl/ge/surface.h"

class ZnGePlanarEnt : public ZnGeSurface {
public:
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kPlanarEnt || ZnGeSurface::isKindOf(id);
  }
  ZnGePlanarEnt* copy() const override = 0;

  // Frame; normal is u cross v, all three are unit vectors perpendicular to each other.
  const ZnGePoint3d& pointOnPlane() const { return origin_; }
  const ZnGeVector3d& normal() const { return normal_; }
  void getCoordSystem(ZnGePoint3d& origin, ZnGeVector3d& uAxis, ZnGeVector3d& vAxis) const;

  // Points
  // Positive on the side of the normal.
  double signedDistanceTo(const ZnGePoint3d& point) const { return (point - origin_).dotProduct(normal_); }
  ZnGePoint3d project(const ZnGePoint3d& point) const { return point - normal_ * signedDistanceTo(point); }
  ZnGePoint3d closestPointTo(const ZnGePoint3d& point) const override { return project(point); }

  // Relations
  bool isParallelTo(const ZnGePlanarEnt& other, const ZnGeTol& tol = ZnGeContext::gTol) const;
  // Parallel, facing either way, and the origin of each within equalPoint of the other.
  bool isCoplanarTo(const ZnGePlanarEnt& other, const ZnGeTol& tol = ZnGeContext::gTol) const;

  // A map that flattens the plane leaves the axes as they were and moves the origin.
  ZnGePlanarEnt& transformBy(const ZnGeMatrix3d& matrix) override;
  // Coplanar and facing the same way; the axes may differ.
  bool isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

protected:
  // The xy plane.
  ZnGePlanarEnt() = default;
  // u is normalised, v made perpendicular to it; without two directions the plane stays as it is.
  void setAxes(const ZnGeVector3d& uAxis, const ZnGeVector3d& vAxis);

  ZnGePoint3d origin_;
  ZnGeVector3d u_{1.0, 0.0, 0.0};
  ZnGeVector3d v_{0.0, 1.0, 0.0};
  ZnGeVector3d normal_{0.0, 0.0, 1.0};
};
