// From an analysed pattern to curves and keys, in the order in which they stand in the block: the members'
// marks, the pieces between neighbours, the mark on the pitch center, the whole curve.
#include "torvi/pattern/layout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "torvi/centermark/mark_curves.h"
#include "torvi/centermark/props_provider.h"
#include "torvi/centermark/size_calculator.h"
#include "torvi/core/tolerance.h"
#include "torvi/drawing/blocks.h"
#include "torvi/pattern/object_wrapper.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;
using Body = ZnDbCenterMarkPatternActionBody;

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kNotDrawn = 0.0; // as an arm length
constexpr int kLinesOfMark = 6;

// Which lines of a mark point towards the pitch center and away from it.
enum ArmEntry : size_t { kBackwards = 0, kForwards = 1, kInwards = 2, kOutwards = 3 };

double toFullTurn(double angle) {
  if (angle < 0.0) return angle + kTwoPi;
  return angle >= kTwoPi ? angle - kTwoPi : angle;
}

void appendMarkKeys(ZnArray<ZnString>& keys, const ZnString& key) {
  for (int i = 0; i < kLinesOfMark; ++i) keys.append(key);
}

} // namespace

bool ZnDbCenterMarkPatternLayout::computeBlockTransform(const ZnArray<ZnGeCurve3d*>&,
                                                        const ZnArray<ZnString>&) {
  ZnGePoint3d origin;
  if (!majorCurves_.isEmpty()) {
    const ZnGeCurve3d* curve = majorCurves_.first();
    if (curve->isKindOf(ZnGe::kLineSeg3d))
      origin = static_cast<const ZnGeLineSeg3d*>(curve)->midPoint();
    else if (curve->isKindOf(ZnGe::kCircularArc3d))
      origin = static_cast<const ZnGeCircArc3d*>(curve)->center();
    else
      return false;
  } else {
    ZnGeBoundBlock3d extents;
    for (const ZnGeCircArc3d& circle : circles_)
      if (circle.radius() > 0.0) extents.addPoint(circle.center());
    origin = extents.center();
  }
  transform_.setToTranslation(origin.asVector());
  return true;
}

ErrorStatus ZnDbCenterMarkPatternLayout::generatePattern(ZnArray<ZnGeCurve3d*>& curves,
                                                         ZnArray<ZnString>& keys) {
  if (computeBlockTransform(curves, keys)) {
    const ZnGeMatrix3d toBlock = transform_.inverse();
    for (ZnGeCircArc3d& circle : circles_)
      if (circle.radius() != 0.0) circle.transformBy(toBlock);
    for (ZnGeCurve3d* curve : majorCurves_) curve->transformBy(toBlock);
  }
  majorDirection_ = planeDirection_;
  if (!majorCurves_.isEmpty()) {
    const ZnGeCurve3d* curve = majorCurves_.first();
    if (curve->isKindOf(ZnGe::kLineSeg3d))
      majorDirection_ = static_cast<const ZnGeLineSeg3d*>(curve)->direction();
    else if (curve->isKindOf(ZnGe::kCircularArc3d))
      pitchCenter_ = static_cast<const ZnGeCircArc3d*>(curve)->center();
  }
  styleOvershoot_ = ZnTorviStyle::getCenterOvershoot();
  const ZnDbCenterMarkPropsProvider provider(centerObject_);
  generateMemberMarks(provider, curves, keys);
  generateSegments(provider, curves, keys);
  if (showPitchCenterMark_) generatePitchCenterMark(provider, curves, keys);
  return Quorl::eOk;
}

int ZnDbCenterMarkPatternLayout::axisOfArm(int arm) const {
  const bool swapped = planeDirection_.dotProduct(ZnGeVector3d::kXAxis) < 0.0;
  return swapped && arm < 2 ? 1 - arm : arm;
}

double ZnDbCenterMarkPatternLayout::storedArm(size_t axis) const {
  return -(eLeftLine + axisOfArm(static_cast<int>(axis)));
}

double ZnDbCenterMarkPatternLayout::centerLineOvershoot(bool atEnd) const {
  if (wrapper().openStatus() != Quorl::eOk) return styleOvershoot_;
  const ZnString key = centerLineKeys_.isEmpty() ? ZnString() : centerLineKeys_.first();
  return atEnd ? wrapper()->endOvershoot(key) : wrapper()->startOvershoot(key);
}

// The ends of an open chain get an arm that carries the center line on, and none towards the chain, where the
// piece begins. A member on an arm of the pitch center's mark lends its outward arm to it.
ZnCenterMarkArmLengths ZnDbCenterMarkPatternLayout::memberArms(int index) const {
  ZnCenterMarkArmLengths arms;
  // What an unset arm comes to, said here so that the style is read once for all marks.
  const double reach = circles_[index].radius() + styleOvershoot_;
  arms.fill(reach > 0.0 ? reach : kArmUnset);
  const bool polar = patternType_ == kCenterPatternPolar;
  const bool isMember = !memberChains_.isEmpty() && memberChains_.first().contains(index);
  if (isMember && !fullPitchCircle_) {
    const ZnArray<int>& chain = memberChains_.first();
    const double radius = circles_[index].radius();
    if (chain.length() > 1 && index == chain.last()) {
      arms[kBackwards] = kNotDrawn;
      arms[kForwards] = radius + centerLineOvershoot(true);
    } else if (index == chain.first()) {
      arms[kBackwards] = radius + centerLineOvershoot(false);
      arms[kForwards] = kNotDrawn;
    }
  }
  if (memberChains_.isEmpty() || !showPitchCenterMark_ || !polar) return arms;
  for (size_t axis = 0; axis < axisMembers_.size(); ++axis) {
    if (axisMembers_[axis] != index) continue;
    arms[kInwards] = kNotDrawn;
    arms[kOutwards] = storedArm(axis);
    break;
  }
  return arms;
}

void ZnDbCenterMarkPatternLayout::generateMemberMarks(const Props& provider, ZnArray<ZnGeCurve3d*>& curves,
                                                      ZnArray<ZnString>& keys) {
  const bool polar = patternType_ == kCenterPatternPolar;
  for (int index = 0; index < circles_.length(); ++index) {
    if (circles_[index].radius() == 0.0) continue;
    const bool isStray = !memberChains_.isEmpty() && !memberChains_.first().contains(index);
    // Off a pitch circle there is no direction in which a mark should lie.
    if (isStray && polar) continue;
    buildCenterMarkCurves(curves, provider, circles_[index], patternPlane_.normal(),
                          isStray ? planeDirection_ : majorDirection_, nullptr, memberArms(index),
                          polar ? &pitchCenter_ : nullptr);
    appendMarkKeys(keys, Body::dependencyKey(index, -1));
  }
}

ZnDbCenterMarkPatternLayout::CrossSize ZnDbCenterMarkPatternLayout::crossSizeOf(const Props& provider,
                                                                                double radius) {
  double length = 0.5, gap = 0.5;
  getCrossLengthAndGapFromProvider(provider, length, gap, radius);
  return {length * 0.5, gap};
}

// An arm too short to hold the gap gives way to the end of the cross.
double ZnDbCenterMarkPatternLayout::pieceOffset(const Props& provider, double radius) const {
  const CrossSize cross = crossSizeOf(provider, radius);
  const double behindGap = cross.gap + cross.half;
  const double reach = radius + styleOvershoot_;
  return behindGap <= reach + ZnGeContext::gTol.equalPoint() ? behindGap : cross.half;
}

void ZnDbCenterMarkPatternLayout::generateSegments(const Props& provider, ZnArray<ZnGeCurve3d*>& curves,
                                                   ZnArray<ZnString>& keys) {
  if (memberChains_.isEmpty()) return;
  ZnArray<int> chain = memberChains_.first();
  const bool isClosedPair = fullPitchCircle_ && chain.length() == 2;
  if (fullPitchCircle_ && !chain.isEmpty()) chain.append(chain.first());
  if (chain.length() < 2) return;
  double fromOffset = pieceOffset(provider, circles_[chain.first()].radius());
  for (int i = 0; i + 1 < chain.length(); ++i) {
    const int from = chain[i], to = chain[i + 1];
    const double toOffset = pieceOffset(provider, circles_[to].radius());
    curves.append(makeSegment(from, to, fromOffset, toOffset));
    keys.append(Body::dependencyKey(from, to, isClosedPair));
    fromOffset = toOffset;
  }
}

ZnGeCurve3d* ZnDbCenterMarkPatternLayout::makeSegment(int from, int to, double fromOffset,
                                                      double toOffset) const {
  const ZnGePoint3d a = circles_[from].center(), b = circles_[to].center();
  const double distance = a.distanceTo(b);
  if (from != to && fromOffset + toOffset > distance) fromOffset = toOffset = distance * 0.5;
  if (patternType_ != kCenterPatternPolar)
    return new ZnGeLineSeg3d(a + majorDirection_ * fromOffset, b - majorDirection_ * toOffset);
  const ZnGeVector3d normal = patternPlane_.normal();
  const double radius = a.distanceTo(pitchCenter_);
  const double atA = majorDirection_.angleTo(a - pitchCenter_, normal);
  double atB = majorDirection_.angleTo(b - pitchCenter_, normal);
  if (atB < atA || from == to) atB += kTwoPi;
  const double start = atA + chordToArcAngle(fromOffset, radius);
  // Members that all but touch leave nothing between them; rounding must not turn that into a full turn.
  const double end = std::max(atB - chordToArcAngle(toOffset, radius), start);
  return new ZnGeCircArc3d(pitchCenter_, normal, majorDirection_, radius, start, end);
}

void ZnDbCenterMarkPatternLayout::generatePitchCenterMark(const Props& provider,
                                                          ZnArray<ZnGeCurve3d*>& curves,
                                                          ZnArray<ZnString>& keys) {
  if (patternType_ != kCenterPatternPolar || majorCurves_.length() != 1) return;
  const auto& pitchCircle = static_cast<const ZnGeCircArc3d&>(*majorCurves_.first());
  ZnCenterMarkArmLengths arms;
  for (size_t axis = 0; axis < arms.size(); ++axis) {
    arms[axis] = storedArm(axis);
    if (axisMembers_[axis] < 0) continue;
    // The arm stops where the member's own cross begins.
    const CrossSize cross = crossSizeOf(provider, circles_[axisMembers_[axis]].radius());
    arms[axis] = std::max(pitchCircle.radius() - cross.gap - cross.half, kNotDrawn);
  }
  buildCenterMarkCurves(curves, provider, pitchCircle, patternPlane_.normal(), planeDirection_, nullptr, arms,
                        nullptr);
  appendMarkKeys(keys, Body::majorAxisKey());
}

void ZnDbCenterMarkPatternLayout::appendMajorCurves(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) {
  for (int i = 0; i < majorCurves_.length(); ++i) {
    extendMajorCurve(*majorCurves_[i], centerLineKeys_[i], memberChains_[i]);
    curves.append(majorCurves_[i]);
    keys.append(centerLineKeys_[i]);
  }
  majorCurves_.removeAll();
}

void ZnDbCenterMarkPatternLayout::extendMajorCurve(ZnGeCurve3d& curve, const ZnString& key,
                                                   const ZnArray<int>& chain) const {
  const double before = circles_[chain.first()].radius() + wrapper()->startOvershoot(key);
  const double behind = circles_[chain.last()].radius() + wrapper()->endOvershoot(key);
  if (curve.isKindOf(ZnGe::kLineSeg3d)) {
    auto& line = static_cast<ZnGeLineSeg3d&>(curve);
    const ZnGeVector3d direction = line.direction();
    line.set(line.startPoint() - direction * before, line.endPoint() + direction * behind);
  } else if (curve.isKindOf(ZnGe::kCircularArc3d) && !fullPitchCircle_) {
    auto& arc = static_cast<ZnGeCircArc3d&>(curve);
    arc.setAngles(toFullTurn(arc.startAng() - chordToArcAngle(before, arc.radius())),
                  toFullTurn(arc.endAng() + chordToArcAngle(behind, arc.radius())));
  }
}

// What is remembered says nothing of a plane: it is that of the block. A pattern in another one keeps its
// shape.
bool ZnDbCenterMarkPatternLayout::isFlatInBlock() const {
  ZnArray<ZnDbObjectId> ids;
  torvi::curvesOfReference(wrapper()->getOutputEdge(Body::majorAxisKey()), ids, false);
  const auto isFlat = [](const ZnGePoint3d& point) { return std::fabs(point.z) <= kPatternTolerance; };
  return std::all_of(ids.begin(), ids.end(), [&](ZnDbObjectId id) {
    ZnDbHolder<ZnDbLine> line(id);
    return !line.isOpen() || (isFlat(line->startPoint()) && isFlat(line->endPoint()));
  });
}

// Without its edges a pattern draws what it remembers: the pitch center's mark and the marks of the members
// on its arms, which are a part of it.
ErrorStatus ZnDbCenterMarkPatternLayout::generateUnassociated(ZnArray<ZnGeCurve3d*>& curves,
                                                              ZnArray<ZnString>& keys) {
  if (patternType_ != kCenterPatternPolar || !showPitchCenterMark_ || !isFlatInBlock()) return Quorl::eOk;
  ZnGeCircArc3d pitchCircle;
  if (const ErrorStatus status = wrapper()->getRefCircle(pitchCircle); status != Quorl::eOk) return status;
  pitchCircle.transformBy(transform_.inverse());
  ZnArray<ZnDbEdgeRef> edges;
  wrapper()->getEdgeRefs(edges);
  const ZnGeCircArc3d none(ZnGePoint3d::kOrigin, ZnGeVector3d::kZAxis, 0.0);
  circles_.removeAll();
  for (int i = 0; i < edges.length(); ++i) circles_.append(none);

  pitchCircle.getPlane(patternPlane_);
  planeDirection_ = majorDirection_ = patternPlane_.normal().perpVector();
  pitchCenter_ = pitchCircle.center();
  const double radius = pitchCircle.radius();
  const ZnGePoint3d ends[] = {
      {-radius, 0.0, 0.0}, {radius, 0.0, 0.0}, {0.0, -radius, 0.0}, {0.0, radius, 0.0}};
  // No member is the first or the last: nobody knows any more.
  ZnArray<int> chain{-1};
  axisMembers_.fill(-1);
  for (int arm = 0; arm < 4; ++arm) {
    int index = -1;
    double memberRadius = 0.0;
    const auto line = static_cast<ZnCenterMarkSubEntType>(eLeftLine + arm);
    if (!wrapper()->getCachedInputEdgeOnMajorAxis(line, index, memberRadius)) continue;
    if (index >= circles_.length()) continue;
    axisMembers_[static_cast<size_t>(axisOfArm(arm))] = index;
    circles_[index] = ZnGeCircArc3d(ends[arm], patternPlane_.normal(), memberRadius);
    chain.append(index);
  }
  chain.append(-1);
  memberChains_.removeAll();
  memberChains_.append(chain);
  majorCurves_.append(pitchCircle.copy());
  styleOvershoot_ = ZnTorviStyle::getCenterOvershoot();
  const ZnDbCenterMarkPropsProvider provider(centerObject_);
  generateMemberMarks(provider, curves, keys);
  generatePitchCenterMark(provider, curves, keys);
  return Quorl::eOk;
}
