// Slots and strips among loose edges: what is one, what only looks like one, and that place, order and sense
// of the edges make no difference.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <numeric>

#include "companion/slots.h"
#include "companion/strips.h"
#include "support/point_text.h"

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

TEST(Slots, WhatIsOneAndWhatIsNot) {
  const std::string sides = "0,-5 50,-5 50,5 0,5 ", ends = "50 5 -90 90 0 5 90 270 ";
  const struct {
    const char* name;
    std::string lines, arcs;
    std::vector<double> lengths;
  } cases[] = {
      {"plain", sides, ends, {50}},
      {"shorter than wide", "0,-5 2,-5 2,5 0,5", "2 5 -90 90 0 5 90 270", {2}},
      {"ends in halves", sides, "50 5 -90 0 50 5 0 90 0 5 90 180 0 5 180 270", {50}},
      {"ends a little off", "0.03,-5 50,-5.03 50,5 0,5", ends, {50}},
      {"a visible gap", "0.2,-5 50,-5 50,5 0,5", ends, {}},
      {"two in a row", sides + "70,-5 110,-5 110,5 70,5", ends + "110 5 -90 90 70 5 90 270", {50, 40}},
      {"a groove", sides + "0,-3 50,-3 50,3 0,3", ends + "50 3 -90 90 0 3 90 270", {50}},
      {"drawn twice", sides + sides, ends + ends, {50}},
      {"waisted", sides, "50 5 90 270 0 5 -90 90", {}},
      {"ends to the same side", sides, "50 5 -90 90 0 5 -90 90", {}},
      {"quarters drawn twice", "0,-5 50,-5 0,-5 50,-5", "50 5 -90 0 50 5 -90 0 0 5 180 270 0 5 180 270", {}},
      {"one end open", sides, "50 5 -90 90", {}},
      {"one side missing", "0,-5 50,-5", ends, {}},
      {"less than half circles", sides, "50 5 -90 90 0 5 90 260", {}},
      {"sides in two planes", "0,-5,1 50,-5,1 50,5 0,5", ends, {}},
      {"a whole circle", "-5,0 5,0", "0 5 0 180 0 5 180 360", {}},
  };
  for (const auto& c : cases)
    for (const ZnGeMatrix3d& place : kPlaces) {
      SCOPED_TRACE(c.name);
      Edges edges(c.lines, c.arcs);
      edges.transform(place);
      const std::vector<Slot> slots = findSlots(edges.straight, edges.round);
      ASSERT_EQ(slots.size(), c.lengths.size());
      for (size_t i = 0; i < slots.size(); ++i)
        EXPECT_NEAR(slots[i].length / place.scale(), c.lengths[i], 0.05);
    }
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

TEST(Strips, WhatIsOneAndWhatIsNot) {
  const struct {
    const char *name, *corners; // of closed lines, four after four
    double circleAt;            // x of a circle's center at y 1, or none below 0
    std::vector<double> widths;
  } cases[] = {
      {"plain", "0,0 10,0 10,2 0,2", -1, {2}},
      {"too wide", "0,0 6,0 6,2 0,2", -1, {}},
      {"just long enough", "0,0 6.01,0 6.01,2 0,2", -1, {2}},
      {"upright", "0,0 2,0 2,10 0,10", -1, {2}},
      {"a rhomboid", "0,0 10,0 11,2 1,2", -1, {}},
      {"a trapezoid", "0,0 10,0 10,2 1,2", -1, {}},
      {"with a hole", "0,0 10,0 10,2 0,2", 5, {}},
      {"hole beside", "0,0 10,0 10,2 0,2", 11, {2}},
      {"one in another", "0,0 40,0 40,9 0,9 5,1 15,1 15,3 5,3", -1, {2}},
      {"side by side", "0,0 10,0 10,2 0,2 0,2 10,2 10,5 0,5", -1, {2, 3}},
  };
  for (const auto& c : cases)
    for (const ZnGeMatrix3d& place : kPlaces) {
      SCOPED_TRACE(c.name);
      Edges edges;
      const std::vector<P3> corners = pointsOf(c.corners);
      for (size_t i = 0; i < corners.size(); ++i) edges.line(corners[i], corners[i % 4 == 3 ? i - 3 : i + 1]);
      if (c.circleAt >= 0.0) edges.arc({c.circleAt, 1, 0}, 0.3, 0, 360);
      edges.transform(place);
      std::vector<double> widths;
      for (const Strip& strip : findStrips(edges.straight, edges.round))
        widths.push_back(strip.width / place.scale());
      ASSERT_EQ(widths.size(), c.widths.size());
      P3 inside(5, 1, 0), beside(-5, 1, 0); // where a text may stand
      inside.transformBy(place), beside.transformBy(place);
      EXPECT_EQ(findStrips(edges.straight, edges.round, {beside}).size(), widths.size());
      if (corners.size() == 4 && corners[1].x == 10.0)
        EXPECT_TRUE(findStrips(edges.straight, edges.round, {inside}).empty());
      for (size_t i = 0; i < widths.size(); ++i) EXPECT_NEAR(widths[i], c.widths[i], 1e-6);
    }
}

} // namespace
