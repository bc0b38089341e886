#include "torvi/pattern/transient_layout.h"

#include "torvi/core/object_pointer.h"
#include "torvi/pattern/object_wrapper.h"

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
  cursorMemberActive_ = cursorPoint && !settings_.fullPcd && !isInsideCircle(*cursorPoint);
  if (cursorMemberActive_) appendCursorCircle(*cursorPoint);
  if (!analysePattern()) return Quorl::eInvalidInput;
  // An object under edit keeps its keys, and with them its overshoots. One of a single member has none yet.
  if (keepLinearDirection() != Quorl::eOk || centerLineKeys_.isEmpty()) rebuildCenterLineKeys();
  if (cursorMemberActive_ && !pattern_.memberChain.isEmpty()) settleCursorMember();
  return generatePattern(curves, keys);
}

bool ZnDbCenterMarkPatternTransientLayout::isInsideCircle(const ZnGePoint3d& point) const {
  for (const ZnGeCircArc3d& circle : pattern_.circles)
    if (circle.radius() > circle.center().distanceTo(point)) return true;
  return false;
}

void ZnDbCenterMarkPatternTransientLayout::appendCursorCircle(const ZnGePoint3d& point) {
  ZnArray<ZnGeCircArc3d>& circles = pattern_.circles;
  circles.append(
      ZnGeCircArc3d(point, planeOfPattern(circles).normal(), kCursorCircleShare * circles.first().radius()));
}

// A preview stands in the space, not in a block.
bool ZnDbCenterMarkPatternTransientLayout::computeBlockTransform(const ZnArray<ZnGeCurve3d*>&,
                                                                 const ZnArray<ZnString>&) {
  return false;
}

// The ghost lies on whatever curve is under test: what is shown runs past the cursor, not through it.
ZnPatternMembers
ZnDbCenterMarkPatternTransientLayout::collectMembersOnCurve(const ZnGeCurve2d& curve,
                                                            ZnPatternCenters& centers) const {
  ZnPatternMembers members = ZnDbCenterMarkPatternLayout::collectMembersOnCurve(curve, centers);
  // A ghost that is no accepted center, such as one without radius, takes no part.
  if (!cursorMemberActive_ || centers.centerIndices.isEmpty() ||
      centers.centerIndices.last() != centers.circles.length() - 1)
    return members;
  const int ghost = centers.centers2d.length() - 1;
  const ZnGePoint2d onCurve = curve.closestPointTo(centers.centers2d[ghost], ZnGeContext::gTol);
  ZnGePoint3d center;
  center.set(centers.patternPlane, onCurve);
  centers.circles.last().setCenter(center);
  // The position goes along: what is asked of the centers after this finds the ghost where it is shown.
  centers.centers2d[ghost] = onCurve;
  for (const auto& [param, member] : members)
    if (member == ghost) return members;
  members[curve.paramOf(onCurve)] = ghost;
  return members;
}

void ZnDbCenterMarkPatternTransientLayout::settleCursorMember() {
  ZnGeCircArc3d& cursor = pattern_.circles.last();
  cursor.setRadius(0.0);
  const int ghost = pattern_.circles.length() - 1;
  ZnArray<int>& chain = pattern_.memberChain;
  const int place = chain.find(ghost);
  const bool isFirst = place == 0, isLast = place >= 0 && place == chain.length() - 1;
  if (place >= 0 && !isFirst && !isLast) {
    // A cursor between members adds nothing.
    chain.removeAt(place);
    cursorMemberActive_ = false;
    return;
  }
  const ZnGeLineSeg3d* line = pattern_.line();
  if (place < 0 || !line) return;
  const ZnDbTorviObjectPointer<ZnDbCenterMarkPatternObjectWrapper> pattern(centerObject());
  if (pattern.openStatus() != Quorl::eOk) return;
  // Pieces reckon with the overshoot of the pattern's making; the difference to the line's own goes to its
  // end.
  const double standard = pattern->memberOvershoot();
  const ZnString& key = centerLineKeys_.first();
  const double shift =
      isFirst ? standard - pattern->startOvershoot(key) : pattern->endOvershoot(key) - standard;
  cursor.setCenter(cursor.center() + line->direction() * shift);
}
