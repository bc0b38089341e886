// Whatever an affine map does to a path, its shapes are the mapped curve. Which shapes those are is told in
// svg_cases.txt.
#include "interchange/recognize/contour_shapes.h"

#include "interchange/scene_samples.h"
#include "interchange/svg_in/path_data.h"
#include "interchange/tolerance.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

using namespace interchange;
using namespace interchange_test;

namespace {

// Lines, outlines, arcs, keyholes, fillets and free curves.
const char* const kPaths[] = {
    "M0 0 L10 5",
    "M0 0 L10 0 Z",
    "M0 0 C3 0 6 0 9 0",
    "M0 0 H20 C21 6.668 22 13.334 23 20.001 L5 9",
    "M0 0 H10 V10 H0 Z",
    "M0 0 H10 V10 H0 L0 0",
    "M0 0 H10 V10",
    "M10 0 A10 10 0 0 1 0 10",
    "M10 0 A10 10 0 1 0 0 10",
    "M10 0.5 A10 10 0 1 1 10 -0.5",
    "M10 0 A10 5 20 0 1 -10 0 A10 5 20 0 1 10 0 Z",
    "M10 0 A10 5 0 0 0 0 5",
    "M0 0 H20 A5 5 0 0 1 20 10 H0 A5 5 0 0 1 0 0 Z",
    "M8 6 A10 10 0 1 1 8 -6 Z",
    "M-1 3 V8 A1 1 0 0 0 1 8 V3 A3.16228 3.16228 0 1 0 -1 3 Z",
    "M0 0 H10 C12.761 0 15 2.239 15 5 V20",
    "M0 0 C0 13.333 20 13.333 20 0",
    "M0 0 H10 C11.326 0 12.598 0.527 13.536 1.464 C14.473 2.402 15 3.674 15 5 V20",
    "M0 0 C5 20 6 -20 20 0 S30 4 33 -7",
    "M0 0 C5 20 6 -20 20 0 C20 40 3 30 0 0 Z",
    "M0 0 H10 V10 C5 20 6 -20 20 0 H30",
    "M0 0 H10 C20 30 -5 12 0 10 Z",
    "M0 0 H10 A10 5 0 0 1 20 5 V10",
    "M0 -10 A10 10 0 0 1 8 6 H-8 A10 10 0 0 1 0 -10 Z",
};

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

double largestStep(const std::vector<ZnGePoint2d>& points) {
  double step = 0;
  for (std::size_t i = 1; i < points.size(); ++i) step = std::max(step, points[i - 1].distanceTo(points[i]));
  return step;
}

// Both ways: nothing is lost and nothing is added. Samples of one curve lie up to a step apart. An ellipse
// that is nearly round counts as round, so that the slack grows with the radius.
RC_GTEST_PROP(ContourShapes, FollowAffineMaps, ()) {
  const char* d = kPaths[*rc::gen::inRange<std::size_t>(0, std::size(kPaths))];
  const auto number = [] { return *rc::gen::inRange(-300, 300) / 100.0; };
  const ZnGeMatrix2d map({number(), number()}, {number(), number()}, {number(), number()});
  RC_PRE(std::abs(map.det()) > 0.3);
  PathData data = parsePath(d);
  RC_ASSERT(!data.error);
  Contour contour = data.contours.at(0);
  contour.transform(map);
  tidy(contour, {});
  const std::vector<ZnGePoint2d> drawn = sample(contour);
  double step = largestStep(drawn), slack = 0;
  std::vector<ZnGePoint2d> all;
  for (const Shape& shape : shapesOf(contour, {})) {
    const std::vector<ZnGePoint2d> points = sample(shape);
    RC_ASSERT(oneSidedDistance(points, drawn) <= 0.6 * step + allowance(shape) + tolerance::kJoin);
    slack = std::max({slack, 0.6 * largestStep(points), allowance(shape)});
    all.insert(all.end(), points.begin(), points.end());
  }
  RC_ASSERT(oneSidedDistance(drawn, all) <= slack + 0.6 * step + tolerance::kJoin);
}

} // namespace
