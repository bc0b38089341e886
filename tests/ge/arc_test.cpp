// Circular arcs in space and in a plane, and bulges.
#include <limits>

#include "ge_test_support.h"
#include "quorl/ge/bulge.h"
#include "quorl/ge/circ_arc2d.h"
#include "quorl/ge/circ_arc3d.h"

using namespace geTest;

namespace {

const ZnGeVector3d kX(1, 0, 0), kZ(0, 0, 1);

TEST(Arcs, AnglesBecomeASpanAboveTheStart) {
  struct Case {
    const char* name;
    double start, end, expectedStart, expectedEnd;
    bool isClosed, isPoint;
  };
  const double turn = ZnGe::kTwoPi;
  const Case cases[] = {{"plain", 1.0, 2.0, 1.0, 2.0, false, false},
                        {"through zero", 6.0, 0.5, 6.0, 0.5 + turn, false, false},
                        {"negative start", -0.5, 0.5, turn - 0.5, turn + 0.5, false, false},
                        {"full", 0.0, turn, 0.0, turn, true, false},
                        {"full from elsewhere", 1.0, 1.0 + turn, 1.0, 1.0 + turn, true, false},
                        {"more than full", 1.0, 30.0, 1.0, 1.0 + turn, true, false},
                        {"empty", 1.0, 1.0, 1.0, 1.0, false, true},
                        {"nearly full", 1.0, 1.0 - 1e-6, 1.0, 1.0 - 1e-6 + turn, false, false}};
  for (const Case& c : cases) {
    const ZnGeCircArc3d arc({0, 0, 0}, kZ, kX, 2.0, c.start, c.end);
    EXPECT_NEAR(arc.startAng(), c.expectedStart, kRounding) << c.name;
    EXPECT_NEAR(arc.endAng(), c.expectedEnd, kRounding) << c.name;
    EXPECT_EQ(arc.isClosed(), c.isClosed) << c.name;
    EXPECT_EQ(arc.isDegenerate(), c.isPoint) << c.name;
    EXPECT_TRUE(isNear(arc.startPoint(), ZnGePoint3d(2 * std::cos(c.start), 2 * std::sin(c.start), 0)))
        << c.name;
    EXPECT_TRUE(isNear(arc.endPoint(), ZnGePoint3d(2 * std::cos(c.end), 2 * std::sin(c.end), 0)) ||
                c.isClosed)
        << c.name;
  }
}

TEST(Arcs, ParametersBeyondAnEndAreTheNearerEnds) {
  struct Case {
    double start, end, at, expected;
  };
  const double turn = ZnGe::kTwoPi;
  const Case cases[] = {
      {1.0, 2.0, 1.5, 1.5},         {1.0, 2.0, 0.9, 1.0},        {1.0, 2.0, 2.1, 2.0},
      {1.0, 2.0, 4.5, 2.0},         {1.0, 2.0, 4.8, 1.0},        {6.0, 7.0, 0.2, 0.2 + turn},
      {6.0, 7.0, 5.0, 6.0},         {6.0, 7.0, 1.5, 7.0},        {0.0, turn, 5.0, 5.0},
      {0.0, turn, -1e-12, 0.0},     {0.0, turn, 1e-12, 0.0},     {2.0, 2.0 + turn, 1.0, 1.0 + turn},
      {1.0, 2.0, 1.0 - 1e-12, 1.0}, {1.0, 2.0, 2.0 - 1e-12, 2.0}};
  for (const Case& c : cases) {
    const ZnGeCircArc3d arc({3, 4, 0}, kZ, kX, 1.0, c.start, c.end);
    for (const double radius : {0.25, 1.0, 40.0}) {
      // Off the circle, and off its plane, the nearest point is the same.
      const ZnGePoint3d p(3 + radius * std::cos(c.at), 4 + radius * std::sin(c.at), radius - 1.0);
      EXPECT_NEAR(arc.paramOf(p), c.expected, kRounding) << c.at << ' ' << radius;
      EXPECT_EQ(arc.isOn(p), radius == 1.0 && arc.evalPoint(c.expected).isEqualTo(p)) << c.at;
    }
  }
  const ZnGeCircArc3d arc({3, 4, 0}, kZ, kX, 1.0, 1.0, 2.0);
  // No direction leads from the center: the start, whatever the angle 0 is to the arc.
  EXPECT_EQ(arc.paramOf({3, 4, 0}), 1.0);
  EXPECT_EQ(ZnGeCircArc3d({3, 4, 0}, kZ, kX, 1.0, 5.0, 1.0).paramOf({3, 4, 0}), 5.0);
  // Bounds are met exactly, so that callers may compare.
  EXPECT_EQ(arc.paramOf(arc.startPoint()), arc.startAng());
  EXPECT_EQ(arc.paramOf(arc.endPoint()), arc.endAng());
}

TEST(Arcs, OddInputIsMadeSound) {
  EXPECT_TRUE(ZnGeCircArc3d() == ZnGeCircArc3d({0, 0, 0}, kZ, 1.0));
  EXPECT_TRUE(ZnGeCircArc3d({0, 0, 0}, {0, 0, 0}, -1.0) == ZnGeCircArc3d());
  const ZnGeCircArc3d slanted({0, 0, 0}, kZ, {3, 0, 5}, 1.0, 0.0, 1.0);
  EXPECT_TRUE(isNear(slanted.referenceVector(), kX));
  const ZnGeCircArc3d alongNormal({0, 0, 0}, {2, 0, 0}, {5, 0, 0}, 1.0, 0.0, 1.0);
  EXPECT_TRUE(isNear(alongNormal.referenceVector(), ZnGeVector3d(0, 1, 0)));
  ZnGe::EntityId kind;
  EXPECT_TRUE(ZnGeCircArc3d({1, 1, 1}, kZ, 0.0).isDegenerate(kind));
  EXPECT_EQ(kind, ZnGe::kPointEntity3d);
  EXPECT_FALSE(ZnGeCircArc3d({1, 1, 1}, kZ, 0.0).isClosed());
  EXPECT_TRUE(ZnGeCircArc3d({1, 1, 1}, kZ, 1e-3).isDegenerate(ZnGeTol(1e-2, 1e-2)));
}

TEST(Arcs, EqualityMindsSenseAndSpan) {
  const ZnGeCircArc3d arc({0, 0, 0}, kZ, kX, 2.0, 1.0, 2.0);
  EXPECT_TRUE(arc == ZnGeCircArc3d({0, 0, 0}, kZ, {0, 1, 0}, 2.0, 1.0 - ZnGe::kHalfPi, 2.0 - ZnGe::kHalfPi));
  EXPECT_TRUE(arc != ZnGeCircArc3d(arc).reverseParam());
  EXPECT_TRUE(arc != ZnGeCircArc3d(arc).setAngles(2.0, 1.0));
  EXPECT_TRUE(arc != ZnGeCircArc3d(arc).setRadius(2.0 + 1e-9));
  EXPECT_TRUE(arc != ZnGeCircArc3d(arc).setCenter({0, 1e-9, 0}));
  // A full circle has no place where it starts.
  EXPECT_TRUE(ZnGeCircArc3d(arc).setAngles(0.0, 7.0) == ZnGeCircArc3d(arc).setAngles(1.0, 8.0));
  // Ends that nearly meet: a speck and almost the whole circle.
  const ZnGeTol coarse(0.1, 0.1);
  EXPECT_FALSE(
      ZnGeCircArc3d(arc).setAngles(1.0, 1.06).isEqualTo(ZnGeCircArc3d(arc).setAngles(1.03, 1.0), coarse));
}

TEST(Arcs, UnevenMapsKeepACircle) {
  struct Case {
    const char* name;
    ZnGeVector3d factors, normal;
    double radius;
  };
  const Case cases[] = {{"in the plane", {2, 3, 5}, {0, 0, 1}, 6.0},
                        {"along the normal", {1, 1, 9}, {0, 0, 1}, 2.0},
                        {"other plane", {2, 3, 5}, {1, 0, 0}, 10.0},
                        {"mirrored", {-2, 2, 2}, {0, 0, 1}, 4.0},
                        {"flattened", {0, 0, 1}, {0, 0, 1}, 0.0}};
  for (const Case& c : cases) {
    ZnGeCircArc3d arc({1, 1, 1}, c.normal, 2.0);
    arc.transformBy(ZnGeMatrix3d::scaling(c.factors));
    EXPECT_NEAR(arc.radius(), c.radius, kRounding) << c.name;
    EXPECT_TRUE(isNear(arc.center(), ZnGePoint3d(c.factors.x, c.factors.y, c.factors.z))) << c.name;
    EXPECT_TRUE(arc.normal().isUnitLength() && arc.referenceVector().isPerpendicularTo(arc.normal()))
        << c.name;
  }
}

RC_GTEST_PROP(ArcProperties, PlaneAndCircleShareTheirAngles, ()) {
  const ZnGeCircArc3d circle(anyPoint(), anyVector(), *positive());
  ZnGePlane plane;
  circle.getPlane(plane);
  const double at = ZnGe::normalizeAngle(*angle());
  // Callers lay out circles in plane coordinates and read the angles back in space.
  const ZnGePoint2d flat = circle.evalPoint(at).convert2d(plane);
  RC_ASSERT(isNear(flat.asVector().length(), circle.radius(), 10.0));
  const double turn = flat.asVector().angle() - at;
  RC_ASSERT(isNear(std::sin(turn), 0.0) && std::cos(turn) > 0.0);
}

RC_GTEST_PROP(BulgeProperties, EndsAndHeight, ()) {
  const ZnGeVector3d normal = anyVector();
  const ZnGeMatrix3d frame = ZnGeMatrix3d::planeToWorld(normal);
  const ZnGePoint3d start = frame * ZnGePoint3d(*coordinate(), *coordinate(), 7.0);
  const ZnGePoint3d end = frame * ZnGePoint3d(*coordinate(), *coordinate(), 7.0);
  const double bulge = *rc::gen::element(-4.0, -1.0, -0.3, -0.01, 0.01, 0.5, 1.0, 2.5);
  RC_PRE(start.distanceTo(end) > 0.05);
  ZnGeCircArc3d arc;
  RC_ASSERT(ZnGe::arcFromBulge(start, end, bulge, normal, arc));
  const double size = 100.0 * std::max(1.0, arc.radius());
  RC_ASSERT(isNear(arc.startPoint(), start, size) && isNear(arc.endPoint(), end, size));
  // The bulge is the height of the arc over half of its chord, to the right of a counterclockwise one.
  const ZnGeVector3d chord = end - start;
  const ZnGeVector3d right = chord.crossProduct(normal).normal();
  const ZnGePoint3d top = start + chord * 0.5 + right * (0.5 * bulge * chord.length());
  RC_ASSERT(isNear(pointAtShare(arc, 0.5), top, size));
}

TEST(Bulges, NoArcWithoutShape) {
  struct Case {
    const char* name;
    ZnGePoint3d start, end;
    double bulge;
    ZnGeVector3d normal;
  };
  const double infinity = std::numeric_limits<double>::infinity();
  const Case cases[] = {{"straight", {0, 0, 0}, {1, 0, 0}, 0.0, {0, 0, 1}},
                        {"one point", {1, 2, 3}, {1, 2, 3}, 1.0, {0, 0, 1}},
                        {"infinite", {0, 0, 0}, {1, 0, 0}, infinity, {0, 0, 1}},
                        {"chord leaves the plane", {0, 0, 0}, {1, 0, 1}, 1.0, {0, 0, 1}},
                        {"no normal", {0, 0, 0}, {1, 0, 0}, 1.0, {0, 0, 0}}};
  for (const Case& c : cases) {
    ZnGeCircArc3d arc({5, 5, 5}, kZ, 3.0);
    EXPECT_FALSE(ZnGe::arcFromBulge(c.start, c.end, c.bulge, c.normal, arc)) << c.name;
    EXPECT_EQ(arc.radius(), 3.0) << c.name;
  }
}

RC_GTEST_PROP(FlatArcProperties, ThreePointsLieInOrder, ()) {
  const ZnGePoint2d p(*coordinate(), *coordinate()), q(*coordinate(), *coordinate());
  const ZnGePoint2d r(*coordinate(), *coordinate());
  const double area = (q - p).crossProduct(r - p);
  RC_PRE(std::fabs(area) > 0.5);
  const ZnGeCircArc2d arc(p, q, r);
  const double size = 1.0 + arc.radius() * arc.radius();
  for (const ZnGePoint2d& point : {p, q, r}) {
    RC_ASSERT(isNear(point.distanceTo(arc.center()), arc.radius(), size));
  }
  RC_ASSERT(arc.startAng() == 0.0 && arc.endAng() < ZnGe::kTwoPi);
  RC_ASSERT(arc.isClockwise() == (area < 0.0));
  const double middle = arc.paramOf(q);
  RC_ASSERT(middle > 0.0 && middle < arc.endAng());
  RC_ASSERT(arc.evalPoint(middle).distanceTo(q) <= kRounding * size);
  RC_ASSERT(arc.startPoint().distanceTo(p) <= kRounding * size);
  RC_ASSERT(arc.endPoint().distanceTo(r) <= kRounding * size);
  // The angle at which an outer point sees the chord is half of what the center sees.
  const double inscribed = (p - q).angleTo(r - q);
  RC_ASSERT(isNear(arc.endAng(), ZnGe::kTwoPi - 2.0 * inscribed, size));

  // Mirroring changes the sense and nothing else.
  const ZnGeMatrix2d mirror = ZnGeMatrix2d({3, 4}, {0, 2}, {2, 0});
  ZnGeCircArc2d mirrored(arc);
  mirrored.transformBy(mirror);
  RC_ASSERT(mirrored.isClockwise() != arc.isClockwise());
  RC_ASSERT(isNear(mirrored.radius(), 2.0 * arc.radius(), size));
  RC_ASSERT(mirrored.evalPoint(middle).distanceTo(mirror * q) <= 10.0 * kRounding * size);
}

TEST(FlatArcs, DegenerateTriples) {
  struct Case {
    const char* name;
    ZnGePoint2d p, q, r;
    ZnGeTol tol;
    bool isDegenerate;
  };
  const ZnGeTol coarse(1e-4, 1e-4);
  const Case cases[] = {{"triangle", {0, 0}, {1, 1}, {2, 0}, {}, false},
                        {"on one line", {0, 0}, {1, 1}, {2, 2}, {}, true},
                        {"on one line, out of order", {0, 0}, {5, 5}, {2, 2}, {}, true},
                        {"first two equal", {1, 1}, {1, 1}, {2, 0}, {}, true},
                        {"last two equal", {0, 0}, {1, 1}, {1, 1}, {}, true},
                        {"ends equal", {0, 0}, {1, 1}, {0, 0}, {}, true},
                        {"slightly bent, strict", {0, 0}, {1, 0.5e-4}, {2, 0}, {}, false},
                        {"slightly bent, coarse", {0, 0}, {1, 0.5e-4}, {2, 0}, coarse, true},
                        {"bent, coarse", {0, 0}, {1, 2e-4}, {2, 0}, coarse, false},
                        {"nearly full", {0, 0}, {1, 1}, {1e-3, 1e-3 + 1e-5}, coarse, false}};
  for (const Case& c : cases) {
    EXPECT_EQ(ZnGeCircArc2d(c.p, c.q, c.r).isDegenerate(c.tol), c.isDegenerate) << c.name;
    EXPECT_EQ(ZnGeCircArc2d(c.r, c.q, c.p).isDegenerate(c.tol), c.isDegenerate) << c.name;
  }
}

TEST(FlatArcs, CirclesNumberTheirPointsFromTheXAxis) {
  const ZnGeCircArc2d circle({1, 2}, 3.0);
  const ZnGeTol coarse(1e-4, 1e-4);
  for (int degree = 0; degree < 360; degree += 15) {
    const double at = degree * ZnGe::kPi / 180.0;
    const ZnGePoint2d near(1 + 3.00005 * std::cos(at), 2 + 3.00005 * std::sin(at));
    double param = -1.0;
    EXPECT_FALSE(circle.isOn(near, param)) << degree;
    EXPECT_EQ(param, -1.0);
    ASSERT_TRUE(circle.isOn(near, param, coarse)) << degree;
    EXPECT_NEAR(param, at, kRounding) << degree;
  }
  EXPECT_EQ(circle.paramOf({4, 2 - 1e-12}), 0.0);
  EXPECT_TRUE(circle == ZnGeCircArc2d({1, 2}, -3.0));
  EXPECT_TRUE(circle != ZnGeCircArc2d({1, 2}, 3.1));
}

} // namespace
