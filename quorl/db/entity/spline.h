// A spline curve.
#pragma once

#include "quorl/db/entity/curve.h"
#include "quorl/ge/nurb_curve3d.h"

class ZnDbSpline : public ZnDbCurve {
  ZNRX_DECLARE_MEMBERS(ZnDbSpline)

public:
  ZnDbSpline(); // the straight spline from the origin to (1, 0, 0)
  // An empty curve is refused as setCurve does, and leaves the default one.
  explicit ZnDbSpline(const ZnGeNurbCurve3d& curve);

  const ZnGeNurbCurve3d& curve() const { return curve_; }
  // eDegenerateGeometry for a curve without control points, eInvalidInput for what is not finite.
  Quorl::ErrorStatus setCurve(const ZnGeNurbCurve3d& curve);

  void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const override;
  bool isClosed() const override;
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  // eNothingToDo for a straight spline and for one that leaves every plane.
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;

  ZNDB_DECLARE_FIELDS

private:
  ZnGeNurbCurve3d curve_;
};
