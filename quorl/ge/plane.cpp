#include "quorl/ge/plane.h"

ZnGePlane::ZnGePlane(const ZnGePoint3d& origin, const ZnGeVector3d& uAxis, const ZnGeVector3d& vAxis) {
  origin_ = origin;
  setAxes(uAxis, vAxis);
}

ZnGePlane& ZnGePlane::set(const ZnGePoint3d& origin, const ZnGeVector3d& normal) {
  ZnGePoint3d ignored;
  ZnGeMatrix3d::planeToWorld(normal).getCoordSystem(ignored, u_, v_, normal_);
  origin_ = origin;
  return *this;
}
