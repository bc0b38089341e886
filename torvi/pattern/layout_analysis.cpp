// From edges to the members of a pattern: which circles take part, what a reference edge says, and which
// reading of the circles fits.
#include "torvi/pattern/layout.h"

#include <algorithm>
#include <numbers>

#include "torvi/core/action_body_utils.h"
#include "torvi/core/tolerance.h"
#include "torvi/drawing/edge_curves.h"
#include "torvi/pattern/object_wrapper.h"

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr int kLeastFitting = 3;      // circles worth proposing
constexpr int kLeastPolarFitting = 5; // circles at which a ring is believed rather than a row

} // namespace

bool ZnDbCenterMarkPatternLayout::loadCircles(const ZnArray<ZnDbEdgeRef>& edges) {
  circles_.removeAll();
  circles_.setPhysicalLength(edges.length());
  if (getInputCircles(edges, circles_) == 0) return false;
  for (const ZnGeCircArc3d& circle : circles_) {
    if (circle.radius() == 0.0) continue;
    circle.getPlane(patternPlane_);
    break;
  }
  planeDirection_ = patternPlane_.normal().perpVector();
  patternTolerance_ = ZnGeTol(kPatternTolerance, kPatternTolerance);
  return true;
}

// An undecided pattern is tried as a ring first: any three holes that are no row lie on a circle.
bool ZnDbCenterMarkPatternLayout::analysePattern() {
  ZnDbTorviActionBodyUtils::deleteCurves(majorCurves_);
  majorCurves_.removeAll();
  memberChains_.removeAll();
  collectCenters();
  if (!resolveReferenceEdge()) return false;
  if (centers2d_.length() == 1 && referenceKind_ == 0 && patternType_ != kCenterPatternPolar) return true;
  if (patternType_ != kCenterPatternLinear && fitPolarPattern()) {
    adoptPatternType(kCenterPatternPolar);
    return true;
  }
  if (patternType_ == kCenterPatternPolar || !fitLinearPattern()) return false;
  adoptPatternType(kCenterPatternLinear);
  return true;
}

void ZnDbCenterMarkPatternLayout::adoptPatternType(CenterMarkPatternType type) {
  if (patternType_ != kCenterPatternNone || type == patternType_) return;
  patternType_ = type;
  if (wrapper().openStatus() == Quorl::eOk) wrapper()->setCenterPatternType(type);
}

void ZnDbCenterMarkPatternLayout::collectCenters() {
  centers2d_.removeAll();
  centerIndices_.removeAll();
  for (int i = 0; i < circles_.length(); ++i) {
    ZnGeCircArc3d& circle = circles_[i];
    if (circle.radius() == 0.0) continue;
    ZnGePlane plane;
    circle.getPlane(plane);
    // One hole in two steps is one member: the circle that was named first.
    if (!plane.isCoplanarTo(patternPlane_) || isInsideAnother(circle)) {
      circle.setRadius(0.0);
      continue;
    }
    centers2d_.append(circle.center().convert2d(patternPlane_));
    centerIndices_.append(i);
  }
}

bool ZnDbCenterMarkPatternLayout::isInsideAnother(const ZnGeCircArc3d& circle) const {
  return std::any_of(centerIndices_.begin(), centerIndices_.end(), [&](int index) {
    const ZnGeCircArc3d& accepted = circles_[index];
    const auto [small, big] = std::minmax({circle.radius(), accepted.radius()});
    const double distance = circle.center().distanceTo(accepted.center());
    return big > distance && big - distance - small > -patternTolerance_.equalVector();
  });
}

// What does not fit is forgotten, so that a reference that went its own way does not hold the pattern up;
// referenceKind_ stays what it was.
bool ZnDbCenterMarkPatternLayout::resolveReferenceEdge() {
  referenceStartAngle_ = -1.0;
  if (referenceEdge_.isEmpty()) {
    referenceKind_ = 0;
    return true;
  }
  const std::unique_ptr<ZnGeCurve3d> curve(torvi::evaluatedEdgeCurve(referenceEdge_, false));
  if (curve && curve->isKindOf(ZnGe::kLinearEnt3d) && patternType_ != kCenterPatternPolar) {
    const auto& line = static_cast<const ZnGeLinearEnt3d&>(*curve);
    if (line.isOn(patternPlane_)) {
      majorDirection_ = line.direction();
      referenceKind_ = 2;
      return true;
    }
  } else if (curve && curve->isKindOf(ZnGe::kCircularArc3d) && patternType_ != kCenterPatternLinear) {
    const auto& arc = static_cast<const ZnGeCircArc3d&>(*curve);
    ZnGePlane plane;
    arc.getPlane(plane);
    if (plane.isCoplanarTo(patternPlane_)) {
      pitchCenter_ = arc.center();
      referenceKind_ = 1;
      if (referencePickParam_ >= 0.0 && centers2d_.length() >= 2) noteReferencePick(arc);
      return true;
    }
  }
  referenceEdge_ = ZnDbEdgeRef();
  return isReferenceEdgeOptional();
}

// The pick as an angle on the pitch circle. An arc that faces the other way runs through it backwards.
void ZnDbCenterMarkPatternLayout::noteReferencePick(const ZnGeCircArc3d& arc) {
  const bool sameSense = arc.normal().isEqualTo(patternPlane_.normal());
  const double onArc =
      sameSense ? referencePickParam_ : arc.endAng() - (arc.startAng() + referencePickParam_);
  const ZnGePoint3d from = sameSense ? arc.startPoint() : arc.endPoint();
  referenceStartAngle_ = onArc + (from - arc.center()).convert2d(patternPlane_).angle();
  if (referenceStartAngle_ >= kTwoPi) referenceStartAngle_ -= kTwoPi;
}

// From the last to the first, so that of two centers at one parameter the first is kept.
void ZnDbCenterMarkPatternLayout::collectMembersOnCurve(const ZnGeCurve2d& curve) {
  curveMembers_.clear();
  for (int i = centers2d_.length() - 1; i >= 0; --i) {
    double param = 0.0;
    if (curve.isOn(centers2d_[i], param, patternTolerance_)) curveMembers_[param] = i;
  }
}

ZnArray<int> ZnDbCenterMarkPatternLayout::chainOfMembers() const {
  ZnArray<int> chain(static_cast<int>(curveMembers_.size()));
  for (const auto& [param, position] : curveMembers_) chain.append(centerIndices_[position]);
  return chain;
}

bool ZnDbCenterMarkPatternLayout::isOnChain(int index) const {
  return std::any_of(memberChains_.begin(), memberChains_.end(),
                     [index](const ZnArray<int>& chain) { return chain.contains(index); });
}

bool ZnDbCenterMarkPatternLayout::allCirclesOnChains(const ZnArray<ZnDbEdgeRef>& edges) {
  if (!loadCircles(edges) || !analysePattern()) return false;
  for (int i = 0; i < circles_.length(); ++i)
    if (!isOnChain(i)) return false;
  return true;
}

int ZnDbCenterMarkPatternLayout::countFittingEdges(const ZnArray<ZnDbEdgeRef>& edges, ZnArray<int>& left) {
  if (!loadCircles(edges) || !analysePattern()) return 0;
  for (int i = 0; i < circles_.length(); ++i)
    if (!isOnChain(i)) left.append(i);
  return edges.length() - left.length();
}

// Both readings are tried where the type is open; a reference edge counts for its reading like one circle
// more. A ring wins only by five circles or more, since three of any grid lie on some circle.
bool ZnDbCenterMarkPatternLayout::fitCandidateEdges(ZnArray<ZnDbEdgeRef>& edges, int userCount) {
  fixedCenterCount_ = userCount;
  const CenterMarkPatternType decided = patternType_;
  const int reference = referenceEdge_.isEmpty() ? 0 : 1;
  ZnArray<int> leftOfRow, leftOfRing;
  int onRow = 0, onRing = 0;
  if (decided != kCenterPatternPolar) {
    patternType_ = kCenterPatternLinear;
    onRow = countFittingEdges(edges, leftOfRow) + reference;
    if (decided == kCenterPatternLinear && onRow < kLeastFitting) return false;
  }
  if (decided != kCenterPatternLinear) {
    patternType_ = kCenterPatternPolar;
    onRing = countFittingEdges(edges, leftOfRing) + reference;
    if (std::max(onRing, onRow) < kLeastFitting) return false;
  }
  const bool isRing = onRow < kLeastFitting || (onRing >= kLeastPolarFitting && onRing > onRow);
  const ZnArray<int>& left = isRing ? leftOfRing : leftOfRow;
  for (int i = left.length() - 1; i >= 0; --i) edges.removeAt(left[i]);
  return true;
}
