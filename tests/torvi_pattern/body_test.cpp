// The values and keys that a pattern keeps.
#include "torvi_pattern/pattern_fixture.h"

namespace {

class PatternBody : public PatternTest {};

TEST_F(PatternBody, KeysNameMembersPiecesAndLines) {
  EXPECT_TRUE(Body::dependencyKey(3, 1) == L"1-3" && Body::dependencyKey(3, 1, true) == L"3-1");
  EXPECT_EQ(Body::centerLineDependencyKey({10, 0, 3}), L"CenterLine-10-0-3");
  const std::pair<const wchar_t*, ZnArray<int>> rows[] = {{L"CenterLine-0-2-3", {0, 2, 3}},
                                                          {L"CenterLine--1---20-", {1, 20}},
                                                          {L"CenterLine", {}},
                                                          {L"CenterLine--", {}},
                                                          {L"MajorAxis", {}},
                                                          {L"0-1", {}}};
  for (const auto& [key, wanted] : rows) {
    ZnArray<int> indices{77};
    EXPECT_EQ(Body::getEdgeIndicesOnCenterLine(key, indices), !wanted.isEmpty()) << ZnString(key).utf8();
    EXPECT_TRUE(indices == wanted) << ZnString(key).utf8();
  }
}

TEST_F(PatternBody, OvershootsBelongToAKeyAndFollowIt) {
  const ZnString key(L"CenterLine-0-1-2"), other(L"CenterLine-0-2");
  change<Body>(bodyOf(addPattern(addHoles({{0, 0}, {10, 0}, {20, 0}}))), [&](Body& body) {
    struct {
      ZnString key;
      double value;
      bool validate;
      double after;
    } const rows[] = {{key, -1.0, true, 0.5},
                      {other, 2.0, true, 0.5},
                      {key, -1.0, false, -1.0},
                      {other, 7.0, false, 7.0},
                      {key, 3.0, true, 3.0}};
    for (const auto& row : rows) {
      const auto wanted = row.after == row.value ? Quorl::eOk : Quorl::eInvalidInput;
      EXPECT_EQ(body.setStartOvershoot(row.key, row.value, row.validate), wanted);
      EXPECT_EQ(body.setEndOvershoot(row.key, row.value, row.validate), wanted);
      EXPECT_TRUE(body.startOvershoot(row.key) == row.after && body.endOvershoot(row.key) == row.after);
    }
    EXPECT_EQ(body.renameCenterLineKey(L"CenterLine-9", other), Quorl::eInvalidInput);
    EXPECT_EQ(body.renameCenterLineKey(key, other), Quorl::eOk);
    EXPECT_TRUE(body.endOvershoot(other) == 3.0 && body.endOvershoot(key) == 0.5);
    put(L"CENTEREXE", ZnRxVariableValue::ofDouble(2.5));
    EXPECT_EQ(body.resetOvershoots(), Quorl::eOk);
    EXPECT_TRUE(body.endOvershoot(other) == 2.5 && body.verticalEndOvershoot() == 2.5);
    EXPECT_EQ(body.renameCenterLineKey(other, ZnString()), Quorl::eOk);
    ZnArray<ZnString> keys{key};
    EXPECT_FALSE(body.getCenterLineDependencyKeys(keys));
    EXPECT_EQ(body.valueOf(L"StartOvershoot-CenterLine-0-2", -9.0), -9.0);
  });
}

TEST_F(PatternBody, AReferenceEdgeComesWithItsPick) {
  const ZnDbEdgeRef first = edgeOf(addCircle({0, 0, 0}, 5)), second = edgeOf(addCircle({0, 0, 0}, 6));
  change<Body>(bodyOf(addPattern(addHoles(ring(6, 6)))), [&](Body& body) {
    ZnDbEdgeRef edge;
    double pick = 9.0;
    EXPECT_EQ(body.setReferenceEdge(first, 0.75), Quorl::eOk);
    EXPECT_EQ(body.setReferenceEdge(second, -1.0), Quorl::eOk);
    EXPECT_TRUE(body.getReferenceEdge(edge, pick) && edge == second);
    EXPECT_EQ(pick, 0.75);
    body.forgetReferencePick();
    EXPECT_TRUE(body.getReferenceEdge(edge, pick) && pick == -1.0);
    EXPECT_TRUE(body.clearReferenceEdge());
    EXPECT_FALSE(body.clearReferenceEdge() || body.getReferenceEdge(edge, pick) || pick != -1.0);
  });
}

TEST_F(PatternBody, TheMarkOnThePitchCenterReachesItsMembers) {
  const Ids holes = addHoles(onArc({50, 20}, 20, 180, 60, 6, 2));
  const ZnDbObjectId ring = addPattern(holes, {kRing, true, true});
  ask(ring, [](const Body& body) {
    ZnGeCircArc3d circle;
    EXPECT_EQ(body.getRefCircle(circle), Quorl::eOk);
    EXPECT_TRUE(near(circle.center(), {50, 20, 0}) && std::fabs(circle.radius() - 20.0) < 1e-9);
    struct {
      ZnCenterMarkSubEntType arm;
      double stored, length, least;
    } const rows[] = {{eLeftLine, 1e60, 22.0, 20.2}, {eLeftLine, 25.0, 25.0, 20.2},
                      {eLeftLine, 3.0, 20.2, 20.2},  {eTopLine, 1e60, 20.0, 2.0},
                      {eTopLine, 1.0, 2.0, 2.0},     {eCrossHairVerticalLine, 5.0, 0.0, 2.0}};
    for (const auto& row : rows) {
      EXPECT_NEAR(body.getResolvedExtensionLength(row.stored, row.arm, 77.0), row.length, 1e-9);
      EXPECT_NEAR(body.getMinExtension(row.arm), row.least, 1e-9);
    }
    const ZnGeLineSeg3d left = body.getSubentLineGeometry(eLeftLine, false);
    EXPECT_TRUE(near(left.startPoint(), {28, 20, 0}) && near(left.endPoint(), {29.6, 20, 0}))
        << "of the member";
    const ZnGeLineSeg3d top = body.getSubentLineGeometry(eTopLine, true);
    EXPECT_TRUE(near(top.startPoint(), {50, 24, 0}) && near(top.endPoint(), {50, 40.5, 0}));
  });
  bool full = false, show = false;
  const Wrapper wrapper(ring);
  EXPECT_TRUE(ZnTorviLyxUtils::getTorviPatternContext(&wrapper, full, show) && full && show);
  for (const ZnDbObjectId none :
       {addPattern(holes, {kRing, true, false}), addPattern(addHoles({{0, 0}, {9, 0}}))})
    ask(none, [](const Body& body) {
      ZnGeCircArc3d circle({1, 2, 3}, ZnGeVector3d::kZAxis, 4.0);
      EXPECT_EQ(body.getRefCircle(circle), Quorl::eNothingToDo);
      EXPECT_EQ(circle.radius(), 4.0);
      EXPECT_EQ(body.getSubentLineGeometry(eTopLine, true).length(), 0.0);
    });
}

TEST_F(PatternBody, LinesOfAnEarlierVersionGetTheirOvershootAtTheEnds) {
  // The last is no member: it lies round the first.
  const ZnDbObjectId row = addPattern(addHoles({{0, 0, 2}, {10, 0}, {20, 0, 3}, {0, 0, 4}}));
  struct {
    ZnString key;
    double start, end, fixedStart, fixedEnd;
  } const rows[] = {{L"CenterLine-0-1-2", 0, 20, -2.5, 23.5},
                    {L"CenterLine-0-1-2", 20, 0, 23.5, -2.5},
                    {L"CenterLine-0-1-2", 0, 20.001, 0, 20.001},
                    {L"MajorAxis", 0, 20, 0, 20}};
  for (const auto& line : rows) {
    ZnGePoint3d start(line.start, 0, 0), end(line.end, 0, 0);
    ask(row, [&](const Body& body) { body.fixCenterLineEndPointsForLegayObj(line.key, start, end); });
    EXPECT_TRUE(near(start, {line.fixedStart, 0, 0}) && near(end, {line.fixedEnd, 0, 0}));
  }
}

} // namespace
