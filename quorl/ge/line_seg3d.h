// A straight segment between two points.
#pragma once

#include "quorl/ge/linear_ent3d.h"

// The parameter is 0 at the start and 1 at the end; values outside continue the line.
class ZnGeLineSeg3d : public ZnGeLinearEnt3d {
public:
  // Degenerate, at the origin.
  ZnGeLineSeg3d() = default;
  ZnGeLineSeg3d(const ZnGePoint3d& start, const ZnGePoint3d& end)
      : start_(start)
      , end_(end) {}
  ZnGeLineSeg3d(const ZnGePoint3d& start, const ZnGeVector3d& vector)
      : start_(start)
      , end_(start + vector) {}
  ZnGeLineSeg3d& set(const ZnGePoint3d& start, const ZnGePoint3d& end);

  // The points as given, to the last bit.
  const ZnGePoint3d& startPoint() const { return start_; }
  const ZnGePoint3d& endPoint() const { return end_; }
  ZnGePoint3d midPoint() const { return start_ + (end_ - start_) * 0.5; }

  ZnGePoint3d pointOnLine() const override { return start_; }
  ZnGeVector3d span() const override { return end_ - start_; }
  bool isBounded() const override { return true; }

  ZnGe::EntityId type() const override { return ZnGe::kLineSeg3d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kLineSeg3d || ZnGeLinearEnt3d::isKindOf(id);
  }
  ZnGeLineSeg3d* copy() const override { return new ZnGeLineSeg3d(*this); }
  ZnGeLineSeg3d& transformBy(const ZnGeMatrix3d& matrix) override;
  bool isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

  void getInterval(ZnGeInterval& interval) const override { interval = ZnGeInterval(0.0, 1.0); }
  ZnGePoint3d evalPoint(double param) const override;
  ZnGeVector3d evaluateDerivative(double param) const override;
  ZnGeLineSeg3d& reverseParam() override;
  using ZnGeCurve3d::isDegenerate;
  bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const override;
  bool isClosed(const ZnGeTol& = ZnGeContext::gTol) const override { return false; }
  double length() const override { return start_.distanceTo(end_); }
  ZnGeBoundBlock3d boundBox() const override { return {start_, end_}; }
  void appendSamplePoints(double chordHeight, std::vector<ZnGePoint3d>& points) const override;

protected:
  double nearestParam(const ZnGePoint3d& point) const override;

private:
  ZnGePoint3d start_;
  ZnGePoint3d end_;
};
