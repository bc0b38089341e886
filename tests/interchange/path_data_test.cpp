#include "interchange/svg_in/path_data.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

using namespace interchange;

namespace {

// Every point of the arc is on the ellipse, ends included, and the flags pick one of the four.
RC_GTEST_PROP(PathData, ArcsKeepTheirPromises, ()) {
  const auto number = [](int low, int high) { return *rc::gen::inRange(low, high) / 10.0; };
  const ZnGePoint2d start{number(-100, 100), number(-100, 100)}, end{number(-100, 100), number(-100, 100)};
  const double rx = number(5, 300), ry = number(5, 300), tilt = number(-3600, 3600);
  const bool large = *rc::gen::arbitrary<bool>(), positive = *rc::gen::arbitrary<bool>();
  RC_PRE(start.distanceTo(end) > 0.05);
  const auto segment = arcBetween(start, end, rx, ry, tilt, large, positive);
  RC_ASSERT(segment.has_value());
  const EllipticArc& arc = segment->arc;
  RC_ASSERT(arc.at(arc.start).distanceTo(start) < 1e-6);
  RC_ASSERT(arc.at(arc.start + arc.sweep).distanceTo(end) < 1e-6);
  RC_ASSERT((arc.sweep > 0) == positive);
  const bool grown = arc.u.length() > rx * (1 + 1e-9);
  RC_ASSERT(grown || (std::abs(arc.sweep) > M_PI - 1e-6) == large || std::abs(arc.sweep) < M_PI + 1e-6);
  RC_ASSERT(std::abs(arc.u.length() / arc.v.length() - rx / ry) < 1e-9 * rx / ry);
  const double angle = tilt * M_PI / 180;
  RC_ASSERT(std::abs(arc.u.crossProduct({std::cos(angle), std::sin(angle)})) < 1e-6 * arc.u.length());
}

} // namespace
