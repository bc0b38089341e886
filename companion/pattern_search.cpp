#include "companion/pattern_search.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "companion/hole_rows.h"
#include "companion/tolerance.h"
#include "torvi/host/place_index.h"

namespace companion {

namespace {

// Of more holes of one size only those that stand in no row are asked for rings without a witness.
constexpr size_t kManyHoles = 400;

// Equal holes of one part; -1 is the part of what lies in no outline.
struct HoleSet {
  int part = -1;
  std::vector<int> holes;
  std::vector<int> otherParts; // of the last
};

std::vector<HoleSet> setsOf(const std::vector<Hole>& holes) {
  const bool anyPart =
      std::any_of(holes.begin(), holes.end(), [](const Hole& hole) { return hole.part.outline >= 0; });
  std::map<int, std::vector<int>> byPart;
  for (size_t i = 0; i < holes.size(); ++i) {
    const Hole& hole = holes[i];
    const bool isWasher = anyPart && hole.part.outline < 0 && hole.hasInner;
    if (!hole.canJoin || hole.part.isOutline || isWasher) continue;
    byPart[hole.part.outline].push_back(static_cast<int>(i));
  }
  std::vector<HoleSet> sets;
  for (auto& [part, members] : byPart) {
    const auto radiusOf = [&holes](int i) { return holes[static_cast<size_t>(i)].disc.radius; };
    std::stable_sort(members.begin(), members.end(), [&](int a, int b) { return radiusOf(a) < radiusOf(b); });
    double least = 0.0;
    for (const int i : members) {
      if (sets.empty() || sets.back().part != part || radiusOf(i) > least * (1.0 + kSameHoleShare)) {
        sets.push_back({part, {}, {}});
        least = radiusOf(i);
      }
      sets.back().holes.push_back(i);
    }
  }
  for (HoleSet& set : sets) {
    std::sort(set.holes.begin(), set.holes.end());
    if (set.part < 0)
      for (const auto& [part, members] : byPart)
        if (part >= 0) set.otherParts.push_back(part);
  }
  std::erase_if(sets, [](const HoleSet& set) { return set.holes.size() < 3; });
  return sets;
}

bool doCross(const ZnGePoint2d& a, const ZnGePoint2d& b, const ZnGePoint2d& c, const ZnGePoint2d& d) {
  const auto side = [](const ZnGePoint2d& from, const ZnGePoint2d& to, const ZnGePoint2d& p) {
    return (to - from).crossProduct(p - from) > 0.0;
  };
  return side(a, b, c) != side(a, b, d) && side(c, d, a) != side(c, d, b);
}

// The search within one set of holes.
class SetSearch {
public:
  SetSearch(const PatternQuestion& question, const ZnGePlaceIndex2d& outlineIndex, const HoleSet& set)
      : q_(question)
      , outlineIndex_(outlineIndex)
      , set_(set) {
    for (const int i : set.holes) {
      const Disc& disc = hole(i).disc;
      places_.push_back(disc.center);
      radius_ = std::max(radius_, disc.radius);
    }
    tolerance_ = radius_ * std::max(kHolePlaceShare, question.placeShare);
    isFree_.assign(places_.size(), true);
    for (const RingWitness& witness : question.witnesses)
      if (isOfThisPart(witness.center)) witnesses_.push_back(witness);
  }

  void search(std::vector<FoundPattern>& found);

private:
  const Hole& hole(int i) const { return q_.holes[static_cast<size_t>(i)]; }
  bool isOfThisPart(const ZnGePoint2d& point) const;
  std::vector<int> freePlaces() const;
  std::vector<HoleRow> rowsOf(const std::vector<int>& among) const;
  std::vector<HoleRing> ringsOf(const std::vector<int>& among) const;
  bool runsAcrossLines(const HoleRing& ring) const;
  std::vector<HoleRing> disjoint(const std::vector<HoleRing>& rings) const;
  bool separates(const ZnGePoint2d& from, const ZnGePoint2d& to) const;
  void take(const HoleRing& ring, std::vector<FoundPattern>& found);
  void take(const HoleRow& row, std::vector<FoundPattern>& found);
  void takeMembers(const std::vector<int>& members, FoundPattern& pattern);

  const PatternQuestion& q_;
  const ZnGePlaceIndex2d& outlineIndex_;
  const HoleSet& set_;
  std::vector<ZnGePoint2d> places_;
  std::vector<RingWitness> witnesses_;
  double radius_ = 0.0, tolerance_ = 0.0;
  std::vector<bool> isFree_;
};

bool SetSearch::isOfThisPart(const ZnGePoint2d& point) const {
  const auto holds = [&](int outline) { return q_.outlines[static_cast<size_t>(outline)].holds(point); };
  if (set_.part >= 0) return holds(set_.part);
  return std::none_of(set_.otherParts.begin(), set_.otherParts.end(), holds);
}

std::vector<int> SetSearch::freePlaces() const {
  std::vector<int> places;
  for (size_t i = 0; i < places_.size(); ++i)
    if (isFree_[i]) places.push_back(static_cast<int>(i));
  return places;
}

// In a part what lies between two holes is the part's own business; on a bare sheet it may be another part's
// border.
bool SetSearch::separates(const ZnGePoint2d& from, const ZnGePoint2d& to) const {
  if (set_.part >= 0) return false;
  const ZnGePoint2d lower(std::min(from.x, to.x), std::min(from.y, to.y));
  const ZnGePoint2d upper(std::max(from.x, to.x), std::max(from.y, to.y));
  for (const int i : outlineIndex_.meeting({lower, upper})) {
    const Outline& outline = q_.outlines[static_cast<size_t>(i)];
    if (outline.area < 2.0 * ZnGe::kPi * radius_ * radius_) continue; // a hole's own, or as small as one
    const std::vector<ZnGePoint2d>& corners = outline.corners;
    for (size_t k = 0, last = corners.size() - 1; k < corners.size(); last = k++)
      if (doCross(from, to, corners[last], corners[k])) return true;
  }
  return false;
}

std::vector<HoleRow> SetSearch::rowsOf(const std::vector<int>& among) const {
  std::vector<ZnGePoint2d> places;
  for (const int i : among) places.push_back(places_[static_cast<size_t>(i)]);
  std::vector<HoleRow> rows = findRows(
      places, tolerance_, [this](const ZnGePoint2d& a, const ZnGePoint2d& b) { return separates(a, b); });
  for (HoleRow& row : rows)
    for (int& member : row.members) member = among[static_cast<size_t>(member)];
  return rows;
}

std::vector<HoleRing> SetSearch::ringsOf(const std::vector<int>& among) const {
  std::vector<ZnGePoint2d> places;
  for (const int i : among) places.push_back(places_[static_cast<size_t>(i)]);
  ZnGePoint2d middle;
  if (set_.part >= 0) middle = q_.outlines[static_cast<size_t>(set_.part)].middle();
  const RingQuestion question{places, radius_, tolerance_, witnesses_, set_.part >= 0 ? &middle : nullptr};
  std::vector<HoleRing> rings = findRings(question);
  for (HoleRing& ring : rings)
    for (int& member : ring.members) member = among[static_cast<size_t>(member)];
  std::erase_if(rings, [this](const HoleRing& ring) { return runsAcrossLines(ring); });
  return rings;
}

bool SetSearch::runsAcrossLines(const HoleRing& ring) const {
  for (size_t i = 0, last = ring.members.size() - 1; i < ring.members.size(); last = i++)
    if (separates(places_[static_cast<size_t>(ring.members[last])],
                  places_[static_cast<size_t>(ring.members[i])]))
      return true;
  return false;
}

// The largest first, and each place in one only.
std::vector<HoleRing> SetSearch::disjoint(const std::vector<HoleRing>& rings) const {
  std::vector<bool> isFree = isFree_;
  std::vector<HoleRing> kept;
  for (const HoleRing& ring : rings) {
    const auto free = [&isFree](int i) { return isFree[static_cast<size_t>(i)]; };
    if (!std::all_of(ring.members.begin(), ring.members.end(), free)) continue;
    for (const int i : ring.members) isFree[static_cast<size_t>(i)] = false;
    kept.push_back(ring);
  }
  return kept;
}

void SetSearch::takeMembers(const std::vector<int>& members, FoundPattern& pattern) {
  for (const int i : members) {
    isFree_[static_cast<size_t>(i)] = false;
    pattern.holes.push_back(set_.holes[static_cast<size_t>(i)]);
  }
}

void SetSearch::take(const HoleRing& ring, std::vector<FoundPattern>& found) {
  constexpr PatternEvidence kEvidence[] = {PatternEvidence::kConcentric, PatternEvidence::kFiveOrMore,
                                           PatternEvidence::kEqualSpacing};
  FoundPattern& pattern = found.emplace_back();
  pattern.isRing = true;
  pattern.evidence = kEvidence[static_cast<size_t>(ring.evidence)];
  pattern.witness = ring.witness;
  pattern.center = ring.center;
  pattern.pitchRadius = ring.radius;
  takeMembers(ring.members, pattern);
}

void SetSearch::take(const HoleRow& row, std::vector<FoundPattern>& found) {
  FoundPattern& pattern = found.emplace_back();
  pattern.hasGap = row.hasGap;
  pattern.step = row.step;
  takeMembers(row.members, pattern);
}

// Holes of a grid lie on rings too, and those of several rings about one center in rows. Whatever tells the
// whole with fewer patterns is what was meant; a ring among rows is one when most of its holes are in none.
void SetSearch::search(std::vector<FoundPattern>& found) {
  const std::vector<HoleRow> rows = rowsOf(freePlaces());
  std::vector<bool> inRow(places_.size(), false);
  size_t rowCover = 0, ringCover = 0;
  for (const HoleRow& row : rows)
    for (const int i : row.members) inRow[static_cast<size_t>(i)] = true, ++rowCover;

  std::vector<int> asked = freePlaces();
  if (asked.size() > kManyHoles) std::erase_if(asked, [&](int i) { return inRow[static_cast<size_t>(i)]; });
  const std::vector<HoleRing> candidates = ringsOf(asked);
  const std::vector<HoleRing> rings = disjoint(candidates);
  for (const HoleRing& ring : rings) ringCover += ring.members.size();

  if (ringCover >= rowCover && rings.size() < rows.size()) {
    for (const HoleRing& ring : rings) take(ring, found);
  } else {
    for (const HoleRing& ring : candidates) {
      const auto inRows = std::count_if(ring.members.begin(), ring.members.end(),
                                        [&](int i) { return inRow[static_cast<size_t>(i)]; });
      const auto free = [this](int i) { return isFree_[static_cast<size_t>(i)]; };
      if (2 * static_cast<size_t>(inRows) <= ring.members.size() &&
          std::all_of(ring.members.begin(), ring.members.end(), free))
        take(ring, found);
    }
  }
  for (const HoleRow& row : rowsOf(freePlaces())) take(row, found);
}

} // namespace

std::vector<FoundPattern> findPatterns(const PatternQuestion& question) {
  std::vector<ZnGePlaceIndex2d::Box> boxes;
  for (const Outline& outline : question.outlines) boxes.push_back({outline.lower, outline.upper});
  const ZnGePlaceIndex2d outlineIndex(boxes);
  std::vector<FoundPattern> found;
  for (const HoleSet& set : setsOf(question.holes)) SetSearch(question, outlineIndex, set).search(found);
  return found;
}

} // namespace companion
