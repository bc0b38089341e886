// An unbounded line in a plane.
#pragma once

#include "quorl/ge/linear_ent2d.h"

// The parameter is the distance from the base point in the line's direction.
class ZnGeLine2d : public ZnGeLinearEnt2d {
public:
  // The x axis.
  ZnGeLine2d() = default;
  // From the first point towards the second; equal points give a degenerate line.
  ZnGeLine2d(const ZnGePoint2d& first, const ZnGePoint2d& second)
      : base_(first)
      , vector_(second - first) {}
  // The vector may have any length; its length decides whether the line is degenerate.
  ZnGeLine2d(const ZnGePoint2d& base, const ZnGeVector2d& vector)
      : base_(base)
      , vector_(vector) {}

  ZnGePoint2d pointOnLine() const override { return base_; }
  ZnGeVector2d span() const override { return vector_; }

  ZnGe::EntityId type() const override { return ZnGe::kLine2d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kLine2d || ZnGeLinearEnt2d::isKindOf(id);
  }
  ZnGeLine2d* copy() const override { return new ZnGeLine2d(*this); }
  ZnGeLine2d& transformBy(const ZnGeMatrix2d& matrix) override;
  // The same line in the same sense; the bases may differ.
  bool isEqualTo(const ZnGeEntity2d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

  void getInterval(ZnGeInterval& interval) const override { interval = ZnGeInterval(); }
  ZnGePoint2d evalPoint(double param) const override { return base_ + direction() * param; }
  using ZnGeCurve2d::isDegenerate;
  bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const override;

protected:
  double nearestParam(const ZnGePoint2d& point) const override;

private:
  ZnGePoint2d base_;
  ZnGeVector2d vector_{1.0, 0.0};
};
