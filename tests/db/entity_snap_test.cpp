// Object snap: the points of every mode against their formulas, through references and through overrules.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "db/entity_samples.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/osnap_overrule.h"
#include "quorl/db/entity/point.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/spline.h"
#include "quorl/db/entity/text.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/ge/elliptical_arc3d.h"

using namespace dbTest;

namespace {

using Points = std::vector<ZnGePoint3d>;

Points snap(const ZnDbEntity& entity, ZnDb::ObjectSnapMode mode, const ZnGePoint3d& pick = {},
            const ZnGePoint3d& last = {}, const ZnGeMatrix3d& insertion = ZnGeMatrix3d::kIdentity) {
  ZnArray<ZnGePoint3d> points;
  ZnArray<std::int64_t> ids;
  EXPECT_EQ(entity.getOsnapPoints(mode, 0, pick, last, ZnGeMatrix3d::kIdentity, points, ids, insertion),
            Quorl::eOk);
  return {points.begin(), points.end()};
}

void expectSame(Points found, Points expected, const std::string& what) {
  const auto before = [](const ZnGePoint3d& a, const ZnGePoint3d& b) {
    const auto rounded = [](double v) { return std::llround(v * 1000.0); };
    return std::tuple(rounded(a.x), rounded(a.y), rounded(a.z)) <
           std::tuple(rounded(b.x), rounded(b.y), rounded(b.z));
  };
  std::sort(found.begin(), found.end(), before);
  std::sort(expected.begin(), expected.end(), before);
  ASSERT_EQ(found.size(), expected.size()) << what;
  for (size_t i = 0; i < found.size(); ++i)
    EXPECT_LE(found[i].distanceTo(expected[i]), 1e-6) << what << " " << found[i] << expected[i];
}

const double kRoot = std::sqrt(0.5);

std::unique_ptr<ZnDbPolyline> angle() {
  auto polyline = std::make_unique<ZnDbPolyline>();
  for (const auto& [x, y] : {std::pair(0, 0), {4, 0}, {4, 6}})
    polyline->addVertexAt(polyline->vertexCount(), {double(x), double(y)});
  return polyline;
}

std::unique_ptr<ZnDbSpline> parabola() {
  ZnGeNurbCurve3d curve;
  curve.set(2, {0, 0, 0, 1, 1, 1}, {{0, 0, 0}, {2, 4, 0}, {4, 0, 0}});
  return std::make_unique<ZnDbSpline>(curve);
}

struct Case {
  const char* what;
  std::shared_ptr<ZnDbEntity> entity;
  ZnDb::ObjectSnapMode mode;
  Points expected;
  ZnGePoint3d pick, last;
};

std::vector<Case> cases() {
  using namespace ZnDb;
  const std::shared_ptr<ZnDbEntity> line =
      std::make_shared<ZnDbLine>(ZnGePoint3d(0, 0, 0), ZnGePoint3d(8, 0, 0));
  const std::shared_ptr<ZnDbEntity> circle =
      std::make_shared<ZnDbCircle>(ZnGePoint3d(5, 5, 0), ZnGeVector3d::kZAxis, 2);
  // From 45 to 225 degrees.
  const std::shared_ptr<ZnDbEntity> arc =
      std::make_shared<ZnDbArc>(ZnGePoint3d(0, 0, 0), 2.0, ZnGe::kPi / 4, 5 * ZnGe::kPi / 4);
  const std::shared_ptr<ZnDbEntity> ellipse =
      std::make_shared<ZnDbEllipse>(ZnGeEllipticalArc3d({1, 1, 0}, {0, 4, 0}, {2, 0, 0}));
  const std::shared_ptr<ZnDbEntity> quarter =
      std::make_shared<ZnDbEllipse>(ZnGeEllipticalArc3d({0, 0, 0}, {4, 0, 0}, {0, 2, 0}, 0.0, ZnGe::kPi));
  const std::shared_ptr<ZnDbEntity> polyline = angle();
  const std::shared_ptr<ZnDbEntity> spline = parabola();
  const std::shared_ptr<ZnDbEntity> text = std::make_shared<ZnDbText>(ZnGePoint3d(1, 2, 3), L"x", 2.5);
  const std::shared_ptr<ZnDbEntity> point = std::make_shared<ZnDbPoint>(ZnGePoint3d(1, 2, 3));
  const std::shared_ptr<ZnDbEntity> viewport = std::make_shared<ZnDbViewport>();
  return {
      {"line", line, kSnapEnd, {{0, 0, 0}, {8, 0, 0}}, {}, {}},
      {"line", line, kSnapMiddle, {{4, 0, 0}}, {}, {}},
      {"line", line, kSnapCenter, {}, {}, {}},
      {"line", line, kSnapNearest, {{3, 0, 0}}, {3, 5, 0}, {}},
      {"line beyond its end", line, kSnapNearest, {{8, 0, 0}}, {11, 4, 0}, {}},
      {"line", line, kSnapPerpendicular, {{5, 0, 0}}, {}, {5, -7, 0}},
      {"line beside its foot", line, kSnapPerpendicular, {}, {}, {9, -7, 0}},
      {"circle", circle, kSnapEnd, {}, {}, {}},
      {"circle", circle, kSnapMiddle, {}, {}, {}},
      {"circle", circle, kSnapCenter, {{5, 5, 0}}, {}, {}},
      {"circle", circle, kSnapQuadrant, {{7, 5, 0}, {5, 7, 0}, {3, 5, 0}, {5, 3, 0}}, {}, {}},
      {"circle", circle, kSnapPerpendicular, {{5, 3, 0}, {5, 7, 0}}, {}, {5, -3, 0}},
      {"circle", circle, kSnapNearest, {{7, 5, 0}}, {6, 5, 0}, {}},
      // The tangent from twice the radius touches at 60 degrees.
      {"circle",
       circle,
       kSnapTangent,
       {{6, 5 + std::sqrt(3.0), 0}, {6, 5 - std::sqrt(3.0), 0}},
       {},
       {9, 5, 0}},
      {"circle from inside", circle, kSnapTangent, {}, {}, {6, 5, 0}},
      {"arc", arc, kSnapEnd, {{2 * kRoot, 2 * kRoot, 0}, {-2 * kRoot, -2 * kRoot, 0}}, {}, {}},
      {"arc", arc, kSnapMiddle, {{-2 * kRoot, 2 * kRoot, 0}}, {}, {}},
      {"arc", arc, kSnapQuadrant, {{0, 2, 0}, {-2, 0, 0}}, {}, {}},
      {"arc", arc, kSnapPerpendicular, {{0, 2, 0}}, {}, {0, 9, 0}},
      {"arc", arc, kSnapCenter, {{0, 0, 0}}, {}, {}},
      {"ellipse", ellipse, kSnapQuadrant, {{1, 5, 0}, {3, 1, 0}, {1, -3, 0}, {-1, 1, 0}}, {}, {}},
      {"ellipse", ellipse, kSnapCenter, {{1, 1, 0}}, {}, {}},
      {"half ellipse", quarter, kSnapMiddle, {{0, 2, 0}}, {}, {}},
      {"half ellipse", quarter, kSnapQuadrant, {{4, 0, 0}, {0, 2, 0}, {-4, 0, 0}}, {}, {}},
      {"polyline", polyline, kSnapEnd, {{0, 0, 0}, {4, 0, 0}, {4, 6, 0}}, {}, {}},
      {"polyline", polyline, kSnapMiddle, {{2, 0, 0}, {4, 3, 0}}, {}, {}},
      {"polyline", polyline, kSnapNearest, {{4, 5, 0}}, {7, 5, 0}, {}},
      {"spline", spline, kSnapMiddle, {{2, 2, 0}}, {}, {}},
      {"spline", spline, kSnapPerpendicular, {{2, 2, 0}}, {}, {2, 9, 0}},
      {"text", text, kSnapInsertion, {{1, 2, 3}}, {}, {}},
      {"text", text, kSnapEnd, {}, {}, {}},
      {"point", point, kSnapNode, {{1, 2, 3}}, {}, {}},
      {"viewport", viewport, kSnapCenter, {{0, 0, 0}}, {}, {}},
      {"viewport", viewport, kSnapEnd, {{-50, -50, 0}, {50, -50, 0}, {50, 50, 0}, {-50, 50, 0}}, {}, {}},
  };
}

TEST(Snap, PointsAreThoseOfTheFormulas) {
  for (const Case& c : cases())
    expectSame(snap(*c.entity, c.mode, c.pick, c.last), c.expected,
               std::string(c.what) + ", mode " + std::to_string(c.mode));
}

// The same truth from the other side: a turned entity seen from turned points gives turned answers, and so
// does the entity seen through a turned insertion. Quadrants lie on world axes and are left out.
TEST(Snap, AnswersTurnWithTheEntity) {
  const ZnGeMatrix3d turn =
      ZnGeMatrix3d::translation({3, -8, 0}) * ZnGeMatrix3d::rotation(0.6, ZnGeVector3d::kZAxis);
  for (const Case& c : cases()) {
    if (c.mode == ZnDb::kSnapQuadrant) continue;
    Points expected;
    for (const ZnGePoint3d& point : c.expected) expected.push_back(turn * point);
    const std::string what = std::string(c.what) + ", mode " + std::to_string(c.mode);
    expectSame(snap(*c.entity, c.mode, turn * c.pick, turn * c.last, turn), expected, what + ", inserted");
    const std::unique_ptr<ZnDbEntity> turned(static_cast<ZnDbEntity*>(c.entity->clone()));
    if (turned->transformBy(turn) != Quorl::eOk) continue;
    expectSame(snap(*turned, c.mode, turn * c.pick, turn * c.last), expected, what + ", turned");
  }
}

TEST(Snap, StretchedCircleIsAnEllipse) {
  const ZnDbCircle circle({0, 0, 0}, ZnGeVector3d::kZAxis, 1.0);
  const ZnGeMatrix3d stretch = ZnGeMatrix3d::scaling(ZnGeVector3d(3.0, 1.0, 1.0));
  expectSame(snap(circle, ZnDb::kSnapQuadrant, {}, {}, stretch),
             {{3, 0, 0}, {0, 1, 0}, {-3, 0, 0}, {0, -1, 0}}, "");
  expectSame(snap(circle, ZnDb::kSnapNearest, {9, 0, 0}, {}, stretch), {{3, 0, 0}}, "");
}

// Keeps the points with a positive x of what comes from below.
class RightSideOnly : public ZnDbOsnapOverrule {
public:
  mutable int plainCalls = 0, insertedCalls = 0;
  bool isApplicable(const ZnRxObject* object) const override { return ZnDbLine::cast(object) != nullptr; }
  Quorl::ErrorStatus getOsnapPoints(const ZnDbEntity* entity, ZnDb::ObjectSnapMode mode, std::int64_t marker,
                                    const ZnGePoint3d& pick, const ZnGePoint3d& last,
                                    const ZnGeMatrix3d& view, ZnArray<ZnGePoint3d>& points,
                                    ZnArray<std::int64_t>& ids) const override {
    ++plainCalls;
    ZnArray<ZnGePoint3d> own;
    const auto status = ZnDbOsnapOverrule::getOsnapPoints(entity, mode, marker, pick, last, view, own, ids);
    for (const ZnGePoint3d& point : own)
      if (point.x > 0.0) points.append(point);
    return status;
  }
  Quorl::ErrorStatus getOsnapPoints(const ZnDbEntity* entity, ZnDb::ObjectSnapMode mode, std::int64_t marker,
                                    const ZnGePoint3d& pick, const ZnGePoint3d& last,
                                    const ZnGeMatrix3d& view, ZnArray<ZnGePoint3d>& points,
                                    ZnArray<std::int64_t>& ids,
                                    const ZnGeMatrix3d& insertion) const override {
    ++insertedCalls;
    return ZnDbOsnapOverrule::getOsnapPoints(entity, mode, marker, pick, last, view, points, ids, insertion);
  }
};

TEST(Snap, OverrulesStandInFront) {
  const ZnDbLine line({-1, 0, 0}, {8, 0, 0});
  const ZnDbCircle circle({5, 5, 0}, ZnGeVector3d::kZAxis, 2.0);
  RightSideOnly overrule, second;
  ASSERT_EQ(ZnRxOverrule::addOverrule(ZnDbEntity::desc(), &overrule), Quorl::eOk);
  ASSERT_EQ(ZnRxOverrule::addOverrule(ZnDbEntity::desc(), &second, true), Quorl::eOk);
  expectSame(snap(line, ZnDb::kSnapEnd), {{8, 0, 0}}, "overruled");
  expectSame(snap(circle, ZnDb::kSnapCenter), {{5, 5, 0}}, "not applicable");
  expectSame(snap(line, ZnDb::kSnapEnd, {}, {}, ZnGeMatrix3d::translation({0, 1, 0})),
             {{-1, 1, 0}, {8, 1, 0}}, "inserted");
  EXPECT_EQ(overrule.plainCalls, 1);
  EXPECT_EQ(overrule.insertedCalls, 1);
  EXPECT_EQ(second.plainCalls, 1) << "the base goes on to the next";
  ZnRxOverrule::removeOverrule(ZnDbEntity::desc(), &overrule);
  ZnRxOverrule::removeOverrule(ZnDbEntity::desc(), &second);
  expectSame(snap(line, ZnDb::kSnapEnd), {{-1, 0, 0}, {8, 0, 0}}, "removed");
}

} // namespace
