// What the vote for a pitch center costs, against the plain count of every arc, for growing numbers of holes
// of which half lie on one circle: just too few for the vote to stop early.
#include <benchmark/benchmark.h>

#include <random>

#include "tests/support/plain_votes.h"
#include "torvi/pattern/votes.h"

namespace {

const ZnGeTol kTol(1e-4, 1e-4);

ZnArray<ZnGePoint2d> halfOnACircle(int count) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> anywhere(-400.0, 400.0), angle(0.0, 6.28);
  ZnArray<ZnGePoint2d> centers;
  for (int i = 0; i < count; ++i) {
    const double at = angle(random);
    centers.append(i % 2 ? ZnGePoint2d(anywhere(random), anywhere(random))
                         : ZnGePoint2d(20.0 + 300.0 * std::cos(at), 10.0 + 300.0 * std::sin(at)));
  }
  return centers;
}

template<auto kVote> void voteOnHalfARing(benchmark::State& state) {
  const ZnArray<ZnGePoint2d> centers = halfOnACircle(static_cast<int>(state.range(0)));
  ZnGePoint2d center;
  for (auto _ : state) kVote(centers, 0, kTol, center);
  if (center.distanceTo(ZnGePoint2d(20.0, 10.0)) > kTol.equalPoint())
    state.SkipWithError("the ring was not found");
}

void pitchCenterVote(benchmark::State& state) { voteOnHalfARing<votePitchCenter>(state); }
void plainPitchCenterVote(benchmark::State& state) { voteOnHalfARing<plain::pitchCenter>(state); }

BENCHMARK(pitchCenterVote)->Arg(60)->Arg(120)->Arg(240)->Unit(benchmark::kMicrosecond);
BENCHMARK(plainPitchCenterVote)->Arg(60)->Arg(120)->Arg(240)->Unit(benchmark::kMicrosecond);

// A flange: every hole on the circle, the vote over as soon as it can be.
void pitchCenterVoteOnARing(benchmark::State& state) {
  ZnArray<ZnGePoint2d> centers;
  const int count = static_cast<int>(state.range(0));
  for (int i = 0; i < count; ++i) {
    const double at = i * 2.0 * std::numbers::pi / count;
    centers.append(ZnGePoint2d(80.0 * std::cos(at), 80.0 * std::sin(at)));
  }
  ZnGePoint2d center(1.0, 1.0);
  for (auto _ : state) votePitchCenter(centers, 0, kTol, center);
  if (center.distanceTo(ZnGePoint2d()) > kTol.equalPoint()) state.SkipWithError("the ring was not found");
}
BENCHMARK(pitchCenterVoteOnARing)->Arg(6)->Arg(12)->Arg(48);

} // namespace
