// Slots and strips among loose edges: what is one, what only looks like one, and that place, order and sense
// of the edges make no difference.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>

#include "companion/slots.h"
#include "companion/strips.h"
#include "support/point_text.h"
#include "support/told_cases.h"

namespace {

using namespace companion;
using P3 = ZnGePoint3d;

struct Edges {
  std::vector<StraightEdge> straight;
  std::vector<RoundEdge> round;

  void line(const P3& from, const P3& to) { straight.push_back({{}, ZnGeLineSeg3d(from, to)}); }
  // Counterclockwise from one angle to the other, in degrees.
  void arc(const P3& center, double radius, double from, double to) {
    const double start = from / 180.0 * ZnGe::kPi, end = to / 180.0 * ZnGe::kPi;
    round.push_back({{}, ZnGeCircArc3d(center, {0, 0, 1}, {1, 0, 0}, radius, start, end)});
  }
  // Of each: pairs of ends; center on the x axis, radius and both angles.
  Edges(const std::string& lines, const std::string& arcs) {
    const std::vector<P3> ends = pointsOf(lines);
    for (size_t i = 0; i < ends.size(); i += 2) line(ends[i], ends[i + 1]);
    std::istringstream numbers(arcs);
    for (double x, radius, start, end; numbers >> x >> radius >> start >> end;)
      arc({x, 0, 0}, radius, start, end);
  }
  Edges() = default;
  // Along x from the center of one end to that of the other; the ends whole or in two halves.
  void slot(const P3& at, double length, double radius, bool halves) {
    for (const double side : {-radius, radius})
      line(at + ZnGeVector3d(0, side, 0), at + ZnGeVector3d(length, side, 0));
    for (const double start : {-90.0, 90.0})
      for (const double from : {start, start + 90.0})
        if (halves || from == start)
          arc(at + ZnGeVector3d(start < 0.0 ? length : 0.0, 0, 0), radius, from,
              from + (halves ? 90.0 : 180.0));
  }
  void transform(const ZnGeMatrix3d& by) {
    for (StraightEdge& edge : straight) edge.line.transformBy(by);
    for (RoundEdge& edge : round) edge.curve.transformBy(by);
  }
};

const ZnGeMatrix3d kPlaces[] = {ZnGeMatrix3d(), ZnGeMatrix3d::translation({5e5, -3e6, 7}),
                                ZnGeMatrix3d::rotation(0.7, {0, 0, 1}, {9, 9, 0}),
                                ZnGeMatrix3d::mirroring(ZnGePlane({1, 0, 0}, {1, 0.4, 0})),
                                ZnGeMatrix3d::scaling(0.01)};

std::string numbersOf(const std::vector<double>& values) {
  std::string text;
  for (const double value : values) text += (text.empty() ? "" : " ") + std::to_string(std::lround(value));
  return text;
}

std::string slotsAmong(const std::string& lines, const std::string& arcs, const ZnGeMatrix3d& place) {
  Edges edges(lines, arcs);
  edges.transform(place);
  std::vector<double> lengths;
  for (const Slot& slot : findSlots(edges.straight, edges.round)) {
    lengths.push_back(slot.length / place.scale());
    EXPECT_NEAR(lengths.back(), std::round(lengths.back()), 0.05);
  }
  return numbersOf(lengths);
}

std::string stripsAmong(const std::string& closedLines, const std::string& circle,
                        const ZnGeMatrix3d& place) {
  Edges edges;
  const std::vector<P3> corners = pointsOf(closedLines);
  for (size_t i = 0; i < corners.size(); ++i) edges.line(corners[i], corners[i % 4 == 3 ? i - 3 : i + 1]);
  if (circle != "none") edges.arc({std::stod(circle), 1, 0}, 0.3, 0, 360);
  edges.transform(place);
  std::vector<double> widths;
  for (const Strip& strip : findStrips(edges.straight, edges.round)) {
    widths.push_back(strip.width / place.scale());
    EXPECT_NEAR(widths.back(), std::round(widths.back()), 1e-6);
  }
  P3 inside(5, 1, 0), beside(-5, 1, 0); // where a text may stand
  inside.transformBy(place), beside.transformBy(place);
  EXPECT_EQ(findStrips(edges.straight, edges.round, {beside}).size(), widths.size());
  if (corners.size() == 4 && corners[1].x == 10.0)
    EXPECT_TRUE(findStrips(edges.straight, edges.round, {inside}).empty());
  return numbersOf(widths);
}

// Wherever they stand.
TEST(LineFinds, WhatIsOneAndWhatIsNot) {
  runToldCases("companion/line_finds.txt", 26,
               [](const std::string& section, const std::string& input, const Lines&) {
                 const std::string first = input.substr(0, input.find(" |")),
                                   second = input.substr(input.find('|') + 2);
                 const auto found = section == "slots" ? slotsAmong : stripsAmong;
                 const std::string told = found(first, second, ZnGeMatrix3d());
                 for (const ZnGeMatrix3d& place : kPlaces)
                   EXPECT_EQ(found(first, second, place), told) << input;
                 return told.empty() ? Lines() : Lines{told};
               });
}

RC_GTEST_PROP(SlotProperties, EverySlotIsFoundAmongOtherEdges, ()) {
  const auto number = [](int from, int to) { return *rc::gen::inRange(from * 100, to * 100) / 100.0; };
  Edges edges;
  const int count = *rc::gen::inRange(1, 12);
  double total = 0.0;
  for (int i = 0; i < count; ++i) {
    const double length = number(1, 60);
    edges.slot({0, 40.0 * i, 0}, length, number(1, 15), *rc::gen::arbitrary<bool>());
    edges.line({-30, 40.0 * i, 0}, {number(-29, 90), 40.0 * i + 17, 0});
    total += length;
  }
  // The order and the sense of edges are a matter of chance.
  for (size_t i = edges.straight.size() - 1; i > 0; --i) {
    std::swap(edges.straight[i], edges.straight[*rc::gen::inRange<size_t>(0, i + 1)]);
    if (*rc::gen::arbitrary<bool>()) edges.straight[i].line.reverseParam();
  }
  const ZnGeMatrix3d turn = ZnGeMatrix3d::rotation(number(0, 6), {0, 0, 1}, {number(-99, 99), 0, 0});
  edges.transform(turn);
  const std::vector<Slot> slots = findSlots(edges.straight, edges.round);
  RC_ASSERT(slots.size() == static_cast<size_t>(count));
  double found = 0.0;
  for (const Slot& slot : slots) {
    const ZnGeLineSeg3d &a = edges.straight[static_cast<size_t>(slot.sides[0])].line,
                        &b = edges.straight[static_cast<size_t>(slot.sides[1])].line;
    found += slot.length;
    RC_ASSERT(std::fabs(a.length() - slot.length) < 1e-9 && std::fabs(b.length() - slot.length) < 1e-9);
    RC_ASSERT(std::fabs(a.midPoint().distanceTo(b.midPoint()) - 2.0 * slot.radius) < 1e-9);
    RC_ASSERT(std::fabs(slot.ends[0].center.distanceTo(slot.ends[1].center) - slot.length) < 1e-9);
  }
  RC_ASSERT(std::fabs(found - total) < 1e-6);
}

} // namespace
