#include <algorithm>

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

TEST_F(AutoFill, ThePickedHolesChooseWhatIsFilled) {
  const Holes holes = with(with(row(6, 40.0), ring(8, 8)), {{3.0, 17.0}, {-21.0, 33.0}});
  const Indices ringHoles = {6, 7, 8, 9, 10, 11, 12, 13};
  std::pair<std::vector<int>, Indices> const rows[] = {{{0, 1}, sixOfRow_},
                                                       {{2, 5}, sixOfRow_},
                                                       {{1, 2, 4}, sixOfRow_},
                                                       {{6, 7, 8}, ringHoles},
                                                       {{7, 10, 12}, ringHoles}};
  const ZnGeMatrix3d turned =
      ZnGeMatrix3d::translation({100.0, -7.0, 0.0}) * ZnGeMatrix3d::rotation(0.7, ZnGeVector3d::kZAxis);
  const auto mirror = ZnGeMatrix3d::mirroring(ZnGePlane(ZnGePoint3d::kOrigin, ZnGeVector3d::kXAxis));
  for (const ZnGeMatrix3d& place : {ZnGeMatrix3d::kIdentity, turned, turned * mirror}) {
    const ZnArray<ZnDbEdgeRef> edges = nestedEdges(holes, place);
    for (const auto& [picks, filled] : rows) {
      SCOPED_TRACE(testing::PrintToString(picks));
      Builder builder(db_.get());
      pick(builder, edges, picks);
      EXPECT_EQ(taken(builder, edges), filled);
      EXPECT_EQ(builder.inputEdgeCount(), static_cast<int>(picks.size()));
      EXPECT_EQ(builder.patternType(), filled == sixOfRow_ ? kRow : kRing);
      const std::string members = centerLine(create(builder));
      EXPECT_EQ(std::count(members.begin(), members.end(), '-'), static_cast<int>(filled.size()));
    }
  }
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
  EXPECT_FALSE(builder.removeInputEdge(edges[5])) << "it was not picked";
  builder.clearInput();
  EXPECT_TRUE(builder.inputEdges().isEmpty() && builder.inputEdgeCount() == 0);
  const ZnArray<ZnDbEdgeRef> strayed = nestedEdges(with(ring(4, 4), {{3.0, 4.0}, {-2.0, 5.0}}));
  pick(builder, strayed, {0, 1, 2, 3, 4});
  EXPECT_EQ(taken(builder, strayed), (Indices{0, 1, 2, 3})) << "what does not fit goes, though picked";
  builder.suppressAutoFill(true);
  EXPECT_EQ(builder.inputEdgeCount(), 4);
}

TEST_F(AutoFill, WithNothingToAddThePicksDecide) {
  for (const bool nested : {false, true}) {
    const ZnArray<ZnDbEdgeRef> edges = nested ? nestedEdges(ring(5, 5)) : edgesOf(ring(5, 5));
    Builder builder(db_.get());
    EXPECT_FALSE(builder.autoFillPattern()) << "no edge at all";
    pick(builder, edges, {0, 1, 2, 3, 4});
    EXPECT_FALSE(builder.autoFillPattern());
    EXPECT_EQ(builder.inputEdges().length(), 5);
    EXPECT_EQ(builder.patternType(), kRing);
    setAuto(0);
    EXPECT_EQ(builder.patternType(), kRing) << "nothing was filled that could go";
    setAuto(1);
  }
}

TEST_F(AutoFill, OfConcentricCirclesTheHoleIsTaken) {
  const double half = ZnGe::kPi;
  struct {
    const char* what;
    Hole first, second;
    int kept; // 0 or 1
  } const rows[] = {{"the larger", {10.0, 0.0, 1.0}, {10.0, 0.0, 1.5}, 1},
                    {"the earlier of equals", {10.0, 0.0, 1.0}, {10.0, 0.0, 1.0}, 0},
                    {"a closed one, though smaller", {10.0, 0.0, 1.5, half}, {10.0, 0.0, 0.5}, 1},
                    {"a closed one that came first", {10.0, 0.0, 0.5}, {10.0, 0.0, 1.5, half}, 0},
                    {"the larger of two arcs", {10.0, 0.0, 1.0, half}, {10.0, 0.0, 1.5, half}, 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    // The last two are no candidates: one is hidden, one is a point.
    const Holes holes = {{0.0, 0.0}, {5.0, 0.0}, row.first, row.second, {15.0, 0.0}, {20.0, 0.0, 1e-7}};
    const ZnArray<ZnDbEdgeRef> edges = nestedEdges(holes);
    change<ZnDbEntity>(edges[4].entity().leafId(), [](ZnDbEntity& e) { e.setVisibility(ZnDb::kInvisible); });
    Builder builder(db_.get());
    pick(builder, edges, {0, 1});
    EXPECT_EQ(taken(builder, edges), (Indices{0, 1, 2 + row.kept}));
  }
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
  a.suppressAutoFill(true);
  EXPECT_TRUE(a.inputEdges().length() == 2 && a.patternType() == kNone);
  a.suppressAutoFill(false);
  EXPECT_EQ(a.inputEdges().length(), 2);
  a.addInputEdge(edges[2]);
  EXPECT_EQ(a.inputEdges().length(), 6);
  setAuto(0);
  a.suppressAutoFill(true);
  setAuto(1);
  EXPECT_TRUE(a.autoFillMode()) << "told while the mode was off, it did not count";
}

TEST_F(AutoFill, AnEditedPatternGetsTheFilledEdgesToo) {
  const ZnArray<ZnDbEdgeRef> edges = nestedEdges(ring(8, 8));
  setAuto(0);
  const ZnDbObjectId id = addPattern({edges[0], edges[2], edges[4]}, {});
  setAuto(1);
  Builder builder(db_.get());
  ASSERT_EQ(builder.loadTorvi(id), Quorl::eOk);
  const Builder before(builder);
  builder.undoAutoFillPattern();
  EXPECT_EQ(builder.patternType(), kRing) << "a loaded pattern keeps its type";
  EXPECT_TRUE(builder.autoFillPattern());
  EXPECT_EQ(builder.inputEdgeCount(), 3);
  EXPECT_TRUE(builder.hasEditChanges(before));
  ASSERT_EQ(builder.modifyTorvi(), Quorl::eOk);
  EXPECT_EQ(Wrapper(id).edgeRefCount(), 8);
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
