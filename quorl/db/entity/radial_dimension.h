// A dimension of the radius of a circle or an arc.
#pragma once

#include "quorl/db/entity/round_dimension.h"

class ZnDbRadialDimension : public ZnDbRoundDimension {
  ZNRX_DECLARE_MEMBERS(ZnDbRadialDimension)

public:
  ZnDbRadialDimension() = default;
  ZnDbRadialDimension(const ZnGePoint3d& center, const ZnGePoint3d& pointOnCircle, double leaderLength = 0.0);

  const ZnGePoint3d& center() const { return from_; }
  Quorl::ErrorStatus setCenter(const ZnGePoint3d& center) { return setDefinitionPoint(from_, center); }

protected:
  std::vector<ZnGePoint3d*> definitionPoints() override { return {&from_, &pointOnCircle_}; }
  const wchar_t* textPrefix() const override { return L"R"; }
  bool hasArrowAtBothEnds() const override { return false; }
};
