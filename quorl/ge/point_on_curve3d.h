// A point that knows the curve it lies on and its parameter there.
#pragma once

#include "quorl/ge/point_ent3d.h"

class ZnGeCurve3d;

class ZnGePointOnCurve3d : public ZnGePointEnt3d {
public:
  // At the origin, on no curve.
  ZnGePointOnCurve3d() = default;
  ZnGePointOnCurve3d(const ZnGeCurve3d& curve, double param);

  // Not owned; it must outlive the use of this pointer. Null on no curve. The point itself is kept by value
  // and outlives the curve.
  const ZnGeCurve3d* curve() const { return curve_; }
  double parameter() const { return param_; }

  ZnGe::EntityId type() const override { return ZnGe::kPointOnCurve3d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kPointOnCurve3d || ZnGePointEnt3d::isKindOf(id);
  }
  ZnGePointOnCurve3d* copy() const override { return new ZnGePointOnCurve3d(*this); }
  // Moves the point off its curve, which then is null.
  ZnGePointOnCurve3d& transformBy(const ZnGeMatrix3d& matrix) override;

private:
  const ZnGeCurve3d* curve_ = nullptr;
  double param_ = 0.0;
};
