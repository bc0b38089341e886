// A dimension of the distance between two points, with its line along them.
#pragma once

#include "quorl/db/entity/dimension.h"

class ZnDbAlignedDimension : public ZnDbDimension {
  ZNRX_DECLARE_MEMBERS(ZnDbAlignedDimension)

public:
  ZnDbAlignedDimension() = default;
  ZnDbAlignedDimension(const ZnGePoint3d& first, const ZnGePoint3d& second,
                       const ZnGePoint3d& dimensionLinePoint);

  const ZnGePoint3d& firstExtensionPoint() const { return first_; }
  const ZnGePoint3d& secondExtensionPoint() const { return second_; }
  const ZnGePoint3d& dimensionLinePoint() const {
    return dimensionLinePoint_;
  } // any point of the dimension line
  Quorl::ErrorStatus setFirstExtensionPoint(const ZnGePoint3d& point) {
    return setDefinitionPoint(first_, point);
  }
  Quorl::ErrorStatus setSecondExtensionPoint(const ZnGePoint3d& point) {
    return setDefinitionPoint(second_, point);
  }
  Quorl::ErrorStatus setDimensionLinePoint(const ZnGePoint3d& point) {
    return setDefinitionPoint(dimensionLinePoint_, point);
  }

  double measurement() const override { return first_.distanceTo(second_); }

  ZNDB_DECLARE_FIELDS

protected:
  std::vector<ZnGePoint3d*> definitionPoints() override { return {&first_, &second_, &dimensionLinePoint_}; }
  void build(const ZnDbDimensionSizes& sizes, ZnDbDimensionGraphics& graphics) const override;

private:
  ZnGePoint3d first_, second_, dimensionLinePoint_;
};
