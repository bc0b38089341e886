// What dimensions of a radius and of a diameter share: a line between two points, the second of which lies on
// the circle, that a leader continues outwards.
#pragma once

#include "quorl/db/entity/dimension.h"

class ZnDbRoundDimension : public ZnDbDimension {
  ZNRX_DECLARE_MEMBERS(ZnDbRoundDimension)

public:
  const ZnGePoint3d& pointOnCircle() const { return pointOnCircle_; } // the end at which a leader goes on
  double leaderLength() const { return leaderLength_; }               // of the line beyond the circle
  Quorl::ErrorStatus setPointOnCircle(const ZnGePoint3d& point) {
    return setDefinitionPoint(pointOnCircle_, point);
  }
  Quorl::ErrorStatus setLeaderLength(double length); // eOutOfRange for a negative one

  double measurement() const override { return from_.distanceTo(pointOnCircle_); }
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;

  ZNDB_DECLARE_FIELDS

protected:
  ZnDbRoundDimension() = default;
  void build(const ZnDbDimensionSizes& sizes, ZnDbDimensionGraphics& graphics) const override;
  virtual bool hasArrowAtBothEnds() const = 0;

  ZnGePoint3d from_, pointOnCircle_;

private:
  double leaderLength_ = 0.0;
};
