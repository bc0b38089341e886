#include "torvi/pattern/transient_layout.h"

#include "torvi/core/object_pointer.h"
#include "torvi/pattern/object_wrapper.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

namespace {
// Small enough to touch no neighbour; its size is never seen.
constexpr double kCursorCircleShare = 0.1;
} // namespace

ZnDbCenterMarkPatternTransientLayout::ZnDbCenterMarkPatternTransientLayout(CenterMarkPatternType type,
                                                                           const ZnDbEdgeRef& referenceEdge,
                                                                           double pickParam, bool fullPcd,
                                                                           bool showCenterMark,
                                                                           bool autoFullPcd)
    : ZnDbCenterMarkPatternLayout(type, referenceEdge, pickParam, fullPcd, showCenterMark, autoFullPcd) {}

ZnDbCenterMarkPatternTransientLayout::~ZnDbCenterMarkPatternTransientLayout() = default;

ErrorStatus ZnDbCenterMarkPatternTransientLayout::createTransients(const ZnArray<ZnDbEdgeRef>& edges,
                                                                   const ZnGePoint3d* cursorPoint,
                                                                   ZnArray<ZnGeCurve3d*>& curves,
                                                                   ZnArray<ZnString>& keys) {
  if (!loadCircles(edges)) return Quorl::eInvalidInput;
  cursorMemberActive_ = cursorPoint && !fullPitchCircle_ && !isInsideCircle(*cursorPoint);
  if (cursorMemberActive_) appendCursorCircle(*cursorPoint);
  if (!analysePattern()) return Quorl::eInvalidInput;
  // An object under edit keeps its keys, and with them its overshoots. One of a single member has none yet.
  if (keepLinearDirection() != Quorl::eOk || centerLineKeys_.isEmpty()) rebuildCenterLineKeys();
  if (cursorMemberActive_ && !majorCurves_.isEmpty()) settleCursorMember();
  return generatePattern(curves, keys);
}

bool ZnDbCenterMarkPatternTransientLayout::isInsideCircle(const ZnGePoint3d& point) const {
  for (const ZnGeCircArc3d& circle : circles_)
    if (circle.radius() > circle.center().distanceTo(point)) return true;
  return false;
}

void ZnDbCenterMarkPatternTransientLayout::appendCursorCircle(const ZnGePoint3d& point) {
  circles_.append(
      ZnGeCircArc3d(point, patternPlane_.normal(), kCursorCircleShare * circles_.first().radius()));
}

// A preview stands in the space, not in a block.
bool ZnDbCenterMarkPatternTransientLayout::computeBlockTransform(const ZnArray<ZnGeCurve3d*>&,
                                                                 const ZnArray<ZnString>&) {
  return false;
}

// The ghost lies on whatever curve is under test: what is shown runs past the cursor, not through it.
void ZnDbCenterMarkPatternTransientLayout::collectMembersOnCurve(const ZnGeCurve2d& curve) {
  ZnDbCenterMarkPatternLayout::collectMembersOnCurve(curve);
  // A ghost that is no accepted center, such as one without radius, takes no part.
  if (!cursorMemberActive_ || centerIndices_.isEmpty() || centerIndices_.last() != circles_.length() - 1)
    return;
  const int ghost = centers2d_.length() - 1;
  const ZnGePoint2d onCurve = curve.closestPointTo(centers2d_[ghost], ZnGeContext::gTol);
  ZnGePoint3d center;
  center.set(patternPlane_, onCurve);
  circles_.last().setCenter(center);
  // The position goes along: the pitch circle is refined through all members.
  centers2d_[ghost] = onCurve;
  for (const auto& [param, member] : curveMembers_)
    if (member == ghost) return;
  curveMembers_[curve.paramOf(onCurve)] = ghost;
}

void ZnDbCenterMarkPatternTransientLayout::settleCursorMember() {
  circles_.last().setRadius(0.0);
  const int ghost = circles_.length() - 1;
  ZnArray<int>& chain = memberChains_.first();
  const int place = chain.find(ghost);
  const bool isFirst = place == 0, isLast = place >= 0 && place == chain.length() - 1;
  if (place >= 0 && !isFirst && !isLast) {
    // A cursor between members adds nothing.
    chain.removeAt(place);
    cursorMemberActive_ = false;
    return;
  }
  const auto* line = majorCurves_.first();
  if (place < 0 || !line->isKindOf(ZnGe::kLineSeg3d)) return;
  const ZnDbTorviObjectPointer<ZnDbCenterMarkPatternObjectWrapper> pattern(centerObject());
  if (pattern.openStatus() != Quorl::eOk) return;
  // Pieces reckon with the standard overshoot; the difference to the object's own goes to its end.
  const double standard = ZnTorviStyle::getCenterOvershoot();
  const ZnString& key = centerLineKeys_.first();
  const double shift =
      isFirst ? standard - pattern->startOvershoot(key) : pattern->endOvershoot(key) - standard;
  const ZnGeVector3d along = static_cast<const ZnGeLineSeg3d*>(line)->direction();
  circles_.last().setCenter(circles_.last().center() + along * shift);
}
