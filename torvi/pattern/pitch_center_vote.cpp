// The vote for the pitch center. It is cubic, so its inner loop decides what a large pattern costs: no arc is
// made for a triple unless it lies so close to a limit that only the arc can tell, distances are measured
// once, and votes are counted in flat tables whose cells are fetched ahead. The outcome is that of making
// every arc and counting in an ordered map, to the last bit.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <vector>

#include "torvi/core/tolerance.h"
#include "torvi/pattern/votes.h"

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kLeastSpan = std::numbers::pi / 12.0;
constexpr double kRoundingStepShare = 0.125;

// Half away from zero, as std::round, but without its call for what fits an integer. No zero is negative: the
// two zeros are one value and must be one cell.
double roundHalfAway(double value) {
  constexpr double kExactInteger = 1LL << 51;
  constexpr double kBelowHalf = 0.5 - std::numeric_limits<double>::epsilon() / 4.0;
  if (!(std::fabs(value) < kExactInteger)) return std::round(value);
  return static_cast<double>(static_cast<std::int64_t>(value + std::copysign(kBelowHalf, value)));
}

// Counts points. Open addressing: one cell a point, and the next free one where two meet.
class PointCounts {
public:
  PointCounts()
      : cells_(kFirstSize) {}

  static std::uint64_t hashOf(const ZnGePoint2d& point) {
    const auto x = std::bit_cast<std::uint64_t>(point.x), y = std::bit_cast<std::uint64_t>(point.y);
    std::uint64_t mixed = (x ^ std::rotl(y, 32)) * 0x9E3779B97F4A7C15u;
    mixed ^= mixed >> 32;
    mixed = (mixed + y) * 0xD6E8FEB86659FD93u;
    return mixed ^ (mixed >> 32);
  }

  size_t size() const { return used_; }

  // The count of the point, this vote included.
  std::uint32_t add(const ZnGePoint2d& point, std::uint64_t hash) {
    const size_t mask = cells_.size() - 1;
    for (size_t at = hash & mask;; at = (at + 1) & mask) {
      Cell& cell = cells_[at];
      if (cell.count == 0) {
        cell = {point.x, point.y, 1};
        if (++used_ > cells_.size() / 2) grow();
        return 1;
      }
      if (cell.x == point.x && cell.y == point.y) return ++cell.count;
    }
  }

private:
  static constexpr size_t kFirstSize = 256;
  struct Cell {
    double x = 0.0, y = 0.0;
    std::uint32_t count = 0;
  };

  void grow() {
    std::vector<Cell> old(cells_.size() * 2);
    old.swap(cells_);
    const size_t mask = cells_.size() - 1;
    for (const Cell& cell : old) {
      if (cell.count == 0) continue;
      size_t at = hashOf({cell.x, cell.y}) & mask;
      while (cells_[at].count != 0) at = (at + 1) & mask;
      cells_[at] = cell;
    }
  }

  std::vector<Cell> cells_; // a power of two
  size_t used_ = 0;
};

// How many votes fall on each of many buckets of points: no point has more votes than its bucket.
class BucketTotals {
public:
  explicit BucketTotals(size_t votes)
      : totals_(std::bit_ceil(votes + 1)) {}

  void fetch(std::uint64_t hash) const { __builtin_prefetch(&totals_[hash & (totals_.size() - 1)], 1); }
  void add(std::uint64_t hash) {
    std::uint16_t& total = totals_[hash & (totals_.size() - 1)];
    if (total != kMany) ++total;
  }
  std::uint32_t of(std::uint64_t hash) const {
    const std::uint16_t total = totals_[hash & (totals_.size() - 1)];
    return total == kMany ? std::numeric_limits<std::uint32_t>::max() : total;
  }

private:
  static constexpr std::uint16_t kMany = std::numeric_limits<std::uint16_t>::max();
  std::vector<std::uint16_t> totals_; // a power of two
};

// Whether the arc through three centers says something about its center.
bool arcVotes(const ZnGePoint2d& first, const ZnGePoint2d& second, const ZnGePoint2d& third,
              const ZnGeTol& tol) {
  const ZnGeCircArc2d arc(first, second, third);
  if (arc.isDegenerate(tol)) return false;
  const double middle = arc.paramOf(second), end = arc.endAng();
  const double span = kTwoPi - std::max({middle, end - middle, kTwoPi - end, 0.0});
  return !(span > -kLeastSpan && span < kLeastSpan);
}

class PitchCenterVote {
public:
  PitchCenterVote(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol)
      : centers_(centers)
      , count_(centers.length())
      , fixed_(fixedCount)
      , tol_(tol)
      , step_(std::numbers::sqrt2 * tol.equalPoint() * kRoundingStepShare) {
    measure();
  }

  // A vote that is settled early, or a small one, is counted as it comes. A large one would fill the memory
  // with points that get a single vote, so it is gone through twice: first for totals, then for the points
  // that can still win. What lies below the best count changes nothing, whenever it is counted.
  bool run() {
    bool isLarge = false;
    eachVote([](std::uint64_t) {},
             [&](const Vote& vote) {
               isLarge = counts_.size() > kManyPoints;
               return isLarge || lead(vote, counts_.add(vote.center, vote.hash));
             });
    if (!isLarge) return best_ >= 1;
    best_ = 0;
    counts_ = PointCounts();
    BucketTotals totals(std::min(tripleCount(), kMostBuckets));
    const auto fetch = [&](std::uint64_t hash) { totals.fetch(hash); };
    eachVote(fetch, [&](const Vote& vote) {
      totals.add(vote.hash);
      return false;
    });
    eachVote(fetch, [&](const Vote& vote) {
      const std::uint32_t most = totals.of(vote.hash);
      return most >= best_ && lead(vote, most == 1 ? 1 : counts_.add(vote.center, vote.hash));
    });
    return best_ >= 1;
  }

  const ZnGePoint2d& winner() const { return winner_; }

private:
  struct Vote {
    ZnGePoint2d center;
    ZnGeVector2d offset;
    std::uint64_t hash = 0;
  };

  size_t tripleCount() const {
    const auto count = static_cast<size_t>(fixed_ < 3 ? count_ : std::min(fixed_, count_));
    if (fixed_ == 2) return count * 2;
    return fixed_ == 1 ? count * count / 2 : count * (count - 1) * (count - 2) / 6;
  }

  double distance(int i, int j) const {
    return distances_.empty() ? centers_[i].distanceTo(centers_[j])
                              : distances_[static_cast<size_t>(i) * static_cast<size_t>(count_) + j];
  }

  void measure() {
    const std::int64_t half = count_ / 2;
    limit_ = (half - 1) * half * (half + 1) / 6;
    // Of the triples through the user's own centers there are few, among candidates that may be many.
    const bool isTabled = fixed_ == 0;
    if (isTabled) distances_.resize(static_cast<size_t>(count_) * static_cast<size_t>(count_));
    votes_.resize(static_cast<size_t>(count_) * kMostCells);
    double size = 0.0;
    for (int i = 0; i < count_; ++i) {
      size = std::max({size, std::fabs(centers_[i].x), std::fabs(centers_[i].y)});
      for (int j = 0; isTabled && j < i; ++j)
        distances_[static_cast<size_t>(i * count_ + j)] = distances_[static_cast<size_t>(j * count_ + i)] =
            centers_[i].distanceTo(centers_[j]);
    }
    // On circles smaller than this the roundings of coordinates reach the slack, or a flat arc is none.
    constexpr double kRoundings = 64.0 * std::numeric_limits<double>::epsilon();
    leastRadius_ =
        std::max(kRoundings * size / (kVoteBoundSlack * kVoteBoundSlack), tol_.equalPoint() / kLeastSagitta);
    const double chord = 2.0 * std::sin(kLeastSpan * 0.5);
    const double shorter = chord * (1.0 - kVoteBoundSlack), longer = chord * (1.0 + kVoteBoundSlack);
    shorterSqrd_ = shorter * shorter;
    longerSqrd_ = longer * longer;
  }

  // Points on less than half of a circle of radius r span an angle a just when the longest of their chords is
  // 2 r sin(a / 2), and on more they have a chord longer than r. So the chord decides, but for very small
  // circles and next to the limit. Whatever spans the angle departs from its chord by kLeastSagitta times the
  // radius, so the same radius also rules out arcs that are flat under the tolerance.
  bool votes(int i, int j, int k, const ZnGeVector2d& offset, double longestSqrd) const {
    const double radiusSqrd = offset.lengthSquared();
    if (radiusSqrd > leastRadius_ * leastRadius_) {
      if (longestSqrd < shorterSqrd_ * radiusSqrd) return false;
      if (longestSqrd > longerSqrd_ * radiusSqrd) return true;
    }
    return arcVotes(centers_[i], centers_[j], centers_[k], tol_);
  }

  // Gives every vote in the order of the triples, until take says that the vote is over. Those of a pair are
  // worked out before they are given, so that what fetch asks for comes in from memory side by side.
  template<class Fetch, class Take> void eachVote(Fetch&& fetch, Take&& take) {
    const int highest = fixed_ < 3 ? count_ : std::min(fixed_, count_);
    for (int i = highest - 1; i >= 0; --i)
      for (int j = fixed_ == 2 ? std::min(1, count_ - 1) : i - 1; j >= 0; --j) {
        if (distance(i, j) < tol_.equalPoint()) continue;
        collectVotesOf(i, j, fetch);
        if (std::any_of(votes_.data(), votes_.data() + cast_, take)) return;
      }
  }

  template<class Fetch> void collectVotesOf(int i, int j, Fetch&& fetch) {
    cast_ = 0;
    const ZnGePoint2d first = centers_[i];
    const ZnGeVector2d b = centers_[j] - first;
    const double lengthB = distance(i, j), least = tol_.equalPoint();
    for (int k = fixed_ == 1 ? 0 : j - 1; k >= 0; --k) {
      const double lengthC = distance(i, k), closing = distance(j, k);
      if (lengthC < least || closing < least) continue;
      const ZnGeVector2d c = centers_[k] - first;
      // An arc that is none has no radius and votes for nothing.
      if (!ZnGe::spanCircle(b, c, lengthB, lengthC, closing)) continue;
      const ZnGeVector2d offset = ZnGe::circumcenterOffset(b, c);
      const double longest = std::max({lengthB, lengthC, closing});
      if (!votes(i, j, k, offset, longest * longest)) continue;
      castVote(first + offset, offset, fetch);
    }
  }

  // For the cell that holds the center, and for each next one whose border is near: equal centers that
  // rounding leaves on both sides of it still meet.
  template<class Fetch> void castVote(const ZnGePoint2d& center, const ZnGeVector2d& offset, Fetch&& fetch) {
    const double x = center.x / step_, y = center.y / step_;
    const double column = roundHalfAway(x), row = roundHalfAway(y);
    castInCell(column, row, offset, fetch);
    if (std::max(std::fabs(x - column), std::fabs(y - row)) > 0.5 - kNearBorder)
      castBeside(column, row, nextCell(x - column), nextCell(y - row), offset, fetch);
  }

  // Few votes come here, and the loop above stays short without it.
  template<class Fetch>
  [[gnu::noinline]] void castBeside(double column, double row, double besideX, double besideY,
                                    const ZnGeVector2d& offset, Fetch&& fetch) {
    if (besideX != 0.0) castInCell(column + besideX, row, offset, fetch);
    if (besideY != 0.0) castInCell(column, row + besideY, offset, fetch);
    if (besideX != 0.0 && besideY != 0.0) castInCell(column + besideX, row + besideY, offset, fetch);
  }

  template<class Fetch>
  [[gnu::always_inline]] void castInCell(double column, double row, const ZnGeVector2d& offset,
                                         Fetch&& fetch) {
    const ZnGePoint2d center(column * step_, row * step_);
    const std::uint64_t hash = PointCounts::hashOf(center);
    fetch(hash);
    votes_[cast_++] = {center, offset, hash};
  }

  // Which cell is next to a place in this one, from -0.5 to 0.5; 0 for a place away from its borders.
  static double nextCell(double place) {
    return std::fabs(place) > 0.5 - kNearBorder ? std::copysign(1.0, place) : 0.0;
  }

  // Takes a vote with the count that its center has by it; true when no other can overtake any more. With the
  // user's own centers a tie goes to the smaller circle, and to the first of equal ones; without them to the
  // later.
  bool lead(const Vote& vote, std::uint32_t votes) {
    if (votes < best_) return false;
    const double radius = fixed_ == 0 ? 0.0 : vote.offset.length();
    if (votes == best_ && fixed_ != 0 && !(radius < bestRadius_ - tol_.equalPoint())) return false;
    best_ = votes;
    bestRadius_ = radius;
    winner_ = vote.center;
    return votes > limit_;
  }

  // Points in the table at which a vote counts as large: as much as stays near the processor.
  static constexpr size_t kManyPoints = 1 << 10;
  // Beyond this buckets are shared by more points rather than being more.
  static constexpr size_t kMostBuckets = 1 << 25;
  // Share of the radius by which an arc of the least span departs from its chord, rounded down.
  static constexpr double kLeastSagitta = 1.0 / 128.0;
  static constexpr size_t kMostCells = 4; // that one vote falls on
  // Share of a cell: wide against what rounding does to a center, and so narrow that few votes count twice.
  static constexpr double kNearBorder = 1.0 / 64.0;

  const ZnArray<ZnGePoint2d>& centers_;
  int count_, fixed_;
  ZnGeTol tol_;
  double step_;
  std::int64_t limit_ = 0; // about half of all centers are on one circle, and no other can overtake
  std::vector<double> distances_;
  double leastRadius_ = 0.0, shorterSqrd_ = 0.0, longerSqrd_ = 0.0;
  std::vector<Vote> votes_; // of the pair at hand, as many as cast_ says
  size_t cast_ = 0;
  PointCounts counts_;
  std::uint32_t best_ = 0;
  double bestRadius_ = 0.0;
  ZnGePoint2d winner_;
};

} // namespace

bool votePitchCenter(const ZnArray<ZnGePoint2d>& centers, int fixedCount, const ZnGeTol& tol,
                     ZnGePoint2d& pitchCenter) {
  PitchCenterVote vote(centers, fixedCount, tol);
  const bool found = vote.run();
  if (found) pitchCenter = vote.winner();
  return found;
}
