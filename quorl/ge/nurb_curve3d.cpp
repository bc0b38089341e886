#include "quorl/ge/nurb_curve3d.h"

#include <algorithm>
#include <cmath>

#include "quorl/ge/arc_length.h"
#include "quorl/ge/bezier_piece.h"

namespace {

// Halvings of one piece; its range is then far below what the rounding of parameters can tell apart.
constexpr int kMaxSplits = 40;

bool hasValidKnots(int degree, const std::vector<double>& knots, int pointCount) {
  const auto isFinite = [](double knot) { return std::isfinite(knot); };
  if (!std::all_of(knots.begin(), knots.end(), isFinite)) return false;
  if (!std::is_sorted(knots.begin(), knots.end()) || !(knots[degree] < knots[pointCount])) return false;
  // A knot inside the interval that is repeated more often than the degree tears the curve apart.
  for (int i = degree + 1; i + degree < pointCount; ++i) {
    const bool isInside = knots[i] > knots[degree] && knots[i] < knots[pointCount];
    if (isInside && knots[i] == knots[i + degree]) return false;
  }
  return true;
}

double largestExtent(const ZnGeBoundBlock3d& box) { return box.diagonal().length(); }

// The search for the nearest point: best place so far.
struct Nearest {
  ZnGePoint3d target;
  double param = 0.0;
  double distance = 0.0;

  void consider(double atParam, const ZnGePoint3d& point) {
    const double atDistance = point.distanceTo(target);
    if (atDistance < distance) param = atParam, distance = atDistance;
  }
};

// Newton's method on (C - P).C' = 0 from the middle of the piece, kept within it. Where the second derivative
// does not lead to a minimum the ends of the piece, considered by the caller, stand in.
void refine(const ZnGeBezierPiece& piece, Nearest& nearest) {
  constexpr int kMaxSteps = 24;
  double param = 0.5 * (piece.low() + piece.high());
  for (int step = 0; step < kMaxSteps; ++step) {
    const ZnGe::CurveFrame frame = piece.evaluate(param);
    nearest.consider(param, frame.point);
    const ZnGeVector3d offset = frame.point - nearest.target;
    const double slope = offset.dotProduct(frame.first);
    const double curvature = frame.first.lengthSquared() + offset.dotProduct(frame.second);
    if (!(curvature > 0.0)) return;
    const double next = std::clamp(param - slope / curvature, piece.low(), piece.high());
    if (std::fabs(next - param) <= ZnGe::kParamRatio * (std::fabs(next) + piece.high() - piece.low())) return;
    param = next;
  }
}

// Branch and bound: a piece whose control box is farther than the best place found can't hold a nearer one.
// Newton starts only once a piece is so short that it holds one foot point at most.
void searchPiece(const ZnGeBezierPiece& piece, int depth, Nearest& nearest) {
  if (piece.controlBox().distanceTo(nearest.target) >= nearest.distance) return;
  constexpr int kNewtonDepth = 7;
  if (depth >= kNewtonDepth) return refine(piece, nearest);
  ZnGeBezierPiece left = piece, right = piece;
  piece.split(left, right);
  nearest.consider(left.high(), left.endPoint());
  const bool leftFirst =
      left.controlBox().distanceTo(nearest.target) <= right.controlBox().distanceTo(nearest.target);
  searchPiece(leftFirst ? left : right, depth + 1, nearest);
  searchPiece(leftFirst ? right : left, depth + 1, nearest);
}

// Two boxes that grow together: one of points of the curve, one of the control points that stand for the
// rest.
struct CurveBoxes {
  ZnGeBoundBlock3d inner;
  ZnGeBoundBlock3d outer;
};

// Splits until the control points stay within the slack of the inner box. They are gathered apart from it, so
// that the slack of one piece is no foothold for the next.
void addPieceToBoxes(const ZnGeBezierPiece& piece, int depth, double slack, CurveBoxes& boxes) {
  const ZnGeBoundBlock3d hull = piece.controlBox();
  if (depth <= 0 || boxes.inner.contains(hull, ZnGeTol(slack, 0.0))) {
    boxes.outer.addBox(hull);
    return;
  }
  ZnGeBezierPiece left = piece, right = piece;
  piece.split(left, right);
  boxes.inner.addPoint(left.endPoint());
  addPieceToBoxes(left, depth - 1, slack, boxes);
  addPieceToBoxes(right, depth - 1, slack, boxes);
}

void appendPieceSamples(const ZnGeBezierPiece& piece, int depth, double height,
                        std::vector<ZnGePoint3d>& points) {
  if (depth <= 0 || piece.chordHeight() <= height) {
    points.push_back(piece.endPoint());
    return;
  }
  ZnGeBezierPiece left = piece, right = piece;
  piece.split(left, right);
  appendPieceSamples(left, depth - 1, height, points);
  appendPieceSamples(right, depth - 1, height, points);
}

} // namespace

Quorl::ErrorStatus ZnGeNurbCurve3d::set(int degree, const std::vector<double>& knots,
                                        const std::vector<ZnGePoint3d>& points,
                                        const std::vector<double>& weights) {
  const int pointCount = static_cast<int>(points.size());
  if (degree < 1 || degree > kMaxDegree || pointCount <= degree) return Quorl::eInvalidInput;
  if (knots.size() != points.size() + degree + 1) return Quorl::eInvalidInput;
  if (!hasValidKnots(degree, knots, pointCount)) return Quorl::eInvalidInput;
  const auto isPositive = [](double weight) { return weight > 0.0 && std::isfinite(weight); };
  const bool hasValidWeights = weights.empty() || (weights.size() == points.size() &&
                                                   std::all_of(weights.begin(), weights.end(), isPositive));
  if (!hasValidWeights) return Quorl::eInvalidInput;
  degree_ = degree;
  knots_ = knots;
  points_ = points;
  weights_ = weights;
  return Quorl::eOk;
}

ZnGePoint3d ZnGeNurbCurve3d::startPoint() const { return evalPoint(interval().lowerBound()); }

ZnGePoint3d ZnGeNurbCurve3d::endPoint() const { return evalPoint(interval().upperBound()); }

ZnGeNurbCurve3d& ZnGeNurbCurve3d::transformBy(const ZnGeMatrix3d& matrix) {
  for (ZnGePoint3d& point : points_) point.transformBy(matrix);
  return *this;
}

bool ZnGeNurbCurve3d::isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  const auto& curve = static_cast<const ZnGeNurbCurve3d&>(other);
  const auto isSameNumber = [&tol](double a, double b) { return std::fabs(a - b) <= tol.equalVector(); };
  const auto isSamePoint = [&tol](const ZnGePoint3d& a, const ZnGePoint3d& b) { return a.isEqualTo(b, tol); };
  return degree_ == curve.degree_ &&
         std::equal(knots_.begin(), knots_.end(), curve.knots_.begin(), curve.knots_.end(), isSameNumber) &&
         std::equal(weights_.begin(), weights_.end(), curve.weights_.begin(), curve.weights_.end(),
                    isSameNumber) &&
         std::equal(points_.begin(), points_.end(), curve.points_.begin(), curve.points_.end(), isSamePoint);
}

void ZnGeNurbCurve3d::getInterval(ZnGeInterval& interval) const {
  interval = points_.empty() ? ZnGeInterval(0.0, 1.0) : ZnGeInterval(knots_[firstSpan()], knots_[endSpan()]);
}

ZnGePoint3d ZnGeNurbCurve3d::evalPoint(double param) const {
  if (points_.empty()) return ZnGePoint3d::kOrigin;
  const double inside = interval().clamp(param);
  return piece(spanOf(inside)).evaluate(inside).point;
}

ZnGeVector3d ZnGeNurbCurve3d::evaluateDerivative(double param) const {
  if (points_.empty()) return ZnGeVector3d::kIdentity;
  const double inside = interval().clamp(param);
  return piece(spanOf(inside)).evaluate(inside).first;
}

ZnGeNurbCurve3d& ZnGeNurbCurve3d::reverseParam() {
  if (points_.empty()) return *this;
  const ZnGeInterval range = interval();
  std::reverse(points_.begin(), points_.end());
  std::reverse(weights_.begin(), weights_.end());
  std::reverse(knots_.begin(), knots_.end());
  for (double& knot : knots_) {
    // The knots that bound the interval must stay the same doubles after any number of reversals.
    if (knot == range.lowerBound()) {
      knot = range.upperBound();
    } else if (knot == range.upperBound()) {
      knot = range.lowerBound();
    } else {
      knot = range.lowerBound() + (range.upperBound() - knot);
    }
  }
  return *this;
}

bool ZnGeNurbCurve3d::isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol) const {
  const auto isAtFirst = [&](const ZnGePoint3d& point) { return point.isEqualTo(points_.front(), tol); };
  const bool isPoint = std::all_of(points_.begin(), points_.end(), isAtFirst);
  kind = isPoint ? ZnGe::kPointEntity3d : ZnGe::kNurbCurve3d;
  return isPoint;
}

double ZnGeNurbCurve3d::length() const {
  double sum = 0.0;
  for (int span = firstSpan(); span < endSpan(); ++span) {
    if (isEmptySpan(span)) continue;
    const ZnGeBezierPiece part = piece(span);
    sum += ZnGe::arcLength([&part](double t) { return part.evaluate(t).first.length(); }, part.low(),
                           part.high());
  }
  return sum;
}

ZnGeBoundBlock3d ZnGeNurbCurve3d::boundBox() const {
  CurveBoxes boxes;
  // The slack is measured against the curve itself: its control points may lie far off.
  for (int span = firstSpan(); span < endSpan(); ++span) {
    if (isEmptySpan(span)) continue;
    const ZnGeBezierPiece part = piece(span);
    const ZnGePoint3d middle = part.evaluate(0.5 * (part.low() + part.high())).point;
    boxes.inner.addPoint(part.startPoint()).addPoint(middle).addPoint(part.endPoint());
  }
  const double slack = ZnGe::kBoxSlackRatio * largestExtent(boxes.inner);
  for (int span = firstSpan(); span < endSpan(); ++span) {
    if (!isEmptySpan(span)) addPieceToBoxes(piece(span), kMaxSplits, slack, boxes);
  }
  return boxes.outer.addBox(boxes.inner);
}

void ZnGeNurbCurve3d::appendSamplePoints(double chordHeight, std::vector<ZnGePoint3d>& points) const {
  if (points_.empty()) return;
  const double height = std::max(chordHeight, ZnGe::kFinestChordRatio * largestExtent(boundBox()));
  points.push_back(startPoint());
  for (int span = firstSpan(); span < endSpan(); ++span) {
    if (!isEmptySpan(span)) appendPieceSamples(piece(span), kMaxSplits, height, points);
  }
}

double ZnGeNurbCurve3d::nearestParam(const ZnGePoint3d& point) const {
  const ZnGeInterval range = interval();
  Nearest nearest{point, range.lowerBound(), startPoint().distanceTo(point)};
  for (int span = firstSpan(); span < endSpan(); ++span) {
    if (isEmptySpan(span)) continue;
    const ZnGeBezierPiece part = piece(span);
    nearest.consider(part.high(), part.endPoint());
    searchPiece(part, 0, nearest);
  }
  return nearest.param;
}

// The span that holds the parameter; the end of the interval belongs to the last one.
int ZnGeNurbCurve3d::spanOf(double param) const {
  const auto first = knots_.begin() + firstSpan(), last = knots_.begin() + endSpan();
  int span = static_cast<int>(std::upper_bound(first, last, param) - knots_.begin()) - 1;
  while (isEmptySpan(span)) --span;
  return span;
}

// Control point j of the piece over [a, b] is the curve's polar form with degree-j arguments a and j
// arguments b; the polar form is de Boor's triangle with another argument in each row.
ZnGeBezierPiece ZnGeNurbCurve3d::piece(int span) const {
  const double low = knots_[span], high = knots_[span + 1];
  ZnGeBezierPiece result(degree_, low, high);
  for (int j = 0; j <= degree_; ++j) {
    std::array<ZnGe::WeightedPoint, kMaxDegree + 1> row;
    for (int i = 0; i <= degree_; ++i) {
      const int index = span - degree_ + i;
      const double weight = weights_.empty() ? 1.0 : weights_[index];
      row[i] = {points_[index].asVector() * weight, weight};
    }
    for (int level = 1; level <= degree_; ++level) {
      const double argument = level <= j ? high : low;
      for (int i = degree_; i >= level; --i) {
        const int index = span - degree_ + i;
        const double from = knots_[index], to = knots_[index + degree_ - level + 1];
        row[i] = ZnGe::mix(row[i - 1], row[i], (argument - from) / (to - from));
      }
    }
    result.setControl(j, row[degree_]);
  }
  return result;
}
