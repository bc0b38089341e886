// Patterns through the life of a drawing: members that go, come and move, undo, mirrors, and the loss of all
// edges.
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
    erase(holes[2]);
    evaluateChanges();
    expectAsIfMadeNow(pattern, holes, wish);
    const Drawing without = drawing(pattern);
    undo.startStep();
    moveHole(holes[3], places[3].x + 1.0, places[3].y - 5.0);
    expectAsIfMadeNow(pattern, holes, wish);
    ASSERT_EQ(undo.undo(), Quorl::eOk);
    EXPECT_EQ(drawing(pattern), without);
    ASSERT_EQ(undo.undo(), Quorl::eOk);
    EXPECT_EQ(drawing(pattern), atFirst);
    ASSERT_EQ(undo.redo(), Quorl::eOk);
    EXPECT_EQ(drawing(pattern), without);
    ASSERT_EQ(undo.undo(), Quorl::eOk);
  }
}

// A hole less or a hole more is a new key; entity, sense and overshoots are the old ones, even where somebody
// has turned the line round.
TEST_F(PatternHistory, TheLineStaysItselfWhenMembersComeAndGo) {
  Ids holes = addHoles({{0, 0}, {10, 0}, {20, 0}, {30, 0}});
  const ZnDbObjectId row = addPattern(holes);
  Wrapper wrapper(row);
  const ZnDbObjectId line = wrapper.getOutputEdge(L"CenterLine-0-1-2-3");
  EXPECT_EQ(wrapper.setStartOvershoot(L"CenterLine-0-1-2-3", 3.0), Quorl::eOk);
  EXPECT_EQ(wrapper.setEndOvershoot(L"CenterLine-0-1-2-3", 4.0), Quorl::eOk);
  const auto addHole = [&](double x) {
    holes.push_back(addCircle({x, 0, 0}, 1));
    ZnCenterMarkPatternBuilder builder(db_.get());
    EXPECT_EQ(builder.loadTorvi(row), Quorl::eOk);
    builder.addInputEdge(edgeOf(holes.back()));
    EXPECT_EQ(builder.modifyTorvi(), Quorl::eOk);
  };
  const std::pair<const char*, std::function<void()>> steps[] = {
      {"CenterLine-0-1-3", [&] { erase(holes[2]), evaluateChanges(); }},
      {"CenterLine-4-0-1-3", [&] { addHole(-10); }},
      {"CenterLine-4-1-3", [&] { moveHole(holes[0], 0, 9); }},
      {"CenterLine-4-1-3-0", [&] { moveHole(holes[0], 60, 0); }},
      {"CenterLine-0-3-1-4",
       [&] { transform(line, ZnGeMatrix3d::mirroring(ZnGePoint3d())), evaluate(row); }}};
  for (const auto& [name, step] : steps) {
    SCOPED_TRACE(name);
    step();
    const ZnString key = ZnString::fromUtf8(name);
    EXPECT_EQ(wrapper.getOutputEdge(key), line);
    EXPECT_TRUE(wrapper.startOvershoot(key) == 3.0 && wrapper.endOvershoot(key) == 4.0);
  }
  EXPECT_EQ(drawn(row, "0")[2], "line 64,0 60.2,0");
  EXPECT_EQ(drawn(row, "4")[3], "line -10.2,0 -15,0");
}

// Outputs are compared by their keys: their order in the block is that of their history.
TEST_F(PatternHistory, AnUpToDatePatternSaysSoWhateverHappenedToIt) {
  const Ids holes = addHoles(row(4));
  const Wrapper pattern(addPattern(holes));
  for (const double y : {7.0, 0.0, 3.0}) {
    moveHole(holes[1], 5, y);
    EXPECT_TRUE(pattern.doesActionMatchCurrentGeometry()) << y;
  }
  change<ZnDbCircle>(holes[1], [](ZnDbCircle& circle) { circle.setRadius(2.0); });
  EXPECT_FALSE(pattern.doesActionMatchCurrentGeometry());
}

TEST_F(PatternHistory, ItFollowsHolesHoweverTheyAreMappedAndThroughBlocks) {
  const Holes places = onArc({5, 5}, 30, 0, 40, 5, 2);
  for (const ZnGeMatrix3d& map : {ZnGeMatrix3d::rotation(0.7, ZnGeVector3d::kZAxis, {3, 4, 0}),
                                  ZnGeMatrix3d::mirroring(ZnGePlane({5, 0, 0}, {1, 0.2, 0})),
                                  ZnGeMatrix3d::rotation(1.0, ZnGeVector3d(1, 1, 0).normal())}) {
    Holes members = places;
    members[2].span = 4.0; // arcs are holes as well
    const Ids plain = addHoles(members);
    const ZnDbObjectId pattern = addPattern(plain, arcWish_);
    const ZnDbObjectId overBlock = addPattern(nestedEdges(members), arcWish_);
    Ids moved = plain;
    moved.insert(moved.end(), {pattern, reference_});
    for (const ZnDbObjectId id : moved) transform(id, map);
    evaluateChanges();
    for (const ZnDbObjectId one : {pattern, overBlock}) expectAsIfMadeNow(one, plain, arcWish_);
  }
}

// A pattern without its edges keeps what it shows. A ring goes on drawing the mark on its pitch center, which
// can still be changed, and the members' marks that are its arms.
TEST_F(PatternHistory, WithoutItsHolesItStaysAndItsPitchCenterMarkLives) {
  Ids holes = addHoles({{0, 0}, {10, 0}, {20, 0}}), ringHoles = addHoles(onArc({5, 5}, 30, 0, 45, 5, 2));
  const Ids slantedHoles = addHoles(onArc({5, 5}, 30, 0, 45, 5, 2));
  for (const ZnDbObjectId hole : slantedHoles)
    transform(hole, ZnGeMatrix3d::rotation(1.0, ZnGeVector3d::kYAxis));
  const ZnDbObjectId row = addPattern(holes), ring = addPattern(ringHoles, arcWish_),
                     slanted = addPattern(slantedHoles, arcWish_);
  const Drawing rowBefore = drawing(row), ringBefore = drawing(ring), slantedBefore = drawing(slanted);
  for (const Ids& more : {ringHoles, slantedHoles}) holes.insert(holes.end(), more.begin(), more.end());
  for (const ZnDbObjectId hole : holes) erase(hole);
  evaluateChanges();
  EXPECT_FALSE(Wrapper(row).isAssociative() || Wrapper(ring).isAssociative());
  EXPECT_EQ(drawing(row), rowBefore);
  EXPECT_EQ(drawing(slanted), slantedBefore);
  for (const char* key : {"1", "3", "1-2", "MajorAxis"})
    EXPECT_EQ(drawn(ring, key), ringBefore.at(key)) << key;
  change<Body>(bodyOf(ring), [](Body& body) {
    body.setVerticalStartExtension(40.0);
    body.setHorizontalEndExtension(37.0);
  });
  evaluate(ring);
  EXPECT_EQ(drawn(ring, "MajorAxis")[4], "line 5,-35.5 5,-1");
  EXPECT_EQ(drawn(ring, "0")[5], "line 35.4,5 42.5,5");
  EXPECT_TRUE(statusOf(ring) == kIsUpToDateAssocStatus && statusOf(row) == kIsUpToDateAssocStatus);
}

TEST_F(PatternHistory, TwoHolesOfARingKeepItsCenterAndARowOfARingLetsGo) {
  const Ids holes = addHoles(onArc({5, 5}, 30, 0, 80, 4));
  const ZnDbObjectId ring = addPattern(holes, arcWish_);
  const Drawing before = drawing(ring);
  erase(holes[2]);
  erase(holes[3]);
  evaluateChanges();
  EXPECT_EQ(keysOf(ring), "0 0-1 1 CenterLine-0-1 MajorAxis");
  for (const char* key : {"0", "0-1", "MajorAxis"}) EXPECT_EQ(drawn(ring, key), before.at(key)) << key;
  moveHole(holes[1], 5, 5); // to the pitch center itself
  EXPECT_EQ(statusOf(ring), kFailedToEvaluateAssocStatus);
  EXPECT_FALSE(Wrapper(ring).isAssociative());
  EXPECT_EQ(drawn(ring, "0-1"), before.at("0-1"));
}

} // namespace
