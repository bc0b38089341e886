#include "interchange/svg_in/path_data.h"

#include "interchange/scene_samples.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>

using namespace interchange;
using namespace interchange_test;

namespace {

// Two spellings of the same curve.
TEST(PathData, SpellingsAreEquivalent) {
  struct Case {
    const char* spelling;
    const char* plain;
  };
  const Case cases[] = {
      {"m1 2 3 4 5 6", "M1 2 L4 6 L9 12"},
      {"M1 2 3 4h5v-6H0V1z", "M1 2 L3 4 L8 4 L8 -2 L0 -2 L0 1 Z"},
      {"M1-2.5.5-.5", "M 1 -2.5 L 0.5 -0.5"},
      {"M1,2\n\tL+3e0,4E+0", "M1 2 L3 4"},
      {"M0 0c1 2 3 4 5 6s7 8 9 10", "M0 0 C1 2 3 4 5 6 C7 8 12 14 14 16"},
      {"M0 0L5 5S7 8 9 10", "M0 0 L5 5 C5 5 7 8 9 10"},
      {"M0 0C1 2 3 4 5 6zS7 8 9 10", "M0 0 C1 2 3 4 5 6 Z M0 0 C0 0 7 8 9 10"},
      {"M0 0q1 2 3 4t5 6 7 8", "M0 0 Q1 2 3 4 Q5 6 8 10 Q11 14 15 18"},
      {"M0 0L4 4T8 0", "M0 0 L4 4 Q4 4 8 0"},
      {"M0 0Q3 6 6 0", "M0 0 C2 4 4 4 6 0"},
      {"M0 0a1 1 0 01.5.5", "M0 0 A1 1 0 0 1 0.5 0.5"},
      {"M0 0a1 1 0 1110 5", "M0 0 A1 1 0 1 1 10 5"},
      {"M0 0A12-12 0 1 0 3 4", "M0 0 A12 12 0 1 0 3 4"},
      {"M0 0A0 5 0 1 0 3 4", "M0 0 L3 4"},
      {"M0 0A1 1 0 0 1 6 8", "M0 0 A5 5 0 0 1 6 8"},
      {"M1 1zl2 2", "M1 1 L3 3"},
      {"M1 1l1 0zm3 3l1 0", "M1 1 L2 1 Z M4 4 L5 4"},
      {"M1e-400 0L1 1", "M0 0 L1 1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.spelling);
    const PathData one = parsePath(c.spelling);
    const PathData other = parsePath(c.plain);
    EXPECT_FALSE(one.error);
    EXPECT_FALSE(other.error);
    ASSERT_EQ(one.contours.size(), other.contours.size());
    ASSERT_FALSE(one.contours.empty());
    for (std::size_t i = 0; i < one.contours.size(); ++i) {
      EXPECT_EQ(one.contours[i].closed, other.contours[i].closed);
      const std::vector<Point2> p = sample(one.contours[i]);
      const std::vector<Point2> q = sample(other.contours[i]);
      ASSERT_EQ(p.size(), q.size());
      for (std::size_t k = 0; k < p.size(); ++k) EXPECT_LT(distance(p[k], q[k]), 1e-9);
    }
  }
}

TEST(PathData, DrawsUpToTheError) {
  struct Case {
    const char* d;
    std::size_t segments; // of the first contour
    std::size_t position;
    const char* expected;
  };
  const Case cases[] = {{"L1 2", 0, 0, "first command"},
                        {"M1", 0, 2, "a number"},
                        {"M0 0 L1 1 L2", 1, 12, "a number"},
                        {"M0 0 L1 1 2 2 3", 2, 15, "a number"},
                        {"M0 0 L1 1 x", 1, 10, "command letter"},
                        {"M0 0 L1 1,", 1, 10, "after the comma"},
                        {"M0 0 H5 A1 1 0 2 1 5 5", 1, 15, "arc flag"},
                        {"M0 0 H5 L nan 3", 1, 10, "a number"},
                        {"M0 0 H5 L 1e999 3", 1, 10, "a number"},
                        {"M0 0 H5 L inf inf", 1, 10, "a number"},
                        {"M0 0 H5 . 3", 1, 8, "a number"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.d);
    const PathData data = parsePath(c.d);
    ASSERT_TRUE(data.error);
    EXPECT_EQ(data.error->position, c.position);
    EXPECT_NE(data.error->expected.find(c.expected), std::string::npos) << data.error->expected;
    EXPECT_EQ(data.contours.empty() ? 0 : data.contours[0].segments.size(), c.segments);
  }
}

// Every point of the arc is on the ellipse, ends included, and the flags pick one of the four.
RC_GTEST_PROP(PathData, ArcsKeepTheirPromises, ()) {
  const auto number = [](int low, int high) { return *rc::gen::inRange(low, high) / 10.0; };
  const Point2 start{number(-100, 100), number(-100, 100)}, end{number(-100, 100), number(-100, 100)};
  const double rx = number(5, 300), ry = number(5, 300), tilt = number(-3600, 3600);
  const bool large = *rc::gen::arbitrary<bool>(), positive = *rc::gen::arbitrary<bool>();
  RC_PRE(distance(start, end) > 0.05);
  const auto segment = arcBetween(start, end, rx, ry, tilt, large, positive);
  RC_ASSERT(segment.has_value());
  const EllipticArc& arc = segment->arc;
  RC_ASSERT(distance(arc.at(arc.start), start) < 1e-6);
  RC_ASSERT(distance(arc.at(arc.start + arc.sweep), end) < 1e-6);
  RC_ASSERT((arc.sweep > 0) == positive);
  const bool grown = length(arc.u) > rx * (1 + 1e-9);
  RC_ASSERT(grown || (std::abs(arc.sweep) > M_PI - 1e-6) == large || std::abs(arc.sweep) < M_PI + 1e-6);
  RC_ASSERT(std::abs(length(arc.u) / length(arc.v) - rx / ry) < 1e-9 * rx / ry);
  const double angle = tilt * M_PI / 180;
  RC_ASSERT(std::abs(cross(arc.u, {std::cos(angle), std::sin(angle)})) < 1e-6 * length(arc.u));
}

} // namespace
