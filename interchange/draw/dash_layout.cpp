#include "interchange/draw/dash_layout.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace interchange {

namespace {

constexpr double kMostElements = 1e5;
// Dashes that differ by less are of one length: linetype files round to a few digits.
constexpr double kSameLength = 0.999;
// A closed curve, and a pattern that is stretched as a whole, take the pattern shrunk to this share at most;
// a shorter curve is drawn continuous.
constexpr double kLeastShrink = 0.6;
// Of a long dash at the end of a curve, the least that stays.
constexpr double kLeastEndShare = 0.5;

struct Element {
  bool drawn = false;
  double length = 0;
};

// Dashes and gaps that take turns, beginning with the longest dash; empty when nothing interrupts the line.
class Cycle {
public:
  explicit Cycle(const DashPattern& pattern) {
    for (const double length : pattern.lengths) append({!(length < 0), std::abs(length)});
    while (elements_.size() > 1 && elements_.front().drawn == elements_.back().drawn) {
      elements_.front().length += elements_.back().length;
      elements_.pop_back();
    }
    const auto longest =
        std::max_element(elements_.begin(), elements_.end(), [](const Element& a, const Element& b) {
          return a.drawn == b.drawn ? a.length < b.length : b.drawn;
        });
    std::rotate(elements_.begin(), longest, elements_.end());
    for (const Element& element : elements_) period_ += element.length;
    if (elements_.size() < 2 || !(period_ > 0) || !std::isfinite(period_)) elements_.clear();
  }

  bool isContinuous() const { return elements_.empty(); }
  std::size_t size() const { return elements_.size(); }
  const Element& operator[](std::size_t index) const { return elements_[index % elements_.size()]; }
  double period() const { return period_; }
  double longest() const { return elements_.front().length; }
  bool isLong(std::size_t index) const {
    return (*this)[index].drawn && (*this)[index].length >= kSameLength * longest();
  }
  bool hasOneDash() const { return elements_.size() == 2; }

private:
  void append(const Element& element) {
    if (!element.drawn && !(element.length > 0)) return;
    if (!elements_.empty() && elements_.back().drawn == element.drawn)
      elements_.back().length += element.length;
    else
      elements_.push_back(element);
  }

  std::vector<Element> elements_;
  double period_ = 0;
};

// One way to fill an open curve: the pattern runs from the middle of element `center` outwards, both ways
// alike, until the end dash takes over after `inner` of the half curve, all stretched by `scale`.
struct Filling {
  std::size_t center = 0;
  std::size_t steps = 0; // elements from the center's neighbour up to the one before the end dash
  double inner = 0;
  double scale = 1;
};

// Prefers end dashes near the least, or for a pattern that is stretched as a whole a stretch near one.
bool isBetter(const Filling& filling, const std::optional<Filling>& than, bool fit) {
  if (!than) return true;
  if (fit) return std::abs(std::log(filling.scale)) < std::abs(std::log(than->scale));
  return filling.inner > than->inner;
}

// The best filling with the middle of that element at the middle of the curve.
void tryCenter(const Cycle& cycle, std::size_t center, double half, bool fit, std::optional<Filling>& best) {
  const double leastEnd = kLeastEndShare * cycle.longest();
  double reach = 0.5 * cycle[center].length;
  for (std::size_t steps = 1; steps <= cycle.size(); ++steps) {
    const std::size_t end = center + steps;
    if (cycle.isLong(end)) {
      const double repeats = std::floor((half - leastEnd - reach) / cycle.period());
      for (double more = repeats; more <= repeats + (fit ? 1 : 0); ++more) {
        if (more < 0) continue;
        Filling filling{center, steps - 1 + static_cast<std::size_t>(more) * cycle.size(),
                        reach + more * cycle.period(), 1};
        if (fit) filling.scale = half / (filling.inner + leastEnd);
        if (filling.scale < kLeastShrink) continue;
        if (isBetter(filling, best, fit)) best = filling;
      }
    }
    reach += cycle[end].length;
  }
}

// Dashes at the middle come first, dots only where no dash fits. A gap stands there in patterns of one dash
// only: those are not what lines are crossed with, and a short edge would lose its meaning if drawn
// continuous.
std::optional<Filling> chooseFilling(const Cycle& cycle, double half, bool fit) {
  const auto isDash = [](const Element& element) { return element.drawn && element.length > 0; };
  const auto isDot = [](const Element& element) { return element.drawn && !(element.length > 0); };
  std::optional<Filling> best;
  for (std::size_t i = 0; i < cycle.size(); ++i)
    if (isDash(cycle[i])) tryCenter(cycle, i, half, fit, best);
  for (std::size_t i = 0; i < cycle.size() && !best; ++i)
    if (isDot(cycle[i]) || (cycle.hasOneDash() && !cycle[i].drawn)) tryCenter(cycle, i, half, fit, best);
  return best;
}

// Mirrored copies of the half, so that the layout is symmetric to the last bit.
std::vector<DashSpan> mirrored(const std::vector<DashSpan>& outwards, double half) {
  std::vector<DashSpan> spans;
  for (auto span = outwards.rbegin(); span != outwards.rend(); ++span)
    if (span->start > 0 || span->end > 0) spans.push_back({half - span->end, half - span->start});
  for (const DashSpan& span : outwards) {
    if (span.start > 0)
      spans.push_back({half + span.start, half + span.end});
    else if (!spans.empty() && span.end > 0)
      spans.back().end = half + span.end; // the two halves of the dash at the middle
    else
      spans.push_back({half, half});
  }
  return spans;
}

std::vector<DashSpan> fill(const Cycle& cycle, const Filling& filling, double half) {
  std::vector<DashSpan> outwards;
  double at = 0.5 * cycle[filling.center].length * filling.scale;
  if (cycle[filling.center].drawn) outwards.push_back({0, at});
  for (std::size_t step = 1; step <= filling.steps; ++step) {
    const Element& element = cycle[filling.center + step];
    const double next = at + element.length * filling.scale;
    if (element.drawn) outwards.push_back({at, next});
    at = next;
  }
  outwards.push_back({std::min(at, half), half});
  return mirrored(outwards, half);
}

// Of dots alone there is no end dash to take the rest: a dot at each end, the gaps between them stretched.
std::vector<DashSpan> layOutDots(const Cycle& cycle, double length) {
  const double repeats = std::max(1.0, std::round(length / cycle.period()));
  const double scale = length / (repeats * cycle.period());
  std::vector<DashSpan> spans;
  double at = 0;
  for (std::size_t i = 0; i < static_cast<std::size_t>(repeats) * cycle.size(); ++i) {
    if (cycle[i].drawn) spans.push_back({at, at});
    at += cycle[i].length * scale;
  }
  spans.push_back({length, length});
  return spans;
}

std::vector<DashSpan> layOutOpen(const Cycle& cycle, double length, bool fit) {
  if (!(cycle.longest() > 0)) return layOutDots(cycle, length);
  const double half = 0.5 * length;
  const std::optional<Filling> filling = chooseFilling(cycle, half, fit);
  if (!filling) return {{0, length}};
  return fill(cycle, *filling, half);
}

std::vector<DashSpan> layOutClosed(const Cycle& cycle, double length) {
  const double repeats = std::max(1.0, std::round(length / cycle.period()));
  const double scale = length / (repeats * cycle.period());
  if (scale < kLeastShrink) return {{0, length}};
  std::vector<DashSpan> spans;
  const double firstHalf = 0.5 * cycle.longest() * scale;
  double at = firstHalf;
  const std::size_t count = static_cast<std::size_t>(repeats) * cycle.size();
  for (std::size_t i = 1; i < count; ++i) {
    const double next = at + cycle[i].length * scale;
    if (cycle[i].drawn) spans.push_back({at, next});
    at = next;
  }
  if (firstHalf > 0)
    spans.push_back({length - firstHalf, length + firstHalf});
  else
    spans.push_back({length, length});
  return spans;
}

} // namespace

std::vector<DashSpan> layOutDashes(const DashPattern& pattern, double length, bool closed) {
  if (!(length > 0)) return {};
  const Cycle cycle(pattern);
  if (cycle.isContinuous()) return {{0, length}};
  if (length / cycle.period() * static_cast<double>(cycle.size()) > kMostElements) return {{0, length}};
  return closed ? layOutClosed(cycle, length) : layOutOpen(cycle, length, pattern.scaledToFit);
}

} // namespace interchange
