// Arc lengths and parts of contours against formulas and against fine chords.
#include "interchange/draw/contour_measure.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <numbers>

using namespace interchange;

namespace {

constexpr double kPi = std::numbers::pi;

Segment arc(ZnGeVector2d u, ZnGeVector2d v, double start, double sweep) {
  return Segment::ellipticArc(EllipticArc{{1, 2}, u, v, start, sweep});
}

double chordLength(const Contour& contour) {
  constexpr int kSteps = 20000;
  double sum = 0;
  for (const Segment& segment : contour.segments)
    for (int i = 0; i < kSteps; ++i)
      sum += segment.at(static_cast<double>(i) / kSteps)
                 .distanceTo(segment.at(static_cast<double>(i + 1) / kSteps));
  return sum;
}

struct Shaped {
  const char* name;
  Contour contour;
  double length; // 0: compare with chords
};

const Shaped kContours[] = {
    {"line", {{Segment::line({0, 0}, {3, 4})}, false}, 5},
    {"circle", {{arc({5, 0}, {0, 5}, 0.3, 2 * kPi)}, true}, 10 * kPi},
    {"clockwise quarter", {{arc({0, 2}, {-2, 0}, 1, -kPi / 2)}, false}, kPi},
    {"ellipse", {{arc({6, 1}, {-0.3, 1.8}, 0, 2 * kPi)}, true}, 0},
    {"cubic", {{Segment::cubic({0, 0}, {9, 1}, {-4, 6}, {5, 5})}, false}, 0},
    {"chain",
     {{Segment::line({6, 2}, {6, 2}), Segment::line({6, 2}, {3, 2}), arc({2, 0}, {0, 2}, 0, kPi)}, false},
     3 + 2 * kPi},
};

} // namespace

TEST(ContourMeasure, lengths) {
  for (const Shaped& shaped : kContours) {
    SCOPED_TRACE(shaped.name);
    const double expected = shaped.length > 0 ? shaped.length : chordLength(shaped.contour);
    EXPECT_NEAR(ContourMeasure(shaped.contour).length(), expected, shaped.length > 0 ? 1e-10 : 1e-6);
  }
}

RC_GTEST_PROP(ContourMeasure, parts_are_as_long_as_asked_and_lie_on_the_contour, ()) {
  const Shaped& shaped = kContours[*rc::gen::inRange<std::size_t>(0, std::size(kContours))];
  const ContourMeasure measure(shaped.contour);
  const double whole = measure.length();
  const double first = *rc::gen::inRange(0, 1000) / 1000.0, span = *rc::gen::inRange(1, 1000) / 1000.0;
  const double from = first * whole;
  const double to = shaped.contour.closed ? from + span * whole : from + span * (whole - from);
  const Contour part = measure.part(from, to);
  RC_ASSERT(!part.closed);
  RC_ASSERT(std::abs(ContourMeasure(part).length() - (to - from)) < 1e-6);
  RC_ASSERT(part.segments.front().start.distanceTo(measure.pointAt(from)) < 1e-6);
  RC_ASSERT(part.segments.back().end.distanceTo(measure.pointAt(to > whole ? to - whole : to)) < 1e-6);
}

TEST(ContourMeasure, cubics_keep_to_arcs) {
  const Segment ellipse = arc({6, 1}, {-0.3, 1.8}, 0.4, 1.9 * kPi);
  const std::vector<Segment> cubics = asCubics(ellipse);
  ASSERT_GT(cubics.size(), 4u);
  EXPECT_EQ(cubics.front().start.distanceTo(ellipse.start), 0);
  EXPECT_EQ(cubics.back().end.distanceTo(ellipse.end), 0);
  const double area = ellipse.arc.u.crossProduct(ellipse.arc.v);
  for (const Segment& cubic : cubics) {
    for (int i = 0; i <= 10; ++i) {
      const ZnGeVector2d offset = cubic.at(i / 10.0) - ellipse.arc.center;
      const double cosine = offset.crossProduct(ellipse.arc.v) / area,
                   sine = ellipse.arc.u.crossProduct(offset) / area;
      EXPECT_NEAR(std::hypot(cosine, sine), 1, 4e-6);
    }
  }
}
