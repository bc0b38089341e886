#include "torvi_pattern/builder_fixture.h"

namespace {

constexpr auto kNone = kCenterPatternNone;
constexpr auto kPolar = kCenterPatternPolar;
constexpr auto kLinear = kCenterPatternLinear;

using PatternBuilder = PatternBuilderTest;
using Builder = ZnCenterMarkPatternBuilder;

TEST_F(PatternBuilder, TheEdgesDecideWhatANewPatternIs) {
  Holes gapOf121 = ring(4, 6), strayed = ring(12, 12);
  const ZnGePoint3d last = at(10.0, 239.0);
  gapOf121.push_back({last.x, last.y});
  strayed.push_back({3.0, 1.0});
  struct {
    const char* what;
    Holes holes;
    CenterMarkPatternType wanted, type;
    bool full;
  } const rows[] = {
      {"one, asked to be a ring", row(1), kPolar, kNone, false},
      {"two", row(2), kNone, kNone, false},
      {"two, asked to be a row", row(2), kLinear, kNone, false},
      {"three in a row", row(3), kNone, kLinear, false},
      {"three of a ring", ring(3, 3), kNone, kPolar, true},
      {"three of a ring, asked to be a row", ring(3, 3), kLinear, kLinear, false},
      {"a row, asked to be a ring", row(4), kPolar, kNone, false},
      {"a gap of 120 degrees", ring(5, 6), kNone, kPolar, true},
      {"a gap of 121 degrees", gapOf121, kNone, kPolar, false},
      {"a ring and a stray hole", strayed, kNone, kPolar, true},
      {"holes larger than their ring", ring(4, 4, 2.0, 2.5), kPolar, kNone, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Builder builder(db_.get());
    builder.setPatternType(row.wanted);
    builder.setInputEdges(edgesOf(row.holes));
    EXPECT_EQ(builder.patternType(), row.type);
    EXPECT_EQ(builder.isFullPCD(), row.full);
    EXPECT_EQ(builder.inputEdgeCount(), static_cast<int>(row.holes.size()));
  }
}

TEST_F(PatternBuilder, AddingAndRemovingOneByOneIsFollowed) {
  const ZnArray<ZnDbEdgeRef> edges = edgesOf(ring(5, 5));
  Builder builder(db_.get());
  for (int i = 0; i < edges.length(); ++i) {
    builder.addInputEdge(edges[i]);
    EXPECT_EQ(builder.patternType(), i < 2 ? kNone : kPolar) << i;
  }
  builder.setShowCentermark(true);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(builder.removeInputEdge(edges[i]));
  EXPECT_FALSE(builder.removeInputEdge(edges[0]));
  EXPECT_EQ(builder.inputEdgeCount(), 2);
  EXPECT_EQ(builder.patternType(), kNone);
  EXPECT_FALSE(builder.showCenterMark()) << "only a ring has a pitch center";
}

TEST_F(PatternBuilder, AReferenceEdgeDecidesOnTwoCircles) {
  const ZnDbEdgeRef arc = edgeOf(addArc({0.0, 0.0, 0.0}, 20.0, 0.0, 3.0));
  const ZnDbEdgeRef line = edgeOf(addLine({0.0, -9.0, 0.0}, {7.0, -9.0, 0.0}));
  const ZnDbEdgeRef elsewhere = edgeOf(addArc({40.0, 3.0, 0.0}, 2.0, 0.0, 3.0));
  const ZnDbEdgeRef above = edgeOf(addLine({0.0, 0.0, 5.0}, {1.0, 0.0, 5.0}));
  struct {
    const char* what;
    Holes holes;
    const ZnDbEdgeRef& reference;
    bool valid;
    CenterMarkPatternType type;
  } const rows[] = {{"an arc round which both lie", ring(2, 4), arc, true, kPolar},
                    {"an arc round which one lies", ring(2, 4), elsewhere, false, kPolar},
                    {"a line along which both lie", row(2), line, true, kLinear},
                    {"a line out of the plane", row(2), above, false, kNone},
                    {"a ring about the arc", ring(5, 5), arc, true, kPolar}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Builder builder(db_.get());
    builder.setInputEdges(edgesOf(row.holes));
    EXPECT_EQ(builder.isValidRefEdge(row.reference), row.valid);
    EXPECT_FALSE(builder.hasReferenceEdge()) << "asking changes nothing";
    builder.setReferenceEdge(row.reference, -1.0);
    EXPECT_EQ(builder.patternType(), row.type);
    EXPECT_EQ(builder.hasReferenceEdge(), row.type != kNone) << "an undecided pattern drops it";
  }
}

TEST_F(PatternBuilder, APickOnAReferenceArcIsAnOffsetFromItsStart) {
  Builder builder(db_.get());
  builder.setInputEdges(edgesOf(ring(4, 4)));
  const double degree = ZnGe::kPi / 180.0;
  const ZnDbEdgeRef arc = edgeOf(addArc({0.0, 0.0, 0.0}, 20.0, 300.0 * degree, 80.0 * degree));
  const ZnDbEdgeRef circle = edgeOf(addCircle({0.0, 0.0, 0.0}, 20.0));
  struct {
    const ZnDbEdgeRef& edge;
    double degrees, distance;
    bool taken;
    double offset;
  } const rows[] = {{arc, 300.0, 20.0, true, 0.0},    {arc, 10.0, 90.0, true, 70.0},
                    {arc, 80.0, 3.0, true, 140.0},    {arc, 81.0, 20.0, false, 0.0},
                    {arc, 299.0, 20.0, false, 0.0},   {arc, 180.0, 5.0, false, 0.0},
                    {circle, 200.0, 5.0, true, 200.0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.degrees);
    builder.clearReferenceEdge();
    EXPECT_EQ(builder.setReferenceEdge(row.edge, at(row.distance, row.degrees)), row.taken);
    ZnDbEdgeRef stored;
    double param = 0.0;
    EXPECT_EQ(builder.getReferenceEdge(stored, param), row.taken);
    EXPECT_NEAR(param, row.taken ? row.offset * degree : -1.0, 1e-9);
  }
  EXPECT_FALSE(builder.setReferenceEdge(ZnDbEdgeRef(), ZnGePoint3d::kOrigin));
}

TEST_F(PatternBuilder, AnEdgeMayJoinWhereAllThenLieOnOneCurve) {
  const ZnArray<ZnDbEdgeRef> edges = edgesOf(ring(8, 8));
  const ZnGePoint3d between = at(10.0, 20.0);
  std::pair<Hole, bool> const rows[] = {{{between.x, between.y}, true},
                                        {{between.x, between.y + 0.01}, false},
                                        {{0.0, 0.0}, false},
                                        {{10.0, 0.0, 0.5}, false}}; // within the first
  for (const CenterMarkPatternType wanted : {kNone, kPolar, kLinear}) {
    Builder builder(db_.get());
    builder.setPatternType(wanted);
    builder.setInputEdges(edges);
    EXPECT_FALSE(builder.isValidInputEdge(edges[3])) << "it is one already";
    for (const auto& [hole, valid] : rows)
      EXPECT_EQ(builder.isValidInputEdge(edgeOf(add(hole))), valid && wanted != kLinear);
  }
}

TEST_F(PatternBuilder, FirstValuesAreTheCallersAndTheStyles) {
  put(L"CENTERCROSSSIZE", L"0.25x");
  const ZnDbEdgeRef arc = edgeOf(addArc({0.0, 0.0, 0.0}, 20.0, 0.0, 3.0));
  struct {
    Holes holes;
    CenterMarkPatternType wanted;
    ZnDbEdgeRef reference;
    bool full, show;
    CenterMarkPatternType type;
  } const rows[] = {{ring(4, 4), kNone, {}, false, true, kPolar},
                    {ring(4, 4), kLinear, {}, true, false, kLinear},
                    {ring(2, 4), kPolar, arc, true, false, kPolar},
                    {row(3), kNone, {}, true, false, kLinear},
                    {row(2), kNone, {}, false, false, kLinear}};
  for (const auto& row : rows) {
    put(L"CENTEREXE", ZnRxVariableValue::ofDouble(1.75));
    ZnDbObjectId id;
    ASSERT_EQ(ZnTorviLyxUtils::createCenterMarkPattern(edgesOf(row.holes), id, row.wanted, row.reference,
                                                       row.full, row.show, nullptr),
              Quorl::eOk);
    put(L"CENTEREXE", ZnRxVariableValue::ofDouble(0.25));
    const auto made = pattern(id);
    EXPECT_EQ(made.getCenterPatternType(), row.type);
    EXPECT_EQ(made.isFullPCD(), row.full && row.type == kPolar);
    EXPECT_EQ(made.showCenterMark(), row.show);
    EXPECT_EQ(made.edgeRefCount(), static_cast<int>(row.holes.size()));
    EXPECT_EQ(made.crossHairLengthExpression(), L"0.25x");
    EXPECT_EQ(made.horizontalStartOvershoot(), 1.75) << "stored, not read again";
    ZnDbEdgeRef reference;
    double pick = 0.0;
    EXPECT_EQ(made.getReferenceEdge(reference, pick), !row.reference.isEmpty());
  }
}

TEST_F(PatternBuilder, AnEditWritesTheDifference) {
  Builder maker(db_.get());
  maker.setInputEdges(edgesOf(ring(4, 8)));
  const ZnDbObjectId id = create(maker);
  ASSERT_EQ(pattern(id).setEndOvershoot(L"CenterLine-0-1-2-3", 2.5), Quorl::eOk);
  Builder loaded(db_.get());
  ASSERT_EQ(loaded.loadTorvi(id), Quorl::eOk);
  EXPECT_EQ(loaded.patternType(), kPolar);
  EXPECT_FALSE(loaded.isAutoFullPCD());

  const Builder before(loaded);
  const ZnDbEdgeRef rim = edgeOf(addCircle({0.0, 0.0, 0.0}, 30.0)), fifth = edgeOf(add(ring(5, 8)[4]));
  std::function<void(Builder&)> const changes[] = {[](Builder& b) { b.setIsFullPCD(true); },
                                                   [](Builder& b) { b.setShowCentermark(true); },
                                                   [](Builder& b) { b.setPatternType(kLinear); },
                                                   [&](Builder& b) { b.setReferenceEdge(rim, 0.5); },
                                                   [](Builder& b) { b.removeInputEdge(b.inputEdges()[0]); },
                                                   [&](Builder& b) { b.addInputEdge(fifth); }};
  for (const auto& change : changes) {
    Builder changed(before);
    change(changed);
    EXPECT_TRUE(changed.hasEditChanges(before)) << &change - changes;
  }
  EXPECT_FALSE(loaded.hasEditChanges(before) || maker.hasEditChanges(before));

  EXPECT_TRUE(loaded.removeInputEdge(loaded.inputEdges()[1]));
  loaded.addInputEdge(fifth);
  loaded.setShowCentermark(true);
  loaded.setReferenceEdge(rim, 1.0);
  ASSERT_EQ(loaded.modifyTorvi(), Quorl::eOk);
  EXPECT_EQ(centerLine(id), "CenterLine-0-2-3-4") << "the emptied place stays";
  EXPECT_EQ(pattern(id).endOvershoot(L"CenterLine-0-2-3-4"), 2.5);
  EXPECT_TRUE(pattern(id).showCenterMark());
  ZnDbEdgeRef reference;
  double pick = 0.0;
  EXPECT_TRUE(pattern(id).getReferenceEdge(reference, pick));

  Builder again(db_.get());
  ASSERT_EQ(again.loadTorvi(id), Quorl::eOk);
  EXPECT_EQ(again.inputEdgeCount(), 4) << "without the emptied one";
  again.clearReferenceEdge();
  ASSERT_EQ(again.modifyTorvi(), Quorl::eOk);
  EXPECT_FALSE(pattern(id).getReferenceEdge(reference, pick));
  EXPECT_EQ(statusOf(id), kIsUpToDateAssocStatus);
  EXPECT_EQ(again.loadTorvi(addMark(addCircle({0.0, 90.0, 0.0}, 4.0))), Quorl::eInvalidInput)
      << "another kind";
}

TEST_F(PatternBuilder, AWrapperAnswersForLivingAndDead) {
  Builder builder(db_.get());
  builder.setInputEdges(edgesOf(row(4)));
  const ZnDbObjectId id = create(builder);
  const ZnString key(L"CenterLine-0-1-2-3");
  auto wrapper = pattern(id);
  EXPECT_EQ(wrapper.setStartOvershoot(key, -1.0), Quorl::eInvalidInput);
  EXPECT_EQ(wrapper.setEndOvershoot(key, -1.0), Quorl::eInvalidInput);
  EXPECT_EQ(wrapper.setStartOvershoot(L"CenterLine-0", 1.0), Quorl::eInvalidInput);
  EXPECT_EQ(wrapper.setStartOvershoot(key, 4.0), Quorl::eOk);
  evaluate(id);
  ZnGePoint3d start, end;
  EXPECT_EQ(wrapper.getCenterLineEndPoints(key, start, end), Quorl::eOk);
  EXPECT_TRUE(near(start, {-5.0, 0.0, 0.0}) && near(end, {16.5, 0.0, 0.0}));
  // An earlier version drew from center to center.
  const ZnGeMatrix3d toBlock = wrapper.blockTransform().inverse();
  change<ZnDbLine>(wrapper.getOutputEdge(key), [&](ZnDbLine& line) {
    line.setStartPoint(toBlock * ZnGePoint3d(0.0, 0.0, 0.0));
    line.setEndPoint(toBlock * ZnGePoint3d(15.0, 0.0, 0.0));
  });
  EXPECT_EQ(wrapper.getCenterLineEndPoints(key, start, end), Quorl::eOk);
  EXPECT_TRUE(near(start, {-1.5, 0.0, 0.0}) && near(end, {16.5, 0.0, 0.0}));
  erase(id);
  erase(wrapper.actionBody());
  ZnArray<ZnString> keys;
  EXPECT_EQ(wrapper.getCenterPatternType(), kNone);
  EXPECT_EQ(wrapper.startOvershoot(key), 0.0);
  EXPECT_EQ(wrapper.setIsFullPCD(true), Quorl::eWasErased);
  EXPECT_EQ(wrapper.getCenterLineDependencyKeys(keys), Quorl::eWasErased);
  EXPECT_EQ(wrapper.getCenterLineEndPoints(key, start, end), Quorl::eWasErased);
  EXPECT_TRUE(near(start, {-1.5, 0.0, 0.0})) << "what was asked for stays as it was";
}

} // namespace
