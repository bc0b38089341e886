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
  const ZnGePoint3d& centerPoint() const { return shape_.center; }
  double width() const { return shape_.width; }
  double height() const { return shape_.height; }
  Quorl::ErrorStatus setCenterPoint(const ZnGePoint3d& center);
  Quorl::ErrorStatus setWidth(double width);
  Quorl::ErrorStatus setHeight(double height);

  // What is seen: the model point at the center of the window, the height of model space that fits into it,
  // and the angle by which the picture is turned counterclockwise.
  const ZnGePoint2d& viewCenter() const { return shape_.viewCenter; }
  double viewHeight() const { return shape_.viewHeight; }
  double twistAngle() const { return shape_.twist; }
  Quorl::ErrorStatus setViewCenter(const ZnGePoint2d& center);
  Quorl::ErrorStatus setViewHeight(double height);
  Quorl::ErrorStatus setTwistAngle(double angle);
  // Paper units a model unit; setting it changes the view height.
  double customScale() const { return shape_.height / shape_.viewHeight; }
  Quorl::ErrorStatus setCustomScale(double scale);
  // From model space to paper space.
  ZnGeMatrix3d modelToPaperTransform() const;

  bool isOn() const { return shape_.on; }
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

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  // The frame; what is seen through it is a view's matter.
  bool subWorldDraw(ZnGiWorldDraw& draw) const override;
  Quorl::ErrorStatus subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                       const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                       const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                       ZnArray<std::int64_t>& geomIds,
                                       const ZnGeMatrix3d& insertion) const override;

private:
  struct Shape {
    ZnGePoint3d center;
    double width = 100.0, height = 100.0;
    ZnGePoint2d viewCenter;
    double viewHeight = 100.0, twist = 0.0;
    bool on = true;
    bool isUsable() const;
  };
  std::array<ZnGePoint3d, 4> corners() const;

  Shape shape_;
  std::vector<ZnDbObjectId> frozenLayers_;
};
