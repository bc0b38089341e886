// What a pattern draws, under which keys and as which entities.
#include "torvi_pattern/pattern_fixture.h"

namespace {

class PatternDrawing : public PatternTest {};

TEST_F(PatternDrawing, ARowIsMarksAndPieces) {
  const ZnDbObjectId row = addPattern(addHoles({{0, 0, 2}, {10, 0, 2}, {20, 0}, {5, 9}}), {kRow});
  const Drawing wanted = {{"0",
                           {"line -0.2,0 0.2,0", "line 0,-0.2 0,0.2", "line -2.5,0 -0.4,0", "hidden",
                            "line 0,-2.5 0,-0.4", "line 0,0.4 0,2.5"}},
                          {"1",
                           {"line 9.8,0 10.2,0", "line 10,-0.2 10,0.2", "line 7.5,0 9.6,0",
                            "line 10.4,0 12.5,0", "line 10,-2.5 10,-0.4", "line 10,0.4 10,2.5"}},
                          {"2",
                           {"line 19.9,0 20.1,0", "line 20,-0.1 20,0.1", "hidden", "line 20.2,0 21.5,0",
                            "line 20,-1.5 20,-0.2", "line 20,0.2 20,1.5"}},
                          {"3",
                           {"line 4.9,9 5.1,9", "line 5,8.9 5,9.1", "line 3.5,9 4.8,9", "line 5.2,9 6.5,9",
                            "line 5,7.5 5,8.8", "line 5,9.2 5,10.5"}},
                          {"0-1", {"line 0.4,0 9.6,0"}},
                          {"1-2", {"line 10.4,0 19.8,0"}},
                          {"CenterLine-0-1-2", {"hidden"}}};
  EXPECT_EQ(drawing(row), wanted);
  for (const auto& [key, texts] : wanted) {
    ZnArray<ZnDbObjectId> ids;
    ZnTorviLyxUtils::getEntitesIdsFromBlkRef(Wrapper(row).getOutputEdge(ZnString::fromUtf8(key)), ids, false);
    ASSERT_EQ(ids.length(), texts.size() > 1 ? 6 : 0);
    for (int i = 0; i < ids.length(); ++i)
      EXPECT_EQ(ZnDbHolder<ZnDbEntity>(ids[i])->linetype().equalsNoCase(L"CONTINUOUS"), i < 2)
          << key << " " << i;
  }
}

TEST_F(PatternDrawing, APieceStartsWhereTheMarkLeavesRoom) {
  put(L"CENTERCROSSSIZE", L"3");
  put(L"CENTERCROSSGAP", L"0.5");
  const std::pair<Holes, const char*> rows[] = {{{{0, 0, 2}, {10, 0, 2}}, "line 2,0 8,0"},
                                                {{{0, 0, 1.5}, {10, 0, 1.5}}, "line 2,0 8,0"},
                                                {{{0, 0, 0.3}, {10, 0, 2}}, "line 1.5,0 8,0"},
                                                {{{0, 0, 0.3}, {2, 0, 0.3}}, "line 1,0 1,0"}};
  for (const auto& [holes, piece] : rows) EXPECT_EQ(drawn(addPattern(addHoles(holes)), "0-1"), Drawn{piece});
  // Nor does an arm of the pitch center's mark that would end behind the center.
  const Drawn mark =
      drawn(addPattern(addHoles(onArc({0, 0}, 1.5, 0, 90, 4, 0.3)), {kRing, true, true}), "MajorAxis");
  EXPECT_EQ(Drawn(mark.begin() + 2, mark.end()), Drawn(4, "hidden"));
}

TEST_F(PatternDrawing, ARingIsArcsAboutItsCenter) {
  const ZnDbEdgeRef middle = edgeOf(addCircle({0, 0, 0}, 30));
  struct {
    Holes holes;
    bool full;
    const char* keys;
    Drawing pieces;
  } const rows[] = {
      {ring(4, 4, 30),
       false,
       "0 0-3 1 1-2 2 2-3 3 CenterLine-1-2-3-0",
       {{"1-2", {"arc -0.2,29.9993 -29.9993,0.2"}}, {"0-3", {"arc 0.2,-29.9993 29.9993,-0.2"}}}},
      {ring(4, 4, 30),
       true,
       "0 0-1 0-3 1 1-2 2 2-3 3 CenterLine-1-2-3-0",
       {{"0-1", {"arc 29.9993,0.2 0.2,29.9993"}}}},
      {ring(2, 2, 30),
       true,
       "0 0-1 1 1-0 CenterLine-1-0",
       {{"0-1", {"arc 29.9993,0.2 -29.9993,0.2"}}, {"1-0", {"arc -29.9993,-0.2 29.9993,-0.2"}}}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.keys);
    const ZnDbObjectId made = addPattern(addHoles(row.holes), {kRing, row.full, false, middle});
    EXPECT_EQ(keysOf(made), row.keys);
    for (const auto& [key, piece] : row.pieces) EXPECT_EQ(drawn(made, key), piece);
    // The outer members of an open ring carry the line on and have no arm towards it.
    EXPECT_EQ(drawn(made, "1")[3] == "hidden", !row.full);
    EXPECT_EQ(drawn(made, "0")[2] == "hidden", !row.full);
    EXPECT_TRUE(drawn(made, "1")[2] != "hidden" && drawn(made, "0")[3] != "hidden");
    ZnDbHolder<ZnDbArc> whole(Wrapper(made).getOutputEdge(ZnString::fromUtf8(centerLine(made))));
    ASSERT_TRUE(whole.isOpen());
    // A chord of radius and overshoot beyond either end.
    const double turn = 2.0 * ZnGe::kPi, open = 0.75 * turn + 4.0 * std::asin(1.5 / 60.0);
    const double span = std::remainder(whole->endAngle() - whole->startAngle(), turn);
    EXPECT_NEAR(span, row.full ? -1e-6 : std::remainder(open, turn), 1e-9);
  }
}

TEST_F(PatternDrawing, MembersOnAnAxisAreArmsOfThePitchCentersMark) {
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
    EXPECT_EQ((Drawn{mark[4], mark[5]}), (Drawn{"line 20,-20.5 20,-4", "line 20,4 20,20.5"}));
    EXPECT_EQ((Drawn{drawn(ring, "0")[4], drawn(ring, "0")[5]}), (Drawn{"hidden", "line -0.4,0 -2.5,0"}));
    change<Body>(bodyOf(ring), [](Body& body) { body.setHorizontalStartExtension(26.0); });
    evaluate(ring);
    EXPECT_EQ(drawn(ring, "0")[5], "line -0.4,0 -6.5,0") << "the arm of the one is the arm of the other";
  }
}

} // namespace
