#include "companion/hole_rows.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "companion/tolerance.h"
#include "torvi/host/place_index.h"

namespace companion {

namespace {

// How many neighbours of a place are looked at for the step to the next one. All that lie around a place of a
// grid, with a few strays among them.
constexpr int kNeighbours = 12;
// How many steps are tried on a group of places, the most frequent ones first.
constexpr size_t kMostSteps = 24;

struct Step {
  ZnGeVector2d vector;
  int count = 0;
};

// A way to lay rows through places.
struct Layout {
  std::vector<HoleRow> rows;
  ZnGeVector2d step;
  size_t covered = 0;
};

int axisRank(const ZnGeVector2d& step, double tolerance) {
  if (std::fabs(step.y) <= tolerance) return 0;
  return std::fabs(step.x) <= tolerance ? 1 : 2;
}

class RowSearch {
public:
  RowSearch(const std::vector<ZnGePoint2d>& places, double tolerance, const Separates& separates)
      : places_(places)
      , tolerance_(tolerance)
      , separates_(separates)
      , index_(places)
      , isFree_(places.size(), true)
      , isAsked_(places.size(), false) {
    for (size_t i = 0; i < places_.size(); ++i) {
      near_.push_back(index_.nearest(places_[i], kNeighbours + 1));
      double& nearest = nearest_.emplace_back(0.0);
      for (const int j : near_.back()) {
        const double distance = places_[i].distanceTo(at(j));
        if (j != static_cast<int>(i) && (nearest == 0.0 || distance < nearest)) nearest = distance;
      }
    }
  }

  std::vector<HoleRow> search() {
    for (const std::vector<int>& group : groups()) layRows(group);
    // What the groups left over may stand in wide rows that run across them.
    std::vector<int> left;
    for (size_t i = 0; i < places_.size(); ++i)
      if (isFree_[i]) left.push_back(static_cast<int>(i));
    layRows(left);
    return std::move(rows_);
  }

private:
  std::vector<std::vector<int>> groups() const;
  void layRows(const std::vector<int>& group);
  std::vector<Step> stepsOf(const std::vector<int>& group) const;
  Layout layoutAlong(const ZnGeVector2d& step, const std::vector<int>& group) const;
  HoleRow rowFrom(int first, const ZnGeVector2d& step) const;
  int placeAt(const ZnGePoint2d& point) const;
  bool isStraight(const HoleRow& row) const;
  bool isChance(const HoleRow& row, const ZnGeVector2d& step) const;
  bool isBetter(const Layout& a, const Layout& b) const;

  const ZnGePoint2d& at(int i) const { return places_[static_cast<size_t>(i)]; }

  const std::vector<ZnGePoint2d>& places_;
  double tolerance_ = 0.0;
  const Separates& separates_;
  ZnGePlaceIndex2d index_;
  std::vector<std::vector<int>> near_;
  std::vector<double> nearest_; // distance of the nearest other place
  std::vector<bool> isFree_;
  std::vector<bool> isAsked_; // those of the group that rows are laid through at the moment
  std::vector<HoleRow> rows_;
};

// Places that are about as near to each other as each is to its nearest.
std::vector<std::vector<int>> RowSearch::groups() const {
  const size_t count = places_.size();
  std::vector<size_t> root(count);
  std::iota(root.begin(), root.end(), size_t{0});
  const auto rootOf = [&root](size_t i) {
    while (root[i] != i) i = root[i] = root[root[i]];
    return i;
  };
  for (size_t i = 0; i < count; ++i)
    for (const int j : near_[i])
      if (places_[i].distanceTo(at(j)) <=
          kGroupReach * std::max(nearest_[i], nearest_[static_cast<size_t>(j)]))
        root[rootOf(i)] = rootOf(static_cast<size_t>(j));
  std::vector<std::vector<int>> groups(count);
  for (size_t i = 0; i < count; ++i) groups[rootOf(i)].push_back(static_cast<int>(i));
  std::erase_if(groups, [](const std::vector<int>& group) { return group.size() < 3; });
  return groups;
}

int RowSearch::placeAt(const ZnGePoint2d& point) const {
  const std::vector<int> found = index_.within(point, 2.0 * tolerance_);
  for (const int i : found)
    if (isFree_[static_cast<size_t>(i)] && isAsked_[static_cast<size_t>(i)]) return i;
  return -1;
}

// Steps between neighbours, each taken the way that leads right, or straight up.
std::vector<Step> RowSearch::stepsOf(const std::vector<int>& group) const {
  std::vector<Step> steps;
  for (const int i : group)
    for (const int j : near_[static_cast<size_t>(i)]) {
      ZnGeVector2d vector = at(j) - at(i);
      if (vector.length() <= 4.0 * tolerance_) continue;
      if (vector.x < -tolerance_ || (vector.x <= tolerance_ && vector.y < 0.0)) vector = -vector;
      steps.push_back({vector, 1});
    }
  std::sort(steps.begin(), steps.end(), [](const Step& a, const Step& b) {
    return a.vector.x != b.vector.x ? a.vector.x < b.vector.x : a.vector.y < b.vector.y;
  });
  std::vector<Step> merged;
  size_t from = 0; // those before it differ in x already
  for (const Step& step : steps) {
    while (from < merged.size() && step.vector.x - merged[from].vector.x > 2.0 * tolerance_) ++from;
    const auto same = std::find_if(
        merged.begin() + static_cast<std::ptrdiff_t>(from), merged.end(),
        [&](const Step& known) { return (known.vector - step.vector).length() <= 2.0 * tolerance_; });
    if (same == merged.end())
      merged.push_back(step);
    else
      ++same->count;
  }
  std::stable_sort(merged.begin(), merged.end(),
                   [](const Step& a, const Step& b) { return a.count > b.count; });
  if (merged.size() > kMostSteps) merged.resize(kMostSteps);
  return merged;
}

HoleRow RowSearch::rowFrom(int first, const ZnGeVector2d& step) const {
  HoleRow row;
  row.members.push_back(first);
  for (int here = first;;) {
    int next = placeAt(at(here) + step);
    const bool overGap = next < 0 && !row.hasGap;
    if (overGap) next = placeAt(at(here) + step * 2.0);
    if (next < 0 || separates_(at(here), at(next))) break;
    if (overGap) row.hasGap = true;
    row.members.push_back(next);
    here = next;
  }
  row.step = step.length();
  return row;
}

// Small errors of a step must not add up to a bow.
bool RowSearch::isStraight(const HoleRow& row) const {
  const ZnGePoint2d& start = at(row.members.front());
  const ZnGeVector2d along = at(row.members.back()) - start;
  return std::all_of(row.members.begin(), row.members.end(), [&](int i) {
    return std::fabs(along.crossProduct(at(i) - start)) <= 2.0 * tolerance_ * along.length();
  });
}

// Three of many places lie on some line in equal steps; what is meant as a row are neighbours, along an axis
// also those that stand a little further apart than the rows beside them.
bool RowSearch::isChance(const HoleRow& row, const ZnGeVector2d& step) const {
  if (row.members.size() > 3) return false;
  const double reach = axisRank(step, tolerance_) < 2 ? kGroupReach : kNeighbourReach;
  return std::any_of(row.members.begin(), row.members.end(),
                     [&](int i) { return row.step > reach * nearest_[static_cast<size_t>(i)]; });
}

Layout RowSearch::layoutAlong(const ZnGeVector2d& step, const std::vector<int>& group) const {
  Layout layout;
  layout.step = step;
  // In the order along the step, so that a row with an empty place is entered at its beginning.
  std::vector<int> ordered = group;
  std::stable_sort(ordered.begin(), ordered.end(), [&](int a, int b) {
    return step.dotProduct(at(a) - ZnGePoint2d()) < step.dotProduct(at(b) - ZnGePoint2d());
  });
  std::vector<bool> taken(places_.size(), false);
  for (const int i : ordered) {
    if (!isFree_[static_cast<size_t>(i)] || taken[static_cast<size_t>(i)]) continue;
    HoleRow row = rowFrom(i, step);
    if (row.members.size() < (row.hasGap ? 4u : 3u) || !isStraight(row) || isChance(row, step)) continue;
    layout.covered += row.members.size();
    for (const int member : row.members) taken[static_cast<size_t>(member)] = true;
    layout.rows.push_back(std::move(row));
  }
  return layout;
}

bool RowSearch::isBetter(const Layout& a, const Layout& b) const {
  if (a.covered != b.covered) return a.covered > b.covered;
  if (a.rows.size() != b.rows.size()) return a.rows.size() < b.rows.size();
  const int rankA = axisRank(a.step, tolerance_), rankB = axisRank(b.step, tolerance_);
  if (rankA != rankB) return rankA < rankB;
  return a.step.length() < b.step.length() - tolerance_;
}

void RowSearch::layRows(const std::vector<int>& group) {
  if (group.size() < 3) return;
  std::fill(isAsked_.begin(), isAsked_.end(), false);
  for (const int i : group) isAsked_[static_cast<size_t>(i)] = true;
  const std::vector<Step> steps = stepsOf(group);
  for (;;) {
    Layout best;
    for (const Step& step : steps) {
      Layout layout = layoutAlong(step.vector, group);
      if (layout.covered > 0 && (best.covered == 0 || isBetter(layout, best))) best = std::move(layout);
    }
    if (best.covered == 0) return;
    for (HoleRow& row : best.rows) {
      for (const int member : row.members) isFree_[static_cast<size_t>(member)] = false;
      rows_.push_back(std::move(row));
    }
  }
}

} // namespace

std::vector<HoleRow> findRows(const std::vector<ZnGePoint2d>& places, double tolerance,
                              const Separates& separates) {
  if (places.size() < 3) return {};
  return RowSearch(places, tolerance, separates).search();
}

} // namespace companion
