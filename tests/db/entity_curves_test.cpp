// What hidden curves become, how arcs and viewports count, and what polylines keep while they change.
#include <gtest/gtest.h>

#include <functional>

#include "db/entity_samples.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/ge/circ_arc3d.h"

using namespace dbTest;
using Quorl::ErrorStatus;

namespace {

TEST(EntitySetters, HiddenCurvesCollapseToAPoint) {
  ZnDbCircle circle({1, 2, 3}, ZnGeVector3d::kZAxis, 5.0);
  ASSERT_EQ(circle.setRadius(0.0), Quorl::eOk);
  ZnGeCurve3d* curve = nullptr;
  ASSERT_EQ(circle.getZnGeCurve(curve, ZnGeContext::gTol), Quorl::eOk);
  const std::unique_ptr<ZnGeCurve3d> owned(curve);
  EXPECT_EQ(owned->type(), ZnGe::kCircularArc3d);
  EXPECT_TRUE(owned->isDegenerate());
}

TEST(ArcAngles, CountFromTheXAxisOfItsPlane) {
  // Seen from below, the plane's x axis is the world's reversed.
  const ZnDbArc arc({0, 0, 0}, -ZnGeVector3d::kZAxis, 2.0, 0.0, ZnGe::kHalfPi);
  EXPECT_TRUE(arc.startPoint().isEqualTo({-2, 0, 0}));
  EXPECT_TRUE(arc.endPoint().isEqualTo({0, 2, 0}));
  EXPECT_DOUBLE_EQ(arc.totalAngle(), ZnGe::kHalfPi);
  EXPECT_DOUBLE_EQ(ZnDbArc({}, 1.0, 6.0, 1.0).totalAngle(), 1.0 - 6.0 + ZnGe::kTwoPi);
}

std::vector<std::int64_t> edgeIds(const ZnDbPolyline& polyline) {
  ZnArray<ZnDbSubentId> ids;
  polyline.getSubentIds(ZnDb::kEdgeSubentType, ids);
  std::vector<std::int64_t> numbers;
  for (const ZnDbSubentId& id : ids) numbers.push_back(id.index());
  return numbers;
}

TEST(PolylineIds, LastThroughInsertionAndRemoval) {
  ZnDbPolyline square;
  for (const auto& [x, y] : {std::pair(0, 0), {10, 0}, {10, 10}, {0, 10}})
    square.addVertexAt(square.vertexCount(), {double(x), double(y)});
  square.setClosed(true);
  using Ids = std::vector<std::int64_t>;
  ASSERT_EQ(edgeIds(square), (Ids{0, 1, 2, 3}));

  const struct {
    const char* what;
    std::function<ErrorStatus()> change;
    Ids edges;
  } steps[] = {
      {"split the right side",
       [&] {
         return square.addVertexAt(2, {12, 5});
       },
       {0, 1, 4, 2, 3}},
      {"put one before the first",
       [&] {
         return square.addVertexAt(0, {-1, 5});
       },
       {5, 0, 1, 4, 2, 3}},
      {"remove the split", [&] { return square.removeVertexAt(3); }, {5, 0, 1, 2, 3}},
      {"remove a corner", [&] { return square.removeVertexAt(1); }, {5, 1, 2, 3}},
      {"no id comes back",
       [&] {
         return square.addVertexAt(4, {0, 5});
       },
       {5, 1, 2, 3, 6}},
  };
  for (const auto& step : steps) {
    ASSERT_EQ(step.change(), Quorl::eOk) << step.what;
    EXPECT_EQ(edgeIds(square), step.edges) << step.what;
    // The sides that were never touched are where they were.
    const auto top = square.subentCurve(ZnDbSubentId(ZnDb::kEdgeSubentType, 2));
    ASSERT_TRUE(top) << step.what;
    EXPECT_TRUE(top->evalPoint(0.0).isEqualTo({10, 10, 0})) << step.what;
    ZnGePoint3d corner;
    ASSERT_TRUE(square.subentPoint(ZnDbSubentId(ZnDb::kVertexSubentType, 3), corner)) << step.what;
    EXPECT_TRUE(corner.isEqualTo({0, 10, 0})) << step.what;
  }
  EXPECT_EQ(square.subentCurve(ZnDbSubentId(ZnDb::kEdgeSubentType, 4)), nullptr) << "its vertex is gone";
  square.setClosed(false);
  EXPECT_EQ(edgeIds(square), (Ids{5, 1, 2, 3})) << "the closing side alone goes";

  Quorl::ErrorStatus read = Quorl::eInvalidInput;
  const auto copy = readFrom(square, fieldsOf(square), read);
  auto* again = dynamic_cast<ZnDbPolyline*>(copy.get());
  again->addVertexAt(0, {});
  EXPECT_EQ(again->subentIndexAt(0), 7) << "the count of ids is kept with the fields";
}

TEST(Viewport, ShowsModelPointsWhereTheScaleAndTwistSay) {
  ZnDbViewport viewport;
  viewport.setCenterPoint({100, 50, 0});
  viewport.setHeight(40);
  viewport.setViewCenter({3, 4});
  viewport.setCustomScale(2.0);
  EXPECT_DOUBLE_EQ(viewport.viewHeight(), 20.0);
  const auto shown = [&](double x, double y) {
    return viewport.modelToPaperTransform() * ZnGePoint3d(x, y, 0);
  };
  EXPECT_TRUE(shown(3, 4).isEqualTo({100, 50, 0}));
  EXPECT_TRUE(shown(4, 4).isEqualTo({102, 50, 0}));
  viewport.setTwistAngle(ZnGe::kHalfPi);
  EXPECT_TRUE(shown(4, 4).isEqualTo({100, 52, 0}));
  ASSERT_EQ(viewport.transformBy(ZnGeMatrix3d::scaling(3.0)), Quorl::eOk);
  EXPECT_DOUBLE_EQ(viewport.customScale(), 6.0);
}

} // namespace
