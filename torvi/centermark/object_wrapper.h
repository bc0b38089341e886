// The handle on a center mark for everyone outside the core; see ZnDbTorviObjectWrapper for its ways. Points,
// lines and the circle with its radius stand in the coordinates of the mark's space. Extensions, overshoots
// and the sizes of the cross are those of its block: drawing units too, but for a pattern without edges whose
// reference was scaled, which shows the block in another size.
#pragma once

#include "torvi/core/object_wrapper.h"

class TORVI_EXPORT ZnDbCenterMarkObjectWrapper : public ZnDbTorviObjectWrapper {
public:
  using ZnDbTorviObjectWrapper::ZnDbTorviObjectWrapper;
  static constexpr ZnDbTorviType wrapperCenterType() { return kCenterMark; }

  // Extensions and overshoots, as ZnDbCenterMarkActionBody has them; 0 on a dead mark.
  double horizontalStartExtension() const { return getExtensionLineLength(eLeftLine); }
  double horizontalEndExtension() const { return getExtensionLineLength(eRightLine); }
  double verticalStartExtension() const { return getExtensionLineLength(eBottomLine); }
  double verticalEndExtension() const { return getExtensionLineLength(eTopLine); }
  Quorl::ErrorStatus setHorizontalStartExtension(double value) { return setExtension(eLeftLine, value); }
  Quorl::ErrorStatus setHorizontalEndExtension(double value) { return setExtension(eRightLine, value); }
  Quorl::ErrorStatus setVerticalStartExtension(double value) { return setExtension(eBottomLine, value); }
  Quorl::ErrorStatus setVerticalEndExtension(double value) { return setExtension(eTopLine, value); }
  double horizontalStartOvershoot() const { return getOvershoot(eLeftLine); }
  double horizontalEndOvershoot() const { return getOvershoot(eRightLine); }
  double verticalStartOvershoot() const { return getOvershoot(eBottomLine); }
  double verticalEndOvershoot() const { return getOvershoot(eTopLine); }
  Quorl::ErrorStatus setHorizontalStartOvershoot(double value) { return setOvershoot(eLeftLine, value); }
  Quorl::ErrorStatus setHorizontalEndOvershoot(double value) { return setOvershoot(eRightLine, value); }
  Quorl::ErrorStatus setVerticalStartOvershoot(double value) { return setOvershoot(eBottomLine, value); }
  Quorl::ErrorStatus setVerticalEndOvershoot(double value) { return setOvershoot(eTopLine, value); }
  // The status tells of the opening alone: a length below zero changes nothing.
  Quorl::ErrorStatus setAllOvershoots(double value);
  // The extension, or the overshoot, of one extension line; 0 for an arm of the cross.
  double getExtensionLineLength(ZnCenterMarkSubEntType type) const;
  double getOvershoot(ZnCenterMarkSubEntType type) const;
  Quorl::ErrorStatus setExtension(ZnCenterMarkSubEntType type, double value);
  Quorl::ErrorStatus setOvershoot(ZnCenterMarkSubEntType type, double value);
  double getMinExtension(ZnCenterMarkSubEntType type) const;

  // Where the reach of a line ends, and where its drawn end is, one overshoot further out.
  ZnGePoint3d horizontalStartExtensionPoint() const { return farEnd(eLeftLine, false); }
  ZnGePoint3d horizontalEndExtensionPoint() const { return farEnd(eRightLine, false); }
  ZnGePoint3d verticalStartExtensionPoint() const { return farEnd(eBottomLine, false); }
  ZnGePoint3d verticalEndExtensionPoint() const { return farEnd(eTopLine, false); }
  ZnGePoint3d horizontalStartOvershootPoint() const { return farEnd(eLeftLine, true); }
  ZnGePoint3d horizontalEndOvershootPoint() const { return farEnd(eRightLine, true); }
  ZnGePoint3d verticalStartOvershootPoint() const { return farEnd(eBottomLine, true); }
  ZnGePoint3d verticalEndOvershootPoint() const { return farEnd(eTopLine, true); }
  // Left, bottom, right, top; appended to the array. Always eOk.
  Quorl::ErrorStatus getAllExtensionPoints(ZnArray<ZnGePoint3d>& points) const;
  Quorl::ErrorStatus getAllExtensionPoints(ZnGePoint3d& left, ZnGePoint3d& bottom, ZnGePoint3d& right,
                                           ZnGePoint3d& top) const;
  Quorl::ErrorStatus getAllOvershootPoints(ZnArray<ZnGePoint3d>& points) const;
  Quorl::ErrorStatus getAllOvershootPoints(ZnGePoint3d& left, ZnGePoint3d& bottom, ZnGePoint3d& right,
                                           ZnGePoint3d& top) const;

  // The cross. Setters store the normalised expression; eInvalidInput, and nothing changed, for one that is
  // none or, as a length, 0. The sizes are those that the mark has now. "0.0" on a dead mark.
  ZnString crossHairLengthExpression() const;
  ZnString crossHairGapExpression() const;
  Quorl::ErrorStatus setCrossHairLengthExpression(const ZnString& expression);
  Quorl::ErrorStatus setCrossHairGapExpression(const ZnString& expression);
  double crossHairLength() const;
  double crossHairGap() const;
  Quorl::ErrorStatus getCrossLengthAndGap(double& length, double& gap) const;
  // Whether the whole cross and a gap pass the line's extension: stricter than what decides on drawing the
  // gap. Never for an arm of the cross.
  bool isCenterCrossTooLarge(ZnCenterMarkSubEntType type) const;

  // The circle
  Quorl::ErrorStatus getRefCircle(ZnGeCircArc3d& circle) const;
  double getRefCircleRadius() const;
  Quorl::ErrorStatus getCenterPoint(ZnGePoint3d& point) const;
  Quorl::ErrorStatus setCachedCircleRadius(double radius);
  void updateCachedCircleRadius();

  // Rotation of the reference in its plane, radians; set even on a locked layer. The body takes it over at
  // the next evaluation.
  double rotation() const;
  Quorl::ErrorStatus setRotation(double angle);

  // Lines; on a dead mark all are shown, run along x, from the origin to (1, 0, 0).
  Quorl::ErrorStatus setSubEntVisibility(ZnCenterMarkSubEntType type, bool visible);
  bool getSubEntVisibility(ZnCenterMarkSubEntType type) const;
  Quorl::ErrorStatus setExtensionLinesVisibility(bool visible);
  bool getExtensionLinesVisibility() const;
  ZnGeVector3d getSubentDirection(ZnCenterMarkSubEntType type) const;
  ZnGeLineSeg3d getSubentLineGeometry(ZnCenterMarkSubEntType type, bool includeOvershoot) const;

private:
  ZnGePoint3d farEnd(ZnCenterMarkSubEntType type, bool includeOvershoot) const;
  void appendFarEnds(ZnArray<ZnGePoint3d>& points, bool includeOvershoot) const;
};
