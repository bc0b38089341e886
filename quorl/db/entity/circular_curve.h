// What circles and arcs share: a circle in space.
#pragma once

#include "quorl/db/core/field_rules.h"
#include "quorl/db/entity/curve.h"

class ZnDbCircularCurve : public ZnDbCurve {
public:
  const ZnGePoint3d& center() const { return center_; }
  double radius() const { return radius_; }
  const ZnGeVector3d& normal() const { return normal_; }
  // eInvalidInput for what is not finite, eOutOfRange for a negative radius (0 is allowed),
  // eDegenerateGeometry for a zero normal; a normal may have any length.
  Quorl::ErrorStatus setCenter(const ZnGePoint3d& center);
  Quorl::ErrorStatus setRadius(double radius);
  Quorl::ErrorStatus setNormal(const ZnGeVector3d& normal);

  // eNonUniformScale where the image would be an ellipse, eDegenerateGeometry where it would be flat.
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;

protected:
  ZnDbCircularCurve() = default;
  // Bad values are refused as the setters do, and leave those of the default curve.
  ZnDbCircularCurve(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius);

  // The plane's x axis turned by that angle, counted in the new plane.
  virtual void turned(double /*angle*/) {}
  // Its fields, which stand in the section of the class above.
  template<class Walk> void describeCircle(Walk& walk) {
    walk.field(10, L"center", center_);
    walk.field(11, L"normal", normal_, ZnDbRule::unit());
    walk.field(40, L"radius", radius_, ZnDbRule::atLeast(0.0));
  }

private:
  ZnGePoint3d center_;
  ZnGeVector3d normal_ = ZnGeVector3d::kZAxis;
  double radius_ = 1.0;
};
