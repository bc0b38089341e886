#include "interchange/recognize/contour_shapes.h"

#include "interchange/scene_samples.h"
#include "interchange/svg_in/path_data.h"
#include "interchange/tolerance.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

using namespace interchange;
using namespace interchange_test;

namespace {

std::vector<Contour> contoursOf(const std::string& d) {
  PathData data = parsePath(d);
  EXPECT_FALSE(data.error) << d;
  for (Contour& contour : data.contours) tidy(contour, {});
  return std::move(data.contours);
}

std::string kindsOf(const std::vector<Shape>& shapes) {
  static constexpr char kLetters[] = "LPCAESTI"; // in the order of the variant
  std::string kinds;
  for (const Shape& shape : shapes) kinds.push_back(kLetters[shape.index()]);
  return kinds;
}

struct PathCase {
  const char* name;
  const char* d;
  const char* kinds; // Line, Polyline, Circle, Arc, Ellipse, Spline
  double slack;      // of the shapes' distance from what is drawn
};

const PathCase kPaths[] = {
    {"line", "M0 0 L10 5", "L", 1e-9},
    {"there and back", "M0 0 L10 0 Z", "L", 1e-9},
    {"straight cubic", "M0 0 C3 0 6 0 9 0", "L", 1e-9},
    {"cubic straight but for rounding", "M0 0 H20 C21 6.668 22 13.334 23 20.001 L5 9", "P", 2e-3},
    {"square", "M0 0 H10 V10 H0 Z", "P", 1e-9},
    {"closed without saying so", "M0 0 H10 V10 H0 L0 0", "P", 1e-9},
    {"open polyline", "M0 0 H10 V10", "P", 1e-9},
    {"arc", "M10 0 A10 10 0 0 1 0 10", "A", 1e-9},
    {"arc backwards", "M10 0 A10 10 0 1 0 0 10", "A", 1e-9},
    {"keyed hole, open", "M10 0.5 A10 10 0 1 1 10 -0.5", "A", 1e-2},
    {"ellipse of two arcs", "M10 0 A10 5 20 0 1 -10 0 A10 5 20 0 1 10 0 Z", "E", 1e-9},
    {"elliptic arc", "M10 0 A10 5 0 0 0 0 5", "E", 1e-9},
    {"slot", "M0 0 H20 A5 5 0 0 1 20 10 H0 A5 5 0 0 1 0 0 Z", "P", 1e-9},
    {"D-hole", "M8 6 A10 10 0 1 1 8 -6 Z", "P", 1e-6},
    {"keyhole", "M-1 3 V8 A1 1 0 0 0 1 8 V3 A3.16228 3.16228 0 1 0 -1 3 Z", "P", 1e-4},
    {"quarter fillet in one cubic", "M0 0 H10 C12.761 0 15 2.239 15 5 V20", "P", 5e-3},
    {"half turn in one cubic", "M0 0 C0 13.333 20 13.333 20 0", "A", 0.2},
    {"fillet in two cubics", "M0 0 H10 C11.326 0 12.598 0.527 13.536 1.464 C14.473 2.402 15 3.674 15 5 V20",
     "P", 5e-3},
    {"free curve", "M0 0 C5 20 6 -20 20 0 S30 4 33 -7", "S", 1e-9},
    {"closed free curve", "M0 0 C5 20 6 -20 20 0 C20 40 3 30 0 0 Z", "S", 1e-9},
    {"lines and a free curve", "M0 0 H10 V10 C5 20 6 -20 20 0 H30", "PSL", 1e-9},
    {"closed, free curve in the middle", "M0 0 H10 C20 30 -5 12 0 10 Z", "SP", 1e-9},
    {"ellipse between lines", "M0 0 H10 A10 5 0 0 1 20 5 V10", "LEL", 1e-9},
    {"starts within an arc", "M0 -10 A10 10 0 0 1 8 6 H-8 A10 10 0 0 1 0 -10 Z", "P", 1e-6}};

const char* pathNamed(std::string_view name) {
  for (const PathCase& c : kPaths) {
    if (c.name == name) return c.d;
  }
  ADD_FAILURE() << "no path named " << name;
  return "";
}

TEST(ContourShapes, KindsAndTheDrawnLine) {
  for (const PathCase& c : kPaths) {
    SCOPED_TRACE(c.name);
    const std::vector<Contour> contours = contoursOf(c.d);
    ASSERT_EQ(contours.size(), 1u);
    const std::vector<Shape> shapes = shapesOf(contours[0], {});
    EXPECT_EQ(kindsOf(shapes), c.kinds);
    std::vector<ZnGePoint2d> points;
    for (const Shape& shape : shapes) {
      for (const ZnGePoint2d& p : sample(shape)) points.push_back(p);
    }
    // Both ways: nothing is lost and nothing is added. Samples of one curve lie up to a step apart.
    const std::vector<ZnGePoint2d> drawn = sample(contours[0]);
    double step = 0;
    for (std::size_t i = 1; i < drawn.size(); ++i) step = std::max(step, drawn[i - 1].distanceTo(drawn[i]));
    for (std::size_t i = 1; i < points.size(); ++i) {
      if (points[i - 1].distanceTo(points[i]) < 1) step = std::max(step, points[i - 1].distanceTo(points[i]));
    }
    EXPECT_LE(oneSidedDistance(drawn, points), 0.6 * step + c.slack);
    EXPECT_LE(oneSidedDistance(points, drawn), 0.6 * step + c.slack);
  }
}

TEST(ContourShapes, PolylineFigures) {
  const auto slot = std::get<Polyline>(shapesOf(contoursOf(pathNamed("slot"))[0], {})[0]);
  ASSERT_EQ(slot.vertices.size(), 4u);
  EXPECT_TRUE(slot.closed);
  // y runs down here, so that both ends bulge the positive way: half a turn is a bulge of one.
  for (const int end : {1, 3}) EXPECT_NEAR(slot.vertices[static_cast<std::size_t>(end)].bulge, 1, 1e-12);
  const auto fillet =
      std::get<Polyline>(shapesOf(contoursOf(pathNamed("quarter fillet in one cubic"))[0], {})[0]);
  ASSERT_EQ(fillet.vertices.size(), 4u);
  EXPECT_NEAR(fillet.vertices[1].bulge, std::tan(M_PI / 8), 2e-3);
  // The two halves of the arc that the contour starts in are one.
  const auto joined = std::get<Polyline>(shapesOf(contoursOf(pathNamed("starts within an arc"))[0], {})[0]);
  EXPECT_LE(joined.vertices.size(), 3u);
}

TEST(ContourShapes, ArcAndEllipseFigures) {
  const auto arc = std::get<Arc>(shapesOf(contoursOf("M0 10 A10 10 0 0 0 10 0")[0], {})[0]);
  EXPECT_NEAR(arc.startAngle, 0, 1e-12);
  EXPECT_NEAR(arc.endAngle, M_PI / 2, 1e-12);
  const auto ellipse = std::get<EllipseArc>(shapesOf(contoursOf(pathNamed("ellipse of two arcs"))[0], {})[0]);
  EXPECT_TRUE(ellipse.closed);
  EXPECT_NEAR(ellipse.endParam - ellipse.startParam, 2 * M_PI, 1e-12);
  EXPECT_NEAR(ellipse.ratio, 0.5, 1e-9);
  const auto half = std::get<Arc>(shapesOf(contoursOf(pathNamed("half turn in one cubic"))[0], {})[0]);
  EXPECT_NEAR(half.radius, 10, 1e-3);
  EXPECT_NEAR(half.fit.relative, 0.0184, 1e-4);
}

TEST(ContourShapes, TidyDropsWhatHasNoLength) {
  struct Case {
    const char* d;
    std::size_t segments;
    bool closed;
    int loops;
  };
  for (const Case& c :
       {Case{"M5 5 L5 5 Z", 0, false, 0}, Case{"M0 0 L5 0 L5 0 L5 5", 2, false, 0},
        Case{"M0 0 L5 0 L5 5 L0 0.0005 Z", 3, true, 0}, Case{"M0 0 V5 C0 5.1 0.1 5 0 5 H9 Z", 3, true, 1},
        Case{"M0 0 C0 0.1 0.1 0 0 0", 1, true, 0}}) {
    PathData data = parsePath(c.d);
    ASSERT_EQ(data.contours.size(), 1u) << c.d;
    Contour& contour = data.contours[0];
    EXPECT_EQ(tidy(contour, {}), c.loops) << c.d;
    EXPECT_EQ(contour.segments.size(), c.segments) << c.d;
    if (c.segments) {
      EXPECT_EQ(contour.closed, c.closed) << c.d;
    }
  }
}

// How far from the curve an arc may lie that stands for it: a share of its radius, or what it says of itself.
double allowance(const Shape& shape) {
  if (const Arc* arc = std::get_if<Arc>(&shape)) return arc->fit.deviation;
  if (const Circle* circle = std::get_if<Circle>(&shape)) return circle->fit.deviation;
  const Polyline* polyline = std::get_if<Polyline>(&shape);
  double largest = 0;
  for (std::size_t i = 0; polyline && i < polyline->vertices.size(); ++i) {
    const Vertex& from = polyline->vertices[i];
    const Vertex& to = polyline->vertices[(i + 1) % polyline->vertices.size()];
    if (from.bulge == 0) continue;
    const double bulge = std::abs(from.bulge), sweep = 4 * std::atan(bulge);
    const double radius = from.point.distanceTo(to.point) * (1 + bulge * bulge) / (4 * bulge);
    largest = std::max(largest, radius * (sweep > tolerance::kHalfTurnSweep ? tolerance::kHalfTurnDeviation
                                                                            : tolerance::kRoundDeviation));
  }
  return largest;
}

// Whatever an affine map does to a path, its shapes stay on the mapped curve. An ellipse that is nearly round
// counts as round, so that the slack grows with the radius.
RC_GTEST_PROP(ContourShapes, FollowAffineMaps, ()) {
  const PathCase& c = kPaths[*rc::gen::inRange<std::size_t>(0, std::size(kPaths))];
  const auto number = [] { return *rc::gen::inRange(-300, 300) / 100.0; };
  const ZnGeMatrix2d map({number(), number()}, {number(), number()}, {number(), number()});
  RC_PRE(std::abs(map.det()) > 0.3);
  PathData data = parsePath(c.d);
  Contour contour = data.contours.at(0);
  contour.transform(map);
  tidy(contour, {});
  const std::vector<ZnGePoint2d> drawn = sample(contour);
  double step = 0;
  for (std::size_t i = 1; i < drawn.size(); ++i) step = std::max(step, drawn[i - 1].distanceTo(drawn[i]));
  for (const Shape& shape : shapesOf(contour, {})) {
    RC_ASSERT(oneSidedDistance(sample(shape), drawn) <= 0.6 * step + allowance(shape) + tolerance::kJoin);
  }
}

} // namespace
