// What an edge extension draws, when it says that there is nothing to draw, and when that it is no longer the
// one that was meant.
#include <rapidcheck.h>

#include "torvi_edgeextension/extension_fixture.h"

namespace {

class EdgeExtensionLayoutTest : public EdgeExtensionTest {
protected:
  static Quorl::ErrorStatus compare(ZnDbObjectId id) {
    OwnedCurves held;
    ZnArray<ZnString> keys;
    return ZnDbEdgeExtensionLayout(id).compareGeometry(held.curves, keys);
  }
};

// From edges that were good at first to edges that may not be; the status is that of the layout.
TEST_F(EdgeExtensionLayoutTest, EdgeAfterEdge) {
  struct {
    const char *what, *right;
    Quorl::ErrorStatus status;
  } const rows[] = {{"moved along", "6,0 12,0", Quorl::eOk},
                    {"turned", "4,0 8,3", Quorl::eOk},
                    {"parallel", "4,0 4,9", Quorl::eNothingToDo},
                    {"on one line", "0,-3 0,-9", Quorl::eNothingToDo},
                    {"skew", "4,0,1 9,0,1", Quorl::eNothingToDo},
                    {"touching", "0,0 9,0", Quorl::eNothingToDo},
                    {"passing the crossing", "-1,0 9,0", Quorl::eNothingToDo},
                    {"beyond the crossing", "-9,0 -4,0", Quorl::eInvalidInput},
                    {"crossing beyond the other", "4,20 9,20", Quorl::eInvalidInput},
                    {"no length", "4,0 4,0", Quorl::eNothingToDo}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const ZnDbObjectId id = addUsual();
    setLine(right_, row.right);
    // Asked before the evaluation, which lets go of what it can't draw.
    EXPECT_EQ(compare(id), row.status);
    evaluateChanges();
    const bool good = row.status == Quorl::eOk;
    EXPECT_EQ(Extension(id).isAssociative(), good);
    ZnDbVertexRef anchor;
    EXPECT_EQ(ask<Body>(id, [&](const Body& body) { return body.getAnchorVertex(0, anchor); }),
              good ? Quorl::eOk : Quorl::eNothingToDo);
    EXPECT_EQ(anchor.isEmpty(), !good);
  }
}

// Anchors that are lost leave the remembered edges to tell on which side the crossing was.
TEST_F(EdgeExtensionLayoutTest, WithoutAnchorsTheRememberedEdgesDecide) {
  struct {
    const char* right;
    bool forget; // the remembered edges too
    Quorl::ErrorStatus status;
  } const rows[] = {{"6,0 12,0", false, Quorl::eOk},
                    {"-12,0 -6,0", false, Quorl::eNothingToDo},
                    {"-12,0 -6,0", true, Quorl::eOk},
                    {"12,0 6,0", false, Quorl::eNothingToDo}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.right);
    const ZnDbObjectId id = addUsual();
    change<Body>(bodyOf(id), [&](Body& body) {
      for (const ZnDbObjectId param : body.paramsAtName(Body::anchorVertexParamName()))
        change<ZnDbAssocVertexActionParam>(param, [](auto& anchor) { anchor.emptyVertex(true); });
      if (row.forget) body.removeCachedRefEdgePoints();
    });
    setLine(right_, row.right);
    EXPECT_EQ(compare(id), row.status);
  }
}

TEST_F(EdgeExtensionLayoutTest, EdgesOfOtherShapesAreMissingOnes) {
  const ZnDbEdgeRef right = edgeOf(addLineOf("4,0 9,0")), up = edgeOf(addLineOf("0,3 0,9")),
                    arc = edgeOf(addArc({}, 3, 0, 1)), third = edgeOf(addLineOf("7,1 7,5"));
  ZnDbObjectId id;
  for (const ZnArray<ZnDbEdgeRef>& edges :
       {ZnArray<ZnDbEdgeRef>{right, arc}, {arc, right}, {right}, {right, up, third}}) {
    EXPECT_EQ(ZnTorviLyxUtils::createEdgeExtension(edges, id, db_.get()), Quorl::eOk);
    EXPECT_EQ(statusOf(id), kFailedToEvaluateAssocStatus);
  }
  // Two segments and an arc are two segments.
  EXPECT_EQ(ZnTorviLyxUtils::createEdgeExtension({right, up, arc}, id, db_.get()), Quorl::eOk);
  EXPECT_TRUE(shows(id, kUsual));
}

// The lengths are read from the style of its birth, whenever it is drawn.
TEST_F(EdgeExtensionLayoutTest, TheStyleOfItsBirthGoesOnCounting) {
  const ZnDbObjectId id = addUsual();
  setStyle(2.0, 0.0);
  EXPECT_FALSE(Extension(id).doesActionMatchCurrentGeometry());
  evaluate(id);
  EXPECT_TRUE(shows(id, "4,0 -2,0 0,3 0,-2"));
  EXPECT_TRUE(Extension(id).doesActionMatchCurrentGeometry());
  change<Body>(bodyOf(id), [](Body& body) { body.setDimStyleDepId(ZnDbObjectId()); });
  EXPECT_EQ(compare(id), Quorl::eNullObjectId);
  EXPECT_EQ(compare(right_), Quorl::eInvalidInput) << "no edge extension";
}

// Lines along two rays from a crossing, either way round, wherever they are turned to and at every size. None
// where an edge begins at the crossing or before it.
TEST_F(EdgeExtensionLayoutTest, WhereverTheEdgesAreTheLinesLeadToTheCrossing) {
  EXPECT_TRUE(rc::check([this] {
    const auto number = [](int from, int to) { return *rc::gen::inRange(from * 100, to * 100) / 100.0; };
    const double size = *rc::gen::element(1.0, 1e-3, 1e6), slack = 1e-8 + 1e-12 * size;
    const double past = size * (number(0, 3) + 0.01), gap = size * number(0, 3);
    const double first = number(0, 6), between = number(1, 30) / 10;
    setStyle(past, gap);
    const P3 crossing(size * number(-50, 50), size * number(-50, 50), size * number(-5, 5));
    const ZnGeMatrix3d tilt = ZnGeMatrix3d::rotation(number(0, 2), {number(-1, 1), 1, 0});
    const double before = *rc::gen::element(-1.0, -1.0, 0.0, 2.0);
    std::vector<P3> expected;
    ZnDbObjectId edges[2];
    for (const int i : {0, 1}) {
      const double angle = first + i * between, way = size * number(1, 20) / 4.0;
      const ZnGeVector3d ray = tilt * ZnGeVector3d(std::cos(angle), std::sin(angle), 0);
      const bool crosses = before >= 0.0 && i == 0;
      const P3 nearEnd = crossing + ray * (crosses ? -before * size : way);
      const P3 farEnd = crossing + ray * (way + size * number(1, 20));
      edges[i] = *rc::gen::arbitrary<bool>() ? addLine(nearEnd, farEnd) : addLine(farEnd, nearEnd);
      RC_PRE(std::fabs(way - 1.5 * gap) > 1e-6 * size);
      expected.push_back(crossing + ray * (way > 1.5 * gap ? way - gap : way));
      expected.push_back(crossing - ray * past);
    }
    const ZnDbObjectId id = addExtension(edgeOf(edges[0]), edgeOf(edges[1]));
    RC_ASSERT((statusOf(id) == kFailedToEvaluateAssocStatus) == (before >= 0.0));
    if (before >= 0.0) return;
    RC_ASSERT(shows(id, expected, slack) && Extension(id).doesActionMatchCurrentGeometry());
    RC_ASSERT(shows(addExtension(edgeOf(edges[1]), edgeOf(edges[0])),
                    {expected[2], expected[3], expected[0], expected[1]}, slack));
    const ZnGeMatrix3d by = ZnGeMatrix3d::translation({number(-9, 9), number(-9, 9), 0}) *
                            ZnGeMatrix3d::rotation(number(0, 6), {0, 0, 1}, {3, 4, 0});
    for (P3& point : expected) point = by * point;
    for (const ZnDbObjectId edge : edges)
      change<ZnDbLine>(edge, [&](ZnDbLine& line) { EXPECT_EQ(line.transformBy(by), Quorl::eOk); });
    evaluateChanges();
    RC_ASSERT(shows(id, expected, slack));
    RC_ASSERT(!HasFailure());
  }));
}

} // namespace
