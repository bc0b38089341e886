// The two fits: members on a pitch circle, and members on a line.
#include "torvi/pattern/layout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "torvi/core/tolerance.h"
#include "torvi/pattern/votes.h"

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kLargestClosedGap = kTwoPi / 3.0;

bool isAtMost(double value, double limit) {
  if (value <= limit) return true;
  const double scaled = std::max(std::fabs(value), std::fabs(limit)) * ZnGeContext::gTol.equalPoint();
  return value - limit < std::max(scaled, kLeastScaledTolerance);
}

} // namespace

bool ZnDbCenterMarkPatternLayout::fitPolarPattern() {
  ZnGePoint2d center;
  double radius = 0.0;
  if (!findPitchCenter(center) ||
      !votePitchRadius(centers2d_, fixedCenterCount_, patternTolerance_, center, radius))
    return false;
  // Where a reference arc puts the center is no matter of votes.
  if (referenceKind_ != 1) refinePitchCircle(center, radius);
  ZnArray<int> chain;
  if (!orderAroundCircle(ZnGeCircArc2d(center, radius), chain)) return false;
  // A pitch circle can't be smaller than its holes.
  if (std::any_of(chain.begin(), chain.end(), [&](int index) { return circles_[index].radius() > radius; }))
    return false;
  auto arc =
      std::make_unique<ZnGeCircArc3d>(ZnGePoint3d(patternPlane_, center), patternPlane_.normal(), radius);
  boundPitchArc(*arc, chain);
  if (showPitchCenterMark_ || !centerObject_.isNull()) findAxisMembers(*arc, chain);
  memberChains_.append(chain);
  majorCurves_.append(arc.release());
  return true;
}

bool ZnDbCenterMarkPatternLayout::findPitchCenter(ZnGePoint2d& center) const {
  if (referenceKind_ == 1) {
    center = pitchCenter_.convert2d(patternPlane_);
    return true;
  }
  if (votePitchCenter(centers2d_, fixedCenterCount_, patternTolerance_, center)) return true;
  return patternType_ == kCenterPatternPolar && pitchCenterFromBlock(center);
}

// Two holes are left of a ring: its center is where it was.
bool ZnDbCenterMarkPatternLayout::pitchCenterFromBlock(ZnGePoint2d& center) const {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject_);
  if (!reference.isOpen()) return false;
  center = reference->position().convert2d(patternPlane_);
  return std::none_of(centers2d_.begin(), centers2d_.end(), [&](const ZnGePoint2d& member) {
    return member.distanceTo(center) < patternTolerance_.equalPoint();
  });
}

// The vote gives center and radius rounded. The mean of the circles through members a third of the ring
// apart takes the rounding out; each such circle is well conditioned.
void ZnDbCenterMarkPatternLayout::refinePitchCircle(ZnGePoint2d& center, double& radius) {
  const ZnGeCircArc2d rounded(center, radius);
  collectMembersOnCurve(rounded);
  const size_t count = curveMembers_.size(), third = count / 3;
  if (third == 0) return;
  std::vector<ZnGePoint2d> members;
  members.reserve(count);
  for (const auto& [param, position] : curveMembers_) members.push_back(centers2d_[position]);
  ZnGeVector2d sum;
  int circles = 0;
  for (size_t i = 0; i < count; ++i) {
    const ZnGePoint2d &a = members[i], &b = members[(i + third) % count],
                      &c = members[(i + 2 * third) % count];
    const double least = patternTolerance_.equalPoint();
    // Members too close for a circle hold the walk up where it stands.
    if (a.distanceTo(b) < least || b.distanceTo(c) < least || c.distanceTo(a) < least) break;
    sum += ZnGeCircArc2d(a, b, c).center().asVector();
    ++circles;
  }
  if (circles == 0) return;
  const ZnGePoint2d mean = ZnGePoint2d::kOrigin + sum / circles;
  double distances = 0.0;
  for (const auto& [param, position] : curveMembers_) distances += mean.distanceTo(centers2d_[position]);
  radius = distances / static_cast<double>(count);
  center = mean;
}

// The chain breaks in the largest gap, but not in the one in which the user picked the reference arc: the
// pattern shall run through the pick.
bool ZnDbCenterMarkPatternLayout::orderAroundCircle(const ZnGeCircArc2d& circle, ZnArray<int>& chain) {
  collectMembersOnCurve(circle);
  if (curveMembers_.empty()) return false;
  const double firstParam = curveMembers_.begin()->first, lastParam = curveMembers_.rbegin()->first;
  const double pick = referenceStartAngle_;
  double largestGap = 0.0;
  auto start = curveMembers_.begin();
  for (auto member = curveMembers_.begin(); member != curveMembers_.end(); ++member) {
    auto next = std::next(member);
    const bool closes = next == curveMembers_.end();
    if (closes) next = curveMembers_.begin();
    const double gap = next->first - member->first + (closes ? kTwoPi : 0.0);
    const bool holdsPick =
        closes ? pick < firstParam || pick > lastParam : pick > member->first && pick < next->first;
    if ((pick >= 0.0 && holdsPick) || !(gap > largestGap)) continue;
    largestGap = gap;
    start = next;
  }
  if (autoFullPitchCircle_) fullPitchCircle_ = isAtMost(largestGap, kLargestClosedGap);
  chain.setPhysicalLength(static_cast<int>(curveMembers_.size()));
  for (auto member = start; member != curveMembers_.end(); ++member)
    chain.append(centerIndices_[member->second]);
  for (auto member = curveMembers_.begin(); member != start; ++member)
    chain.append(centerIndices_[member->second]);
  return true;
}

void ZnDbCenterMarkPatternLayout::boundPitchArc(ZnGeCircArc3d& arc, const ZnArray<int>& chain) const {
  const double start = arc.paramOf(circles_[chain.first()].center(), patternTolerance_);
  double end = 0.0;
  if (fullPitchCircle_) {
    end = start - kClosedPitchGap;
    if (end < 0.0) end += kTwoPi;
  } else {
    end = arc.paramOf(circles_[chain.last()].center(), patternTolerance_);
  }
  arc.setAngles(start, end);
}

// The members to which the arms of the pitch center's mark run: left, right, bottom, top of the plane.
void ZnDbCenterMarkPatternLayout::findAxisMembers(const ZnGeCircArc3d& arc, const ZnArray<int>& chain) {
  constexpr double kAxisParams[] = {std::numbers::pi, 0.0, 1.5 * std::numbers::pi, 0.5 * std::numbers::pi};
  axisMembers_.fill(-1);
  for (const int index : chain) {
    double param = arc.paramOf(circles_[index].center(), patternTolerance_);
    while (param > kTwoPi - kAxisMemberTolerance) param -= kTwoPi;
    for (size_t axis = 0; axis < axisMembers_.size(); ++axis) {
      if (!(std::fabs(param - kAxisParams[axis]) < kAxisMemberTolerance)) continue;
      axisMembers_[axis] = index;
      break;
    }
  }
}

bool ZnDbCenterMarkPatternLayout::fitLinearPattern() {
  ZnGeVector2d direction;
  if (!findMajorDirection(direction)) return false;
  ZnGeLine2d line(voteLinePoint(centers2d_, fixedCenterCount_, patternTolerance_, direction), direction);
  const bool isDirected = referenceKind_ == 2;
  if (!isDirected) {
    ZnDbCenterMarkPatternLayout::collectMembersOnCurve(line);
    if (curveMembers_.size() < 2) return false;
    // From here on it passes exactly through real centers.
    line = ZnGeLine2d(centers2d_[curveMembers_.begin()->second], centers2d_[curveMembers_.rbegin()->second]);
  }
  collectMembersOnCurve(line);
  const ZnArray<int> chain = chainOfMembers();
  memberChains_.append(chain);
  if (chain.length() < (isDirected ? 1 : 2)) return false;
  const ZnGePoint3d first = circles_[chain.first()].center(), last = circles_[chain.last()].center();
  if (isDirected) {
    const double length = chain.length() > 1 ? first.distanceTo(last) : 1.0;
    majorCurves_.append(new ZnGeLineSeg3d(first, majorDirection_.normal() * length));
  } else {
    majorCurves_.append(new ZnGeLineSeg3d(first, last));
  }
  return true;
}

bool ZnDbCenterMarkPatternLayout::findMajorDirection(ZnGeVector2d& direction) const {
  const ZnPatternDirectionVote vote = voteDirection(centers2d_, fixedCenterCount_, patternTolerance_);
  // The user's own circles are not on one line.
  if (fixedCenterCount_ >= 3 && vote.values != 1) return false;
  if (referenceKind_ == 2) {
    direction = majorDirection_.convert2d(patternPlane_);
    return true;
  }
  if (vote.values == 0) return false;
  direction = ZnGeVector2d::kXAxis;
  direction.rotateBy(vote.angle);
  return true;
}
