// The votes that are cheap: over centers, and over pairs of them.
#include "torvi/pattern/votes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "torvi/core/tolerance.h"

namespace {

// The centers that vote when candidates must not outvote the user's own.
int votersOf(const ZnArray<ZnGePoint2d>& centers, int fixedCount) {
  return fixedCount < 1 ? centers.length() : std::min(fixedCount, centers.length());
}

// Orders the ballots and gives the value that stands there most often: among equals the one cast last, and
// among the others the smallest. values counts the different ones.
double mostVotedValue(std::vector<double>& ballots, int& values) {
  values = 0;
  if (ballots.empty()) return 0.0;
  const double last = ballots.back();
  std::sort(ballots.begin(), ballots.end());
  double winner = last;
  auto most = std::count(ballots.begin(), ballots.end(), last);
  for (auto run = ballots.begin(); run != ballots.end(); ++values) {
    const auto end = std::upper_bound(run, ballots.end(), *run);
    if (end - run > most) {
      most = end - run;
      winner = *run;
    }
    run = end;
  }
  return winner;
}

} // namespace

bool votePitchRadius(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                     const ZnGePoint2d& pitchCenter, double& radius) {
  const double step = tol.equalPoint() * 0.5;
  std::vector<double> distances;
  for (int i = votersOf(centers, fixedCount) - 1; i >= 0; --i) {
    const double distance = roundedToStep(pitchCenter.distanceTo(centers[i]), step);
    if (distance != 0.0) distances.push_back(distance);
  }
  // Counted as they come: a value takes the lead when it draws level.
  std::ptrdiff_t most = 0;
  for (auto ballot = distances.begin(); ballot != distances.end(); ++ballot) {
    const auto votes = std::count(distances.begin(), ballot + 1, *ballot);
    if (votes < most) continue;
    most = votes;
    radius = *ballot;
  }
  return most > 0;
}

ZnPatternDirectionVote voteDirection(const ZnArray<ZnGePoint2d>& centers, int fixedCount,
                                     const ZnGeTol& tol) {
  const double step = tol.equalPoint() * kDirectionStepShare;
  const int voters = fixedCount < 2 ? centers.length() : votersOf(centers, fixedCount);
  std::vector<double> angles;
  for (int i = voters - 1; i >= 1; --i) {
    for (int j = fixedCount == 1 ? 0 : i - 1; j >= 0; --j) {
      const ZnGeLine2d line(centers[i], centers[j]);
      if (line.isDegenerate(tol)) continue;
      double angle = line.direction().angle();
      if (angle >= std::numbers::pi) angle -= std::numbers::pi;
      const bool isHalfTurn = std::fabs(angle - std::numbers::pi) < step;
      angles.push_back(isHalfTurn ? 0.0 : roundedToStep(angle, step));
    }
  }
  ZnPatternDirectionVote vote;
  vote.angle = mostVotedValue(angles, vote.values);
  return vote;
}

ZnGePoint2d voteLinePoint(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                          const ZnGeVector2d& direction) {
  const ZnGeLine2d xAxis(ZnGePoint2d::kOrigin, ZnGeVector2d::kXAxis);
  const ZnGeLine2d yAxis(ZnGePoint2d::kOrigin, ZnGeVector2d::kYAxis);
  const double step = tol.equalPoint() * 0.5;
  // A voted direction is rounded, so no column is parallel to y to the last bit.
  const bool isVertical = ZnGeLine2d(ZnGePoint2d::kOrigin, direction).isParallelTo(yAxis, tol);
  std::vector<double> onX, onY;
  for (int i = votersOf(centers, fixedCount) - 1; i >= 0; --i) {
    const ZnGeLine2d line(centers[i], direction);
    ZnGePoint2d crossing;
    if (!isVertical) {
      line.intersectWith(yAxis, crossing);
      onY.push_back(roundedToStep(crossing.y, step));
    } else {
      line.intersectWith(xAxis, crossing);
      onX.push_back(roundedToStep(crossing.x, step));
    }
  }
  int values = 0;
  const double x = mostVotedValue(onX, values), y = mostVotedValue(onY, values);
  return isVertical ? ZnGePoint2d(x, 0.0) : ZnGePoint2d(0.0, y);
}
