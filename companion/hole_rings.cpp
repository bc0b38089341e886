#include "companion/hole_rings.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "companion/tolerance.h"
#include "torvi/host/place_index.h"

namespace companion {

namespace {

// Of a few places each triple is tried as a ring; of many, each place with pairs of its neighbours.
constexpr size_t kFewPlaces = 24;
constexpr int kNeighbours = 6;
// How many of the places nearest to a middle can belong to rings around it.
constexpr int kMostOfRing = 96;
constexpr size_t kLeastOfRing = 3;
constexpr size_t kEnoughForRing = 5;

struct Polar {
  double angle = 0.0;
  int place = -1;
};

class RingSearch {
public:
  explicit RingSearch(const RingQuestion& question)
      : q_(question)
      , index_(question.places) {}

  std::vector<HoleRing> search() {
    aroundWitnesses();
    throughPlaces();
    std::stable_sort(rings_.begin(), rings_.end(), [](const HoleRing& a, const HoleRing& b) {
      if (a.members.size() != b.members.size()) return a.members.size() > b.members.size();
      return a.evidence < b.evidence;
    });
    return std::move(rings_);
  }

private:
  void aroundWitnesses();
  void throughPlaces();
  void throughThree(int a, int b, int c);
  bool canWitness(const RingWitness& witness) const;
  bool isPitchCircleDrawn(const ZnGePoint2d& center, double radius) const;
  std::vector<double> gapsOf(const HoleRing& ring) const;
  bool isSpread(const HoleRing& ring) const;
  bool isEquallySpaced(const HoleRing& ring) const;
  bool isMereRectangle(const HoleRing& ring) const;
  bool isMostOfWhatItHolds(const HoleRing& ring, const std::vector<int>& near) const;
  HoleRing ringOn(const ZnGePoint2d& center, double radius, const std::vector<int>& places,
                  double slack = 1.0) const;
  bool fitCircle(const std::vector<int>& members, ZnGePoint2d& center) const;
  void keep(HoleRing ring);

  const ZnGePoint2d& at(int i) const { return q_.places[static_cast<size_t>(i)]; }

  const RingQuestion& q_;
  ZnGePlaceIndex2d index_;
  std::set<std::vector<int>> known_;
  std::vector<HoleRing> rings_;
};

// The places on the circle, by angle, and the circle that fits them best among those about that center.
HoleRing RingSearch::ringOn(const ZnGePoint2d& center, double radius, const std::vector<int>& places,
                            double slack) const {
  std::vector<Polar> on;
  double sum = 0.0;
  for (const int i : places) {
    const ZnGeVector2d arm = at(i) - center;
    if (std::fabs(arm.length() - radius) > slack * q_.tolerance) continue;
    on.push_back({arm.angle(), i});
    sum += arm.length();
  }
  std::sort(on.begin(), on.end(), [](const Polar& a, const Polar& b) { return a.angle < b.angle; });
  HoleRing ring;
  ring.center = center;
  ring.radius = on.empty() ? 0.0 : sum / static_cast<double>(on.size());
  for (const Polar& polar : on) ring.members.push_back(polar.place);
  return ring;
}

// The center from which the squares of the distances differ least (an algebraic fit: it needs no start and no
// iteration, and on a ring that is spread it is as good as the geometric one).
bool RingSearch::fitCircle(const std::vector<int>& members, ZnGePoint2d& center) const {
  const double count = static_cast<double>(members.size());
  ZnGeVector2d mean;
  for (const int i : members) mean += (at(i) - ZnGePoint2d()) / count;
  double xx = 0.0, xy = 0.0, yy = 0.0, xz = 0.0, yz = 0.0;
  for (const int i : members) {
    const ZnGeVector2d p = at(i) - (ZnGePoint2d() + mean);
    const double z = p.lengthSquared();
    xx += p.x * p.x, xy += p.x * p.y, yy += p.y * p.y, xz += p.x * z, yz += p.y * z;
  }
  const double determinant = xx * yy - xy * xy;
  if (determinant <= kLeastFitShare * (xx + yy) * (xx + yy)) return false; // all but on one line
  center = ZnGePoint2d() + mean + ZnGeVector2d(xz * yy - yz * xy, yz * xx - xz * xy) * (0.5 / determinant);
  return true;
}

std::vector<double> RingSearch::gapsOf(const HoleRing& ring) const {
  std::vector<double> gaps;
  for (size_t i = 0; i < ring.members.size(); ++i) {
    const double here = (at(ring.members[i]) - ring.center).angle();
    const double next = (at(ring.members[(i + 1) % ring.members.size()]) - ring.center).angle();
    gaps.push_back(next > here ? next - here : next - here + 2.0 * ZnGe::kPi);
  }
  return gaps;
}

// Places within a small part of a circle may as well lie on a straight line or on any other curve.
bool RingSearch::isSpread(const HoleRing& ring) const {
  const std::vector<double> gaps = gapsOf(ring);
  return 2.0 * ZnGe::kPi - *std::max_element(gaps.begin(), gaps.end()) >= kLeastRingSpan;
}

bool RingSearch::isEquallySpaced(const HoleRing& ring) const {
  const double wanted = 2.0 * ZnGe::kPi / static_cast<double>(ring.members.size());
  const double slack = 4.0 * q_.tolerance / ring.radius;
  for (const double gap : gapsOf(ring))
    if (std::fabs(gap - wanted) > slack) return false;
  return true;
}

bool RingSearch::isPitchCircleDrawn(const ZnGePoint2d& center, double radius) const {
  return std::any_of(q_.witnesses.begin(), q_.witnesses.end(), [&](const RingWitness& witness) {
    return std::fabs(witness.radius - radius) <= q_.tolerance &&
           witness.center.distanceTo(center) <= q_.tolerance;
  });
}

// Four whose opposite gaps are equal, but not all.
bool RingSearch::isMereRectangle(const HoleRing& ring) const {
  if (ring.members.size() != 4 || isEquallySpaced(ring)) return false;
  const std::vector<double> gaps = gapsOf(ring);
  const double slack = 4.0 * q_.tolerance / ring.radius;
  return std::fabs(gaps[0] - gaps[2]) <= slack && std::fabs(gaps[1] - gaps[3]) <= slack &&
         !isPitchCircleDrawn(ring.center, ring.radius);
}

void RingSearch::keep(HoleRing ring) {
  // Holes that overlap, or a circle that is smaller than its holes, are no ring.
  if (ring.radius <= q_.holeRadius || !isSpread(ring)) return;
  std::vector<int> members = ring.members;
  std::sort(members.begin(), members.end());
  if (!known_.insert(std::move(members)).second) return;
  rings_.push_back(std::move(ring));
}

bool RingSearch::canWitness(const RingWitness& witness) const {
  const bool hasOwnSize = std::fabs(witness.radius - q_.holeRadius) <= kSameHoleShare * q_.holeRadius;
  return !hasOwnSize && witness.radius > q_.holeRadius * (1.0 + kSameHoleShare);
}

void RingSearch::aroundWitnesses() {
  for (const RingWitness& witness : q_.witnesses) {
    if (!canWitness(witness)) continue;
    const std::vector<int> near = index_.nearest(witness.center, kMostOfRing);
    std::vector<double> distances;
    for (const int i : near) distances.push_back(at(i).distanceTo(witness.center));
    std::sort(distances.begin(), distances.end());
    for (size_t i = 0; i + kLeastOfRing <= distances.size();) {
      size_t end = i + 1;
      while (end < distances.size() && distances[end] - distances[i] <= 2.0 * q_.tolerance) ++end;
      const double radius = (distances[i] + distances[end - 1]) / 2.0;
      const bool isRim = witness.span >= ZnGe::kPi || witness.radius >= radius * kRimShare;
      if (end - i >= kLeastOfRing && isRim) {
        HoleRing ring = ringOn(witness.center, radius, near);
        ring.evidence = RingEvidence::kConcentric;
        ring.witness = witness.source;
        const bool isClear =
            ring.members.size() >= kEnoughForRing || isEquallySpaced(ring) || isMostOfWhatItHolds(ring, near);
        if (ring.members.size() >= kLeastOfRing && isClear && !isMereRectangle(ring)) keep(std::move(ring));
      }
      i = end;
    }
  }
}

// Among many holes some five lie on one circle by chance, and some three around any circle; a ring is what
// stands there, not a choice from it.
bool RingSearch::isMostOfWhatItHolds(const HoleRing& ring, const std::vector<int>& near) const {
  const auto held = std::count_if(near.begin(), near.end(), [&](int i) {
    return at(i).distanceTo(ring.center) <= ring.radius * kRingSurroundings;
  });
  return static_cast<double>(ring.members.size()) >= kRingMajority * static_cast<double>(held);
}

void RingSearch::throughThree(int a, int b, int c) {
  const ZnGeVector2d u = at(b) - at(a), v = at(c) - at(a);
  const double twiceArea = u.crossProduct(v);
  const double longest = std::max(u.length(), v.length());
  if (std::fabs(twiceArea) <= kLeastTripleSine * longest * longest) return;
  const double uu = u.lengthSquared(), vv = v.lengthSquared();
  const ZnGeVector2d toCenter = ZnGeVector2d(v.y * uu - u.y * vv, u.x * vv - v.x * uu) * (0.5 / twiceArea);
  ZnGePoint2d center = at(a) + toCenter;
  const std::vector<int> near = index_.nearest(center, kMostOfRing);
  // Three that stand close together say little about the middle; all that they lead to say more.
  HoleRing ring = ringOn(center, toCenter.length(), near, kRoughShare);
  if (ring.members.size() < 4 || !fitCircle(ring.members, center)) return;
  ring = ringOn(center, ring.radius, near, kRoughShare);
  ring = ringOn(center, ring.radius, near, 1.0);
  if (ring.members.size() < 4) return;
  const bool fiveOrMore = ring.members.size() >= kEnoughForRing;
  const bool aboutMiddle = q_.partMiddle && isEquallySpaced(ring) &&
                           q_.partMiddle->distanceTo(center) <= kMiddleShare * ring.radius;
  if (!fiveOrMore && !aboutMiddle) return;
  if (!aboutMiddle && !isEquallySpaced(ring) && !isMostOfWhatItHolds(ring, near)) return;
  ring.evidence = aboutMiddle && !fiveOrMore ? RingEvidence::kEqualSpacing : RingEvidence::kFiveOrMore;
  keep(std::move(ring));
}

void RingSearch::throughPlaces() {
  const int count = static_cast<int>(q_.places.size());
  if (q_.places.size() <= kFewPlaces) {
    for (int a = 0; a < count; ++a)
      for (int b = a + 1; b < count; ++b)
        for (int c = b + 1; c < count; ++c) throughThree(a, b, c);
    return;
  }
  for (int a = 0; a < count; ++a) {
    const std::vector<int> near = index_.nearest(at(a), kNeighbours + 1);
    for (size_t i = 0; i < near.size(); ++i)
      for (size_t j = i + 1; j < near.size(); ++j)
        if (near[i] != a && near[j] != a) throughThree(a, near[i], near[j]);
  }
}

} // namespace

std::vector<HoleRing> findRings(const RingQuestion& question) {
  if (question.places.size() < kLeastOfRing) return {};
  return RingSearch(question).search();
}

} // namespace companion
