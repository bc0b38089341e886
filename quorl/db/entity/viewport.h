// A window on the sheet through which a part of model space is seen.
#pragma once

#include <array>
#include <vector>

#include "quorl/db/entity/entity.h"
#include "quorl/ge/point2d.h"

// The window lies in paper space, along the axes of the sheet, and looks at model space from above.
class ZnDbViewport : public ZnDbEntity {
  ZNRX_DECLARE_MEMBERS(ZnDbViewport)

public:
  ZnDbViewport() = default;

  // The window, in units of paper space. eInvalidInput for what is not finite, eOutOfRange for a size or
  // scale of 0 or less.
  const ZnGePoint3d& centerPoint() const { return center_; }
  double width() const { return width_; }
  double height() const { return height_; }
  Quorl::ErrorStatus setCenterPoint(const ZnGePoint3d& center);
  Quorl::ErrorStatus setWidth(double width);
  Quorl::ErrorStatus setHeight(double height);

  // What is seen: the model point at the center of the window, the height of model space that fits into it,
  // and the angle by which the picture is turned counterclockwise.
  const ZnGePoint2d& viewCenter() const { return viewCenter_; }
  double viewHeight() const { return viewHeight_; }
  double twistAngle() const { return twist_; }
  Quorl::ErrorStatus setViewCenter(const ZnGePoint2d& center);
  Quorl::ErrorStatus setViewHeight(double height);
  Quorl::ErrorStatus setTwistAngle(double angle);
  // Paper units a model unit; setting it changes the view height.
  double customScale() const { return height_ / viewHeight_; }
  Quorl::ErrorStatus setCustomScale(double scale);
  // From model space to paper space.
  ZnGeMatrix3d modelToPaperTransform() const;

  bool isOn() const { return on_; }
  void setOn(bool on);
  // Layers that this viewport alone does not show.
  const std::vector<ZnDbObjectId>& frozenLayers() const { return frozenLayers_; }
  bool isLayerFrozen(ZnDbObjectId layer) const;
  Quorl::ErrorStatus setLayerFrozen(ZnDbObjectId layer,
                                    bool frozen); // eInvalidInput for no layer of the drawing

  // Moving and enlarging only: eNonUniformScale for what would turn, mirror or skew the window. The view
  // stays, so the scale follows the window.
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const override;
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;

  ZNDB_DECLARE_FIELDS

protected:
  ZnString auditLabel() const override { return L"viewport " + handleText(handle()); }
  // The frame; what is seen through it is a view's matter.
  bool subWorldDraw(ZnGiWorldDraw& draw) const override;
  Quorl::ErrorStatus subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                       const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                       const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                       ZnArray<std::int64_t>& geomIds,
                                       const ZnGeMatrix3d& insertion) const override;

private:
  std::array<ZnGePoint3d, 4> corners() const;

  ZnGePoint3d center_;
  double width_ = 100.0, height_ = 100.0;
  ZnGePoint2d viewCenter_;
  double viewHeight_ = 100.0, twist_ = 0.0;
  bool on_ = true;
  std::vector<ZnDbObjectId> frozenLayers_;
};
