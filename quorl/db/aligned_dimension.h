// A dimension of the distance between two points, with its line along them.
#pragma once

#include "quorl/db/dimension.h"

class ZnDbAlignedDimension : public ZnDbDimension {
  ZNRX_DECLARE_MEMBERS(ZnDbAlignedDimension)

public:
  ZnDbAlignedDimension() = default;
  ZnDbAlignedDimension(const ZnGePoint3d& first, const ZnGePoint3d& second, const ZnGePoint3d& dimLinePoint);

  const ZnGePoint3d& xLine1Point() const { return first_; }
  const ZnGePoint3d& xLine2Point() const { return second_; }
  const ZnGePoint3d& dimLinePoint() const { return dimLinePoint_; } // any point of the dimension line
  Quorl::ErrorStatus setXLine1Point(const ZnGePoint3d& point) { return setDefinitionPoint(first_, point); }
  Quorl::ErrorStatus setXLine2Point(const ZnGePoint3d& point) { return setDefinitionPoint(second_, point); }
  Quorl::ErrorStatus setDimLinePoint(const ZnGePoint3d& point) {
    return setDefinitionPoint(dimLinePoint_, point);
  }

  double measurement() const override { return first_.distanceTo(second_); }

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;

protected:
  std::vector<ZnGePoint3d*> definitionPoints() override { return {&first_, &second_, &dimLinePoint_}; }
  void build(const ZnDbDimensionSizes& sizes, ZnDbDimensionGraphics& graphics) const override;

private:
  ZnGePoint3d first_, second_, dimLinePoint_;
};
