// Patterns through the life of a drawing: members that go, come and move, undo, and the loss of all edges.
#include "quorl/db/core/undo.h"
#include "torvi_pattern/pattern_fixture.h"

namespace {

class PatternHistory : public PatternTest {
protected:
  const Wish arcWish_{kRing, false, true};
};

TEST_F(PatternHistory, WhateverHappensToItsHolesAPatternIsAsIfMadeNow) {
  const std::pair<Holes, Wish> layouts[] = {{{{0, 0}, {9, 3}, {18, 6}, {27, 9}, {36, 12}}, {kRow}},
                                            {onArc({5, 5}, 30, 0, 30, 5, 2), arcWish_},
                                            {onArc({5, 5}, 30, 0, 60, 6, 2), {kRing, true, true}}};
  for (const auto& [places, wish] : layouts) {
    const Ids holes = addHoles(places);
    const ZnDbObjectId pattern = addPattern(holes, wish);
    const Drawing atFirst = drawing(pattern);
    ZnDbUndoRecorder& undo = db_->undoRecorder();
    undo.startStep();
    moveHole(holes[3], places[3].x + 1.0, places[3].y - 5.0);
    expectAsIfMadeNow(pattern, holes, wish);
    const Drawing moved = drawing(pattern);
    EXPECT_EQ(moved.contains("3"), wish.type == kRow) << "off a ring there is no direction for a mark";
    undo.startStep();
    erase(holes[2]);
    evaluateChanges();
    expectAsIfMadeNow(pattern, holes, wish);
    ASSERT_EQ(undo.undo(), Quorl::eOk);
    EXPECT_EQ(drawing(pattern), moved);
    ASSERT_EQ(undo.undo(), Quorl::eOk);
    EXPECT_EQ(drawing(pattern), atFirst);
    ASSERT_EQ(undo.redo(), Quorl::eOk);
    EXPECT_EQ(drawing(pattern), moved);
  }
}

// A hole less is a new key; entity, sense and overshoots are the old ones, even where somebody has turned the
// line round.
TEST_F(PatternHistory, TheLineStaysItselfWhenMembersGo) {
  const Ids holes = addHoles(row(4));
  const ZnDbObjectId id = addPattern(holes);
  Wrapper wrapper(id);
  const ZnDbObjectId line = wrapper.getOutputEdge(L"CenterLine-0-1-2-3");
  EXPECT_EQ(wrapper.setStartOvershoot(L"CenterLine-0-1-2-3", 3.0), Quorl::eOk);
  erase(holes[2]);
  evaluateChanges();
  transform(line, ZnGeMatrix3d::mirroring(ZnGePoint3d()));
  evaluate(id);
  EXPECT_EQ(wrapper.getOutputEdge(L"CenterLine-0-1-3"), line);
  EXPECT_EQ(wrapper.startOvershoot(L"CenterLine-0-1-3"), 3.0);
}

TEST_F(PatternHistory, MembersOnAnAxisAreArmsOfThePitchCentersMark) {
  const std::pair<double, Drawn> rows[] = {{1.0, {"line 0.4,0 16,0", "line 24,0 40.5,0"}},
                                           {-1.0, {"line 40.5,0 24,0", "line 16,0 0.4,0"}}};
  for (const auto& [side, arms] : rows) {
    Ids holes;
    for (const Hole& hole : onArc({20, 0}, 20, 180, 50, 4))
      holes.push_back(addCircle({hole.x, hole.y, 0}, 2, {0, 0, side}));
    const ZnDbObjectId ring = addPattern(holes, {kRing, false, true});
    const Drawn mark = drawn(ring, "MajorAxis");
    ASSERT_EQ(mark.size(), 6u);
    EXPECT_EQ((Drawn{mark[2], mark[3]}), arms) << side;
    change<Body>(bodyOf(ring), [](Body& body) { body.setHorizontalStartExtension(26.0); });
    evaluate(ring);
    EXPECT_EQ(drawn(ring, "0")[5], "line -0.4,0 -6.5,0") << "the arm of the one is the arm of the other";
  }
}

} // namespace
