#include "companion/slots.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "companion/edge_ends.h"
#include "companion/tolerance.h"

namespace companion {

namespace {

constexpr size_t kMostAtOnePlace = 8;

// A half circle, of one arc or two, that could be the end of a slot.
struct Cap {
  SlotEnd end;
  double radius = 0.0;
  ZnGePoint3d tips[2];
  ZnGeVector3d outward; // unit, from the center to the middle of the half circle
  double reach() const { return radius * kSlotJoinShare; }
};

ZnGePoint2d flat(const ZnGePoint3d& p) { return {p.x, p.y}; }

// The half circle's middle lies square to its tips, on the side of any other of its points.
Cap capOf(std::vector<int> arcs, const ZnGeCircArc3d& circle, const ZnGePoint3d& from, const ZnGePoint3d& to,
          const ZnGePoint3d& between) {
  Cap cap{{std::move(arcs), circle.center()}, circle.radius(), {from, to}, {}};
  const ZnGeVector3d across = (to - from).normal();
  const ZnGeVector3d side = between - circle.center();
  cap.outward = (side - across * side.dotProduct(across)).normal();
  return cap;
}

bool isOnOneCircle(const ZnGeCircArc3d& a, const ZnGeCircArc3d& b) {
  const double reach = a.radius() * kSlotJoinShare;
  return a.center().distanceTo(b.center()) <= reach && std::fabs(a.radius() - b.radius()) <= reach &&
         a.normal().crossProduct(b.normal()).length() <= kSamePlaneSine;
}

class CapSearch {
public:
  explicit CapSearch(const std::vector<RoundEdge>& round)
      : round_(round)
      , index_(tipsOf(round)) {}

  std::vector<Cap> run() const {
    std::vector<Cap> caps;
    for (int i = 0; i < static_cast<int>(round_.size()); ++i) {
      const ZnGeCircArc3d& arc = at(i).curve;
      const double missing = ZnGe::kPi - at(i).span();
      if (std::fabs(missing) <= kSpanSlack) {
        const double middle = (arc.startAng() + arc.endAng()) / 2.0;
        caps.push_back(capOf({i}, arc, arc.startPoint(), arc.endPoint(), arc.evalPoint(middle)));
      } else if (missing > 0.0) {
        appendPairs(i, caps);
      }
    }
    return caps;
  }

private:
  const RoundEdge& at(int i) const { return round_[static_cast<size_t>(i)]; }

  static std::vector<ZnGePoint2d> tipsOf(const std::vector<RoundEdge>& round) {
    std::vector<ZnGePoint2d> tips;
    for (const RoundEdge& edge : round) {
      tips.push_back(flat(edge.curve.startPoint()));
      tips.push_back(flat(edge.curve.endPoint()));
    }
    return tips;
  }

  ZnGePoint3d tip(int number) const {
    const ZnGeCircArc3d& arc = at(number / 2).curve;
    return number % 2 == 0 ? arc.startPoint() : arc.endPoint();
  }

  // The arc with later ones that make it up to a half circle.
  void appendPairs(int i, std::vector<Cap>& caps) const {
    for (const int mine : {2 * i, 2 * i + 1}) {
      const ZnGePoint3d joint = tip(mine);
      size_t looked = 0;
      for (const int other : index_.within(flat(joint), at(i).curve.radius() * kSlotJoinShare)) {
        const int j = other / 2;
        if (++looked > kMostAtOnePlace) break;
        if (j <= i || std::fabs(at(i).span() + at(j).span() - ZnGe::kPi) > kSpanSlack ||
            !isOnOneCircle(at(i).curve, at(j).curve))
          continue;
        // Two on the same side of the joint cover each other and make up nothing.
        const ZnGePoint3d from = tip(mine ^ 1), to = tip(other ^ 1);
        if (from.distanceTo(to) < at(i).curve.radius()) continue;
        caps.push_back(capOf({i, j}, at(i).curve, from, to, joint));
      }
    }
  }

  const std::vector<RoundEdge>& round_;
  ZnGePlaceIndex2d index_;
};

class SlotSearch {
public:
  SlotSearch(const std::vector<StraightEdge>& straight, std::vector<Cap> caps)
      : caps_(std::move(caps))
      , ends_(straight)
      , capTips_(tipsOf(caps_))
      , used_(caps_.size(), false) {}

  std::vector<Slot> run() {
    std::vector<Slot> slots;
    for (size_t i = 0; i < caps_.size(); ++i) {
      Slot slot;
      if (!used_[i] && slotFrom(i, slot)) slots.push_back(std::move(slot));
    }
    return slots;
  }

private:
  static std::vector<ZnGePoint2d> tipsOf(const std::vector<Cap>& caps) {
    std::vector<ZnGePoint2d> tips;
    for (const Cap& cap : caps)
      for (const ZnGePoint3d& tip : cap.tips) tips.push_back(flat(tip));
    return tips;
  }

  // Sides that go on from a tip, away from the half circle and along its axis.
  std::vector<EdgeFromEnd> sidesAt(const Cap& cap, int tip) const {
    std::vector<EdgeFromEnd> sides = ends_.at(cap.tips[tip], cap.reach());
    std::erase_if(sides, [&](const EdgeFromEnd& side) {
      const ZnGeVector3d way = side.way().normal();
      return way.dotProduct(cap.outward) > 0.0 || way.crossProduct(cap.outward).length() > kParallelSideSine;
    });
    return sides;
  }

  // The unused half circle that faces this one across the far ends of two sides; -1 for none.
  int facing(size_t number, const EdgeFromEnd& one, const EdgeFromEnd& other) const {
    const Cap& cap = caps_[number];
    size_t looked = 0;
    for (const int tip : capTips_.within(flat(one.there), cap.reach())) {
      const auto found = static_cast<size_t>(tip / 2);
      const Cap& candidate = caps_[found];
      if (++looked > kMostAtOnePlace) break;
      if (found != number && !used_[found] && candidate.outward.dotProduct(cap.outward) < 0.0 &&
          std::fabs(candidate.radius - cap.radius) <= cap.reach() &&
          candidate.tips[tip % 2].distanceTo(one.there) <= cap.reach() &&
          candidate.tips[1 - tip % 2].distanceTo(other.there) <= cap.reach())
        return static_cast<int>(found);
    }
    return -1;
  }

  bool slotFrom(size_t number, Slot& slot) {
    const Cap& cap = caps_[number];
    for (const EdgeFromEnd& one : sidesAt(cap, 0))
      for (const EdgeFromEnd& other : sidesAt(cap, 1)) {
        if (one.edge == other.edge) continue;
        const int opposite = facing(number, one, other);
        if (opposite < 0) continue;
        used_[number] = used_[static_cast<size_t>(opposite)] = true;
        slot = {{one.edge, other.edge},
                {cap.end, caps_[static_cast<size_t>(opposite)].end},
                cap.radius,
                one.way().length()};
        return true;
      }
    return false;
  }

  std::vector<Cap> caps_;
  EdgeEnds ends_;
  ZnGePlaceIndex2d capTips_;
  std::vector<bool> used_;
};

ZnGePoint2d middleOf(const Slot& slot) {
  const ZnGePoint3d &a = slot.ends[0].center, &b = slot.ends[1].center;
  return flat(a + (b - a) * 0.5);
}

bool haveSameCenters(const Slot& larger, const Slot& smaller) {
  const double reach = larger.radius * kSlotJoinShare;
  const auto near = [reach](const SlotEnd& a, const SlotEnd& b) {
    return a.center.distanceTo(b.center) <= reach;
  };
  return (near(larger.ends[0], smaller.ends[0]) && near(larger.ends[1], smaller.ends[1])) ||
         (near(larger.ends[0], smaller.ends[1]) && near(larger.ends[1], smaller.ends[0]));
}

std::vector<Slot> outermost(std::vector<Slot> slots) {
  std::vector<ZnGePoint2d> middles;
  for (const Slot& slot : slots) middles.push_back(middleOf(slot));
  const ZnGePlaceIndex2d index(middles);
  std::vector<size_t> order(slots.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](size_t a, size_t b) { return slots[a].radius > slots[b].radius; });
  std::vector<bool> covered(slots.size(), false);
  for (const size_t i : order) {
    if (covered[i]) continue;
    for (const int near : index.within(middles[i], slots[i].radius * kSlotJoinShare)) {
      const auto j = static_cast<size_t>(near);
      if (j != i && haveSameCenters(slots[i], slots[j])) covered[j] = true;
    }
  }
  std::vector<Slot> kept;
  for (size_t i = 0; i < slots.size(); ++i)
    if (!covered[i]) kept.push_back(std::move(slots[i]));
  return kept;
}

} // namespace

std::vector<Slot> findSlots(const std::vector<StraightEdge>& straight, const std::vector<RoundEdge>& round) {
  return outermost(SlotSearch(straight, CapSearch(round).run()).run());
}

} // namespace companion
