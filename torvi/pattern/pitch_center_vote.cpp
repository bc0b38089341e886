// The vote for the pitch circle. Three centers make a circle, and its center is their ballot: where many
// ballots lie next to each other there may be a ring. Those of centers that came rounded out of a file
// scatter, so the ballots only nominate. Around the few places that have most of them circles are laid
// through the centers, and what lies on these decides.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <span>
#include <vector>

#include "torvi/pattern/votes.h"

namespace {

// The longest chord of three points that span just enough of a circle of the radius 1 to vote.
const double kLeastChord = 2.0 * std::sin(std::numbers::pi / 24.0);

// Shares of the tolerance: what ballots of one ring are apart, and what two places are at least.
constexpr double kBallotReach = 2.0;
constexpr double kSamePlace = 4.0;
// Among more centers than these not every triple, or pair, is looked at.
constexpr int kMostInTriples = 64;
constexpr int kMostInPairs = 1024;
constexpr size_t kMostNominated = 16;
constexpr size_t kMostCells = 8 * kMostNominated; // looked at for them, since a place fills several
// Ballots after which it is first asked whether the vote is over, and the factor by which they grow then.
constexpr size_t kFirstCount = 16;
constexpr size_t kNextCount = 4;
constexpr size_t kLastCount = 1024;

struct Ballot {
  ZnGePoint2d center;
  double radius = 0.0;
};

// Counts ballots in cells that overlap by half, so that no border divides those of one ring. The first are
// counted as they come. Many would fill the memory with cells that get a single one: then it is first added
// up how many fall on each of many buckets of cells, and what is alone in its bucket is passed over.
class BallotBox {
public:
  struct Cell {
    std::uint64_t hash = 0; // of its column and row
    std::uint32_t votes = 0;
    std::uint32_t last = 0; // the ballot that came last
  };

  explicit BallotBox(double reach)
      : reach_(reach)
      , cells_(kFirstSize) {}

  void add(const Ballot& ballot) {
    ballots_.push_back(ballot);
    if (ballots_.size() <= kMany) count(ballots_.size() - 1, [](std::uint64_t) { return true; });
  }
  void close() {
    if (ballots_.size() <= kMany) return;
    cells_.assign(kFirstSize, Cell());
    fullest_ = Cell();
    used_ = 0;
    std::vector<std::uint8_t> buckets(std::bit_ceil(ballots_.size() * kBucketsForBallot));
    const auto bucketOf = [&](std::uint64_t hash) -> std::uint8_t& {
      return buckets[(hash >> 32) & (buckets.size() - 1)];
    };
    for (const Ballot& ballot : ballots_)
      for (const std::uint64_t hash : cellsAround(ballot))
        if (std::uint8_t& bucket = bucketOf(hash); bucket < 2) ++bucket;
    for (size_t i = 0; i < ballots_.size(); ++i)
      count(i, [&](std::uint64_t hash) { return bucketOf(hash) > 1; });
  }

  const std::vector<Ballot>& ballots() const { return ballots_; }
  const Cell& fullest() const { return fullest_; }
  // All that have more than one ballot; where these are few, a cell for each ballot too.
  std::vector<Cell> fullCells() const {
    std::vector<Cell> full;
    for (const Cell& cell : cells_)
      if (cell.votes > 1) full.push_back(cell);
    if (full.size() < kMostCells)
      for (std::uint32_t i = 0; i < ballots_.size(); ++i) full.push_back({0, 1, i});
    return full;
  }
  // What the ballots of a place agree on.
  ZnGePoint2d meanAround(const ZnGePoint2d& place) const {
    ZnGeVector2d sum;
    double count = 0.0;
    for (const Ballot& ballot : ballots_) {
      const ZnGeVector2d aside = ballot.center - place;
      if (aside.lengthSquared() > reach_ * reach_) continue;
      sum += aside;
      ++count;
    }
    return count == 0.0 ? place : place + sum / count;
  }

private:
  static constexpr size_t kFirstSize = 256; // four more cells always fit
  static constexpr size_t kMany = kLastCount;
  static constexpr size_t kBucketsForBallot = 16;

  std::array<std::uint64_t, 4> cellsAround(const Ballot& ballot) const {
    const double column = std::floor(ballot.center.x / reach_), row = std::floor(ballot.center.y / reach_);
    return {hashOf(column, row), hashOf(column - 1.0, row), hashOf(column, row - 1.0),
            hashOf(column - 1.0, row - 1.0)};
  }
  static std::uint64_t hashOf(double column, double row) {
    // No zero is negative: the two zeros are one value and must be one cell.
    const auto x = std::bit_cast<std::uint64_t>(column + 0.0), y = std::bit_cast<std::uint64_t>(row + 0.0);
    std::uint64_t mixed = (x ^ std::rotl(y, 32)) * 0x9E3779B97F4A7C15u;
    mixed ^= mixed >> 32;
    mixed = (mixed + y) * 0xD6E8FEB86659FD93u;
    return mixed ^ (mixed >> 32);
  }

  Cell& cellOf(std::uint64_t hash) {
    const size_t mask = cells_.size() - 1;
    size_t at = hash & mask;
    while (cells_[at].votes != 0 && cells_[at].hash != hash) at = (at + 1) & mask;
    return cells_[at];
  }

  template<class Wanted> void count(size_t number, const Wanted& isWanted) {
    for (const std::uint64_t hash : cellsAround(ballots_[number])) {
      if (!isWanted(hash)) continue;
      Cell& cell = cellOf(hash);
      used_ += cell.votes == 0;
      cell = {hash, cell.votes + 1, static_cast<std::uint32_t>(number)};
      if (cell.votes >= fullest_.votes) fullest_ = cell;
    }
    if (used_ <= cells_.size() / 2) return;
    std::vector<Cell> old(cells_.size() * 4);
    old.swap(cells_);
    for (const Cell& cell : old)
      if (cell.votes != 0) cellOf(cell.hash) = cell;
  }

  double reach_;
  std::vector<Ballot> ballots_;
  std::vector<Cell> cells_; // a power of two, with open addressing; one without votes is none
  Cell fullest_;
  size_t used_ = 0;
};

class PitchCircleVote {
public:
  PitchCircleVote(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol)
      : centers_(centers)
      , fixed_(fixedCount)
      , least_(tol.equalPoint()) {}

  bool run();
  // Whether the circle around that center holds so many that no other can hold as many.
  bool isSettledAt(const ZnGePoint2d& center);
  const ZnPitchCircle& winner() const { return winner_; }

private:
  // A place with ballots.
  struct Nominee {
    ZnGePoint2d center;
    double radius = 0.0;
    std::uint32_t votes = 0;
    size_t number = 0; // of the last one
  };

  // Those that take turns in a triple: the user's one or two centers are in each, three or more are alone.
  int turnsFrom() const { return fixed_ == 1 || fixed_ == 2 ? std::min(fixed_, centers_.length()) : 0; }
  int turnsTo() const { return fixed_ < 3 ? centers_.length() : std::min(fixed_, centers_.length()); }
  int mostInGroup() const {
    return fixed_ == 1 ? kMostInPairs : fixed_ == 2 ? centers_.length() : kMostInTriples;
  }

  bool voteIn(const std::vector<int>& group);
  bool isSettledBy(const BallotBox& box) {
    return isSettledAt(box.meanAround(box.ballots()[box.fullest().last].center));
  }
  bool takesPart(int i, int j, int k, Ballot& ballot) const;
  void nominate(const BallotBox& box);
  bool isPreferred(const Nominee& a, const Nominee& b, double slack) const;
  std::vector<Nominee> fullest(std::vector<Nominee> places, size_t count) const;
  bool elect();
  bool circleAround(const ZnGePoint2d& center, ZnPitchCircle& circle) const;
  double votesOn(const ZnPitchCircle& circle) const;

  const ZnArray<ZnGePoint2d>& centers_;
  int fixed_;
  double least_;
  size_t before_ = 0; // ballots of the groups before
  std::vector<Nominee> nominees_;
  ZnPitchCircle winner_;
};

// Few centers are one group. Many are divided twice, so that the cost is linear: by turns, where a ring that
// holds an eighth of all has eight members in some group, from all round it; and one after another, where
// small rings are found, since what was drawn together stands together.
bool PitchCircleVote::run() {
  const int from = turnsFrom(), count = turnsTo() - from, most = std::max(mostInGroup(), 1);
  const int groups = (count + most - 1) / most;
  std::vector<int> group;
  for (const bool byTurns : {true, false}) {
    if (groups == 1 && !byTurns) break;
    for (int number = groups - 1; number >= 0; --number) {
      group.clear();
      for (int i = count - 1; i >= 0; --i)
        if ((byTurns ? i % groups : i * groups / count) == number) group.push_back(from + i);
      if (voteIn(group)) return true;
    }
  }
  return elect();
}

bool PitchCircleVote::isSettledAt(const ZnGePoint2d& center) {
  // Beside so many on one circle there are fewer left, with the two that another may share.
  const auto enough = static_cast<size_t>(centers_.length() / 2 + 2);
  return fixed_ == 0 && circleAround(center, winner_) &&
         centersNear(centers_, winner_, least_).size() >= enough;
}

// True when the vote is over.
bool PitchCircleVote::voteIn(const std::vector<int>& group) {
  static constexpr int kUsers[] = {1, 0};
  const std::span<const int> users(kUsers), all(group);
  BallotBox box(kBallotReach * least_);
  size_t nextCount = kFirstCount;
  for (size_t i = 0; i < all.size(); ++i) {
    const auto seconds = fixed_ == 2 ? users.first(1) : all.subspan(i + 1);
    for (size_t j = 0; j < seconds.size(); ++j) {
      const auto thirds = fixed_ == 1 || fixed_ == 2 ? users.last(1) : seconds.subspan(j + 1);
      for (const int third : thirds)
        if (Ballot ballot; takesPart(all[i], seconds[j], third, ballot)) box.add(ballot);
      if (box.ballots().size() < nextCount) continue;
      nextCount = nextCount < kLastCount ? nextCount * kNextCount : std::numeric_limits<size_t>::max();
      if (isSettledBy(box)) return true;
    }
  }
  box.close();
  if (box.ballots().empty()) return false;
  if (isSettledBy(box)) return true;
  nominate(box);
  before_ += box.ballots().size();
  return false;
}

// Three places within 15 degrees, or next to a line, tell no center.
bool PitchCircleVote::takesPart(int i, int j, int k, Ballot& ballot) const {
  const ZnGeVector2d b = centers_[j] - centers_[i], c = centers_[k] - centers_[i];
  const double lengthB = b.lengthSquared(), lengthC = c.lengthSquared(), closing = (c - b).lengthSquared();
  const double cross = b.crossProduct(c), parallel = ZnGeContext::gTol.equalVector();
  if (std::min({lengthB, lengthC, closing}) < least_ * least_ ||
      !(cross * cross > parallel * parallel * lengthB * lengthC))
    return false;
  const ZnGeVector2d offset = ZnGe::circumcenterOffset(b, c);
  // On less than half of the circle the longest chord tells what they span, and how far they bulge from it.
  const double longest = std::max({lengthB, lengthC, closing});
  if (longest < kLeastChord * kLeastChord * offset.lengthSquared()) return false;
  ballot = {centers_[i] + offset, std::sqrt(offset.lengthSquared())};
  return ballot.radius > least_ && longest > 4.0 * least_ * (2.0 * ballot.radius - least_);
}

// Of places with as many votes. With the user's own centers the smaller circle counts, and the first of equal
// ones; without them the last, whose centers were named first.
bool PitchCircleVote::isPreferred(const Nominee& a, const Nominee& b, double slack) const {
  if (fixed_ == 0) return a.number > b.number;
  if (std::fabs(a.radius - b.radius) > slack) return a.radius < b.radius;
  return a.number < b.number;
}

std::vector<PitchCircleVote::Nominee> PitchCircleVote::fullest(std::vector<Nominee> places,
                                                               size_t count) const {
  const auto end = places.begin() + static_cast<std::ptrdiff_t>(std::min(count, places.size()));
  std::partial_sort(places.begin(), end, places.end(), [&](const Nominee& a, const Nominee& b) {
    return a.votes != b.votes ? a.votes > b.votes : isPreferred(a, b, 0.0);
  });
  places.erase(end, places.end());
  return places;
}

// The fullest places of a group, each once. One that another group has nominated gets the votes of both.
void PitchCircleVote::nominate(const BallotBox& box) {
  std::vector<Nominee> places, own;
  for (const BallotBox::Cell& cell : box.fullCells()) {
    const Ballot& last = box.ballots()[cell.last];
    places.push_back({last.center, last.radius, cell.votes, before_ + cell.last});
  }
  const auto find = [&](std::vector<Nominee>& among, const Nominee& place) {
    return std::find_if(among.begin(), among.end(), [&](const Nominee& known) {
      return known.center.distanceTo(place.center) <= kSamePlace * least_;
    });
  };
  for (const Nominee& place : fullest(std::move(places), kMostCells))
    if (own.size() < kMostNominated && find(own, place) == own.end()) own.push_back(place);
  for (Nominee& place : own) {
    place.center = box.meanAround(place.center);
    const auto known = find(nominees_, place);
    if (known == nominees_.end()) {
      nominees_.push_back(place);
      continue;
    }
    known->votes += place.votes;
    if (isPreferred(place, *known, least_)) known->number = place.number;
  }
}

bool PitchCircleVote::elect() {
  const std::vector<Nominee> best = fullest(std::move(nominees_), kMostNominated);
  const Nominee* elected = nullptr;
  double most = 0.0;
  for (const Nominee& nominee : best) {
    ZnPitchCircle circle;
    if (!circleAround(nominee.center, circle)) continue;
    const double votes = votesOn(circle);
    if (elected && (votes < most || (votes == most && !isPreferred(nominee, *elected, least_)))) continue;
    elected = &nominee;
    most = votes;
    winner_ = circle;
  }
  return elected != nullptr;
}

bool PitchCircleVote::circleAround(const ZnGePoint2d& center, ZnPitchCircle& circle) const {
  circle.center = center;
  const ZnGeTol scattered(kBallotReach * least_, kBallotReach * least_);
  if (!votePitchRadius(centers_, fixed_, scattered, center, circle.radius)) return false;
  fitPitchCircle(centers_, least_, circle);
  return true;
}

// Of triples. Circles round one center add up theirs, but for those that run through the user's own centers.
double PitchCircleVote::votesOn(const ZnPitchCircle& circle) const {
  if (fixed_ == 1 || fixed_ == 2) return static_cast<double>(centersNear(centers_, circle, least_).size());
  std::vector<double> distances;
  for (int i = 0; i < turnsTo(); ++i) distances.push_back(circle.center.distanceTo(centers_[i]));
  std::sort(distances.begin(), distances.end());
  double votes = 0.0;
  for (auto first = distances.begin(); first != distances.end();) {
    const auto next = std::upper_bound(first, distances.end(), *first + 2.0 * least_);
    const auto count = static_cast<double>(next - first);
    votes += count * (count - 1.0) * (count - 2.0) / 6.0;
    first = next;
  }
  return votes;
}

} // namespace

bool votePitchCircle(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                     const std::optional<ZnGePoint2d>& formerCenter, ZnPitchCircle& circle) {
  PitchCircleVote vote(centers, fixedCount, tol);
  const bool found = (formerCenter && vote.isSettledAt(*formerCenter)) || vote.run();
  if (found) circle = vote.winner();
  return found;
}
