// A dimension of the radius of a circle or an arc.
#pragma once

#include "quorl/db/dimension.h"

class ZnDbRadialDimension : public ZnDbDimension {
  ZNRX_DECLARE_MEMBERS(ZnDbRadialDimension)

public:
  ZnDbRadialDimension() = default;
  ZnDbRadialDimension(const ZnGePoint3d& center, const ZnGePoint3d& chordPoint, double leaderLength = 0.0);

  const ZnGePoint3d& center() const { return center_; }
  const ZnGePoint3d& chordPoint() const { return chordPoint_; } // where the arrow meets the circle
  double leaderLength() const { return leaderLength_; }         // of the line beyond the circle
  Quorl::ErrorStatus setCenter(const ZnGePoint3d& center) { return setDefinitionPoint(center_, center); }
  Quorl::ErrorStatus setChordPoint(const ZnGePoint3d& point) {
    return setDefinitionPoint(chordPoint_, point);
  }
  Quorl::ErrorStatus setLeaderLength(double length); // eOutOfRange for a negative one

  double measurement() const override { return center_.distanceTo(chordPoint_); }
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;

protected:
  std::vector<ZnGePoint3d*> definitionPoints() override { return {&center_, &chordPoint_}; }
  const wchar_t* textPrefix() const override { return L"R"; }
  void build(const ZnDbDimensionSizes& sizes, ZnDbDimensionGraphics& graphics) const override;

private:
  ZnGePoint3d center_, chordPoint_;
  double leaderLength_ = 0.0;
};
