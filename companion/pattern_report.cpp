#include "companion/pattern_report.h"

#include "companion/curve_values.h"
#include "companion/object_naming.h"
#include "torvi/pattern/layout.h"
#include "torvi/pattern/object_wrapper.h"

namespace companion {

namespace {

exchange::ReportedPattern patternOf(const ZnDbCenterMarkPatternObjectWrapper& pattern) {
  exchange::ReportedPattern told;
  told.type = pattern.getCenterPatternType() == kCenterPatternPolar ? "polar" : "linear";
  told.fullPCD = pattern.isFullPCD();
  told.showCenterMark = pattern.showCenterMark();
  ZnArray<ZnDbEdgeRef> edges;
  pattern.getEdgeRefs(edges);
  // Edges stand at the places that keys name them by; an emptied place is passed over.
  for (int i = 0; i < edges.length(); ++i)
    if (!edges[i].isEmpty())
      told.members.push_back(
          {pathText(edges[i].entity()), ZnDbCenterMarkPatternActionBody::dependencyKey(i, -1).utf8()});
  ZnDbEdgeRef reference;
  double pick = 0.0;
  if (pattern.getReferenceEdge(reference, pick)) told.referenceEdge = pathText(reference.entity());
  ZnArray<ZnString> keys;
  pattern.getCenterLineDependencyKeys(keys);
  for (const ZnString& key : keys)
    told.overshoots.push_back({key.utf8(), pattern.startOvershoot(key), pattern.endOvershoot(key)});
  return told;
}

// A ring has its circle, marked in the middle or not.
bool pitchCircleOf(const ZnDbCenterMarkPatternObjectWrapper& pattern, ZnGeCircArc3d& circle) {
  ZnArray<ZnDbEdgeRef> edges;
  if (pattern.getCenterPatternType() != kCenterPatternPolar || pattern.getEdgeRefs(edges) != Quorl::eOk)
    return false;
  ZnDbCenterMarkPatternLayout layout(pattern.centerObjId());
  if (!layout.loadCircles(edges) || !layout.analysePattern() || layout.majorCurves().isEmpty() ||
      !layout.majorCurves().first()->isKindOf(ZnGe::kCircularArc3d))
    return false;
  circle = static_cast<const ZnGeCircArc3d&>(*layout.majorCurves().first());
  return true;
}

} // namespace

void describePattern(const ZnDbTorviObjectWrapper& wrapper, exchange::ReportedCenter& told) {
  const auto& pattern = static_cast<const ZnDbCenterMarkPatternObjectWrapper&>(wrapper);
  ZnGeCircArc3d circle;
  if (pattern.getRefCircle(circle) == Quorl::eOk || pitchCircleOf(pattern, circle)) {
    told.center = pointValue(circle.center());
    told.radius = circle.radius();
  }
  told.pattern = patternOf(pattern);
}

} // namespace companion
