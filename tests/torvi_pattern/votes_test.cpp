// What holds of the circle and of the line that many holes are found to lie on: laws over sets of holes as
// they come out of files, rounded, with strays among them.
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>

#include "torvi/pattern/analysis.h"
#include "torvi/pattern/votes.h"

namespace {

using Centers = ZnArray<ZnGePoint2d>;
constexpr double kTolerance = kPatternTolerance, kTurn = 2.0 * ZnGe::kPi;
const ZnGeTol kTol(kTolerance, kTolerance);

// Centers of known groups, told apart by numbers, in a random order.
class HoleSet {
public:
  explicit HoleSet(unsigned seed)
      : random(seed) {}

  double between(double low, double high) { return std::uniform_real_distribution<>(low, high)(random); }
  int pick(int low, int high) { return std::uniform_int_distribution<>(low, high)(random); }
  void add(double x, double y, int group) {
    holes_.emplace_back(ZnGePoint2d(std::round(x / unit) * unit, std::round(y / unit) * unit), group);
  }
  // Whether rounding leaves all of them within the tolerance.
  bool addRing(double x, double y, double radius, int count, int group) {
    const double turn = between(0.0, kTurn);
    bool isWithin = true;
    for (int i = 0; i < count; ++i) {
      const double angle = turn + i * kTurn / count;
      add(x + radius * std::cos(angle), y + radius * std::sin(angle), group);
      isWithin &= std::fabs(holes_.back().first.distanceTo({x, y}) - radius) <= kTolerance;
    }
    return isWithin;
  }
  void shuffle() { std::shuffle(holes_.begin(), holes_.end(), random); }
  Centers centers() const {
    Centers all;
    for (const auto& [center, group] : holes_) all.append(center);
    return all;
  }
  ZnPatternAnalysis analysed(CenterMarkPatternType type) const {
    ZnPatternQuestion question;
    question.patternType = type;
    for (const auto& [center, group] : holes_)
      question.circles.append(ZnGeCircArc3d({center.x, center.y, 0.0}, ZnGeVector3d::kZAxis, 0.4));
    return analysePattern(question);
  }
  int membersOf(int group, const ZnPatternAnalysis& found) const {
    int members = 0;
    for (const int index : found.memberChain) members += holes_[static_cast<size_t>(index)].second == group;
    return members;
  }

  std::mt19937 random;
  double unit = 1e-12;

private:
  std::vector<std::pair<ZnGePoint2d, int>> holes_;
};

TEST(Votes, ARingKeepsItsHolesHoweverTheyAreRounded) {
  int asked = 0;
  for (unsigned seed = 0; seed < 3000; ++seed) {
    HoleSet holes(seed);
    const int count = holes.pick(3, 16), strays = count > 3 ? holes.pick(0, 3) : 0;
    holes.unit = std::pow(10.0, -holes.pick(3, 6));
    if (!holes.addRing(holes.between(-99, 99), holes.between(-99, 99), holes.between(5, 80), count, 1))
      continue;
    for (int i = 0; i < strays; ++i) holes.add(holes.between(-400, -300), holes.between(-300, 300), 2);
    // Exact, it gets as many ballots as it has triples in one place.
    for (int corner = 0; corner < 4 && count > 4; ++corner)
      holes.add(300 + corner / 2 * 5, corner % 2 * 5, 3);
    holes.shuffle();
    ++asked;
    EXPECT_EQ(holes.membersOf(1, holes.analysed(kCenterPatternPolar)), count) << "seed " << seed;
  }
  EXPECT_GT(asked, 1000);
}

// Every triple and pair of a large set is too many to look at.
TEST(Votes, AmongManyHolesARingIsFound) {
  for (unsigned seed = 0; seed < 6; ++seed) {
    HoleSet scattered(seed), together(seed);
    const int count = scattered.pick(200, 600);
    for (HoleSet* holes : {&scattered, &together}) {
      holes->unit = 1e-4;
      for (int i = 0; i < count; ++i) holes->add(holes->between(-400, 400), holes->between(-400, 400), 2);
    }
    scattered.addRing(7, -3, 300, count / 7 + 1, 1);
    scattered.shuffle();
    EXPECT_EQ(scattered.membersOf(1, scattered.analysed(kCenterPatternPolar)), count / 7 + 1) << seed;
    together.addRing(7, -3, 30, 8, 1);
    EXPECT_EQ(together.membersOf(1, together.analysed(kCenterPatternPolar)), 8) << seed;
  }
}

// Of triples that the rule for the user's own centers lets vote, those whose circles have one center.
double votesAround(const Centers& centers, int fixed, const ZnPitchCircle& circle) {
  const int voters = fixed < 3 ? centers.length() : std::min(fixed, centers.length());
  double votes = 0.0;
  for (int i = 0; i < voters; ++i) {
    const double distance = centers[i].distanceTo(circle.center);
    int alike = 0;
    for (int j = 0; j < i; ++j)
      alike += std::fabs(centers[j].distanceTo(circle.center) - distance) <= kTolerance;
    const bool isOn = std::fabs(distance - circle.radius) <= kTolerance;
    votes += fixed == 1 || fixed == 2 ? isOn : alike * (alike - 1) / 2;
  }
  return votes;
}

TEST(Votes, NoOtherCircleHasMore) {
  for (unsigned seed = 0; seed < 300 && !testing::Test::HasFailure(); ++seed) {
    HoleSet set(seed);
    while (set.centers().length() < 7) {
      const double x = set.pick(0, 2) * 40.0, y = set.pick(0, 2) * 30.0;
      if (set.pick(0, 1)) set.addRing(x, y, set.pick(1, 3) * 10.0, set.pick(3, 6), 1);
      for (int i = set.pick(0, 3); i > 0; --i) set.add(set.between(-99, 99), set.between(-99, 99), 2);
    }
    set.shuffle();
    const Centers centers = set.centers();
    for (const int fixed : {0, 1, 2, 3, 5}) {
      ZnPitchCircle found;
      const bool isFound = votePitchCircle(centers, fixed, kTol, {}, found);
      const double votes = isFound ? votesAround(centers, fixed, found) : -1.0;
      for (int i = 2; i < (fixed < 3 ? centers.length() : fixed); ++i)
        for (int j = fixed == 2 ? 1 : i - 1; j >= (fixed == 2 ? 1 : 0); --j)
          for (int k = fixed == 1 || fixed == 2 ? 0 : j - 1; k >= 0 && k < j; --k) {
            const ZnGeCircArc2d arc(centers[i], centers[j], centers[k]);
            const double span =
                std::max({centers[i].distanceTo(centers[j]), centers[j].distanceTo(centers[k]),
                          centers[k].distanceTo(centers[i])});
            if (!(span > 0.3 * arc.radius())) continue;
            EXPECT_LE(votesAround(centers, fixed, {arc.center(), arc.radius()}), votes)
                << seed << " " << fixed;
          }
    }
  }
}

TEST(Votes, AHoleThatIsALittleOffLeavesItsRow) {
  const std::pair<double, double> places[] = {{70, 2e-4}, {70, 3e-4}, {70, 5e-4},   {70, 7e-4},
                                              {70, 8e-4}, {70, 0.1},  {300, 2.5e-3}};
  for (const auto& [along, off] : places)
    for (const int rows : {1, 3}) {
      HoleSet holes(1);
      for (int i = 0; i < 7 * rows; ++i) holes.add(i % 7 * 10.0, i / 7 * 5.0, i / 7);
      holes.add(along, off, 9);
      const ZnPatternAnalysis found = holes.analysed(kCenterPatternLinear);
      EXPECT_EQ(found.memberChain.length(), 7) << off << " at " << along;
      EXPECT_EQ(holes.membersOf(0, found), 7) << off << " at " << along;
    }
}

// Holes off their rows by less than the tolerance and by more.
TEST(Votes, NoRowIsShorterThanTheLineThroughTwoOfItsMembers) {
  for (unsigned seed = 0; seed < 2000; ++seed) {
    HoleSet set(seed);
    const int count = set.pick(3, 10), rows = set.pick(1, 3);
    const double turn = set.between(0, kTurn), off = std::pow(10.0, set.between(-7, -3)),
                 step = set.between(3, 20);
    const auto add = [&](double along, double across) {
      set.add(along * std::cos(turn) - across * std::sin(turn),
              along * std::sin(turn) + across * std::cos(turn), 1);
    };
    for (int i = 0; i < count * rows; ++i)
      add(i % count * step + set.between(-off, off), i / count * 7.0 + set.between(-off, off));
    for (int i = set.pick(0, 3); i > 0; --i)
      add(step * (count + 4 * i + set.pick(0, 3)),
          set.pick(0, rows - 1) * 7.0 + set.between(-1e-3, 1e-3) * set.pick(0, 8));
    set.shuffle();
    const ZnArray<int> chain = set.analysed(kCenterPatternLinear).memberChain;
    const Centers centers = set.centers();
    for (const int i : chain)
      for (const int j : chain) {
        const ZnGeVector2d way = centers[j] - centers[i];
        const auto isOn = [&](const ZnGePoint2d& center) {
          return std::fabs(way.crossProduct(center - centers[i])) <= 0.9999 * kTolerance * way.length();
        };
        if (i < j)
          EXPECT_LE(std::count_if(centers.begin(), centers.end(), isOn), chain.length()) << "seed " << seed;
      }
  }
}

} // namespace
