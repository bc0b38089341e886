// A dimension of the diameter of a circle or an arc.
#pragma once

#include "quorl/db/entity/round_dimension.h"

class ZnDbDiametricDimension : public ZnDbRoundDimension {
  ZNRX_DECLARE_MEMBERS(ZnDbDiametricDimension)

public:
  ZnDbDiametricDimension() = default;
  ZnDbDiametricDimension(const ZnGePoint3d& pointOnCircle, const ZnGePoint3d& oppositePointOnCircle,
                         double leaderLength = 0.0);

  const ZnGePoint3d& oppositePointOnCircle() const { return from_; }
  Quorl::ErrorStatus setOppositePointOnCircle(const ZnGePoint3d& point) {
    return setDefinitionPoint(from_, point);
  }

protected:
  std::vector<ZnGePoint3d*> definitionPoints() override { return {&pointOnCircle_, &from_}; }
  const wchar_t* textPrefix() const override { return L"\u00D8"; }
  bool hasArrowAtBothEnds() const override { return true; }
};
