// An ellipse or an elliptic arc.
#pragma once

#include "quorl/db/entity/curve.h"
#include "quorl/ge/angles.h"

class ZnGeEllipticalArc3d;

// The parameter t gives center + cos t * majorAxis + sin t * minorAxis.
class ZnDbEllipse : public ZnDbCurve {
  ZNRX_DECLARE_MEMBERS(ZnDbEllipse)

public:
  ZnDbEllipse() = default; // axes 1 and 1/2 about the origin
  explicit ZnDbEllipse(const ZnGeEllipticalArc3d& ellipse) { set(ellipse); }

  const ZnGePoint3d& center() const { return shape_.center; }
  const ZnGeVector3d& majorAxis() const { return shape_.major; } // half axes as vectors
  const ZnGeVector3d& minorAxis() const { return shape_.minor; }
  ZnGeVector3d normal() const;
  double radiusRatio() const; // minor by major
  double startParam() const { return shape_.startParam; }
  double endParam() const { return shape_.endParam; }
  // The half axes may be any pair of conjugate ones; see ZnGeEllipticalArc3d. eDegenerateGeometry without
  // area, eInvalidInput for what is not finite.
  Quorl::ErrorStatus set(const ZnGeEllipticalArc3d& ellipse);
  Quorl::ErrorStatus setCenter(const ZnGePoint3d& center);

  void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const override;
  bool isClosed() const override;
  // Exact for every transform; eDegenerateGeometry for one that flattens the ellipse.
  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;

  ZNDB_DECLARE_FIELDS

private:
  struct Shape {
    ZnGePoint3d center;
    ZnGeVector3d major = ZnGeVector3d::kXAxis;
    ZnGeVector3d minor{0.0, 0.5, 0.0};
    double startParam = 0.0, endParam = ZnGe::kTwoPi;
    bool isUsable() const;
  };
  Shape shape_;
};
