#include "quorl/ge/planar_ent.h"

#include "quorl/ge/linear_ent3d.h"

void ZnGePlanarEnt::getCoordSystem(ZnGePoint3d& origin, ZnGeVector3d& uAxis, ZnGeVector3d& vAxis) const {
  origin = origin_;
  uAxis = u_;
  vAxis = v_;
}

bool ZnGePlanarEnt::isParallelTo(const ZnGePlanarEnt& other, const ZnGeTol& tol) const {
  return normal_.isParallelTo(other.normal_, tol);
}

bool ZnGePlanarEnt::isCoplanarTo(const ZnGePlanarEnt& other, const ZnGeTol& tol) const {
  return isParallelTo(other, tol) && isOn(other.origin_, tol) && other.isOn(origin_, tol);
}

ZnGePlanarEnt& ZnGePlanarEnt::transformBy(const ZnGeMatrix3d& matrix) {
  origin_.transformBy(matrix);
  setAxes(matrix * u_, matrix * v_);
  return *this;
}

bool ZnGePlanarEnt::isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  const auto& plane = static_cast<const ZnGePlanarEnt&>(other);
  return isCoplanarTo(plane, tol) && normal_.dotProduct(plane.normal_) > 0.0;
}

void ZnGePlanarEnt::setAxes(const ZnGeVector3d& uAxis, const ZnGeVector3d& vAxis) {
  // Relative to the lengths, so that a plane survives being scaled down.
  const ZnGeVector3d across = uAxis.crossProduct(vAxis);
  if (!(across.length() > ZnGe::kSingularRatio * uAxis.length() * vAxis.length())) return;
  u_ = uAxis / uAxis.length();
  normal_ = across / across.length();
  v_ = normal_.crossProduct(u_);
}
