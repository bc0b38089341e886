// An unbounded line. A default one is the x axis; callers also use it to mark an empty curve.
#pragma once

#include "quorl/ge/linear_ent3d.h"

// The parameter is the distance from the base point in the line's direction.
class ZnGeLine3d : public ZnGeLinearEnt3d {
public:
  ZnGeLine3d() = default;
  // From the first point towards the second; equal points give a degenerate line.
  ZnGeLine3d(const ZnGePoint3d& first, const ZnGePoint3d& second) { set(first, second); }
  // The vector may have any length; its length decides whether the line is degenerate.
  ZnGeLine3d(const ZnGePoint3d& base, const ZnGeVector3d& vector) { set(base, vector); }
  ZnGeLine3d& set(const ZnGePoint3d& first, const ZnGePoint3d& second);
  ZnGeLine3d& set(const ZnGePoint3d& base, const ZnGeVector3d& vector);

  ZnGePoint3d pointOnLine() const override { return base_; }
  ZnGeVector3d span() const override { return vector_; }
  bool isBounded() const override { return false; }

  ZnGe::EntityId type() const override { return ZnGe::kLine3d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kLine3d || ZnGeLinearEnt3d::isKindOf(id);
  }
  ZnGeLine3d* copy() const override { return new ZnGeLine3d(*this); }
  ZnGeLine3d& transformBy(const ZnGeMatrix3d& matrix) override;
  // The same line in the same sense; the bases may differ.
  bool isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

  void getInterval(ZnGeInterval& interval) const override { interval = ZnGeInterval(); }
  ZnGePoint3d evalPoint(double param) const override;
  ZnGeVector3d evaluateDerivative(double param) const override;
  ZnGeLine3d& reverseParam() override;
  using ZnGeCurve3d::isDegenerate;
  bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const override;
  bool isClosed(const ZnGeTol& = ZnGeContext::gTol) const override { return false; }
  double length() const override;
  ZnGeBoundBlock3d boundBox() const override { return {}; }
  void appendSamplePoints(double, std::vector<ZnGePoint3d>&) const override {}

protected:
  double nearestParam(const ZnGePoint3d& point) const override;

private:
  ZnGePoint3d base_;
  ZnGeVector3d vector_{1.0, 0.0, 0.0};
};
