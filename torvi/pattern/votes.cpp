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
  int from = 0, to = 0;
  ZnGeVector2d way;
  double length = 0.0;
  double angle = 0.0; // in [0, pi)
  double reach = 0.0; // by which the angle may be another
};

std::vector<CenterPair> pairsOf(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol) {
  const int voters = fixedCount < 2 ? centers.length() : votersOf(centers, fixedCount);
  std::vector<CenterPair> pairs;
  for (int i = 1; i < voters; ++i) {
    for (int j = 0; j < (fixedCount == 1 ? 1 : i); ++j) {
      CenterPair pair;
      pair.from = j;
      pair.to = i;
      pair.way = centers[i] - centers[j];
      pair.length = pair.way.length();
      if (pair.length <= tol.equalPoint()) continue;
      pair.angle = pair.way.angle();
      if (pair.angle >= std::numbers::pi) pair.angle -= std::numbers::pi;
      pair.reach = std::clamp(tol.equalPoint() / pair.length, kLeastDirectionReach, kMostDirectionReach);
      pairs.push_back(pair);
    }
  }
  return pairs;
}

double angleBetween(double a, double b) {
  const double apart = std::fabs(a - b);
  return std::min(apart, std::numbers::pi - apart);
}

// The first pair whose direction most of them have.
const CenterPair* mostVotedDirection(const std::vector<CenterPair>& pairs, int& most) {
  Ballots ballots;
  for (const CenterPair& pair : pairs) {
    ballots.add(pair.angle);
    // Next to either end of the range it also stands beyond the other.
    if (pair.angle < kMostDirectionReach) ballots.add(pair.angle + std::numbers::pi);
    if (pair.angle > std::numbers::pi - kMostDirectionReach) ballots.add(pair.angle - std::numbers::pi);
  }
  ballots.sort();
  const CenterPair* winner = nullptr;
  for (const CenterPair& pair : pairs) {
    const int votes = ballots.within(pair.angle, pair.reach);
    if (votes <= most) continue;
    most = votes;
    winner = &pair;
  }
  return winner;
}

// How many centers lie on a line, for many lines of nearly one direction: only those next to it are looked
// at.
class LineMembers {
public:
  LineMembers(const ZnArray<ZnGePoint2d>& centers, int voters, const ZnGeTol& tol,
              const CenterPair& direction)
      : centers_(centers)
      , tol_(tol)
      , across_(direction.way.perpVector() / direction.length) {
    for (int i = 0; i < voters; ++i) {
      places_.emplace_back(offsetOf(i), i);
      size_ = std::max(size_, 2.0 * centers[i].distanceTo(centers[0]));
    }
    std::sort(places_.begin(), places_.end());
  }

  // The longest of many, as the cost has to have a limit.
  template<class Which> void askThose(const std::vector<CenterPair>& pairs, const Which& isAsked) {
    constexpr int kMostAsked = 1 << 14;
    int asked = 0;
    for (const CenterPair& pair : pairs)
      if (asked < kMostAsked && isAsked(pair)) {
        ask(pair);
        ++asked;
      }
  }
  const CenterPair& leader() const { return *leader_; }
  bool isOnLeader(const CenterPair& pair) const {
    return leader_ && isOn(*leader_, pair.from) && isOn(*leader_, pair.to);
  }

private:
  // Takes the pair for the leader if more centers lie on its line, or as many of which one was named earlier.
  void ask(const CenterPair& pair) {
    const double offset = offsetOf(pair.from), lean = std::fabs(pair.way.dotProduct(across_)) / pair.length;
    const double beside = tol_.equalPoint() + size_ * lean;
    const auto from = std::lower_bound(places_.begin(), places_.end(), std::pair(offset - beside, 0));
    const auto to = std::upper_bound(from, places_.end(), std::pair(offset + beside, centers_.length()));
    const auto most = static_cast<int>(to - from);
    if (most < votes_ || (most == votes_ && isOnLeader(pair))) return;
    int votes = 0, first = centers_.length();
    for (auto place = from; place != to; ++place) {
      if (!isOn(pair, place->second)) continue;
      ++votes;
      first = std::min(first, place->second);
    }
    if (votes < votes_ || (votes == votes_ && first >= first_)) return;
    leader_ = &pair;
    votes_ = votes;
    first_ = first;
  }
  double offsetOf(int center) const { return (centers_[center] - centers_[0]).dotProduct(across_); }
  bool isOn(const CenterPair& pair, int center) const {
    const double aside = pair.way.crossProduct(centers_[center] - centers_[pair.from]);
    return std::fabs(aside) <= tol_.equalPoint() * pair.length;
  }

  const ZnArray<ZnGePoint2d>& centers_;
  ZnGeTol tol_;
  ZnGeVector2d across_;
  std::vector<std::pair<double, int>> places_; // offset and center
  double size_ = 0.0;
  const CenterPair* leader_ = nullptr;
  int votes_ = 0, first_ = 0;
};

} // namespace

bool votePitchRadius(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                     const ZnGePoint2d& pitchCenter, double& radius) {
  const double reach = tol.equalPoint();
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

// A direction is told best by two centers far apart; but one that is a little off the row must not lead it
// away from those that are on it. So the pairs of the direction are asked, and then, as long as that finds a
// line with more, those on the line, which may lean a little more.
ZnPatternLineVote voteLine(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol) {
  std::vector<CenterPair> pairs = pairsOf(centers, fixedCount, tol);
  ZnPatternLineVote vote;
  vote.lines = static_cast<int>(pairs.size());
  const CenterPair* mostVoted = mostVotedDirection(pairs, vote.votes);
  if (!mostVoted) return vote;
  const CenterPair direction = *mostVoted;
  std::stable_sort(pairs.begin(), pairs.end(),
                   [](const CenterPair& a, const CenterPair& b) { return a.length > b.length; });
  LineMembers members(centers, fixedCount < 3 ? centers.length() : votersOf(centers, fixedCount), tol,
                      direction);
  members.askThose(pairs, [&](const CenterPair& pair) {
    return angleBetween(pair.angle, direction.angle) <= direction.reach;
  });
  for (const CenterPair* led = nullptr; led != &members.leader();) {
    led = &members.leader();
    members.askThose(pairs, [&](const CenterPair& pair) { return members.isOnLeader(pair); });
  }
  const CenterPair& line = members.leader();
  vote.from = centers[line.from];
  vote.way = line.way;
  // To the right or straight up, also where rounding makes a level line fall.
  const ZnGeVector2d along = line.way / line.length;
  if (along.y < -kLeastDirectionReach || (along.y <= kLeastDirectionReach && along.x < 0.0)) {
    vote.from = centers[line.to];
    vote.way = -line.way;
  }
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
