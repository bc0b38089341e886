// The base of dimensions: a measured length with its lines, arrows and text.
#pragma once

#include "quorl/db/entity/dimension_graphics.h"
#include "quorl/db/entity/entity.h"

class ZnDbDimStyleTableRecord;

class ZnDbDimension : public ZnDbEntity {
  ZNRX_DECLARE_MEMBERS(ZnDbDimension)

public:
  ZnDbObjectId dimensionStyle() const { return styleId_; }
  Quorl::ErrorStatus setDimensionStyle(ZnDbObjectId style); // eInvalidInput for an id that is no style
  // Shown instead of the measured text; "<>" in it stands for that. Empty shows the measured text alone.
  const ZnString& dimensionText() const { return text_; }
  Quorl::ErrorStatus setDimensionText(const ZnString& text);
  // Middle of the text's baseline: its own place unless it was set.
  ZnGePoint3d textPosition() const;
  bool isUsingDefaultTextPosition() const { return !textPlaced_; }
  Quorl::ErrorStatus setTextPosition(const ZnGePoint3d& position);
  void useDefaultTextPosition();
  const ZnGeVector3d& normal() const { return normal_; }
  Quorl::ErrorStatus setNormal(const ZnGeVector3d& normal); // eDegenerateGeometry for zero

  virtual double measurement() const = 0; // in drawing units, without the style's factor
  // The measurement times the style's factor with the style's decimals, in the text that stands instead of
  // it.
  ZnString formattedText() const;
  // What the dimension is drawn with now, in its own coordinates.
  ZnDbDimensionGraphics graphics() const;

  void setDatabaseDefaults(ZnDbDatabase* database = nullptr) override;
  void completeFor(const ZnDbDatabase& drawing) override;
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const override;
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;
  // Lines, closed polylines for the arrow heads, and a text.
  Quorl::ErrorStatus explode(std::vector<std::unique_ptr<ZnDbEntity>>& pieces) const override;

  ZNDB_DECLARE_FIELDS
  Quorl::ErrorStatus judgePlace(const ZnDbDatabase& drawing) const override;
  void attachLinks() override;
  void detachLinks() override;

protected:
  ZnDbDimension() = default;
  // The points that define it, in the order in which they are filed.
  virtual std::vector<ZnGePoint3d*> definitionPoints() = 0;
  std::vector<const ZnGePoint3d*> definitionPoints() const;
  virtual const wchar_t* textPrefix() const { return L""; }
  // Lines, arrows and the text's default place and direction for lengths of the style times its scale.
  virtual void build(const ZnDbDimensionSizes& sizes, ZnDbDimensionGraphics& graphics) const = 0;
  // The setter of all definition points.
  Quorl::ErrorStatus setDefinitionPoint(ZnGePoint3d& target, const ZnGePoint3d& point);

  bool subWorldDraw(ZnGiWorldDraw& draw) const override;
  Quorl::ErrorStatus subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                       const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                       const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                       ZnArray<std::int64_t>& geomIds,
                                       const ZnGeMatrix3d& insertion) const override;

private:
  ZnDbObjectId styleId_;
  ZnDbUseCount styleUse_;
  ZnString text_;
  ZnGePoint3d textPosition_;
  bool textPlaced_ = false;
  ZnGeVector3d normal_ = ZnGeVector3d::kZAxis;
};
