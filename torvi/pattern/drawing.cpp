#include "torvi/pattern/drawing.h"

#include <algorithm>
#include <memory>
#include <numbers>

#include "torvi/centermark/size_calculator.h"
#include "torvi/pattern/action_body.h"

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

ZnPatternDrawing::ZnPatternDrawing(ZnPatternAnalysis pattern, ZnDbObjectId centerObject,
                                   bool showPitchCenterMark, const ZnPatternOvershoots& overshoots)
    : pattern_(std::move(pattern))
    , showPitchCenterMark_(showPitchCenterMark)
    , overshoots_(overshoots)
    , provider_(centerObject)
    , planeDirection_(pattern_.planeDirection())
    , majorDirection_(pattern_.line() ? pattern_.line()->direction() : planeDirection_)
    , pitchCenter_(pattern_.pitchCircle() ? pattern_.pitchCircle()->center() : ZnGePoint3d()) {}

void ZnPatternDrawing::generate(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const {
  generateMemberMarks(curves, keys);
  generateSegments(curves, keys);
  generatePitchCenterMark(curves, keys);
}

double ZnPatternDrawing::storedArm(size_t axis) const {
  return -(eLeftLine + pattern_.axisOfArm(static_cast<int>(axis)));
}

// The ends of an open chain get an arm that carries the center line on, and none towards the chain, where the
// piece begins. A member on an arm of the pitch center's mark lends its outward arm to it.
ZnCenterMarkArmLengths ZnPatternDrawing::memberArms(int index) const {
  ZnCenterMarkArmLengths arms;
  const ZnArray<int>& chain = pattern_.memberChain;
  const double radius = pattern_.circles[index].radius();
  const double reach = radius + overshoots_.member;
  arms.fill(reach > 0.0 ? reach : kArmUnset);
  if (!pattern_.fullPcd && chain.contains(index)) {
    if (chain.length() > 1 && index == chain.last()) {
      arms[kBackwards] = kNotDrawn;
      arms[kForwards] = radius + overshoots_.end;
    } else if (index == chain.first()) {
      arms[kBackwards] = radius + overshoots_.start;
      arms[kForwards] = kNotDrawn;
    }
  }
  if (chain.isEmpty() || !showPitchCenterMark_ || !isPolar()) return arms;
  for (size_t axis = 0; axis < pattern_.axisMembers.size(); ++axis) {
    if (pattern_.axisMembers[axis] != index) continue;
    arms[kInwards] = kNotDrawn;
    arms[kOutwards] = storedArm(axis);
    break;
  }
  return arms;
}

void ZnPatternDrawing::generateMemberMarks(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const {
  const ZnArray<int>& chain = pattern_.memberChain;
  for (int index = 0; index < pattern_.circles.length(); ++index) {
    const ZnGeCircArc3d& circle = pattern_.circles[index];
    if (circle.radius() == 0.0) continue;
    const bool isStray = !chain.isEmpty() && !chain.contains(index);
    // Off a pitch circle there is no direction in which a mark should lie.
    if (isStray && isPolar()) continue;
    buildCenterMarkCurves(curves, provider_, circle, pattern_.patternPlane.normal(),
                          isStray ? planeDirection_ : majorDirection_, nullptr, memberArms(index),
                          isPolar() ? &pitchCenter_ : nullptr);
    appendMarkKeys(keys, Body::dependencyKey(index, -1));
  }
}

ZnPatternDrawing::CrossSize ZnPatternDrawing::crossSizeOf(double radius) const {
  double length = 0.5, gap = 0.5;
  getCrossLengthAndGapFromProvider(provider_, length, gap, radius);
  return {length * 0.5, gap};
}

// An arm too short to hold the gap gives way to the end of the cross. A cursor has no cross: the piece ends
// there.
double ZnPatternDrawing::pieceOffset(double radius) const {
  if (radius == 0.0) return 0.0;
  const CrossSize cross = crossSizeOf(radius);
  const double behindGap = cross.gap + cross.half;
  const double reach = radius + overshoots_.member;
  const double slack = ZnGeContext::gTol.equalPoint() + kCoordinateRounding * behindGap;
  return behindGap <= reach + slack ? behindGap : cross.half;
}

void ZnPatternDrawing::generateSegments(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const {
  ZnArray<int> chain = pattern_.memberChain;
  const bool isClosedPair = pattern_.fullPcd && chain.length() == 2;
  if (pattern_.fullPcd && !chain.isEmpty()) chain.append(chain.first());
  if (chain.length() < 2) return;
  double fromOffset = pieceOffset(pattern_.circles[chain.first()].radius());
  for (int i = 0; i + 1 < chain.length(); ++i) {
    const int from = chain[i], to = chain[i + 1];
    const double toOffset = pieceOffset(pattern_.circles[to].radius());
    curves.append(makeSegment(from, to, fromOffset, toOffset));
    keys.append(Body::dependencyKey(from, to, isClosedPair));
    fromOffset = toOffset;
  }
}

ZnGeCurve3d* ZnPatternDrawing::makeSegment(int from, int to, double fromOffset, double toOffset) const {
  const ZnGePoint3d a = pattern_.circles[from].center(), b = pattern_.circles[to].center();
  const double distance = a.distanceTo(b);
  if (from != to && fromOffset + toOffset > distance) fromOffset = toOffset = distance * 0.5;
  if (!isPolar()) return new ZnGeLineSeg3d(a + majorDirection_ * fromOffset, b - majorDirection_ * toOffset);
  const ZnGeVector3d normal = pattern_.patternPlane.normal();
  const double radius = a.distanceTo(pitchCenter_);
  const double atA = majorDirection_.angleTo(a - pitchCenter_, normal);
  double atB = majorDirection_.angleTo(b - pitchCenter_, normal);
  if (atB < atA || from == to) atB += kTwoPi;
  const double start = atA + chordToArcAngle(fromOffset, radius);
  // Members that all but touch leave nothing between them; rounding must not turn that into a full turn.
  const double end = std::max(atB - chordToArcAngle(toOffset, radius), start);
  return new ZnGeCircArc3d(pitchCenter_, normal, majorDirection_, radius, start, end);
}

void ZnPatternDrawing::generatePitchCenterMark(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const {
  const ZnGeCircArc3d* pitchCircle = pattern_.pitchCircle();
  if (!showPitchCenterMark_ || !isPolar() || !pitchCircle) return;
  ZnCenterMarkArmLengths arms;
  for (size_t axis = 0; axis < arms.size(); ++axis) {
    arms[axis] = storedArm(axis);
    const int member = pattern_.axisMembers[axis];
    if (member < 0) continue;
    // The arm stops where the member's own cross begins.
    const CrossSize cross = crossSizeOf(pattern_.circles[member].radius());
    arms[axis] = std::max(pitchCircle->radius() - cross.gap - cross.half, kNotDrawn);
  }
  buildCenterMarkCurves(curves, provider_, *pitchCircle, pattern_.patternPlane.normal(), planeDirection_,
                        nullptr, arms, nullptr);
  appendMarkKeys(keys, Body::majorAxisKey());
}

void ZnPatternDrawing::appendMajorCurves(const ZnString& key, ZnArray<ZnGeCurve3d*>& curves,
                                         ZnArray<ZnString>& keys) const {
  ZnGeCurve3d* curve = extendedMajorCurve();
  if (!curve) return;
  curves.append(curve);
  keys.append(key);
}

ZnGeCurve3d* ZnPatternDrawing::extendedMajorCurve() const {
  const ZnArray<int>& chain = pattern_.memberChain;
  if (chain.isEmpty()) return nullptr;
  const double before = pattern_.circles[chain.first()].radius() + overshoots_.start;
  const double behind = pattern_.circles[chain.last()].radius() + overshoots_.end;
  if (const ZnGeLineSeg3d* line = pattern_.line()) {
    const ZnGeVector3d direction = line->direction();
    auto extended = std::make_unique<ZnGeLineSeg3d>(*line);
    extended->set(line->startPoint() - direction * before, line->endPoint() + direction * behind);
    return extended.release();
  }
  const ZnGeCircArc3d* pitchCircle = pattern_.pitchCircle();
  if (!pitchCircle) return nullptr;
  auto arc = std::make_unique<ZnGeCircArc3d>(*pitchCircle);
  if (!pattern_.fullPcd)
    arc->setAngles(toFullTurn(arc->startAng() - chordToArcAngle(before, arc->radius())),
                   toFullTurn(arc->endAng() + chordToArcAngle(behind, arc->radius())));
  return arc.release();
}
