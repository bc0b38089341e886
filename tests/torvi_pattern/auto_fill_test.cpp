#include "quorl/view/view_rep_block_reference.h"
#include "torvi_pattern/pattern_fixture.h"

namespace {

using Builder = ZnCenterMarkPatternBuilder;
using Indices = std::set<int>;

class AutoFill : public PatternTest {
protected:
  void SetUp() override {
    DrawingTest::SetUp();
    setAuto(1);
  }
  static void pick(Builder& builder, const ZnArray<ZnDbEdgeRef>& edges, const std::vector<int>& picks) {
    for (const int i : picks) builder.addInputEdge(edges[i]);
  }
  // Which of the edges the builder has.
  static Indices taken(const Builder& builder, const ZnArray<ZnDbEdgeRef>& edges) {
    Indices indices;
    for (int i = 0; i < edges.length(); ++i)
      if (builder.inputEdges().contains(edges[i])) indices.insert(i);
    return indices;
  }
  const Indices sixOfRow_ = {0, 1, 2, 3, 4, 5};
};

// What the picks choose stands as a scene.
TEST_F(AutoFill, WhatIsHiddenOrAPointIsNoHole) {
  const ZnArray<ZnDbEdgeRef> edges = nestedEdges(with(row(4), {{20.0, 0.0, 1e-7}}));
  change<ZnDbEntity>(edges[2].entity().leafId(), [](ZnDbEntity& e) { e.setVisibility(ZnDb::kInvisible); });
  Builder builder(db_.get());
  pick(builder, edges, {0, 1});
  EXPECT_EQ(taken(builder, edges), (Indices{0, 1, 3}));
  EXPECT_EQ(builder.inputEdgeCount(), 2);
}

TEST_F(AutoFill, AFillNeverBuildsOnAFill) {
  const ZnArray<ZnDbEdgeRef> edges = nestedEdges(with(row(6), row(6, 5.0)));
  Builder builder(db_.get());
  pick(builder, edges, {0, 2});
  EXPECT_EQ(taken(builder, edges), sixOfRow_);
  // Asked of the picks alone: what was filled may be picked still.
  EXPECT_TRUE(builder.isValidInputEdge(edges[4]));
  EXPECT_FALSE(builder.isValidInputEdge(edges[2]));
  EXPECT_TRUE(builder.removeInputEdge(edges[0]));
  EXPECT_EQ(builder.inputEdgeCount(), 1);
  builder.addInputEdge(edges[8]);
  EXPECT_EQ(taken(builder, edges), (Indices{2, 3, 8, 9})) << "no row, but the smallest ring of the two";
  EXPECT_FALSE(builder.removeInputEdge(edges[3])) << "it was not picked";
  EXPECT_EQ(taken(builder, edges), (Indices{2, 3, 8, 9})) << "and comes back with the others";
  builder.clearInput();
  EXPECT_TRUE(builder.inputEdges().isEmpty() && builder.inputEdgeCount() == 0);
  const ZnArray<ZnDbEdgeRef> strayed = nestedEdges(with(ring(4, 4), {{3.0, 4.0}, {-2.0, 5.0}}));
  pick(builder, strayed, {0, 1, 2, 3, 4});
  EXPECT_EQ(taken(builder, strayed), (Indices{0, 1, 2, 3})) << "what does not fit goes, though picked";
  builder.suppressAutoFill(true);
  EXPECT_EQ(builder.inputEdgeCount(), 4);
}

TEST_F(AutoFill, TheVariableReachesEveryLivingBuilder) {
  const ZnArray<ZnDbEdgeRef> edges = nestedEdges(row(6));
  Builder a(db_.get()), b(db_.get());
  for (Builder* builder : {&a, &b}) pick(*builder, edges, {0, 1});
  const Builder copy(a);
  { const Builder gone(db_.get()); }
  for (const bool on : {false, true}) {
    setAuto(on);
    EXPECT_EQ(a.autoFillMode(), on);
    for (const Builder* builder : {&a, &b}) EXPECT_EQ(builder->inputEdges().length(), on ? 6 : 2);
    EXPECT_EQ(copy.inputEdges().length(), 6) << "copies hear of nothing";
  }
  // For one alone; lifted, it fills at the next change.
  for (const bool suppressed : {true, false}) {
    a.suppressAutoFill(suppressed);
    EXPECT_EQ(a.inputEdges().length(), 2);
  }
  a.addInputEdge(edges[2]);
  EXPECT_EQ(a.inputEdges().length(), 6);
  setAuto(0);
  a.suppressAutoFill(true);
  setAuto(1);
  EXPECT_TRUE(a.autoFillMode()) << "told while the mode was off, it did not count";
}

TEST_F(AutoFill, AnEditedPatternGetsTheFilledEdgesToo) {
  const ZnArray<ZnDbEdgeRef> edges = nestedEdges(ring(8, 8));
  Builder builder(db_.get());
  EXPECT_FALSE(builder.autoFillPattern()) << "no edge at all";
  setAuto(0);
  const ZnDbObjectId id = addPattern({edges[0], edges[2], edges[4]}, {});
  setAuto(1);
  ASSERT_EQ(builder.loadTorvi(id), Quorl::eOk);
  const Builder before(builder);
  builder.undoAutoFillPattern();
  EXPECT_EQ(builder.patternType(), kRing) << "a loaded pattern keeps its type";
  EXPECT_TRUE(builder.autoFillPattern());
  EXPECT_TRUE(builder.inputEdgeCount() == 3 && builder.hasEditChanges(before));
  ASSERT_EQ(builder.modifyTorvi(), Quorl::eOk);
  EXPECT_EQ(centerLine(id).size(), std::string("CenterLine-0-1-2-3-4-5-6-7").size());
}

// Shows what it is told to, or not.
class BrokenView : public ZnDbLogicalTransformPE {
public:
  Quorl::ErrorStatus queryTransform(ZnDbObjectId object) const override {
    return object == view ? Quorl::eOk : Quorl::eNothingToDo;
  }
  Quorl::ErrorStatus queryEdge(const ZnDbEdgeRef& edge) const override {
    return cutAway.count(edge.entity().leafId()) ? kEdgeIsCutAway : Quorl::eOk;
  }
  void noteSource(ZnDbObjectId, const ZnGeCurve3d*) override {}
  Quorl::ErrorStatus getTransform(ZnGeMatrix3d&) const override { return Quorl::eNothingToDo; }
  ZnDbObjectId view;
  std::set<ZnDbObjectId> cutAway;
};

TEST_F(AutoFill, DocumentsOfDrawingViewsNarrowTheCandidates) {
  Holes holes = row(6);
  holes[3].radius = 2.0;
  holes[4].span = ZnGe::kPi;
  holes[5].radius = 1.0 + 5e-7;
  const ZnArray<ZnDbEdgeRef> edges = nestedEdges(holes);
  BrokenView view;
  view.cutAway = {edges[2].entity().leafId(), edges[5].entity().leafId()};
  ZnDbBlockReference::desc()->addX(ZnDbLogicalTransformPE::desc(), &view);
  struct {
    bool equalOnly, closedOnly, broken, known;
    std::vector<int> picks;
    Indices filled;
  } const rows[] = {{false, false, false, false, {0, 1}, sixOfRow_},
                    {true, false, false, false, {0, 1}, {0, 1, 2, 4, 5}},
                    {false, true, false, false, {0, 1}, {0, 1, 2, 3, 5}},
                    {true, true, false, false, {0, 1}, {0, 1, 2, 5}},
                    {false, false, true, false, {0, 1}, {0, 1, 3, 4}},
                    {false, false, false, true, {0, 1}, {0, 1, 2, 4}},
                    // Picks that are not alike themselves ask for nothing that could be found.
                    {true, false, false, false, {4, 3}, {3, 4}},
                    {false, true, false, false, {3, 4}, {3, 4}}};
  for (const bool viewDocument : {true, false})
    for (const auto& row : rows) {
      SCOPED_TRACE(testing::Message() << viewDocument << (&row - rows));
      setHostDocumentKind(viewDocument);
      view.view = row.broken ? reference_ : ZnDbObjectId();
      Builder builder(db_.get());
      builder.considerEqualDiametersOnly(row.equalOnly);
      builder.filterOpenArcs(row.closedOnly);
      if (row.known) builder.setCandidateEdgeRefs({edges[2], edges[4]});
      pick(builder, edges, row.picks);
      EXPECT_EQ(taken(builder, edges), viewDocument ? row.filled : sixOfRow_);
      if (viewDocument && row.filled.count(3) && row.filled.count(5) && row.closedOnly)
        EXPECT_TRUE(builder.inputEdges().last() == edges[3]) << "by radius";
    }
  ZnDbBlockReference::desc()->delX(ZnDbLogicalTransformPE::desc());
}

// The same handles, and another drawing.
TEST_F(AutoFill, ABlockOfAnotherDrawingIsSearchedAnew) {
  Builder builder(db_.get());
  const ZnArray<ZnDbEdgeRef> here = nestedEdges(row(4));
  pick(builder, here, {0, 1});
  EXPECT_EQ(taken(builder, here), (Indices{0, 1, 2, 3}));
  const auto first = std::exchange(db_, std::make_unique<ZnDbDatabase>());
  zndbHostApplicationServices()->setWorkingDatabase(db_.get());
  const ZnArray<ZnDbEdgeRef> there = nestedEdges(row(6));
  builder.clearInput();
  pick(builder, there, {0, 1});
  EXPECT_EQ(taken(builder, there), sixOfRow_);
}

// The window of 60 by 20 allows radii up to 10 on the sheet.
TEST_F(AutoFill, ThroughAViewportCirclesTheSizeOfTheViewAreNoHoles) {
  const ZnArray<ZnDbEdgeRef> inBlock =
      nestedEdges({{0.0, 0.0}, {30.0, 0.0}, {60.0, 0.0, 10.0}, {90.0, 0.0, 10.01}, {150.0, 0.0, 20.01}});
  auto* window = new ZnDbViewport;
  window->setWidth(60.0);
  window->setHeight(20.0);
  const ZnDbObjectId viewport = add(window, db_->paperSpaceId());
  const ZnDbObjectId view = add(new ZnDbViewRepBlockReference(ZnGePoint3d::kOrigin, block_));
  change<ZnDbViewRepBlockReference>(
      view, [&](ZnDbViewRepBlockReference& shown) { EXPECT_EQ(shown.setViewportId(viewport), Quorl::eOk); });
  struct {
    double scale;
    bool throughViewport;
    Indices filled;
  } const rows[] = {{1.0, true, {0, 1, 2}}, {0.5, true, {0, 1, 2, 3}}, {1.0, false, {0, 1, 2, 3, 4}}};
  for (const auto& row : rows) {
    change<ZnDbViewport>(viewport, [&](ZnDbViewport& shown) { shown.setCustomScale(row.scale); });
    ZnArray<ZnDbEdgeRef> edges;
    for (const ZnDbEdgeRef& edge : inBlock) {
      ZnArray<ZnDbObjectId> path{view, edge.entity().leafId()};
      if (row.throughViewport) path.insertAt(0, viewport);
      edges.append(edgeAlong(path));
    }
    Builder builder(db_.get());
    pick(builder, edges, {0, 1});
    EXPECT_EQ(taken(builder, edges), row.filled) << row.scale;
  }
}

} // namespace
