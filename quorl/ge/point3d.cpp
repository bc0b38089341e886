#include "quorl/ge/point3d.h"

#include "quorl/ge/matrix3d.h"
#include "quorl/ge/planar_ent.h"

ZnGePoint3d& ZnGePoint3d::set(double xValue, double yValue, double zValue) {
  return *this = {xValue, yValue, zValue};
}

ZnGePoint3d& ZnGePoint3d::set(const ZnGePlanarEnt& plane, const ZnGePoint2d& p) {
  return *this = plane.pointOnPlane() + ZnGeVector3d(plane, p.asVector());
}

ZnGePoint3d& ZnGePoint3d::setToProduct(const ZnGeMatrix3d& matrix, const ZnGePoint3d& p) {
  return *this = matrix * p;
}

ZnGePoint3d& ZnGePoint3d::transformBy(const ZnGeMatrix3d& matrix) { return *this = matrix * *this; }

ZnGePoint2d ZnGePoint3d::convert2d(const ZnGePlanarEnt& plane) const {
  return ZnGePoint2d() + (*this - plane.pointOnPlane()).convert2d(plane);
}
