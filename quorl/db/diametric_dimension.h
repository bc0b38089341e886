// A dimension of the diameter of a circle or an arc.
#pragma once

#include "quorl/db/dimension.h"

class ZnDbDiametricDimension : public ZnDbDimension {
  ZNRX_DECLARE_MEMBERS(ZnDbDiametricDimension)

public:
  ZnDbDiametricDimension() = default;
  ZnDbDiametricDimension(const ZnGePoint3d& chordPoint, const ZnGePoint3d& farChordPoint,
                         double leaderLength = 0.0);

  const ZnGePoint3d& chordPoint() const { return chordPoint_; } // the end at which a leader goes on
  const ZnGePoint3d& farChordPoint() const { return farChordPoint_; }
  double leaderLength() const { return leaderLength_; } // of the line beyond the circle
  Quorl::ErrorStatus setChordPoint(const ZnGePoint3d& point) {
    return setDefinitionPoint(chordPoint_, point);
  }
  Quorl::ErrorStatus setFarChordPoint(const ZnGePoint3d& point) {
    return setDefinitionPoint(farChordPoint_, point);
  }
  Quorl::ErrorStatus setLeaderLength(double length); // eOutOfRange for a negative one

  double measurement() const override { return chordPoint_.distanceTo(farChordPoint_); }
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;

protected:
  std::vector<ZnGePoint3d*> definitionPoints() override { return {&chordPoint_, &farChordPoint_}; }
  const wchar_t* textPrefix() const override { return L"\u00D8"; }
  void build(const ZnDbDimensionSizes& sizes, ZnDbDimensionGraphics& graphics) const override;

private:
  ZnGePoint3d chordPoint_, farChordPoint_;
  double leaderLength_ = 0.0;
};
