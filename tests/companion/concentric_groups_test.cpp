#include "companion/concentric_groups.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>

namespace {

using companion::ConcentricGroups;

struct PairCase {
  const char* name;
  ZnGePoint3d center; // of the second circle; the first has radius 10 at the origin
  double radius;
  ZnGeVector3d normal;
  bool same;
};

TEST(ConcentricGroups, PairsOfCircles) {
  const ZnGeVector3d up = ZnGeVector3d::kZAxis;
  const PairCase cases[] = {
      {"equal", {0, 0, 0}, 10, up, true},
      {"inner", {0, 0, 0}, 1, up, true},
      {"from below", {0, 0, 0}, 5, -up, true},
      {"rounded coordinates", {0.0005, -0.0005, 0}, 5, up, true},
      {"at the share of the larger", {0.0199, 0, 0}, 9, up, true},
      {"beyond it", {0.0201, 0, 0}, 9, up, false},
      {"beyond the share of the smaller", {0.0011, 0, 0}, 0.1, up, false},
      {"across a cell border", {-0.01, -0.01, 0}, 9, up, true},
      {"above", {0, 0, 1}, 9, up, false},
      {"tilted", {0, 0, 0}, 9, {0.01, 0, 1}, false},
      {"far away", {1e12, 0, 0}, 9, up, false},
      {"no extent", {0, 0, 0}, 0, up, true},
  };
  for (const PairCase& row : cases) {
    SCOPED_TRACE(row.name);
    // The same pair somewhere else in the grid.
    for (const ZnGeVector3d& shift : {ZnGeVector3d(), ZnGeVector3d(1234.5678, -77.7, 3.1)}) {
      ConcentricGroups groups;
      EXPECT_EQ(groups.groupOf(ZnGeCircArc3d(ZnGePoint3d() + shift, up, 10)), 0);
      EXPECT_EQ(groups.groupOf(ZnGeCircArc3d(row.center + shift, row.normal, row.radius)), row.same ? 0 : 1);
      EXPECT_EQ(groups.count(), row.same ? 1 : 2);
    }
  }
}

// The grid gives what comparing every circle with every group gives.
TEST(ConcentricGroups, AgreeWithThePlainSearch) {
  EXPECT_TRUE(rc::check([] {
    std::vector<ZnGeCircArc3d> circles;
    const int count = *rc::gen::inRange(1, 60);
    for (int i = 0; i < count; ++i) {
      const int level = *rc::gen::inRange(-6, 7);
      const auto coordinate = [] { return *rc::gen::inRange(-3, 4) * 0.004; };
      circles.emplace_back(ZnGePoint3d(coordinate(), coordinate(), 0.0), ZnGeVector3d::kZAxis,
                           std::ldexp(1.0, level));
    }
    std::stable_sort(circles.begin(), circles.end(),
                     [](const auto& a, const auto& b) { return a.radius() > b.radius(); });

    ConcentricGroups groups;
    std::vector<const ZnGeCircArc3d*> first; // of each group
    for (const ZnGeCircArc3d& circle : circles) {
      const int group = groups.groupOf(circle);
      const auto joins = [&circle](const ZnGeCircArc3d* other) {
        return other->center().distanceTo(circle.center()) <=
               std::min(other->radius() * 0.002, circle.radius() * 0.01);
      };
      if (group == static_cast<int>(first.size())) {
        RC_ASSERT(std::none_of(first.begin(), first.end(), joins));
        first.push_back(&circle);
      } else {
        RC_ASSERT(joins(first.at(static_cast<size_t>(group))));
      }
    }
    RC_ASSERT(groups.count() == static_cast<int>(first.size()));
  }));
}

} // namespace
