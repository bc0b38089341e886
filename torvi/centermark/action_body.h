// The body of a center mark: a cross and four extension lines on one circle or arc. All that makes one mark
// differ from another is kept as named values.
#pragma once

#include "torvi/core/action_body.h"
#include "torvi/drawing/types.h"

class TORVI_EXPORT ZnDbCenterMarkActionBody : public ZnDbTorviActionBody {
  ZNRX_DECLARE_MEMBERS(ZnDbCenterMarkActionBody)

public:
  ZnDbCenterMarkActionBody() = default;

  // All extensions follow the circle; all overshoots become the style's. Always eOk.
  Quorl::ErrorStatus resetExtensions() override;
  Quorl::ErrorStatus resetOvershoots() override;

protected:
  ZnDbTorviLayout* getLayout() const override;
  // A mark that the user has turned still matches its circle.
  bool rotationToBeChecked() const override { return false; }

public:
  // The circle that the mark follows, whole or as an arc, in the coordinates of the mark's space; once
  // association is gone, the one remembered. eInvalidInput without exactly one edge of that shape.
  virtual Quorl::ErrorStatus getRefCircle(ZnGeCircArc3d& circle) const;
  // The drawn line in the coordinates of the mark's space. A line that is not drawn, or a mark that can't be
  // read, gives a default segment. Cutting off overshoots takes their stored lengths, whatever the
  // reference's scale.
  virtual ZnGeLineSeg3d getSubentLineGeometry(ZnCenterMarkSubEntType type, bool includeOvershoot) const;
  // The shortest reach that an extension should get: half the cross. 0 when it has no size.
  virtual double getMinExtension(ZnCenterMarkSubEntType type) const;
  // The sizes of the cross by its expressions, in the size of the block.
  virtual Quorl::ErrorStatus getCrossLengthAndGap(double& length, double& gap) const;

protected:
  // A stored extension as a length: one that follows the circle gives its radius.
  virtual double getResolvedExtensionLength(double stored, ZnCenterMarkSubEntType type) const;

public:
  virtual double getResolvedExtensionLength(double stored, ZnCenterMarkSubEntType type, double radius) const;

  // Extensions: the reach of a line from the center, in drawing units. Reading gives a length, never the
  // value that follows the circle; setting takes any number. The sides are those of eLeftLine, eRightLine,
  // eBottomLine and eTopLine, in this order; others have extension and overshoot 0.
  double horizontalStartExtension() const { return extension(eLeftLine); }
  double horizontalEndExtension() const { return extension(eRightLine); }
  double verticalStartExtension() const { return extension(eBottomLine); }
  double verticalEndExtension() const { return extension(eTopLine); }
  double extension(ZnCenterMarkSubEntType type) const;
  Quorl::ErrorStatus setHorizontalStartExtension(double value) { return setExtension(eLeftLine, value); }
  Quorl::ErrorStatus setHorizontalEndExtension(double value) { return setExtension(eRightLine, value); }
  Quorl::ErrorStatus setVerticalStartExtension(double value) { return setExtension(eBottomLine, value); }
  Quorl::ErrorStatus setVerticalEndExtension(double value) { return setExtension(eTopLine, value); }
  Quorl::ErrorStatus setExtension(ZnCenterMarkSubEntType type, double value);

  // Overshoots: what is drawn beyond the reach. eInvalidInput, and nothing stored, for a length below zero.
  double horizontalStartOvershoot() const { return overshoot(eLeftLine); }
  double horizontalEndOvershoot() const { return overshoot(eRightLine); }
  double verticalStartOvershoot() const { return overshoot(eBottomLine); }
  double verticalEndOvershoot() const { return overshoot(eTopLine); }
  double overshoot(ZnCenterMarkSubEntType type) const;
  Quorl::ErrorStatus setHorizontalStartOvershoot(double value) { return setOvershoot(eLeftLine, value); }
  Quorl::ErrorStatus setHorizontalEndOvershoot(double value) { return setOvershoot(eRightLine, value); }
  Quorl::ErrorStatus setVerticalStartOvershoot(double value) { return setOvershoot(eBottomLine, value); }
  Quorl::ErrorStatus setVerticalEndOvershoot(double value) { return setOvershoot(eTopLine, value); }
  Quorl::ErrorStatus setOvershoot(ZnCenterMarkSubEntType type, double value);

  // Length expressions of the cross; a mark without its own has the style's. Nothing is checked here.
  ZnString crossHairLengthExpression() const;
  ZnString crossHairGapExpression() const;
  Quorl::ErrorStatus setCrossHairLengthExpression(const ZnString& expression);
  Quorl::ErrorStatus setCrossHairGapExpression(const ZnString& expression);

  // What lets a mark survive without its circle: radius, and rotation in its plane in radians.
  double cachedCircleRadius() const;
  double cachedRotation() const;
  Quorl::ErrorStatus setCachedCircleRadius(double radius);
  Quorl::ErrorStatus setCachedRotation(double rotation);
  void updateCachedCircleRadius();   // a body that is not associative keeps what it has
  double getRefCircleRadius() const; // 0 without a circle

  // Direction of a line in the mark's space, with the reference's scale in its length; x axis when the
  // reference can't be read.
  ZnGeVector3d getSubentDirection(ZnCenterMarkSubEntType type) const;

  // Lines are shown unless told otherwise. The extension lines count as shown when all four are; setting
  // them gives the status of the last.
  Quorl::ErrorStatus setSubEntVisibility(ZnCenterMarkSubEntType type, bool visible);
  bool getSubEntVisibility(ZnCenterMarkSubEntType type) const;
  Quorl::ErrorStatus setExtensionLinesVisibility(bool visible);
  bool getExtensionLinesVisibility() const;

  // Names of values; the empty text for a type without extension.
  static const ZnString& extensionParamName(ZnCenterMarkSubEntType type);

protected:
  ZnGeCircArc3d getCachedRefCircle() const; // a default circle when the reference can't be read
  Quorl::ErrorStatus setOvershoot(const ZnString& key, double value);
  ZnGeLineSeg3d getSubentLineGeometry(const ZnArray<ZnGeCurve3d*>& curves, ZnCenterMarkSubEntType type,
                                      bool includeOvershoot) const;
};
