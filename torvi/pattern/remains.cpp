#include "torvi/pattern/remains.h"

#include <algorithm>
#include <cmath>

#include "torvi/drawing/blocks.h"
#include "torvi/pattern/drawing.h"

using Body = ZnDbCenterMarkPatternActionBody;

namespace {

constexpr size_t kVerticalCrossLine = 1; // of a mark, straight in every pattern

// Start, middle and end: enough to tell apart two lines or two arcs.
std::array<ZnGePoint3d, 3> placesOf(const ZnGeCurve3d& curve) {
  const ZnGeInterval range = curve.interval();
  const double from = range.lowerBound(), to = range.upperBound();
  return {curve.evalPoint(from), curve.evalPoint((from + to) * 0.5), curve.evalPoint(to)};
}

// Whether a curve that was drawn once more came out as it was: what rounding alone has changed stays, so that
// digits do not creep from one evaluation to the next.
bool isSameCurve(const ZnGeCurve3d& a, const ZnGeCurve3d& b) {
  if (a.isKindOf(ZnGe::kCircularArc3d) != b.isKindOf(ZnGe::kCircularArc3d)) return false;
  const auto placesOfA = placesOf(a), placesOfB = placesOf(b);
  double size = 0.0;
  for (const ZnGePoint3d& place : placesOfA) size = std::max(size, place.asVector().length());
  const double least = ZnGeContext::gTol.equalPoint() + size * kRepeatedRounding;
  for (size_t i = 0; i < placesOfA.size(); ++i)
    if (placesOfA[i].distanceTo(placesOfB[i]) > least) return false;
  return true;
}

std::unique_ptr<ZnGeCurve3d> curveOf(ZnDbObjectId id) {
  ZnGeCurve3d* made = nullptr;
  ZnDbHolder<ZnDbCurve> entity(id);
  if (entity.isOpen()) entity->getZnGeCurve(made, ZnGeContext::gTol);
  std::unique_ptr<ZnGeCurve3d> curve(made);
  return curve && !curve->isDegenerate(ZnGeContext::gTol) ? std::move(curve) : nullptr;
}

// The empty marker for none.
ZnGeCurve3d* copyOf(const ZnGeCurve3d* curve) {
  if (curve && curve->isKindOf(ZnGe::kCircularArc3d))
    return new ZnGeCircArc3d(static_cast<const ZnGeCircArc3d&>(*curve));
  if (curve && curve->isKindOf(ZnGe::kLineSeg3d))
    return new ZnGeLineSeg3d(static_cast<const ZnGeLineSeg3d&>(*curve));
  return new ZnGeLine3d;
}

} // namespace

ZnPatternRemains::ZnPatternRemains(const ZnDbCenterMarkPatternObjectWrapper& pattern)
    : pattern_(pattern) {
  readOutputs();
  const bool isMarkedRing = pattern.getCenterPatternType() == kCenterPatternPolar && pattern.showCenterMark();
  if (isMarkedRing && isFlat()) drawRing();
}

void ZnPatternRemains::readOutputs() {
  ZnArray<ZnString> keys;
  pattern_.getOutputEdgeKeys(keys);
  for (const ZnString& key : keys) readOutput(key);
}

void ZnPatternRemains::readOutput(const ZnString& key) {
  const ZnDbObjectId output = pattern_.getOutputEdge(key);
  if (output.isNull() || output.isErased()) return;
  ZnArray<ZnDbObjectId> ids;
  if (output.isDerivedFrom(ZnDbBlockReference::desc()))
    torvi::curvesOfReference(output, ids, false);
  else if (output.isDerivedFrom(ZnDbLine::desc()) || output.isDerivedFrom(ZnDbArc::desc()))
    ids.append(output);
  Curves curves;
  for (const ZnDbObjectId id : ids) curves.push_back(curveOf(id));
  if (!curves.empty()) present_[key] = std::move(curves);
}

// What is remembered says nothing of a plane: it is that of the block. A pattern in another one keeps its
// shape.
bool ZnPatternRemains::isFlat() const {
  const double least = kPatternTolerance * std::min(pattern_.pitchRadius(), 1.0);
  const auto isFlatCurve = [least](const std::unique_ptr<ZnGeCurve3d>& curve) {
    if (!curve) return true;
    const auto places = placesOf(*curve);
    return std::all_of(places.begin(), places.end(),
                       [least](const ZnGePoint3d& place) { return std::fabs(place.z) <= least; });
  };
  return std::all_of(present_.begin(), present_.end(), [&](const auto& output) {
    return std::all_of(output.second.begin(), output.second.end(), isFlatCurve);
  });
}

void ZnPatternRemains::drawRing() {
  ZnArray<ZnString> stored;
  pattern_.getCenterLineDependencyKeys(stored);
  const ZnString line = stored.isEmpty() ? ZnString() : stored.first();
  const ZnPatternOvershoots overshoots{pattern_.startOvershoot(line), pattern_.endOvershoot(line),
                                       pattern_.memberOvershoot()};
  const ZnPatternDrawing drawing(recallRing(), pattern_.centerObjId(), true, overshoots);
  ZnArray<ZnGeCurve3d*> curves;
  ZnArray<ZnString> keys;
  drawing.generateMemberMarks(curves, keys);
  drawing.generatePitchCenterMark(curves, keys);
  for (int i = 0; i < curves.length(); ++i) drawn_[keys[i]].emplace_back(curves[i]);
}

// The pitch center is the block's origin. Which way the ring faces, its arcs tell; which members are the
// outer ones, the key of the center line.
ZnPatternAnalysis ZnPatternRemains::recallRing() const {
  ZnGeVector3d normal = ZnGeVector3d::kZAxis;
  for (const auto& [key, curves] : present_)
    for (const auto& curve : curves)
      if (curve && curve->isKindOf(ZnGe::kCircularArc3d))
        normal = static_cast<const ZnGeCircArc3d&>(*curve).normal();
  const double radius = pattern_.pitchRadius();
  const ZnGeCircArc3d pitchCircle(ZnGePoint3d::kOrigin, normal, radius);
  ZnPatternAnalysis ring;
  ring.patternType = kCenterPatternPolar;
  ring.fullPcd = pattern_.isFullPCD();
  ring.majorCurve = pitchCircle;
  pitchCircle.getPlane(ring.patternPlane);
  const ZnGeCircArc3d none(ZnGePoint3d::kOrigin, normal, 0.0);
  for (int i = 0; i < pattern_.edgeRefCount(); ++i) ring.circles.append(none);
  ZnArray<ZnString> stored;
  pattern_.getCenterLineDependencyKeys(stored);
  // Without a key nobody knows who is first and last.
  if (stored.isEmpty() || !Body::getEdgeIndicesOnCenterLine(stored.first(), ring.memberChain))
    ring.memberChain = {-1, -1};
  const ZnGePoint3d ends[] = {
      {-radius, 0.0, 0.0}, {radius, 0.0, 0.0}, {0.0, -radius, 0.0}, {0.0, radius, 0.0}};
  for (int arm = 0; arm < 4; ++arm) {
    int index = -1;
    double memberRadius = 0.0;
    const auto line = static_cast<ZnCenterMarkSubEntType>(eLeftLine + arm);
    if (!pattern_.getCachedInputEdgeOnMajorAxis(line, index, memberRadius)) continue;
    if (index >= ring.circles.length()) continue;
    ring.axisMembers[static_cast<size_t>(ring.axisOfArm(arm))] = index;
    ring.circles[index] = ZnGeCircArc3d(centerOfMember(index, ends[arm]), normal, memberRadius);
    if (!ring.memberChain.contains(index)) ring.memberChain.insertAt(1, index);
  }
  return ring;
}

// A member counts as standing on an arm up to a tolerance; its own mark tells where it really is.
ZnGePoint3d ZnPatternRemains::centerOfMember(int index, const ZnGePoint3d& otherwise) const {
  const auto mark = present_.find(Body::dependencyKey(index, -1));
  if (mark == present_.end() || mark->second.size() <= kVerticalCrossLine) return otherwise;
  const ZnGeCurve3d* cross = mark->second[kVerticalCrossLine].get();
  return cross && cross->isKindOf(ZnGe::kLineSeg3d) ? static_cast<const ZnGeLineSeg3d*>(cross)->midPoint()
                                                    : otherwise;
}

const ZnGeCurve3d* ZnPatternRemains::redrawn(const ZnString& key, size_t index,
                                             const ZnGeCurve3d* present) const {
  const auto mark = drawn_.find(key);
  if (mark == drawn_.end() || index >= mark->second.size()) return nullptr;
  const ZnGeCurve3d& curve = *mark->second[index];
  // A line that would have no length stays as it is too.
  if (curve.isKindOf(ZnGe::kLine3d)) return nullptr;
  return present && isSameCurve(curve, *present) ? nullptr : &curve;
}

void ZnPatternRemains::append(bool alsoUnchanged, ZnArray<ZnGeCurve3d*>& curves,
                              ZnArray<ZnString>& keys) const {
  const auto appendCurve = [&](const ZnString& key, const ZnGeCurve3d* curve) {
    curves.append(copyOf(curve));
    keys.append(key);
  };
  for (const auto& [key, present] : present_)
    for (size_t i = 0; i < present.size(); ++i) {
      const ZnGeCurve3d* curve = redrawn(key, i, present[i].get());
      if (!curve && alsoUnchanged) curve = present[i].get();
      appendCurve(key, curve);
    }
  // A mark that was switched on is not there yet.
  for (const auto& [key, drawn] : drawn_)
    if (!present_.contains(key))
      for (const auto& curve : drawn) appendCurve(key, curve.get());
}

void ZnPatternRemains::appendChanges(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const {
  append(false, curves, keys);
}

void ZnPatternRemains::appendAll(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) const {
  append(true, curves, keys);
}
