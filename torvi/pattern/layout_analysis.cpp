// How a layout asks for an analysis: what it knows of the pattern goes into the question, what the analysis
// settles comes back.
#include "torvi/pattern/layout.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "torvi/drawing/edge_curves.h"
#include "torvi/pattern/object_wrapper.h"

namespace {

constexpr int kLeastFitting = 3;      // circles worth proposing
constexpr int kLeastPolarFitting = 5; // circles at which a ring is believed rather than a row

std::optional<ZnGePoint3d> positionOf(ZnDbObjectId centerObject) {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject);
  return reference.isOpen() ? std::optional(reference->position()) : std::nullopt;
}

} // namespace

bool ZnDbCenterMarkPatternLayout::loadCircles(const ZnArray<ZnDbEdgeRef>& edges) {
  pattern_.circles.removeAll();
  pattern_.circles.setPhysicalLength(edges.length());
  return getInputCircles(edges, pattern_.circles) > 0;
}

bool ZnDbCenterMarkPatternLayout::analysePattern() { return analyse(0); }

bool ZnDbCenterMarkPatternLayout::analyse(int fixedCenterCount) {
  ZnPatternQuestion question;
  question.circles = std::move(pattern_.circles);
  question.patternType = settings_.patternType;
  question.hasReferenceEdge = !settings_.referenceEdge.isEmpty();
  std::unique_ptr<ZnGeCurve3d> reference;
  if (question.hasReferenceEdge) reference = torvi::evaluatedEdgeCurve(settings_.referenceEdge, false);
  question.referenceCurve = reference.get();
  question.referencePickParam = settings_.referencePickParam;
  question.isReferenceEdgeOptional = isReferenceEdgeOptional();
  question.formerReference = pattern_.reference;
  question.fullPcd = settings_.fullPcd;
  question.autoFullPcd = settings_.autoFullPcd;
  question.fixedCenterCount = fixedCenterCount;
  question.findsAxisMembers = settings_.showPitchCenterMark || !centerObject_.isNull();
  if (settings_.patternType == kCenterPatternPolar) {
    question.formerPitchCenter = positionOf(centerObject_);
    ZnArray<ZnString> keys;
    if (wrapper().openStatus() == Quorl::eOk && wrapper()->getCenterLineDependencyKeys(keys) == Quorl::eOk &&
        !keys.isEmpty())
      ZnDbCenterMarkPatternActionBody::getEdgeIndicesOnCenterLine(keys.first(), question.formerChain);
  }
  question.memberRule = [this](const ZnGeCurve2d& curve, ZnPatternCenters& centers) {
    return collectMembersOnCurve(curve, centers);
  };
  pattern_ = ::analysePattern(question);
  settings_.fullPcd = pattern_.fullPcd;
  if (pattern_.dropsReferenceEdge) settings_.referenceEdge = ZnDbEdgeRef();
  if (pattern_.isPattern) adoptPatternType(pattern_.patternType);
  return pattern_.isPattern;
}

void ZnDbCenterMarkPatternLayout::adoptPatternType(CenterMarkPatternType type) {
  if (settings_.patternType != kCenterPatternNone || type == settings_.patternType) return;
  settings_.patternType = type;
  if (wrapper().openStatus() == Quorl::eOk) wrapper()->setCenterPatternType(type);
}

ZnPatternMembers ZnDbCenterMarkPatternLayout::collectMembersOnCurve(const ZnGeCurve2d& curve,
                                                                    ZnPatternCenters& centers) const {
  return membersOnCurve(curve, centers);
}

ZnArray<ZnArray<int>> ZnDbCenterMarkPatternLayout::memberChains() const {
  ZnArray<ZnArray<int>> chains;
  if (!pattern_.memberChain.isEmpty()) chains.append(pattern_.memberChain);
  return chains;
}

ZnArray<const ZnGeCurve3d*> ZnDbCenterMarkPatternLayout::majorCurves() const {
  ZnArray<const ZnGeCurve3d*> curves;
  if (pattern_.line()) curves.append(pattern_.line());
  if (pattern_.pitchCircle()) curves.append(pattern_.pitchCircle());
  return curves;
}

bool ZnDbCenterMarkPatternLayout::allCirclesOnChains(const ZnArray<ZnDbEdgeRef>& edges) {
  return loadCircles(edges) && analysePattern() && pattern_.hasAllCircles();
}

int ZnDbCenterMarkPatternLayout::countFittingEdges(const ZnArray<ZnDbEdgeRef>& edges, int userCount,
                                                   ZnArray<int>& left) {
  if (!loadCircles(edges) || !analyse(userCount)) return 0;
  for (int i = 0; i < pattern_.circles.length(); ++i)
    if (!pattern_.memberChain.contains(i)) left.append(i);
  return edges.length() - left.length();
}

// Both readings are tried where the type is open; a reference edge counts for its reading like one circle
// more. A ring wins only by five circles or more, since three of any grid lie on some circle.
bool ZnDbCenterMarkPatternLayout::fitCandidateEdges(ZnArray<ZnDbEdgeRef>& edges, int userCount) {
  const CenterMarkPatternType decided = settings_.patternType;
  const int reference = settings_.referenceEdge.isEmpty() ? 0 : 1;
  ZnArray<int> leftOfRow, leftOfRing;
  int onRow = 0, onRing = 0;
  if (decided != kCenterPatternPolar) {
    settings_.patternType = kCenterPatternLinear;
    onRow = countFittingEdges(edges, userCount, leftOfRow) + reference;
    if (decided == kCenterPatternLinear && onRow < kLeastFitting) return false;
  }
  if (decided != kCenterPatternLinear) {
    settings_.patternType = kCenterPatternPolar;
    onRing = countFittingEdges(edges, userCount, leftOfRing) + reference;
    if (std::max(onRing, onRow) < kLeastFitting) return false;
  }
  const bool isRing = onRow < kLeastFitting || (onRing >= kLeastPolarFitting && onRing > onRow);
  const ZnArray<int>& left = isRing ? leftOfRing : leftOfRow;
  for (int i = left.length() - 1; i >= 0; --i) edges.removeAt(left[i]);
  return true;
}
