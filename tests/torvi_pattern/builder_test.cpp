#include "torvi_pattern/pattern_fixture.h"

namespace {

class PatternBuilder : public PatternTest {};
using Builder = ZnCenterMarkPatternBuilder;

TEST_F(PatternBuilder, WhenTooFewEdgesAreLeftNothingIsDecidedAnyMore) {
  const ZnArray<ZnDbEdgeRef> edges = edgesOf(ring(5, 5));
  Builder builder(db_.get());
  for (const ZnDbEdgeRef& edge : edges) builder.addInputEdge(edge);
  builder.setShowCentermark(true);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(builder.removeInputEdge(edges[i]));
  EXPECT_FALSE(builder.removeInputEdge(edges[0]));
  EXPECT_TRUE(builder.inputEdgeCount() == 2 && builder.patternType() == kNone);
  EXPECT_FALSE(builder.showCenterMark()) << "only a ring has a pitch center";
}

TEST_F(PatternBuilder, EdgesAndReferenceDecideWhatANewPatternIs) {
  const ZnDbEdgeRef arc = edgeOf(addArc({0.0, 0.0, 0.0}, 20.0, 0.0, 3.0)), none;
  const ZnDbEdgeRef line = edgeOf(addLine({0.0, -9.0, 0.0}, {7.0, -9.0, 0.0}));
  const ZnDbEdgeRef elsewhere = edgeOf(addArc({40.0, 3.0, 0.0}, 2.0, 0.0, 3.0));
  const ZnDbEdgeRef above = edgeOf(addLine({0.0, 0.0, 5.0}, {1.0, 0.0, 5.0}));
  struct {
    const char* what;
    Holes holes;
    CenterMarkPatternType wanted;
    const ZnDbEdgeRef& reference;
    bool valid;
    CenterMarkPatternType type;
    bool full;
  } const rows[] = {{"one, asked to be a ring", row(1), kRing, none, false, kNone, false},
                    {"two, asked to be a row", row(2), kRow, none, false, kNone, false},
                    {"a ring, asked to be a row", ring(3, 3), kRow, none, false, kRow, false},
                    {"a row, asked to be a ring at first", row(4), kRing, none, true, kRow, false},
                    {"half a ring", ring(4, 8), kNone, none, true, kRing, false},
                    {"an arc round which both lie", ring(2, 4), kNone, arc, true, kRing, false},
                    {"an arc round which one lies", ring(2, 4), kNone, elsewhere, false, kRing, false},
                    {"a line along which both lie", row(2), kNone, line, true, kRow, false},
                    {"a line out of the plane", row(2), kNone, above, false, kNone, false},
                    {"a ring about the arc", ring(5, 5), kNone, arc, true, kRing, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Builder builder(db_.get());
    builder.setPatternType(row.wanted);
    builder.setInputEdges(edgesOf(row.holes));
    EXPECT_EQ(builder.isValidRefEdge(row.reference), row.valid);
    EXPECT_FALSE(builder.hasReferenceEdge()) << "asking changes nothing";
    builder.setReferenceEdge(row.reference, -1.0);
    EXPECT_EQ(builder.patternType(), row.type);
    EXPECT_EQ(builder.isFullPCD(), row.full);
    EXPECT_EQ(builder.hasReferenceEdge(), row.type != kNone && !row.reference.isEmpty())
        << "an undecided pattern drops it";
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
  for (const CenterMarkPatternType wanted : {kNone, kRing, kRow}) {
    Builder builder(db_.get());
    builder.setPatternType(wanted);
    builder.setInputEdges(edges);
    EXPECT_FALSE(builder.isValidInputEdge(edges[3])) << "it is one already";
    for (const auto& [hole, valid] : rows)
      EXPECT_EQ(builder.isValidInputEdge(edgeOf(add(hole))), valid && wanted != kRow);
  }
}

TEST_F(PatternBuilder, AnEditWritesTheDifference) {
  const ZnDbObjectId id = addPattern(addHoles(ring(4, 8)));
  Builder loaded(db_.get());
  ASSERT_EQ(loaded.loadTorvi(id), Quorl::eOk);
  EXPECT_FALSE(loaded.isAutoFullPCD());
  const Builder before(loaded);
  const ZnDbEdgeRef rim = edgeOf(addCircle({0.0, 0.0, 0.0}, 30.0)), fifth = edgeOf(add(ring(5, 8)[4]));
  std::function<void(Builder&)> const changes[] = {[](Builder& b) { b.setIsFullPCD(true); },
                                                   [](Builder& b) { b.setShowCentermark(true); },
                                                   [](Builder& b) { b.setPatternType(kRow); },
                                                   [&](Builder& b) { b.setReferenceEdge(rim, 0.5); },
                                                   [](Builder& b) { b.removeInputEdge(b.inputEdges()[0]); },
                                                   [&](Builder& b) { b.addInputEdge(fifth); }};
  for (const auto& change : changes) {
    Builder changed(before);
    change(changed);
    EXPECT_TRUE(changed.hasEditChanges(before)) << &change - changes;
  }
  EXPECT_FALSE(loaded.hasEditChanges(before) || Builder(db_.get()).hasEditChanges(before));
  ZnDbEdgeRef reference;
  double pick = 0.0;
  for (const double param : {1.0, -1.0, -2.0}) {
    const bool isSet = param > -2.0;
    isSet ? loaded.setReferenceEdge(rim, param) : loaded.clearReferenceEdge();
    ASSERT_EQ(loaded.modifyTorvi(), Quorl::eOk);
    EXPECT_EQ(Wrapper(id).getReferenceEdge(reference, pick), isSet);
    EXPECT_EQ(pick, isSet ? param : -1.0) << "not that of the edge before";
  }
  EXPECT_EQ(loaded.loadTorvi(addMark(addCircle({0.0, 90.0, 0.0}, 4.0))), Quorl::eInvalidInput)
      << "another kind";
}

TEST_F(PatternBuilder, AWrapperValidatesWhatItIsTold) {
  const ZnDbObjectId id = addPattern(addHoles(row(4)));
  const ZnString key(L"CenterLine-0-1-2-3");
  Wrapper wrapper(id);
  EXPECT_EQ(wrapper.setStartOvershoot(key, -1.0), Quorl::eInvalidInput);
  EXPECT_EQ(wrapper.setEndOvershoot(L"CenterLine-0", 1.0), Quorl::eInvalidInput);
  EXPECT_EQ(wrapper.setStartOvershoot(key, 4.0), Quorl::eOk);
  evaluate(id);
  ZnGePoint3d start, end;
  EXPECT_EQ(wrapper.getCenterLineEndPoints(key, start, end), Quorl::eOk);
  EXPECT_TRUE(near(start, {-5.0, 0.0, 0.0}) && near(end, {16.5, 0.0, 0.0}));
  EXPECT_EQ(Wrapper(addPattern(addHoles(ring(4, 4)))).getCenterLineEndPoints(key, start, end),
            Quorl::eNothingToDo);
}

} // namespace
