// What a pattern's analysis makes of a set of holes.
#include "torvi/pattern/analysis.h"

#include <rapidcheck.h>

#include <algorithm>

#include "torvi_pattern/pattern_fixture.h"

namespace {

class PatternAnalysis : public PatternTest {
protected:
  static ZnPatternQuestion ask(CenterMarkPatternType type, const Holes& holes) {
    ZnPatternQuestion question;
    question.patternType = type;
    question.autoFullPcd = true;
    for (const Hole& hole : holes)
      question.circles.append(ZnGeCircArc3d({hole.x, hole.y, 0}, ZnGeVector3d::kZAxis, hole.radius));
    return question;
  }
  // Type, chain, and whether it is closed, in words.
  static std::string read(const ZnPatternAnalysis& found) {
    if (!found.isPattern) return "no";
    constexpr const char* kNames[] = {"open", "ring", "row"};
    std::string text = kNames[found.patternType];
    EXPECT_EQ(found.line() || found.pitchCircle(), !found.memberChain.isEmpty());
    for (const int index : found.memberChain) text += " " + std::to_string(index);
    return text + (found.fullPcd ? " closed" : "");
  }
};

TEST_F(PatternAnalysis, FindsTypeAndChain) {
  struct {
    const char* what;
    Holes holes;
    CenterMarkPatternType given;
    const char* reading;
  } const rows[] = {
      {"ring, stray", with(onArc({4, 5}, 50, 3, 50, 7), {{10, 11}}), kNone, "ring 0 1 2 3 4 5 6 closed"},
      {"row", {{0, 0}, {20, 10}, {10, 5}}, kNone, "row 0 2 1"},
      {"row as a ring", {{0, 0}, {10, 5}, {20, 10}}, kRing, "no"},
      {"within 15 degrees", onArc({0, 0}, 100, 0, 6, 3), kNone, "row 0 1"},
      {"two", {{0, 0}, {10, 0}}, kNone, "row 0 1"},
      {"two of a ring", {{0, 0}, {10, 0}}, kRing, "no"},
      {"one", {{3, 4}}, kNone, "open"},
      {"one of a row", {{3, 4}}, kRow, "row"},
      {"one of a ring", {{3, 4}}, kRing, "no"},
      {"bore in a boss", {{0, 0}, {10, 0}, {20, 0}, {0, 0, 3}}, kNone, "row 0 1 2"},
      {"boss about a bore", {{0, 0, 3}, {10, 0}, {20, 0}, {1.9, 0}}, kNone, "row 0 1 2"},
      {"overlapping", {{0, 0, 3}, {10, 0}, {20, 0}, {2.1, 0}}, kNone, "row 0 3 1 2"},
      {"hole larger than the ring", with(onArc({0, 0}, 3, 0, 80, 3), {{0, -3, 3.1}}), kRing, "no"},
      {"gap of a third", with(onArc({0, 0}, 30, 10, 90, 3), onArc({0, 0}, 30, 250, 0, 1)), kNone,
       "ring 0 1 2 3 closed"},
      {"gap of more", with(onArc({0, 0}, 30, 10, 90, 3), onArc({0, 0}, 30, 249.9, 0, 1)), kNone,
       "ring 0 1 2 3"},
      // Of equal gaps the first counts, from the x axis on.
      {"equal gaps", {{3, 3}, {-3, 3}, {-3, -3}, {3, -3}}, kNone, "ring 1 2 3 0 closed"},
      {"column beside the first", {{0, 0}, {20, 0}, {20, 10}, {20, 20}}, kRow, "row 1 2 3"},
      {"grid as rows", {{0, 0}, {9, 0}, {18, 0}, {0, 7}, {9, 7}, {18, 7}}, kRow, "row 0 1 2"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(read(analysePattern(ask(row.given, row.holes))), row.reading) << row.what;
}

TEST_F(PatternAnalysis, AReferenceEdgeOverridesTheVote) {
  using Curve = std::shared_ptr<ZnGeCurve3d>;
  const auto line = [](double x, double y, double z) {
    return Curve(new ZnGeLineSeg3d(ZnGePoint3d(0, 0, z), ZnGePoint3d(x, y, 0)));
  };
  const auto arc = [](double from, double to) {
    return Curve(new ZnGeCircArc3d({0, 0, 0}, {0, 0, 1}, {1, 0, 0}, 30, from * kDegree, to * kDegree));
  };
  const Holes half = onArc({0, 0}, 30, 0, 45, 5), rows = {{0, 0}, {10, 0}, {20, 0}, {0, 9}, {3, 12}};
  struct {
    const char* what;
    Holes holes;
    CenterMarkPatternType given;
    Curve reference;
    double pick; // degrees
    int kind;
    const char* reading;
  } const cases[] = {
      {"about the middle", half, kNone, arc(100, 200), -1, 1, "ring 0 1 2 3 4"},
      {"two about it", {{10, 0}, {0, 10}, {5, 5}}, kNone, arc(0, 360), -1, 1, "ring 0 1"},
      {"one about it", {{10, 0}}, kNone, arc(0, 90), -1, 1, "ring 0"},
      {"along a column", rows, kRow, line(0, 5, 0), -1, 2, "row 0 3"},
      {"through one hole", {{1, 2}}, kNone, line(3, 1, 0), -1, 2, "row 0"},
      {"out of the plane", rows, kRow, line(0, 5, 1), -1, 0, "row 0 1 2"},
      {"an arc for a row", rows, kRow, arc(0, 90), -1, 0, "row 0 1 2"},
      {"a line for a ring", half, kRing, line(1, 1, 0), -1, 0, "ring 0 1 2 3 4"},
      // The chain runs through the pick and breaks in the next larger gap.
      {"picked in the large gap", half, kNone, arc(170, 300), 100, 1, "ring 1 2 3 4 0 closed"},
      {"picked in a small gap", half, kNone, arc(0, 100), 50, 1, "ring 0 1 2 3 4"},
      {"picked behind the full turn", half, kNone, arc(300, 350), 40, 1, "ring 1 2 3 4 0 closed"},
  };
  for (const auto& row : cases) {
    ZnPatternQuestion question = ask(row.given, row.holes);
    question.hasReferenceEdge = true;
    question.referenceCurve = row.reference.get();
    question.referencePickParam = row.pick < 0.0 ? -1.0 : row.pick * kDegree;
    for (const bool optional : {true, false}) {
      question.isReferenceEdgeOptional = optional;
      const ZnPatternAnalysis found = analysePattern(question);
      EXPECT_EQ(read(found), optional || row.kind != 0 ? row.reading : "no") << row.what;
      EXPECT_EQ(found.reference.kind, row.kind) << row.what;
      EXPECT_EQ(found.dropsReferenceEdge, row.kind == 0) << row.what;
    }
  }
}

TEST_F(PatternAnalysis, WhatIsNoHoleOfThePlaneKeepsItsPlaceAndTakesNoPart) {
  const Ids holes = addHoles({{0, 0}, {10, 0}, {20, 0}, {30, 0}, {40, 0}});
  ZnArray<ZnDbEdgeRef> edges = edgesOf(holes);
  edges[1] = edgeOf(addLine({10, 0, 0}, {11, 1, 0}));
  edges[2] = edgeOf(addCircle({20, 0, 5}, 1));
  erase(holes[3]);
  const auto layout = [] { return ZnDbCenterMarkPatternLayout(ZnDbObjectId()); };
  ZnDbCenterMarkPatternLayout row = layout();
  EXPECT_FALSE(row.allCirclesOnChains(edges));
  EXPECT_TRUE(row.circleCount() == 5 && row.patternType() == kRow && row.referenceKind() == 0);
  EXPECT_TRUE(row.memberChains() == (ZnArray<ZnArray<int>>{{0, 4}}));
  EXPECT_TRUE(layout().allCirclesOnChains({edges[0], edges[4]}));
  EXPECT_FALSE(layout().loadCircles({edges[1]}));
}

// The chain is the holes by their angle about the normal, broken in the largest gap, wherever and however the
// plane lies in space.
TEST_F(PatternAnalysis, ARingIsOrderedByAngleFromItsLargestGap) {
  EXPECT_TRUE(rc::check([] {
    const auto steps = *rc::gen::unique<std::vector<int>>(*rc::gen::inRange(4, 11), rc::gen::inRange(0, 72));
    const auto number = [](int from, int to) { return *rc::gen::inRange(from * 10, to * 10) / 10.0; };
    const double side = *rc::gen::element(1.0, -1.0), radius = number(10, 200);
    const ZnGeMatrix3d toSpace =
        ZnGeMatrix3d::rotation(number(0, 6), ZnGeVector3d(1, number(-2, 2), 2).normal()) *
        ZnGeMatrix3d::translation({number(-90, 90), number(-90, 90), number(-9, 9)});
    ZnPatternQuestion question = ask(kRing, {});
    std::vector<int> order;
    for (const int step : steps) {
      order.push_back(static_cast<int>(order.size()));
      const Hole hole = onArc({0, 0}, radius, side * 5.0 * step, 0.0, 1)[0];
      question.circles.append(
          ZnGeCircArc3d(toSpace * ZnGePoint3d(hole.x, hole.y, 0), toSpace * ZnGeVector3d(0, 0, side), 0.3));
    }
    const auto stepOf = [&](size_t at) { return steps[static_cast<size_t>(order[at % order.size()])]; };
    std::sort(order.begin(), order.end(), [&](int a, int b) { return steps[size_t(a)] < steps[size_t(b)]; });
    std::vector<std::pair<int, size_t>> gaps; // and the place behind each
    for (size_t i = 0; i < order.size(); ++i) gaps.push_back({(stepOf(i + 1) - stepOf(i) + 72) % 72, i + 1});
    std::sort(gaps.rbegin(), gaps.rend());
    // Less than a fifteenth of half a turn says nothing about the center.
    RC_PRE(gaps[0].first > gaps[1].first && gaps[0].first <= 67);
    std::string reading = "ring";
    for (size_t i = 0; i < order.size(); ++i)
      reading += " " + std::to_string(order[(gaps[0].second + i) % order.size()]);
    const ZnPatternAnalysis found = analysePattern(question);
    RC_ASSERT(read(found) == reading + (gaps[0].first <= 24 ? " closed" : ""));
    RC_ASSERT(near(found.pitchCircle()->center(), toSpace * ZnGePoint3d()));
    RC_ASSERT(std::fabs(found.pitchCircle()->radius() - radius) < 1e-8);
  }));
}

} // namespace
