#include "torvi/pattern/pitch_circle.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int kMostRounds = 16;
constexpr int kMostSteps = 16; // each squares what is left to go, as far as members are near the circle
constexpr int kMostBalances = 32;
constexpr double kLeastShare =
    0.05; // of the weight that the farthest member gets, for one that is on the circle
constexpr double kLeastStep = 4.0 * std::numeric_limits<double>::epsilon();
// A circle that comes from three rounded places, or from a vote, may be off by more than the members are.
constexpr double kFirstReach = 2.0;

// The sums of a least squares fit in two unknowns.
struct NormalEquations {
  double xx = 0.0, xy = 0.0, yy = 0.0, x = 0.0, y = 0.0;

  void add(const ZnGeVector2d& along, double value, double weight) {
    xx += weight * along.x * along.x;
    xy += weight * along.x * along.y;
    yy += weight * along.y * along.y;
    x += weight * along.x * value;
    y += weight * along.y * value;
  }
  // False where all members pull along one line.
  bool solve(ZnGeVector2d& unknown) const {
    const double det = xx * yy - xy * xy;
    if (!(det > std::numeric_limits<double>::epsilon() * xx * yy)) return false;
    unknown = ZnGeVector2d(yy * x - xy * y, xx * y - xy * x) / det;
    return true;
  }
};

class CircleFit {
public:
  CircleFit(const ZnArray<ZnGePoint2d>& centers, const std::vector<int>& members)
      : weights_(members.size(), 1.0)
      , weight_(static_cast<double>(members.size())) {
    ZnGeVector2d sum;
    for (const int member : members) sum += centers[member] - centers[members.front()];
    middle_ = centers[members.front()] + sum / weight_;
    for (const int member : members) places_.push_back(centers[member] - middle_);
  }

  // First the circle that is best by the squares of the distances, which is found at once; from there to the
  // one that is best by the distances.
  bool run(ZnPitchCircle& circle) { return start() && settle(circle); }

  // Whether all members lie within the reach of some circle: those that lie farthest get more and more
  // weight.
  bool balance(double reach, ZnPitchCircle& circle) {
    for (int round = 0; round < kMostBalances; ++round) {
      double farthest = 0.0;
      for (const ZnGeVector2d& place : places_) farthest = std::max(farthest, std::fabs(asideOf(place)));
      if (farthest <= reach) return true;
      weight_ = 0.0;
      for (size_t i = 0; i < places_.size(); ++i) {
        weights_[i] *= kLeastShare + std::fabs(asideOf(places_[i])) / farthest;
        weight_ += weights_[i];
      }
      if (!settle(circle)) return false;
    }
    return false;
  }

private:
  double asideOf(const ZnGeVector2d& place) const { return (place - center_).length() - radius_; }

  bool start() {
    NormalEquations sums;
    for (const ZnGeVector2d& place : places_) sums.add(place, 0.5 * place.lengthSquared(), 1.0);
    return sums.solve(center_);
  }

  bool settle(ZnPitchCircle& circle) {
    for (int step = 0; step < kMostSteps; ++step) {
      ZnGeVector2d shift;
      if (!nextShift(shift)) return false;
      center_ += shift;
      if (shift.length() <= kLeastStep * radius_) break;
    }
    measure();
    circle = {middle_ + center_, radius_};
    return std::isfinite(radius_);
  }

  void measure() {
    double sum = 0.0;
    for (size_t i = 0; i < places_.size(); ++i) sum += weights_[i] * (places_[i] - center_).length();
    radius_ = sum / weight_;
  }

  // Members pull along their radii; what all have in common is the radius's.
  bool nextShift(ZnGeVector2d& shift) {
    measure();
    ZnGeVector2d common;
    for (size_t i = 0; i < places_.size(); ++i) common += weights_[i] * (places_[i] - center_).normal();
    common = common / weight_;
    NormalEquations sums;
    for (size_t i = 0; i < places_.size(); ++i)
      sums.add((places_[i] - center_).normal() - common, asideOf(places_[i]), weights_[i]);
    return sums.solve(shift);
  }

  std::vector<double> weights_; // of the members
  double weight_;               // of all
  ZnGePoint2d middle_;          // of the members; the rest is counted from here
  std::vector<ZnGeVector2d> places_;
  ZnGeVector2d center_;
  double radius_ = 0.0;
};

} // namespace

std::vector<int> centersNear(const ZnArray<ZnGePoint2d>& centers, const ZnPitchCircle& circle, double reach) {
  std::vector<int> near;
  for (int i = 0; i < centers.length(); ++i)
    if (std::fabs(circle.center.distanceTo(centers[i]) - circle.radius) <= reach) near.push_back(i);
  return near;
}

// First with all that may belong to it. When these are too far off for one circle, with those alone that are
// near enough.
void fitPitchCircle(const ZnArray<ZnGePoint2d>& centers, double reach, ZnPitchCircle& circle) {
  size_t most = centersNear(centers, circle, reach).size();
  ZnPitchCircle laid = circle;
  std::vector<int> members;
  bool isWide = true;
  for (int round = 0; round < kMostRounds; ++round) {
    std::vector<int> next = centersNear(centers, laid, isWide ? kFirstReach * reach : reach);
    if (next.size() < 3 || (next == members && !isWide)) return;
    const bool isStable = next == members;
    members = std::move(next);
    CircleFit fit(centers, members);
    if (!fit.run(laid)) return;
    if (ZnPitchCircle balanced = laid; isStable && fit.balance(reach, balanced)) laid = balanced;
    isWide = isWide && !isStable;
    if (const size_t held = centersNear(centers, laid, reach).size(); held >= most) {
      most = held;
      circle = laid;
    }
  }
}
