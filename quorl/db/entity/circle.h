// A full circle.
#pragma once

#include "quorl/db/entity/circular_curve.h"

class ZnDbCircle : public ZnDbCircularCurve {
  ZNRX_DECLARE_MEMBERS(ZnDbCircle)

public:
  ZnDbCircle() = default;
  ZnDbCircle(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius)
      : ZnDbCircularCurve(center, normal, radius) {}

  void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const override;
  bool isClosed() const override { return true; }

  ZNDB_DECLARE_FIELDS
};
