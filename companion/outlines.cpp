#include "companion/outlines.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "companion/tolerance.h"
#include "torvi/host/place_index.h"

namespace companion {

namespace {

using Chain = std::vector<ZnGePoint2d>;

double signedArea(const Chain& corners) {
  double twice = 0.0;
  for (size_t i = 0, last = corners.size() - 1; i < corners.size(); last = i++) {
    const ZnGeVector2d a = corners[last] - corners[0], b = corners[i] - corners[0];
    twice += a.crossProduct(b);
  }
  return twice / 2.0;
}

Outline outlineOf(Chain corners) {
  Outline outline;
  outline.lower = outline.upper = corners.front();
  for (const ZnGePoint2d& p : corners) {
    outline.lower = {std::min(outline.lower.x, p.x), std::min(outline.lower.y, p.y)};
    outline.upper = {std::max(outline.upper.x, p.x), std::max(outline.upper.y, p.y)};
  }
  outline.area = std::fabs(signedArea(corners));
  outline.corners = std::move(corners);
  return outline;
}

double diagonalOf(const std::vector<Chain>& chains) {
  ZnGePoint2d lower, upper;
  bool any = false;
  for (const Chain& chain : chains)
    for (const ZnGePoint2d& p : chain) {
      lower = any ? ZnGePoint2d(std::min(lower.x, p.x), std::min(lower.y, p.y)) : p;
      upper = any ? ZnGePoint2d(std::max(upper.x, p.x), std::max(upper.y, p.y)) : p;
      any = true;
    }
  return any ? lower.distanceTo(upper) : 0.0;
}

// Ends of open chains, brought together where they lie within reach of each other.
class Joints {
public:
  Joints(const std::vector<Chain>& chains, double reach) {
    std::vector<ZnGePoint2d> ends;
    for (const Chain& chain : chains) {
      ends.push_back(chain.front());
      ends.push_back(chain.back());
    }
    const ZnGePlaceIndex2d index(ends);
    nodes_.assign(ends.size(), -1);
    for (size_t i = 0; i < ends.size(); ++i) {
      if (nodes_[i] >= 0) continue;
      for (const int near : index.within(ends[i], reach))
        if (nodes_[static_cast<size_t>(near)] < 0) nodes_[static_cast<size_t>(near)] = count_;
      ++count_;
    }
    endsAt_.resize(static_cast<size_t>(count_));
    for (size_t i = 0; i < ends.size(); ++i)
      endsAt_[static_cast<size_t>(nodes_[i])].push_back(static_cast<int>(i));
  }

  // The end that alone meets this one; -1 for none, or for a junction, where the way on is anyone's guess.
  int partnerOf(int end) const {
    const std::vector<int>& here = endsAt_[static_cast<size_t>(nodes_[static_cast<size_t>(end)])];
    return here.size() == 2 ? here[here[0] == end ? 1 : 0] : -1;
  }

private:
  std::vector<int> nodes_; // of end 2i and 2i + 1, those of chain i
  std::vector<std::vector<int>> endsAt_;
  int count_ = 0;
};

void append(Chain& loop, const Chain& chain, bool backwards) {
  if (backwards)
    loop.insert(loop.end(), chain.rbegin(), chain.rend() - 1);
  else
    loop.insert(loop.end(), chain.begin(), chain.end() - 1);
}

// The loop that starts along the chain; empty when it never comes back.
Chain loopFrom(size_t first, const std::vector<Chain>& chains, const Joints& joints,
               std::vector<bool>& used) {
  Chain loop;
  int end = static_cast<int>(2 * first); // where the current chain is entered
  do {
    const auto chain = static_cast<size_t>(end / 2);
    used[chain] = true;
    append(loop, chains[chain], end % 2 != 0);
    end = joints.partnerOf(end ^ 1);
  } while (end >= 0 && !used[static_cast<size_t>(end / 2)]);
  return end == static_cast<int>(2 * first) ? loop : Chain();
}

// The whole disc, not its center alone: a drawn pitch circle runs through the holes and holds none of them.
bool holdsWhole(const Outline& outline, const Disc& disc) {
  const double r = disc.radius;
  for (const ZnGeVector2d& step : {ZnGeVector2d(), {r, 0.0}, {-r, 0.0}, {0.0, r}, {0.0, -r}})
    if (!outline.holds(disc.center + step)) return false;
  return true;
}

bool isClosedChain(const Chain& chain, double reach) {
  return chain.size() > 3 && chain.front().distanceTo(chain.back()) <= reach;
}

// A closed line of four straight sides parallel to the axes, as wide and high as everything.
bool isFrame(const Outline& outline, const ZnGePoint2d& lower, const ZnGePoint2d& upper) {
  const double width = outline.upper.x - outline.lower.x, height = outline.upper.y - outline.lower.y;
  const double slack = kFrameShare * std::max(width, height);
  return outline.area >= width * height * (1.0 - kFrameShare) && outline.lower.x - lower.x <= slack &&
         outline.lower.y - lower.y <= slack && upper.x - outline.upper.x <= slack &&
         upper.y - outline.upper.y <= slack;
}

} // namespace

bool Outline::holds(const ZnGePoint2d& p) const {
  if (p.x < lower.x || p.x > upper.x || p.y < lower.y || p.y > upper.y) return false;
  bool inside = false;
  for (size_t i = 0, last = corners.size() - 1; i < corners.size(); last = i++) {
    const ZnGePoint2d &a = corners[i], &b = corners[last];
    if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

std::vector<Outline> joinOutlines(std::vector<Chain> chains) {
  std::erase_if(chains, [](const Chain& chain) { return chain.size() < 2; });
  const double reach = diagonalOf(chains) * kJoinShare;
  std::vector<Outline> outlines;
  std::vector<Chain> open;
  for (Chain& chain : chains) {
    if (!isClosedChain(chain, reach)) {
      open.push_back(std::move(chain));
      continue;
    }
    chain.pop_back();
    outlines.push_back(outlineOf(std::move(chain)));
  }
  const Joints joints(open, reach);
  std::vector<bool> used(open.size(), false);
  for (size_t i = 0; i < open.size(); ++i) {
    if (used[i]) continue;
    Chain loop = loopFrom(i, open, joints, used);
    if (loop.size() >= 3) outlines.push_back(outlineOf(std::move(loop)));
  }
  return outlines;
}

std::vector<PartOfDisc> partsOf(const std::vector<Disc>& discs, const std::vector<Outline>& outlines) {
  std::vector<ZnGePoint2d> centers;
  for (const Disc& disc : discs) centers.push_back(disc.center);
  const ZnGePlaceIndex2d index(centers);
  ZnGePoint2d lower, upper;
  for (size_t i = 0; i < outlines.size(); ++i) {
    const Outline& o = outlines[i];
    lower = i ? ZnGePoint2d(std::min(lower.x, o.lower.x), std::min(lower.y, o.lower.y)) : o.lower;
    upper = i ? ZnGePoint2d(std::max(upper.x, o.upper.x), std::max(upper.y, o.upper.y)) : o.upper;
  }

  std::vector<PartOfDisc> parts(discs.size());
  bool anyPart = false; // a frame is drawn around parts; what holds none is the part itself
  std::vector<size_t> order(outlines.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](size_t a, size_t b) { return outlines[a].area < outlines[b].area; });
  for (const size_t number : order) {
    const Outline& outline = outlines[number];
    std::vector<int> inside;
    int self = -1; // the disc that draws this outline
    for (const int i : index.meeting({outline.lower, outline.upper})) {
      const Disc& disc = discs[static_cast<size_t>(i)];
      const double area = ZnGe::kPi * disc.radius * disc.radius;
      if (std::fabs(area - outline.area) <= kSameDiscShare * area &&
          disc.center.distanceTo(outline.middle()) <= kSameDiscShare * disc.radius)
        self = i;
      else if (area < outline.area && holdsWhole(outline, disc))
        inside.push_back(i);
    }
    if (self >= 0 && !inside.empty()) parts[static_cast<size_t>(self)].isOutline = true;
    const size_t most = self >= 0 ? 0 : 1; // a disc around one hole is a part with one hole
    if (inside.size() <= most || (anyPart && isFrame(outline, lower, upper))) continue;
    anyPart = true;
    for (const int i : inside)
      if (parts[static_cast<size_t>(i)].outline < 0)
        parts[static_cast<size_t>(i)].outline = static_cast<int>(number);
  }
  return parts;
}

} // namespace companion
