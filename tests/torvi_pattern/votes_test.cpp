#include "torvi/pattern/votes.h"

#include <gtest/gtest.h>

#include <random>

#include "support/plain_votes.h"

namespace {

using plain::Centers;

// Hole sets as they come and as nobody would draw them: rings, short arcs about the least span that counts,
// rows, strays, near doubles, tiny and huge, far away, drawn to the last bit or a little off.
class HoleSet {
public:
  explicit HoleSet(unsigned seed)
      : random_(seed) {
    // The smallest are a few steps of the votes wide.
    size_ = std::pow(10.0, uniform(-2.5, random_() % 4 == 0 ? -1.8 : 4.0));
    origin_ = ZnGeVector2d(uniform(-1.0, 1.0), uniform(-1.0, 1.0)) * oneOf({0.0, 1.0, 1e3, 1e6});
    blur_ = oneOf({0.0, 0.0, 1e-12, 1e-6, 3e-5, 1e-4});
    const int wanted = random_() % 4 == 0 ? 3 : 1 + static_cast<int>(random_() % 32);
    while (centers.length() < wanted) addGroup();
    std::shuffle(centers.begin(), centers.end(), random_);
  }
  Centers centers;

private:
  double uniform(double from, double to) { return std::uniform_real_distribution<>(from, to)(random_); }
  double oneOf(std::initializer_list<double> values) { return values.begin()[random_() % values.size()]; }
  void add(const ZnGeVector2d& at) {
    const ZnGeVector2d off(uniform(-blur_, blur_), uniform(-blur_, blur_));
    centers.append(ZnGePoint2d() + origin_ + at * size_ + off);
  }
  void addGroup() {
    const int count = 2 + static_cast<int>(random_() % 8);
    const ZnGeVector2d aside(oneOf({0.0, 0.0, 3.0}), 0.0), out(oneOf({1.0, 0.3}), 0.0);
    const double turn = oneOf({0.0, 0.1, uniform(0.0, 7.0)}), off = oneOf({0.0, 1e-11, 1e-5});
    const double span = oneOf({14.9, 14.9999, 15.0, 15.0001, 15.1, 40.0, 200.0}) * std::numbers::pi / 180.0;
    switch (random_() % 5) {
    case 0: // a ring
      for (int i = 0; i < count; ++i)
        add(aside + ZnGeVector2d(out).rotateBy(turn + i * 2.0 * std::numbers::pi / count));
      break;
    case 1: // a short arc
      for (const double at : {0.0, 0.4, 1.0}) add(ZnGeVector2d(out).rotateBy(turn + at * span));
      break;
    case 2: // a row, straight or all but straight
      for (int i = 0; i < count; ++i) add(ZnGeVector2d(i * 0.2, i % 2 * off).rotateBy(turn));
      break;
    case 3: // strays
      for (int i = 0; i < count; ++i) add({uniform(-1.0, 1.0), uniform(-1.0, 1.0)});
      break;
    default: // a double
      add({});
      centers.append(centers.first() + ZnGeVector2d(oneOf({0.0, 5e-5, 1e-4, 1.000001e-4, 2e-4}), 0.0));
    }
  }

  std::mt19937 random_;
  double size_ = 1.0, blur_ = 0.0;
  ZnGeVector2d origin_;
};

// The host's tolerance may be another one, even wider than that of the votes.
TEST(Votes, ComeOutAsThePlainCountDoes) {
  constexpr unsigned kSets = 1500;
  const ZnGeTol tol(1e-4, 1e-4), usual = ZnGeContext::gTol;
  const ZnGeTol hostTolerances[] = {usual, ZnGeTol(1e-6, 1e-6), ZnGeTol(1e-3, 1e-4)};
  unsigned found = 0, lost = 0;
  for (unsigned seed = 0; seed < kSets && !HasFailure(); ++seed) {
    ZnGeContext::gTol = hostTolerances[seed % 3];
    const Centers centers = HoleSet(seed).centers;
    for (const int fixed : {0, 1, 2, 3, 5, 40}) {
      SCOPED_TRACE(testing::Message() << "set " << seed << " of " << centers.length() << ", fixed " << fixed);
      ZnGePoint2d fast, slow;
      const bool voted = votePitchCenter(centers, fixed, tol, fast);
      EXPECT_EQ(voted, plain::pitchCenter(centers, fixed, tol, slow));
      EXPECT_TRUE(fast.x == slow.x && fast.y == slow.y);
      ++(voted ? found : lost);
    }
  }
  ZnGeContext::gTol = usual;
  EXPECT_GT(found, kSets);
  EXPECT_GT(lost, kSets / 4);
}

} // namespace
