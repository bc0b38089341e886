// A straight line between two points.
#pragma once

#include "quorl/db/entity/curve.h"

class ZnDbLine : public ZnDbCurve {
  ZNRX_DECLARE_MEMBERS(ZnDbLine)

public:
  ZnDbLine() = default;
  ZnDbLine(const ZnGePoint3d& start, const ZnGePoint3d& end)
      : start_(start)
      , end_(end) {}

  const ZnGePoint3d& startPoint() const { return start_; }
  const ZnGePoint3d& endPoint() const { return end_; }
  // Equal points are allowed: what is hidden or has shrunk stays as a line without length. eInvalidInput for
  // a coordinate that is not finite.
  Quorl::ErrorStatus setStartPoint(const ZnGePoint3d& point);
  Quorl::ErrorStatus setEndPoint(const ZnGePoint3d& point);

  void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const override;
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const override;

  ZNDB_DECLARE_FIELDS

private:
  ZnGePoint3d start_, end_;
};
