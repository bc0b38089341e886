// The current shape of an edge as the module sees it, whatever the edge is part of and seen through.
#include <cmath>
#include <memory>
#include <numbers>

#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/spline.h"
#include "quorl/view/view_rep_block_reference.h"
#include "support/point_text.h"
#include "torvi/core/action_body_utils.h"
#include "torvi_core/scripted_body.h"

namespace {

using Lyx = ZnTorviLyxUtils;
constexpr double kPi = std::numbers::pi;

class EdgeCurves : public ScriptedTest {
protected:
  static std::unique_ptr<ZnGeCurve3d> shape(const ZnDbEdgeRef& edge, bool fullCircle = false) {
    return std::unique_ptr<ZnGeCurve3d>(Lyx::evaluatedZnDbEdgeCurve(edge, fullCircle));
  }
  static ZnGePoint3d pointAt(const ZnGeCurve3d& curve, double part) {
    ZnGeInterval i;
    curve.getInterval(i);
    return curve.evalPoint(i.lowerBound() + part * (i.upperBound() - i.lowerBound()));
  }
  // Whether the edge shows this segment or arc, or nothing; arcs by their points, since their angles have
  // many origins.
  static testing::AssertionResult shows(const ZnDbEdgeRef& edge, bool fullCircle,
                                        const ZnGeCurve3d* expected) {
    const auto found = shape(edge, fullCircle);
    if (!found && !expected) return testing::AssertionSuccess();
    if (!found || !expected || found->type() != expected->type())
      return testing::AssertionFailure() << (found ? "another kind" : "no curve");
    for (const double part : {0.0, 0.3, 0.75, 1.0})
      if (const auto same = near(pointAt(*found, part), pointAt(*expected, part)); !same) return same;
    return testing::AssertionSuccess();
  }
};

TEST_F(EdgeCurves, KindByKind) {
  auto* chain = new ZnDbPolyline;
  chain->addVertexAt(0, {0.0, 0.0});
  chain->addVertexAt(1, {4.0, 0.0}, 1.0); // a half circle to the next
  chain->addVertexAt(2, {4.0, 2.0});
  const ZnDbObjectId polyline = add(chain), gone = addCircle({}, 1.0);
  erase(gone);
  const ZnGeCircArc3d half({4.0, 1.0, 0.0}, {0.0, 0.0, 1.0}, {0.0, -1.0, 0.0}, 1.0, 0.0, kPi);
  const ZnGeCircArc3d halfWhole({4.0, 1.0, 0.0}, {0.0, 0.0, 1.0}, 1.0);
  const ZnGeCircArc3d arc({1.0, 2.0, 0.0}, {0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}, 3.0, 0.5, 2.0);
  const ZnGeCircArc3d arcWhole({1.0, 2.0, 0.0}, {0.0, 0.0, 1.0}, 3.0);
  const ZnGeCircArc3d tilted({1.0, 2.0, 3.0}, {1.0, 1.0, 0.0}, 3.0);
  const ZnGeLineSeg3d line = segmentOf("1,1,1 4,5,6"), point = segmentOf("2,2 2,2"),
                      side = segmentOf("0,0 4,0");
  struct {
    const char* what;
    ZnDbEdgeRef edge;
    const ZnGeCurve3d *part, *whole; // null for no curve
  } const rows[] = {
      {"line", edgeAlong({addLine(line.startPoint(), line.endPoint())}), &line, &line},
      {"point-like line", edgeAlong({addLine(point.startPoint(), point.endPoint())}), &point, &point},
      {"arc", edgeAlong({addArc({1.0, 2.0, 0.0}, 3.0, 0.5, 2.0)}), &arc, &arcWhole},
      {"circle", edgeAlong({addCircle({1.0, 2.0, 3.0}, 3.0, {1.0, 1.0, 0.0})}), &tilted, &tilted},
      {"polyline, side", edgeAlong({polyline}, 0), &side, &side},
      {"polyline, arc", edgeAlong({polyline}, 1), &half, &halfWhole},
      {"polyline, no such edge", edgeAlong({polyline}, 7), nullptr, nullptr},
      {"circle, no such edge", edgeAlong({addCircle({}, 1.0)}, 3), nullptr, nullptr},
      {"spline", edgeAlong({add(new ZnDbSpline)}), nullptr, nullptr},
      {"ellipse", edgeAlong({add(new ZnDbEllipse)}), nullptr, nullptr},
      {"reference", edgeAlong({addReference(addEmptyBlock())}), nullptr, nullptr},
      {"erased", edgeAlong({gone}), nullptr, nullptr},
      {"empty", ZnDbEdgeRef(), nullptr, nullptr},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_TRUE(shows(row.edge, false, row.part));
    EXPECT_TRUE(shows(row.edge, true, row.whole));
  }
}

TEST_F(EdgeCurves, ThroughNestedReferencesAsTheyTurnAndMirror) {
  const ZnGeVector3d z(0.0, 0.0, 1.0);
  const ZnDbObjectId innerBlock = addEmptyBlock(), outerBlock = addEmptyBlock();
  const ZnDbObjectId arc = add(new ZnDbArc({2.0, 0.0, 0.0}, 1.5, 0.2, 1.7), innerBlock);
  const ZnDbObjectId line = add(new ZnDbLine({1.0, 1.0, 0.0}, {3.0, 1.0, 0.0}), innerBlock);
  const ZnDbObjectId inner = addReference(innerBlock, ZnGeMatrix3d(), outerBlock),
                     outer = addReference(outerBlock);
  EXPECT_TRUE(ZnDbTorviActionBodyUtils::isEdgeFromBlockRef(edgeAlong({outer, inner, arc})));
  for (const ZnDbEdgeRef& edge : {edgeAlong({line, inner, arc}), ZnDbEdgeRef()})
    EXPECT_FALSE(ZnDbTorviActionBodyUtils::isEdgeFromBlockRef(edge));
  const ZnGeMatrix3d turn = ZnGeMatrix3d::translation({5.0, 6.0, 0.0}) * ZnGeMatrix3d::rotation(0.8, z),
                     tilt = ZnGeMatrix3d::rotation(0.6, {1.0, 2.0, 0.0}),
                     mirror = ZnGeMatrix3d::mirroring(ZnGePlane({1.0, 0.0, 0.0}, {1.0, 0.5, 0.0})),
                     doubled = ZnGeMatrix3d::scaling(2.0, {1.0, 1.0, 0.0});
  const ZnGeMatrix3d kTransforms[] = {ZnGeMatrix3d(), tilt, turn * mirror * doubled};
  const auto onArc = [](double angle) {
    return ZnGePoint3d(2.0 + 1.5 * std::cos(angle), 1.5 * std::sin(angle), 0.0);
  };
  for (const ZnGeMatrix3d& byOuter : kTransforms)
    for (const ZnGeMatrix3d& byInner : kTransforms) {
      change<ZnDbBlockReference>(outer, [&](ZnDbBlockReference& r) { r.setBlockTransform(byOuter); });
      change<ZnDbBlockReference>(inner, [&](ZnDbBlockReference& r) { r.setBlockTransform(byInner); });
      EXPECT_EQ(Lyx::isCenterMirrored(outer), byOuter.det() < 0.0);
      const ZnGeMatrix3d all = byOuter * byInner;
      const ZnGeLineSeg3d segment(all * ZnGePoint3d(1.0, 1.0, 0.0), all * ZnGePoint3d(3.0, 1.0, 0.0));
      EXPECT_TRUE(shows(edgeAlong({outer, inner, line}), false, &segment));
      // A mirror may turn the arc's sense.
      const auto piece = shape(edgeAlong({outer, inner, arc})),
                 whole = shape(edgeAlong({outer, inner, arc}), true);
      ASSERT_TRUE(piece && piece->isKindOf(ZnGe::kCircularArc3d) && whole);
      const bool turned = !near(pointAt(*piece, 0.0), all * onArc(0.2));
      for (const double part : {0.0, 0.5, 1.0})
        EXPECT_TRUE(near(pointAt(*piece, turned ? 1.0 - part : part), all * onArc(0.2 + 1.5 * part)));
      EXPECT_NEAR(whole->length(), piece->length() * 2.0 * kPi / 1.5, 1e-9);
    }
}

TEST_F(EdgeCurves, ThroughAViewportTheyStandOnPaper) {
  const ZnDbObjectId viewport = addViewport(0.5, {100.0, 50.0, 0.0}, {10.0, 0.0}, kPi / 2.0);
  const ZnDbObjectId block = addEmptyBlock(), inner = add(new ZnDbLine({}, {4.0, 0.0, 0.0}), block),
                     reference = addReference(block, ZnGeMatrix3d::translation({10.0, 0.0, 0.0})),
                     circle = addCircle({12.0, 0.0, 0.0}, 6.0), point = addLineOf("10,4 10,4");
  const ZnGeLineSeg3d turned = segmentOf("100,50 100,52"), spot = segmentOf("98,50 98,50");
  EXPECT_TRUE(shows(edgeAlong({viewport, reference, inner}), false, &turned));
  EXPECT_TRUE(shows(edgeAlong({viewport, point}), false, &spot));
  EXPECT_EQ(Lyx::viewScale(viewport), 0.5);
  for (const ZnDbObjectId other : {circle, ZnDbObjectId()}) {
    EXPECT_EQ(Lyx::viewScale(other), 1.0);
    EXPECT_TRUE(Lyx::msWcsToPsWcs(other).isEqualTo(ZnGeMatrix3d()));
  }
  EXPECT_EQ(Lyx::getViewportIdFromEdgeRef(edgeAlong({viewport, circle})), viewport);
  EXPECT_TRUE(Lyx::getViewportIdFromEdgeRef(edgeOf(circle)).isNull());
  struct {
    ZnArray<ZnDbObjectId> path;
    int edge;
    bool throughViewport, subEntity;
  } const rows[] = {{{viewport, circle}, 0, true, true},
                    {{viewport, circle}, 1, true, false},
                    {{viewport}, 0, false, true},
                    {{reference, inner}, 0, false, true},
                    {{}, 0, false, false}};
  for (const auto& row : rows) {
    const ZnDbFullSubentPath path(row.path, ZnDbSubentId(ZnDb::kEdgeSubentType, row.edge));
    EXPECT_EQ(Lyx::isTranSpatialPath(path), row.throughViewport) << &row - rows;
    EXPECT_EQ(Lyx::isSubEntityPath(path), row.subEntity) << &row - rows;
  }
}

// A drawing view stands in its viewport's place: what is seen is the part that the view's block shows.
TEST_F(EdgeCurves, InDrawingViewsWithAndWithoutAViewport) {
  const ZnDbObjectId viewport = addViewport(0.5, {100.0, 50.0, 0.0}), plain = addViewport(1.0);
  const ZnDbObjectId block = addEmptyBlock();
  const ZnDbObjectId arc = add(new ZnDbArc({2.0, 0.0, 0.0}, 4.0, 0.5, 2.0), block);
  const ZnDbObjectId view = add(new ZnDbViewRepBlockReference({10.0, 0.0, 0.0}, block));
  change<ZnDbViewRepBlockReference>(view, [&](ZnDbViewRepBlockReference& held) {
    EXPECT_EQ(held.setViewportId(viewport), Quorl::eOk);
    held.setViewId(db_->layerZero());
  });
  const ZnDbSubentId anyEdge(ZnDb::kEdgeSubentType, 5);
  struct {
    ZnArray<ZnDbObjectId> path;
    bool inView, onSheet;
    ZnGePoint3d center;
    double radius;
  } const rows[] = {{{view, arc}, true, false, {12.0, 0.0, 0.0}, 4.0},
                    {{viewport, view, arc}, true, true, {106.0, 50.0, 0.0}, 2.0},
                    {{plain, arc}, false, false, {}, 0.0}};
  for (const auto& row : rows) {
    const ZnDbFullSubentPath path(row.path, anyEdge);
    ZnDbEdgeRef edge;
    EXPECT_EQ(Lyx::isInBrevixView(path), row.inView);
    EXPECT_EQ(Lyx::createEdgeRef(path, edge), Quorl::eOk);
    EXPECT_EQ(edge.subentId(), row.inView ? ZnDbSubentId(ZnDb::kEdgeSubentType, 0) : anyEdge);
    EXPECT_EQ(Lyx::isInBrevixView(edge), row.inView);
    ZnDbObjectId ofEdge, viewRep, viewId;
    EXPECT_EQ(Lyx::getBrevixView(edge, ofEdge, &viewRep, &viewId), row.inView);
    EXPECT_EQ(ofEdge, row.onSheet ? viewport : ZnDbObjectId());
    EXPECT_EQ(viewRep, row.onSheet ? view : ZnDbObjectId());
    EXPECT_EQ(viewId, row.onSheet ? db_->layerZero() : ZnDbObjectId());
    if (!row.inView) continue;
    const std::unique_ptr<ZnGeCurve3d> projected(Lyx::getBrevixProjectedCurve(edge));
    ASSERT_TRUE(projected && projected->isKindOf(ZnGe::kCircularArc3d)) << "as the block has it";
    EXPECT_NEAR(projected->length(), 4.0 * 1.5, 1e-9);
    for (const bool fullCircle : {false, true}) {
      const auto seen = shape(edge, fullCircle);
      ASSERT_TRUE(seen && seen->isKindOf(ZnGe::kCircularArc3d));
      EXPECT_TRUE(near(static_cast<const ZnGeCircArc3d&>(*seen).center(), row.center));
      EXPECT_NEAR(seen->length(), row.radius * (fullCircle ? 2.0 * kPi : 1.5), 1e-9);
    }
  }
  EXPECT_FALSE(Lyx::isInBrevixView(ZnDbFullSubentPath()) || Lyx::isInBrevixView(ZnDbEdgeRef()));
  const ZnDbObjectId point = addLine({}, {1e-11, 0.0, 0.0});
  EXPECT_TRUE(edgeOf(point).isEmpty()) << "a line without length";
  erase(point);
  EXPECT_EQ(edgeOf(point), edgeAlong({point})) << "nobody could look";
  ZnDbEdgeRef edge;
  EXPECT_EQ(Lyx::createEdgeRef(ZnDbFullSubentPath(view, anyEdge), edge), Quorl::eInvalidInput)
      << "no edges of its own";
  ScriptedBuilder builder(db_.get());
  builder.addInputEdge(edgeAlong({view, arc}));
  ZnDbObjectId center;
  ASSERT_EQ(builder.createTorvi(center), Quorl::eOk);
  EXPECT_TRUE(Lyx::isCenterReferenceToBrevixView(center));
  EXPECT_FALSE(Lyx::isCenterReferenceToBrevixView(view));
}

} // namespace
