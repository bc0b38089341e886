// A circular arc, counterclockwise about its normal.
#pragma once

#include "quorl/db/entity/circular_curve.h"
#include "quorl/ge/angles.h"

// Angles are measured in the entity's plane (see ZnGeMatrix3d::planeToWorld of the normal) from its x axis.
class ZnDbArc : public ZnDbCircularCurve {
  ZNRX_DECLARE_MEMBERS(ZnDbArc)

public:
  ZnDbArc() = default;
  // Bad values are refused as the setters do, and leave those of the default arc.
  ZnDbArc(const ZnGePoint3d& center, double radius, double startAngle, double endAngle);
  ZnDbArc(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius, double startAngle,
          double endAngle);

  double startAngle() const { return startAngle_; }
  double endAngle() const { return endAngle_; }
  // The angle run through: 0 to two pi. Equal angles are an arc without length.
  double totalAngle() const;
  ZnGePoint3d startPoint() const;
  ZnGePoint3d endPoint() const;

  // eInvalidInput for what is not finite. Angles are kept as given.
  Quorl::ErrorStatus setStartAngle(double angle);
  Quorl::ErrorStatus setEndAngle(double angle);

  void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const override;

  ZNDB_DECLARE_FIELDS

protected:
  void turned(double angle) override;

private:
  class ZnGeCircArc3d geometry() const;

  double startAngle_ = 0.0, endAngle_ = ZnGe::kPi;
};
