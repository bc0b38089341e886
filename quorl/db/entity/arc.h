// A circular arc, counterclockwise about its normal.
#pragma once

#include "quorl/db/entity/curve.h"
#include "quorl/ge/angles.h"

// Angles are measured in the entity's plane (see ZnGeMatrix3d::planeToWorld of the normal) from its x axis.
class ZnDbArc : public ZnDbCurve {
  ZNRX_DECLARE_MEMBERS(ZnDbArc)

public:
  ZnDbArc() = default;
  // Bad values are refused as the setters do, and leave those of the default arc.
  ZnDbArc(const ZnGePoint3d& center, double radius, double startAngle, double endAngle);
  ZnDbArc(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius, double startAngle,
          double endAngle);

  const ZnGePoint3d& center() const { return shape_.center; }
  double radius() const { return shape_.radius; }
  const ZnGeVector3d& normal() const { return shape_.normal; }
  double startAngle() const { return shape_.startAngle; }
  double endAngle() const { return shape_.endAngle; }
  // The angle run through: 0 to two pi. Equal angles are an arc without length.
  double totalAngle() const;
  ZnGePoint3d startPoint() const;
  ZnGePoint3d endPoint() const;

  // eInvalidInput for what is not finite, eOutOfRange for a negative radius (0 is allowed),
  // eDegenerateGeometry for a zero normal; a normal may have any length. Angles are kept as given.
  Quorl::ErrorStatus setCenter(const ZnGePoint3d& center);
  Quorl::ErrorStatus setRadius(double radius);
  Quorl::ErrorStatus setNormal(const ZnGeVector3d& normal);
  Quorl::ErrorStatus setStartAngle(double angle);
  Quorl::ErrorStatus setEndAngle(double angle);

  void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const override;
  // eNonUniformScale where the image would be an ellipse, eDegenerateGeometry where it would be flat.
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;

private:
  struct Shape {
    ZnGePoint3d center;
    ZnGeVector3d normal = ZnGeVector3d::kZAxis;
    double radius = 1.0;
    double startAngle = 0.0, endAngle = ZnGe::kPi;
    bool isUsable() const;
  };
  class ZnGeCircArc3d geometry() const;

  Shape shape_;
};
