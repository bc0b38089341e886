#include "quorl/ge/point_on_curve3d.h"

#include "quorl/ge/curve3d.h"

ZnGePointOnCurve3d::ZnGePointOnCurve3d(const ZnGeCurve3d& curve, double param)
    : ZnGePointEnt3d(curve.evalPoint(param))
    , curve_(&curve)
    , param_(param) {}

ZnGePointOnCurve3d& ZnGePointOnCurve3d::transformBy(const ZnGeMatrix3d& matrix) {
  ZnGePointEnt3d::transformBy(matrix);
  curve_ = nullptr;
  return *this;
}
