// One line of text.
#pragma once

#include "quorl/db/entity/entity.h"

namespace ZnDb {
enum TextAlign : std::uint8_t { kTextLeft = 0, kTextCenter = 1, kTextRight = 2 };
}

class ZnDbText : public ZnDbEntity {
  ZNRX_DECLARE_MEMBERS(ZnDbText)

public:
  ZnDbText() = default;
  ZnDbText(const ZnGePoint3d& position, const ZnString& text, double height, double rotation = 0.0);

  // The point of the baseline that the alignment tells.
  const ZnGePoint3d& position() const { return position_; }
  const ZnString& textString() const { return text_; }
  double height() const { return height_; }     // of capitals
  double rotation() const { return rotation_; } // of the baseline, from the x axis of the entity's plane
  double widthFactor() const { return widthFactor_; }
  const ZnGeVector3d& normal() const { return normal_; }
  ZnDb::TextAlign horizontalAlign() const { return align_; }
  ZnGeVector3d direction() const; // unit vector along the baseline
  // eInvalidInput for what is not finite, eOutOfRange for a height or width factor of 0 or less or an unknown
  // alignment, eDegenerateGeometry for a zero normal.
  Quorl::ErrorStatus setPosition(const ZnGePoint3d& position);
  Quorl::ErrorStatus setTextString(const ZnString& text);
  Quorl::ErrorStatus setHeight(double height);
  Quorl::ErrorStatus setRotation(double rotation);
  Quorl::ErrorStatus setWidthFactor(double factor);
  Quorl::ErrorStatus setNormal(const ZnGeVector3d& normal);
  Quorl::ErrorStatus setHorizontalAlign(ZnDb::TextAlign align);

  // Baseline and height follow every transform; text has no slant, so that of a skew is lost.
  // eDegenerateGeometry for a transform that flattens the text.
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  // By the nominal widths of text_metrics.h, since a drawing holds no font.
  Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const override;
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;

  ZNDB_DECLARE_FIELDS

protected:
  bool subWorldDraw(ZnGiWorldDraw& draw) const override;
  Quorl::ErrorStatus subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                       const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                       const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                       ZnArray<std::int64_t>& geomIds,
                                       const ZnGeMatrix3d& insertion) const override;

private:
  ZnGePoint3d position_;
  ZnGeVector3d normal_ = ZnGeVector3d::kZAxis;
  ZnString text_;
  double height_ = 2.5, rotation_ = 0.0, widthFactor_ = 1.0;
  ZnDb::TextAlign align_ = ZnDb::kTextLeft;
};
