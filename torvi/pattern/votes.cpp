// The votes that are cheap: over centers, and over pairs of them. Votes are counted around each ballot rather
// than in steps of a fixed scale, where rounding can divide equal ones; and who wins among equals is decided
// by the order in which circles were named, so that it does not matter where a pattern lies and how it is
// turned.
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

// Ballots in order of their values, and how many of them lie within a reach.
class Ballots {
public:
  void add(double value) { values_.push_back(value); }
  void sort() { std::sort(values_.begin(), values_.end()); }
  int within(double value, double reach) const {
    const auto from = std::lower_bound(values_.begin(), values_.end(), value - reach);
    return static_cast<int>(std::upper_bound(from, values_.end(), value + reach) - from);
  }
  double meanWithin(double value, double reach) const {
    const auto from = std::lower_bound(values_.begin(), values_.end(), value - reach);
    const auto to = std::upper_bound(from, values_.end(), value + reach);
    double sum = 0.0;
    for (auto ballot = from; ballot != to; ++ballot) sum += *ballot - value;
    return from == to ? value : value + sum / static_cast<double>(to - from);
  }

private:
  std::vector<double> values_;
};

// The first of the values around which most ballots lie.
double mostVotedValue(const std::vector<double>& values, double reach, Ballots& ballots) {
  for (const double value : values) ballots.add(value);
  ballots.sort();
  int most = 0;
  double winner = 0.0;
  for (const double value : values) {
    const int votes = ballots.within(value, reach);
    if (votes <= most) continue;
    most = votes;
    winner = value;
  }
  return winner;
}

// A line through two centers.
struct CenterPair {
  ZnGeVector2d way;
  double angle = 0.0; // in [0, pi)
  double reach = 0.0; // by which the angle may be another
};

std::vector<CenterPair> pairsOf(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol) {
  const int voters = fixedCount < 2 ? centers.length() : votersOf(centers, fixedCount);
  std::vector<CenterPair> pairs;
  for (int i = 1; i < voters; ++i) {
    for (int j = 0; j < (fixedCount == 1 ? 1 : i); ++j) {
      CenterPair pair;
      pair.way = centers[i] - centers[j];
      const double length = pair.way.length();
      if (length <= tol.equalPoint()) continue;
      pair.angle = pair.way.angle();
      if (pair.angle >= std::numbers::pi) pair.angle -= std::numbers::pi;
      pair.reach = std::clamp(tol.equalPoint() / length, kLeastDirectionReach, kMostDirectionReach);
      pairs.push_back(pair);
    }
  }
  return pairs;
}

double angleBetween(double a, double b) {
  const double apart = std::fabs(a - b);
  return std::min(apart, std::numbers::pi - apart);
}

} // namespace

bool votePitchRadius(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                     const ZnGePoint2d& pitchCenter, double& radius) {
  const double reach = tol.equalPoint() * 0.5;
  std::vector<double> distances;
  for (int i = 0; i < votersOf(centers, fixedCount); ++i)
    if (const double distance = pitchCenter.distanceTo(centers[i]); distance > reach)
      distances.push_back(distance);
  if (distances.empty()) return false;
  Ballots ballots;
  const double winner = mostVotedValue(distances, reach, ballots);
  radius = ballots.meanWithin(winner, reach);
  return true;
}

ZnPatternDirectionVote voteDirection(const ZnArray<ZnGePoint2d>& centers, int fixedCount,
                                     const ZnGeTol& tol) {
  const std::vector<CenterPair> pairs = pairsOf(centers, fixedCount, tol);
  Ballots ballots;
  for (const CenterPair& pair : pairs) {
    ballots.add(pair.angle);
    // Next to either end of the range it also stands beyond the other.
    if (pair.angle < kMostDirectionReach) ballots.add(pair.angle + std::numbers::pi);
    if (pair.angle > std::numbers::pi - kMostDirectionReach) ballots.add(pair.angle - std::numbers::pi);
  }
  ballots.sort();
  ZnPatternDirectionVote vote;
  vote.lines = static_cast<int>(pairs.size());
  const CenterPair* winner = nullptr;
  for (const CenterPair& pair : pairs) {
    const int votes = ballots.within(pair.angle, pair.reach);
    if (votes <= vote.votes) continue;
    vote.votes = votes;
    winner = &pair;
  }
  double longest = 0.0;
  for (const CenterPair& pair : pairs) {
    if (angleBetween(pair.angle, winner->angle) > winner->reach || pair.way.length() <= longest) continue;
    longest = pair.way.length();
    vote.direction = pair.way / longest;
  }
  // To the right or straight up, also where rounding makes a level line fall.
  const double fall = -vote.direction.y;
  if (fall > kLeastDirectionReach || (fall >= -kLeastDirectionReach && vote.direction.x < 0.0))
    vote.direction = -vote.direction;
  return vote;
}

ZnGePoint2d voteLinePoint(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                          const ZnGeVector2d& direction) {
  const ZnGeVector2d across = direction.normal().perpVector();
  std::vector<double> offsets;
  for (int i = 0; i < votersOf(centers, fixedCount); ++i)
    offsets.push_back((centers[i] - ZnGePoint2d::kOrigin).dotProduct(across));
  Ballots ballots;
  const double winner = mostVotedValue(offsets, tol.equalPoint(), ballots);
  const auto first = std::find(offsets.begin(), offsets.end(), winner);
  return first == offsets.end() ? ZnGePoint2d::kOrigin : centers[static_cast<int>(first - offsets.begin())];
}
