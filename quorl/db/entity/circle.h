// A full circle.
#pragma once

#include "quorl/db/entity/curve.h"

class ZnDbCircle : public ZnDbCurve {
  ZNRX_DECLARE_MEMBERS(ZnDbCircle)

public:
  ZnDbCircle() = default;
  // Bad values are refused as the setters do, and leave those of the default circle.
  ZnDbCircle(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius);

  const ZnGePoint3d& center() const { return shape_.center; }
  double radius() const { return shape_.radius; }
  const ZnGeVector3d& normal() const { return shape_.normal; }
  // eInvalidInput for what is not finite, eOutOfRange for a negative radius (0 is allowed),
  // eDegenerateGeometry for a zero normal; a normal may have any length.
  Quorl::ErrorStatus setCenter(const ZnGePoint3d& center);
  Quorl::ErrorStatus setRadius(double radius);
  Quorl::ErrorStatus setNormal(const ZnGeVector3d& normal);

  void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const override;
  bool isClosed() const override { return true; }
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
    bool isUsable() const;
  };
  Shape shape_;
};
