#include "quorl/ge/bezier_piece.h"

#include <algorithm>

#include "quorl/ge/line_seg3d.h"

// The last two rows of the triangle hold the derivatives of the homogeneous curve H = (w C, w): differences
// of row degree-1 give H', second differences of row degree-2 give H''. With H = (A, w) the quotient rule
// gives C' = (A' - w' C) / w and C'' = (A'' - 2 w' C' - w'' C) / w.
ZnGe::CurveFrame ZnGeBezierPiece::evaluate(double param) const {
  const double size = high_ - low_;
  const double share = (param - low_) / size;
  std::array<ZnGe::WeightedPoint, ZnGeNurbCurve3d::kMaxDegree + 1> row = control_;
  ZnGe::WeightedPoint firstDiff{ZnGeVector3d(), 0.0}, secondDiff{ZnGeVector3d(), 0.0};
  for (int remaining = degree_; remaining > 0; --remaining) {
    if (remaining == 2) {
      secondDiff = {row[2].scaled - row[1].scaled * 2.0 + row[0].scaled,
                    row[2].weight - row[1].weight * 2.0 + row[0].weight};
    }
    if (remaining == 1) firstDiff = {row[1].scaled - row[0].scaled, row[1].weight - row[0].weight};
    for (int i = 0; i < remaining; ++i) row[i] = ZnGe::mix(row[i], row[i + 1], share);
  }

  const double firstFactor = degree_ / size;
  const double secondFactor = degree_ * (degree_ - 1) / (size * size);
  const double weight = row[0].weight;
  ZnGe::CurveFrame frame;
  frame.point = row[0].point();
  const ZnGeVector3d position = frame.point.asVector();
  const double weightRate = firstDiff.weight * firstFactor;
  frame.first = (firstDiff.scaled * firstFactor - position * weightRate) / weight;
  frame.second = (secondDiff.scaled * secondFactor - frame.first * (2.0 * weightRate) -
                  position * (secondDiff.weight * secondFactor)) /
                 weight;
  return frame;
}

void ZnGeBezierPiece::split(ZnGeBezierPiece& left, ZnGeBezierPiece& right) const {
  const double middle = 0.5 * (low_ + high_);
  // Copied first: either target may be this piece.
  std::array<ZnGe::WeightedPoint, ZnGeNurbCurve3d::kMaxDegree + 1> row = control_;
  const int degree = degree_;
  const double low = low_, high = high_;
  left = ZnGeBezierPiece(degree, low, middle);
  right = ZnGeBezierPiece(degree, middle, high);
  for (int step = 0; step <= degree; ++step) {
    left.control_[step] = row[0];
    right.control_[degree - step] = row[degree - step];
    for (int i = 0; i < degree - step; ++i) row[i] = ZnGe::mix(row[i], row[i + 1], 0.5);
  }
}

ZnGeBoundBlock3d ZnGeBezierPiece::controlBox() const {
  ZnGeBoundBlock3d box;
  for (int i = 0; i <= degree_; ++i) box.addPoint(control_[i].point());
  return box;
}

double ZnGeBezierPiece::chordHeight() const {
  const ZnGeLineSeg3d chord(startPoint(), endPoint());
  double height = 0.0;
  for (int i = 1; i < degree_; ++i) height = std::max(height, chord.distanceTo(control_[i].point()));
  return height;
}
