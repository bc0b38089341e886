#include "torvi/pattern/analysis.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "torvi/pattern/votes.h"

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kLargestClosedGap = kTwoPi / 3.0;

// What rounding may have left of the coordinates of the circles' centers.
double roundingOf(const ZnArray<ZnGeCircArc3d>& circles) {
  double largest = 0.0;
  for (const ZnGeCircArc3d& circle : circles) {
    const ZnGePoint3d& center = circle.center();
    for (const double coordinate : {center.x, center.y, center.z, circle.radius()})
      if (circle.radius() != 0.0) largest = std::max(largest, std::fabs(coordinate));
  }
  return largest * kCoordinateRounding;
}

// How far the pattern extends: the measure of what is small in it.
double sizeOf(const ZnArray<ZnGeCircArc3d>& circles) {
  double size = 0.0;
  const ZnGeCircArc3d* first = nullptr;
  for (const ZnGeCircArc3d& circle : circles) {
    if (circle.radius() == 0.0) continue;
    if (!first) first = &circle;
    size = std::max(size, circle.radius() + circle.center().distanceTo(first->center()));
  }
  return size;
}

// One analysis, in the order of its steps.
class Analysis {
public:
  explicit Analysis(const ZnPatternQuestion& question)
      : question_(question)
      , rounding_(roundingOf(question.circles))
      , tol_(question.tolerance * std::min(sizeOf(question.circles), 1.0) + kVotedPlaceRounding * rounding_,
             question.tolerance) {
    centers_.tol = tol_;
    centers_.circles = question.circles;
    centers_.patternPlane = planeOfPattern(question.circles);
    found_.patternType = question.patternType;
    found_.reference = question.formerReference;
    found_.fullPcd = question.fullPcd;
  }

  ZnPatternAnalysis run() {
    found_.isPattern = analyse();
    found_.circles = std::move(centers_.circles);
    found_.patternPlane = centers_.patternPlane;
    return std::move(found_);
  }

private:
  bool analyse();
  void collectCenters();
  bool isInsideAnother(const ZnGeCircArc3d& circle) const; // or concentric with it
  bool resolveReferenceEdge();
  void noteReferencePick(const ZnGeCircArc3d& arc);
  ZnPatternMembers collectMembersOnCurve(const ZnGeCurve2d& curve);
  void chainFrom(const ZnPatternMembers& members, ZnPatternMembers::const_iterator start);

  bool fitPolarPattern();
  bool findPitchCircle(ZnPitchCircle& circle) const;
  bool pitchCenterAsBefore(ZnGePoint2d& center) const;
  ZnGePoint3d placeOfPitchCenter(const ZnGePoint2d& center) const;
  // Between two members that follow each other.
  struct Gap {
    double angle = 0.0;
    std::pair<int, int> ends; // the member named first, then the other
    int from = 0, to = 0;
    ZnPatternMembers::const_iterator next;
  };
  bool orderAroundCircle(const ZnGeCircArc2d& circle);
  bool isRatherOpen(const Gap& gap, const Gap& other) const;
  std::vector<Gap> gapsOf(const ZnPatternMembers& members) const; // but for that of the pick
  void boundPitchArc(ZnGeCircArc3d& arc) const;
  void findAxisMembers(const ZnGeCircArc3d& arc);

  bool fitLinearPattern();
  bool findLine(ZnGeLine2d& line) const;

  const ZnGePoint3d& centerOf(int index) const { return centers_.circles[index].center(); }

  ZnGeTol planeTolerance() const;
  bool isInPlane(const ZnGeCircArc3d& circle) const;

  const ZnPatternQuestion& question_;
  double rounding_ = 0.0;
  ZnGeTol tol_;
  ZnPatternCenters centers_;
  ZnPatternAnalysis found_;
  double referenceStartAngle_ = -1.0; // on the pitch circle; the chain must cover it
};

// An undecided pattern is tried as a ring first: any three holes that are no row lie on a circle.
bool Analysis::analyse() {
  collectCenters();
  if (!resolveReferenceEdge()) return false;
  const CenterMarkPatternType wanted = question_.patternType;
  const bool isSingle = centers_.centers2d.length() == 1 && found_.reference.kind == 0;
  if (isSingle && wanted != kCenterPatternPolar) return true;
  if (wanted != kCenterPatternLinear && fitPolarPattern()) {
    found_.patternType = kCenterPatternPolar;
    return true;
  }
  if (wanted == kCenterPatternPolar || !fitLinearPattern()) return false;
  found_.patternType = kCenterPatternLinear;
  return true;
}

void Analysis::collectCenters() {
  for (int i = 0; i < centers_.circles.length(); ++i) {
    ZnGeCircArc3d& circle = centers_.circles[i];
    if (circle.radius() == 0.0) continue;
    // One hole in two steps is one member: the circle that was named first.
    if (!isInPlane(circle) || isInsideAnother(circle)) {
      circle.setRadius(0.0);
      continue;
    }
    centers_.centers2d.append(circle.center().convert2d(centers_.patternPlane));
    centers_.centerIndices.append(i);
  }
}

// Far from the origin no point is on a plane to the last digit of a small tolerance.
ZnGeTol Analysis::planeTolerance() const {
  return {ZnGeContext::gTol.equalPoint() + 2.0 * rounding_, ZnGeContext::gTol.equalVector()};
}

bool Analysis::isInPlane(const ZnGeCircArc3d& circle) const {
  ZnGePlane plane;
  circle.getPlane(plane);
  return plane.isCoplanarTo(centers_.patternPlane, planeTolerance());
}

bool Analysis::isInsideAnother(const ZnGeCircArc3d& circle) const {
  const ZnArray<int>& accepted = centers_.centerIndices;
  return std::any_of(accepted.begin(), accepted.end(), [&](int index) {
    const ZnGeCircArc3d& other = centers_.circles[index];
    const auto [small, big] = std::minmax({circle.radius(), other.radius()});
    const double distance = circle.center().distanceTo(other.center());
    return big > distance && big - distance - small > -tol_.equalPoint();
  });
}

// What does not fit is forgotten, so that a reference that went its own way does not hold the pattern up.
bool Analysis::resolveReferenceEdge() {
  if (!question_.hasReferenceEdge) {
    found_.reference.kind = 0;
    return true;
  }
  const ZnGeCurve3d* curve = question_.referenceCurve;
  if (curve && curve->isKindOf(ZnGe::kLinearEnt3d) && question_.patternType != kCenterPatternPolar) {
    const auto& line = static_cast<const ZnGeLinearEnt3d&>(*curve);
    if (line.isOn(centers_.patternPlane, planeTolerance())) {
      found_.reference.direction = line.direction();
      found_.reference.kind = 2;
      return true;
    }
  } else if (curve && curve->isKindOf(ZnGe::kCircularArc3d) &&
             question_.patternType != kCenterPatternLinear) {
    const auto& arc = static_cast<const ZnGeCircArc3d&>(*curve);
    if (isInPlane(arc)) {
      found_.reference.center = arc.center();
      found_.reference.kind = 1;
      if (question_.referencePickParam >= 0.0 && centers_.centers2d.length() >= 2) noteReferencePick(arc);
      return true;
    }
  }
  found_.dropsReferenceEdge = true;
  return question_.isReferenceEdgeOptional;
}

// The pick as an angle on the pitch circle. An arc that faces the other way runs through it backwards.
void Analysis::noteReferencePick(const ZnGeCircArc3d& arc) {
  const double pick = question_.referencePickParam;
  const bool sameSense = arc.normal().isEqualTo(centers_.patternPlane.normal());
  const double onArc = sameSense ? pick : arc.endAng() - (arc.startAng() + pick);
  const ZnGePoint3d from = sameSense ? arc.startPoint() : arc.endPoint();
  referenceStartAngle_ = onArc + (from - arc.center()).convert2d(centers_.patternPlane).angle();
  if (referenceStartAngle_ >= kTwoPi) referenceStartAngle_ -= kTwoPi;
}

ZnPatternMembers Analysis::collectMembersOnCurve(const ZnGeCurve2d& curve) {
  return question_.memberRule ? question_.memberRule(curve, centers_) : membersOnCurve(curve, centers_);
}

void Analysis::chainFrom(const ZnPatternMembers& members, ZnPatternMembers::const_iterator start) {
  found_.memberChain.setPhysicalLength(static_cast<int>(members.size()));
  for (auto member = start; member != members.end(); ++member)
    found_.memberChain.append(centers_.centerIndices[member->second]);
  for (auto member = members.begin(); member != start; ++member)
    found_.memberChain.append(centers_.centerIndices[member->second]);
}

bool Analysis::fitPolarPattern() {
  ZnPitchCircle pitch;
  if (!findPitchCircle(pitch)) return false;
  if (!orderAroundCircle(ZnGeCircArc2d(pitch.center, pitch.radius))) return false;
  // A pitch circle can't be smaller than its holes.
  const ZnArray<int>& chain = found_.memberChain;
  if (std::any_of(chain.begin(), chain.end(), [&](int index) {
        return centers_.circles[index].radius() > pitch.radius + tol_.equalPoint();
      })) {
    found_.memberChain.removeAll();
    return false;
  }
  const ZnGePlane& plane = centers_.patternPlane;
  ZnGeCircArc3d arc(placeOfPitchCenter(pitch.center), plane.normal(), pitch.radius);
  boundPitchArc(arc);
  if (question_.findsAxisMembers) findAxisMembers(arc);
  found_.majorCurve = arc;
  return true;
}

// Where a reference arc puts the center is no matter of votes, nor where two holes are left of a ring.
bool Analysis::findPitchCircle(ZnPitchCircle& circle) const {
  const ZnArray<ZnGePoint2d>& centers = centers_.centers2d;
  if (found_.reference.kind == 1) {
    circle.center = found_.reference.center.convert2d(centers_.patternPlane);
  } else {
    std::optional<ZnGePoint2d> former;
    if (question_.formerPitchCenter) former = question_.formerPitchCenter->convert2d(centers_.patternPlane);
    if (votePitchCircle(centers, question_.fixedCenterCount, tol_, former, circle)) return true;
    if (question_.patternType != kCenterPatternPolar || !pitchCenterAsBefore(circle.center)) return false;
  }
  return votePitchRadius(centers, question_.fixedCenterCount, tol_, circle.center, circle.radius);
}

// Back in space; a center that is where it was keeps the last digits too, evaluation by evaluation.
ZnGePoint3d Analysis::placeOfPitchCenter(const ZnGePoint2d& center) const {
  const ZnGePoint3d place(centers_.patternPlane, center);
  const std::optional<ZnGePoint3d>& former = question_.formerPitchCenter;
  const bool isWhereItWas = former && former->distanceTo(place) <= kVotedPlaceRounding * rounding_;
  return isWhereItWas ? *former : place;
}

// Two holes are left of a ring: its center is where it was.
bool Analysis::pitchCenterAsBefore(ZnGePoint2d& center) const {
  if (!question_.formerPitchCenter) return false;
  center = question_.formerPitchCenter->convert2d(centers_.patternPlane);
  return std::none_of(centers_.centers2d.begin(), centers_.centers2d.end(), [&](const ZnGePoint2d& member) {
    return member.distanceTo(center) < tol_.equalPoint();
  });
}

// The chain breaks in the largest gap, but not in the one in which the user picked the reference arc: the
// pattern shall run through the pick. Of equal gaps that with the member named first counts, wherever it
// lies; of the two between opposite members that which was open before, or else that which leads back to the
// member named first. Gaps are compared as far as their two ends may be off, and as much again for the
// center, which follows them: three holes of a ring that came rounded out of a file still close it.
bool Analysis::orderAroundCircle(const ZnGeCircArc2d& circle) {
  const ZnPatternMembers members = collectMembersOnCurve(circle);
  if (members.empty()) return false;
  const std::vector<Gap> gaps = gapsOf(members);
  double largest = 0.0;
  for (const Gap& gap : gaps) largest = std::max(largest, gap.angle);
  const double slack = 4.0 * tol_.equalPoint() / circle.radius();
  const Gap* chosen = nullptr;
  for (const Gap& gap : gaps)
    if (gap.angle >= largest - slack && (!chosen || isRatherOpen(gap, *chosen))) chosen = &gap;
  if (question_.autoFullPcd) found_.fullPcd = largest <= kLargestClosedGap + slack;
  chainFrom(members, chosen ? chosen->next : members.begin());
  return true;
}

bool Analysis::isRatherOpen(const Gap& gap, const Gap& other) const {
  if (gap.ends != other.ends) return gap.ends < other.ends;
  const int before = question_.formerChain.find(centers_.centerIndices[gap.from]);
  const int after = question_.formerChain.find(centers_.centerIndices[gap.to]);
  return before < 0 || after < 0 ? gap.from > gap.to : before > after;
}

std::vector<Analysis::Gap> Analysis::gapsOf(const ZnPatternMembers& members) const {
  const double firstParam = members.begin()->first, lastParam = members.rbegin()->first;
  const double pick = referenceStartAngle_;
  std::vector<Gap> gaps;
  for (auto member = members.begin(); member != members.end(); ++member) {
    auto next = std::next(member);
    const bool closes = next == members.end();
    if (closes) next = members.begin();
    const bool holdsPick =
        closes ? pick < firstParam || pick > lastParam : pick > member->first && pick < next->first;
    if (pick >= 0.0 && holdsPick) continue;
    const double angle = next->first - member->first + (closes ? kTwoPi : 0.0);
    gaps.push_back({angle, std::minmax({member->second, next->second}), member->second, next->second, next});
  }
  return gaps;
}

void Analysis::boundPitchArc(ZnGeCircArc3d& arc) const {
  const double start = arc.paramOf(centerOf(found_.memberChain.first()), tol_);
  double end = 0.0;
  if (found_.fullPcd) {
    end = start - kClosedPitchGap;
    if (end < 0.0) end += kTwoPi;
  } else {
    end = arc.paramOf(centerOf(found_.memberChain.last()), tol_);
  }
  arc.setAngles(start, end);
}

// The members to which the arms of the pitch center's mark run: left, right, bottom, top of the plane.
void Analysis::findAxisMembers(const ZnGeCircArc3d& arc) {
  constexpr double kAxisParams[] = {std::numbers::pi, 0.0, 1.5 * std::numbers::pi, 0.5 * std::numbers::pi};
  for (const int index : found_.memberChain) {
    double param = arc.paramOf(centerOf(index), tol_);
    while (param > kTwoPi - kAxisMemberTolerance) param -= kTwoPi;
    for (size_t axis = 0; axis < found_.axisMembers.size(); ++axis) {
      if (!(std::fabs(param - kAxisParams[axis]) < kAxisMemberTolerance)) continue;
      found_.axisMembers[axis] = index;
      break;
    }
  }
}

bool Analysis::fitLinearPattern() {
  ZnGeLine2d line;
  if (!findLine(line)) return false;
  const bool isDirected = found_.reference.kind == 2;
  const ZnPatternMembers members = collectMembersOnCurve(line);
  chainFrom(members, members.begin());
  const ZnArray<int>& chain = found_.memberChain;
  if (chain.length() < (isDirected ? 1 : 2)) return false;
  const ZnGePoint3d first = centerOf(chain.first()), last = centerOf(chain.last());
  if (isDirected) {
    const double length = chain.length() > 1 ? first.distanceTo(last) : 1.0;
    found_.majorCurve = ZnGeLineSeg3d(first, found_.reference.direction.normal() * length);
  } else {
    found_.majorCurve = ZnGeLineSeg3d(first, last);
  }
  return true;
}

bool Analysis::findLine(ZnGeLine2d& line) const {
  const ZnArray<ZnGePoint2d>& centers = centers_.centers2d;
  const ZnPatternLineVote vote = voteLine(centers, question_.fixedCenterCount, tol_);
  // The user's own circles are not on one line.
  if (question_.fixedCenterCount >= 3 && vote.votes != vote.lines) return false;
  if (found_.reference.kind == 2) {
    const ZnGeVector2d direction = found_.reference.direction.convert2d(centers_.patternPlane);
    line = ZnGeLine2d(voteLinePoint(centers, question_.fixedCenterCount, tol_, direction), direction);
    return true;
  }
  // It passes exactly through real centers.
  if (vote.votes > 0) line = ZnGeLine2d(vote.from, vote.from + vote.way);
  return vote.votes > 0;
}

} // namespace

// From the last to the first, so that of two centers at one parameter the first is kept.
ZnPatternMembers membersOnCurve(const ZnGeCurve2d& curve, const ZnPatternCenters& centers) {
  ZnPatternMembers members;
  for (int i = centers.centers2d.length() - 1; i >= 0; --i) {
    double param = 0.0;
    if (curve.isOn(centers.centers2d[i], param, centers.tol)) members[param] = i;
  }
  return members;
}

ZnGePlane planeOfPattern(const ZnArray<ZnGeCircArc3d>& circles) {
  ZnGePlane plane;
  const auto first = std::find_if(circles.begin(), circles.end(),
                                  [](const ZnGeCircArc3d& circle) { return circle.radius() != 0.0; });
  if (first != circles.end()) first->getPlane(plane);
  return plane;
}

ZnPatternAnalysis analysePattern(const ZnPatternQuestion& question) { return Analysis(question).run(); }

bool ZnPatternAnalysis::hasAllCircles() const {
  for (int i = 0; i < circles.length(); ++i)
    if (!memberChain.contains(i)) return false;
  return true;
}

int ZnPatternAnalysis::axisOfArm(int arm) const {
  const bool swapped = planeDirection().dotProduct(ZnGeVector3d::kXAxis) < 0.0;
  return swapped && arm < 2 ? 1 - arm : arm;
}

void ZnPatternAnalysis::reverse() {
  if (auto* segment = std::get_if<ZnGeLineSeg3d>(&majorCurve)) segment->reverseParam();
  memberChain.reverse();
}

void ZnPatternAnalysis::transformBy(const ZnGeMatrix3d& map) {
  for (ZnGeCircArc3d& circle : circles)
    if (circle.radius() != 0.0) circle.transformBy(map);
  if (auto* segment = std::get_if<ZnGeLineSeg3d>(&majorCurve)) segment->transformBy(map);
  if (auto* arc = std::get_if<ZnGeCircArc3d>(&majorCurve)) arc->transformBy(map);
}
