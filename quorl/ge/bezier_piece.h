// Private to the library: one polynomial piece of a spline, with homogeneous control points on the stack.
#pragma once

#include <array>

#include "quorl/ge/bound_block3d.h"
#include "quorl/ge/nurb_curve3d.h"

namespace ZnGe {

// A control point times its weight, and the weight.
struct WeightedPoint {
  ZnGeVector3d scaled;
  double weight = 1.0;

  ZnGePoint3d point() const { return ZnGePoint3d::kOrigin + scaled / weight; }
};

inline WeightedPoint mix(const WeightedPoint& a, const WeightedPoint& b, double share) {
  return {a.scaled * (1.0 - share) + b.scaled * share, a.weight * (1.0 - share) + b.weight * share};
}

// Position and the first two derivatives.
struct CurveFrame {
  ZnGePoint3d point;
  ZnGeVector3d first;
  ZnGeVector3d second;
};

} // namespace ZnGe

class ZnGeBezierPiece {
public:
  // Covers the parameters from low to high of the spline; control points are set one by one.
  ZnGeBezierPiece(int degree, double low, double high)
      : degree_(degree)
      , low_(low)
      , high_(high) {}
  void setControl(int index, const ZnGe::WeightedPoint& point) { control_[index] = point; }

  int degree() const { return degree_; }
  double low() const { return low_; }
  double high() const { return high_; }
  ZnGePoint3d startPoint() const { return control_[0].point(); }
  ZnGePoint3d endPoint() const { return control_[degree_].point(); }

  // By de Casteljau's scheme; derivatives by the parameter of the spline.
  ZnGe::CurveFrame evaluate(double param) const;
  // Halves at the middle of the range.
  void split(ZnGeBezierPiece& left, ZnGeBezierPiece& right) const;

  // The box of the control points, which with positive weights holds the whole piece.
  ZnGeBoundBlock3d controlBox() const;
  // A bound on the distance of the piece from the chord between its ends, by the same argument.
  double chordHeight() const;

private:
  int degree_;
  double low_;
  double high_;
  std::array<ZnGe::WeightedPoint, ZnGeNurbCurve3d::kMaxDegree + 1> control_;
};
