// What the vote for a pitch circle costs for growing numbers of holes of which half lie on one circle, just
// too few for the vote to stop early, as they come rounded out of a file.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <random>

#include "torvi/pattern/votes.h"

namespace {

const ZnGeTol kTol(1e-4, 1e-4);
constexpr double kLastDecimal = 1e-4;

ZnGePoint2d rounded(double x, double y) {
  return {std::round(x / kLastDecimal) * kLastDecimal, std::round(y / kLastDecimal) * kLastDecimal};
}

void vote(benchmark::State& state, const ZnArray<ZnGePoint2d>& centers, double radius) {
  ZnPitchCircle circle;
  for (auto _ : state) votePitchCircle(centers, 0, kTol, {}, circle);
  if (std::fabs(circle.radius - radius) > kTol.equalPoint()) state.SkipWithError("the ring was not found");
}

void pitchCircleVote(benchmark::State& state) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> anywhere(-400.0, 400.0), angle(0.0, 6.28);
  ZnArray<ZnGePoint2d> centers;
  for (int i = 0; i < state.range(0); ++i) {
    const double at = angle(random);
    centers.append(i % 2 ? rounded(anywhere(random), anywhere(random))
                         : rounded(20.0 + 300.0 * std::cos(at), 10.0 + 300.0 * std::sin(at)));
  }
  vote(state, centers, 300.0);
}
BENCHMARK(pitchCircleVote)->Arg(60)->Arg(240)->Arg(960)->Unit(benchmark::kMicrosecond);

// A flange: every hole on the circle, the vote over as soon as it can be.
void pitchCircleVoteOnARing(benchmark::State& state) {
  ZnArray<ZnGePoint2d> centers;
  for (int i = 0; i < state.range(0); ++i) {
    const double at = static_cast<double>(i) * 2.0 * std::numbers::pi / static_cast<double>(state.range(0));
    centers.append(rounded(80.0 * std::cos(at), 80.0 * std::sin(at)));
  }
  vote(state, centers, 80.0);
}
BENCHMARK(pitchCircleVoteOnARing)->Arg(6)->Arg(12)->Arg(48)->Arg(400);

} // namespace
