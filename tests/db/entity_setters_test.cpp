// Values that setters refuse, and what polylines keep while their vertices change.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "db/entity_samples.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/point.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/entity/spline.h"
#include "quorl/db/entity/text.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/elliptical_arc3d.h"

using namespace dbTest;
using Quorl::ErrorStatus;

namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();
const ZnGePoint3d kNowhere(0.0, kNan, 0.0);
const ZnGeVector3d kZero;

struct Refusal {
  const char* sample;
  const char* what;
  std::function<ErrorStatus(ZnDbEntity&)> set;
  ErrorStatus status;
};

template<class T> std::function<ErrorStatus(ZnDbEntity&)> on(std::function<ErrorStatus(T&)> call) {
  return [call](ZnDbEntity& entity) { return call(dynamic_cast<T&>(entity)); };
}

const Refusal kRefusals[] = {
    {"line", "start", on<ZnDbLine>([](auto& e) { return e.setStartPoint(kNowhere); }), Quorl::eInvalidInput},
    {"line", "end", on<ZnDbLine>([](auto& e) {
       return e.setEndPoint({kInfinity, 0, 0});
     }),
     Quorl::eInvalidInput},
    {"arc", "radius", on<ZnDbArc>([](auto& e) { return e.setRadius(-0.5); }), Quorl::eOutOfRange},
    {"arc", "radius nan", on<ZnDbArc>([](auto& e) { return e.setRadius(kNan); }), Quorl::eInvalidInput},
    {"arc", "angle", on<ZnDbArc>([](auto& e) { return e.setStartAngle(kInfinity); }), Quorl::eInvalidInput},
    {"arc", "end angle", on<ZnDbArc>([](auto& e) { return e.setEndAngle(kNan); }), Quorl::eInvalidInput},
    {"arc", "normal", on<ZnDbArc>([](auto& e) { return e.setNormal(kZero); }), Quorl::eDegenerateGeometry},
    {"arc", "center", on<ZnDbArc>([](auto& e) { return e.setCenter(kNowhere); }), Quorl::eInvalidInput},
    {"circle", "radius", on<ZnDbCircle>([](auto& e) { return e.setRadius(-1.0); }), Quorl::eOutOfRange},
    {"circle", "normal", on<ZnDbCircle>([](auto& e) {
       return e.setNormal({kNan, 0, 1});
     }),
     Quorl::eInvalidInput},
    {"circle", "flattened",
     [](ZnDbEntity& e) {
       return e.transformBy(ZnGeMatrix3d({}, {1, 0, 0}, {1, 0, 0}, {1, 0, 0}));
     },
     Quorl::eDegenerateGeometry},
    {"ellipse", "center", on<ZnDbEllipse>([](auto& e) { return e.setCenter(kNowhere); }),
     Quorl::eInvalidInput},
    {"ellipse", "no area", on<ZnDbEllipse>([](auto& e) {
       return e.set(ZnGeEllipticalArc3d({}, {1, 0, 0}, {0, 0, 0}));
     }),
     Quorl::eDegenerateGeometry},
    {"spline", "empty", on<ZnDbSpline>([](auto& e) { return e.setCurve(ZnGeNurbCurve3d()); }),
     Quorl::eDegenerateGeometry},
    {"open polyline", "vertex place", on<ZnDbPolyline>([](auto& e) { return e.addVertexAt(5, {}); }),
     Quorl::eOutOfRange},
    {"open polyline", "vertex", on<ZnDbPolyline>([](auto& e) {
       return e.addVertexAt(0, {kNan, 0});
     }),
     Quorl::eInvalidInput},
    {"open polyline", "bulge", on<ZnDbPolyline>([](auto& e) { return e.setBulgeAt(0, kInfinity); }),
     Quorl::eInvalidInput},
    {"open polyline", "bulge place", on<ZnDbPolyline>([](auto& e) { return e.setBulgeAt(-1, 0); }),
     Quorl::eOutOfRange},
    {"open polyline", "removal", on<ZnDbPolyline>([](auto& e) { return e.removeVertexAt(4); }),
     Quorl::eOutOfRange},
    {"open polyline", "point", on<ZnDbPolyline>([](auto& e) { return e.setPointAt(4, {}); }),
     Quorl::eOutOfRange},
    {"open polyline", "normal", on<ZnDbPolyline>([](auto& e) { return e.setNormal(kZero); }),
     Quorl::eDegenerateGeometry},
    {"open polyline", "elevation", on<ZnDbPolyline>([](auto& e) { return e.setElevation(kNan); }),
     Quorl::eInvalidInput},
    {"text left", "height", on<ZnDbText>([](auto& e) { return e.setHeight(0.0); }), Quorl::eOutOfRange},
    {"text left", "width factor", on<ZnDbText>([](auto& e) { return e.setWidthFactor(-1.0); }),
     Quorl::eOutOfRange},
    {"text left", "align",
     on<ZnDbText>([](auto& e) { return e.setHorizontalAlign(static_cast<ZnDb::TextAlign>(3)); }),
     Quorl::eOutOfRange},
    {"point", "position", on<ZnDbPoint>([](auto& e) { return e.setPosition(kNowhere); }),
     Quorl::eInvalidInput},
    {"viewport", "width", on<ZnDbViewport>([](auto& e) { return e.setWidth(0.0); }), Quorl::eOutOfRange},
    {"viewport", "scale", on<ZnDbViewport>([](auto& e) { return e.setCustomScale(-2.0); }),
     Quorl::eOutOfRange},
    {"viewport", "layer", on<ZnDbViewport>([](auto& e) { return e.setLayerFrozen({}, true); }),
     Quorl::eInvalidInput},
    {"radial dimension", "leader", on<ZnDbRadialDimension>([](auto& e) { return e.setLeaderLength(-1.0); }),
     Quorl::eOutOfRange},
    {"radial dimension", "style", on<ZnDbDimension>([](auto& e) { return e.setDimensionStyle({}); }),
     Quorl::eInvalidInput},
    {"block reference", "singular", on<ZnDbBlockReference>([](auto& e) {
       return e.setBlockTransform(ZnGeMatrix3d({}, {1, 0, 0}, {2, 0, 0}, {0, 0, 1}));
     }),
     Quorl::eDegenerateGeometry},
    {"block reference", "no block", on<ZnDbBlockReference>([](auto& e) { return e.setBlockTableRecord({}); }),
     Quorl::eInvalidInput},
    {"line", "linetype scale", [](ZnDbEntity& e) { return e.setLinetypeScale(0.0); }, Quorl::eOutOfRange},
    {"line", "linetype scale nan", [](ZnDbEntity& e) { return e.setLinetypeScale(kNan); },
     Quorl::eOutOfRange},
    {"line", "color", [](ZnDbEntity& e) { return e.setColorIndex(257); }, Quorl::eOutOfRange},
    {"line", "weight", [](ZnDbEntity& e) { return e.setLineWeight(static_cast<ZnDb::LineWeight>(33)); },
     Quorl::eOutOfRange},
    {"line", "layer", [](ZnDbEntity& e) { return e.setLayer(ZnDbObjectId()); }, Quorl::eInvalidInput},
    {"line", "linetype", [](ZnDbEntity& e) { return e.setLinetype(ZnDbObjectId()); }, Quorl::eInvalidInput},
    {"line", "visibility", [](ZnDbEntity& e) { return e.setVisibility(static_cast<ZnDb::Visibility>(7)); },
     Quorl::eOutOfRange},
    {"line", "transform",
     [](ZnDbEntity& e) {
       return e.transformBy(ZnGeMatrix3d::translation({kNan, 0, 0}));
     },
     Quorl::eInvalidInput},
};

TEST(EntitySetters, RefusedValuesLeaveTheEntityAsItWas) {
  for (const Refusal& refusal : kRefusals) {
    size_t tried = 0;
    for (const EntitySample& sample : entitySamples()) {
      if (sample.name != refusal.sample) continue;
      ++tried;
      const std::unique_ptr<ZnDbEntity> entity = sample.make();
      const std::string before = fieldsOf(*entity);
      EXPECT_EQ(refusal.set(*entity), refusal.status) << sample.name << ": " << refusal.what;
      EXPECT_EQ(fieldsOf(*entity), before) << sample.name << ": " << refusal.what;
    }
    EXPECT_EQ(tried, 1u) << refusal.sample;
  }
}

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

TEST(PolylineShape, BulgeOfOneIsAHalfCircleToTheRight) {
  ZnDbPolyline polyline;
  polyline.addVertexAt(0, {0, 0}, 1.0);
  polyline.addVertexAt(1, {2, 0});
  const auto arc = polyline.subentCurve(ZnDbSubentId(ZnDb::kEdgeSubentType, 0));
  ASSERT_TRUE(arc);
  EXPECT_TRUE(arc->isOn({1, -1, 0}));
  EXPECT_FALSE(arc->isOn({1, 1, 0}));
  const auto entity = polyline.subentEntity(ZnDbSubentId(ZnDb::kEdgeSubentType, 0));
  ASSERT_NE(ZnDbArc::cast(entity.get()), nullptr);
  EXPECT_TRUE(dynamic_cast<ZnDbArc&>(*entity).startPoint().isEqualTo({0, 0, 0}));
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
