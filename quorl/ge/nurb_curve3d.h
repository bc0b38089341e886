// A spline curve: piecewise polynomial, or rational with weights, over a knot vector.
#pragma once

#include <vector>

#include "quorl/base/error_status.h"
#include "quorl/ge/curve3d.h"

class ZnGeBezierPiece;

class ZnGeNurbCurve3d : public ZnGeCurve3d {
public:
  static constexpr int kMaxDegree = 15;

  // Empty: a degenerate curve at the origin with the interval [0, 1].
  ZnGeNurbCurve3d() = default;

  // Replaces the whole definition. eInvalidInput, with the curve unchanged, unless all of these hold: degree
  // from 1 to kMaxDegree; more control points than the degree; as many knots as control points plus degree
  // plus one, not decreasing, with a positive length between the knots that bound the interval and none
  // inside it repeated more often than the degree; no weights, or a positive one for each control point.
  Quorl::ErrorStatus set(int degree, const std::vector<double>& knots, const std::vector<ZnGePoint3d>& points,
                         const std::vector<double>& weights = {});

  // Definition
  int degree() const { return degree_; }
  const std::vector<double>& knots() const { return knots_; }
  const std::vector<ZnGePoint3d>& controlPoints() const { return points_; }
  // Empty for a curve without weights.
  const std::vector<double>& weights() const { return weights_; }
  ZnGePoint3d startPoint() const;
  ZnGePoint3d endPoint() const;

  ZnGe::EntityId type() const override { return ZnGe::kNurbCurve3d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kNurbCurve3d || ZnGeCurve3d::isKindOf(id);
  }
  ZnGeNurbCurve3d* copy() const override { return new ZnGeNurbCurve3d(*this); }
  ZnGeNurbCurve3d& transformBy(const ZnGeMatrix3d& matrix) override;
  // By definition: two definitions of one shape differ. Knots and weights are compared by equalVector.
  bool isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

  void getInterval(ZnGeInterval& interval) const override;
  // Parameters outside the interval count as its nearer bound.
  ZnGePoint3d evalPoint(double param) const override;
  ZnGeVector3d evaluateDerivative(double param) const override;
  // Keeps the interval.
  ZnGeNurbCurve3d& reverseParam() override;
  using ZnGeCurve3d::isDegenerate;
  // A point when all control points are within equalPoint of the first.
  bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const override;
  // By quadrature.
  double length() const override;
  // Holds the whole curve and exceeds it by no more than kBoxSlackRatio of its size.
  ZnGeBoundBlock3d boundBox() const override;
  void appendSamplePoints(double chordHeight, std::vector<ZnGePoint3d>& points) const override;

protected:
  double nearestParam(const ZnGePoint3d& point) const override;

private:
  int firstSpan() const { return degree_; }
  int endSpan() const { return static_cast<int>(points_.size()); }
  bool isEmptySpan(int span) const { return !(knots_[span] < knots_[span + 1]); }
  int spanOf(double param) const;
  // The polynomial piece between knots `span` and `span + 1`.
  ZnGeBezierPiece piece(int span) const;

  int degree_ = 0;
  std::vector<double> knots_;
  std::vector<ZnGePoint3d> points_;
  std::vector<double> weights_;
};
