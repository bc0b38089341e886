// Points, vectors, angles and tolerances.
#include <limits>

#include "ge_test_support.h"

using namespace geTest;

namespace {

constexpr double kHuge = std::numeric_limits<double>::infinity();

TEST(Angles, NormalizedIntoOneTurn) {
  struct Case {
    double angle, expected;
  };
  const Case cases[] = {{0.0, 0.0},
                        {-0.0, 0.0},
                        {ZnGe::kTwoPi, 0.0},
                        {-ZnGe::kTwoPi, 0.0},
                        {-1e-17, 0.0},
                        {-1.0, ZnGe::kTwoPi - 1.0},
                        {ZnGe::kTwoPi + 0.5, 0.5},
                        {-5.0 * ZnGe::kPi, ZnGe::kPi}};
  for (const Case& c : cases) {
    const double result = ZnGe::normalizeAngle(c.angle);
    EXPECT_NEAR(result, c.expected, kRounding) << c.angle;
    EXPECT_FALSE(std::signbit(result)) << c.angle;
    EXPECT_LT(result, ZnGe::kTwoPi) << c.angle;
  }
}

TEST(Angles, RoundingLeavesNoNegativeSpan) {
  // Whole turns below the start; the sum of the turns rounds to just below it.
  for (const double start : {-31.675054668108597, -29.731904051847902, -22.395833175761393}) {
    EXPECT_GE(ZnGe::endAngleAbove(start, start - 6.0 * ZnGe::kTwoPi), start);
  }
}

TEST(Angles, QuarterTurnsAreExact) {
  for (int quarter = -9; quarter <= 9; ++quarter) {
    const ZnGe::SinCos result = ZnGe::sinCos(quarter * ZnGe::kHalfPi);
    EXPECT_EQ(std::fabs(result.sin) + std::fabs(result.cos), 1.0) << quarter;
    EXPECT_NEAR(result.sin, std::sin(quarter * ZnGe::kHalfPi), kRounding) << quarter;
    EXPECT_NEAR(result.cos, std::cos(quarter * ZnGe::kHalfPi), kRounding) << quarter;
  }
  EXPECT_TRUE(std::isnan(ZnGe::sinCos(kHuge).sin));
}

struct RelationCase {
  const char* name;
  ZnGeVector3d a, b;
  ZnGeTol tol;
  bool equal, parallel, codirectional, perpendicular;
};

const RelationCase kRelations[] = {
    {"same", {1, 2, 3}, {1, 2, 3}, {}, true, true, true, false},
    {"opposite", {1, 2, 3}, {-2, -4, -6}, {}, false, true, false, false},
    {"square", {1, 2, 3}, {3, 0, -1}, {}, false, false, false, true},
    {"inside the sine", {1, 0, 0}, {1, 0.9e-10, 0}, {}, true, true, true, false},
    {"outside the sine", {1, 0, 0}, {1, 1.2e-10, 0}, {}, false, false, false, false},
    {"sine of long vectors", {1e6, 0, 0}, {1e6, 0.9e-4, 0}, {}, false, true, true, false},
    {"wide tolerance", {1, 0, 0}, {1, 0.009, 0}, {1.0, 0.01}, true, true, true, false},
    {"nearly square", {0, 5, 0}, {1e-9, 0, 20}, {}, false, false, false, true},
    {"no longer square", {0, 5, 0}, {0, 3e-9, 20}, {}, false, false, false, false},
    {"zero", {0, 0, 0}, {1, 0, 0}, {}, false, false, false, false},
    {"two zeros", {0, 0, 0}, {0, 0, 0}, {}, true, false, false, false},
    {"too short for a direction", {1e-11, 0, 0}, {1, 0, 0}, {}, false, false, false, false}};

TEST(Vectors, RelationsHoldBothWaysAndUnderRotation) {
  const ZnGeMatrix3d turns[] = {ZnGeMatrix3d(), ZnGeMatrix3d::rotation(1.1, {1, 2, 3}),
                                ZnGeMatrix3d::mirroring(ZnGePoint3d::kOrigin)};
  for (const RelationCase& c : kRelations) {
    for (const ZnGeMatrix3d& turn : turns) {
      const ZnGeVector3d a = turn * c.a, b = turn * c.b;
      for (const auto& [v, w] : {std::pair(a, b), std::pair(b, a)}) {
        EXPECT_EQ(v.isEqualTo(w, c.tol), c.equal) << c.name;
        EXPECT_EQ(v.isParallelTo(w, c.tol), c.parallel) << c.name;
        EXPECT_EQ(v.isCodirectionalTo(w, c.tol), c.codirectional) << c.name;
        EXPECT_EQ(v.isPerpendicularTo(w, c.tol), c.perpendicular) << c.name;
      }
    }
    if (c.a.z != 0.0 || c.b.z != 0.0) continue;
    const ZnGeVector2d flatA(c.a.x, c.a.y), flatB(c.b.x, c.b.y);
    EXPECT_EQ(flatA.isEqualTo(flatB, c.tol), c.equal) << c.name;
    EXPECT_EQ(flatA.isParallelTo(flatB, c.tol), c.parallel) << c.name;
    EXPECT_EQ(flatB.isCodirectionalTo(flatA, c.tol), c.codirectional) << c.name;
  }
}

TEST(Vectors, NormalizeLeavesShortVectors) {
  const double equalVector = ZnGeTol().equalVector();
  const ZnGeVector3d shortOne(0.0, equalVector, 0.0);
  EXPECT_EQ(shortOne.normal().y, equalVector);
  EXPECT_EQ(ZnGeVector3d(0.0, 2.0 * equalVector, 0.0).normal().y, 1.0);
  EXPECT_EQ(ZnGeVector3d(0.0, 0.5, 0.0).normal(ZnGeTol(0.0, 0.5)).y, 0.5);
  EXPECT_EQ(ZnGeVector2d(equalVector, 0.0).normal().x, equalVector);
  EXPECT_TRUE(shortOne.isZeroLength());
  EXPECT_FALSE(ZnGeVector3d(0.0, 2.0 * equalVector, 0.0).isZeroLength());
}

TEST(Vectors, PerpVectorIsTheAxisOfEntityPlanes) {
  struct Case {
    ZnGeVector3d v, expected;
  };
  const double below = 1.0 / 65.0, above = 1.0 / 63.0;
  const double belowZ = std::sqrt(1.0 - below * below), aboveZ = std::sqrt(1.0 - above * above);
  const Case cases[] = {{{0, 0, 1}, {1, 0, 0}},
                        {{0, 0, -4}, {-1, 0, 0}},
                        {{1, 0, 0}, {0, 1, 0}},
                        {{0, 3, 0}, {-1, 0, 0}},
                        {{0, below, belowZ}, {1, 0, 0}},
                        {{0, above, aboveZ}, {-1, 0, 0}},
                        {{below, 0, belowZ}, {belowZ, 0, -below}},
                        {{above, 0, aboveZ}, {0, 1, 0}},
                        {{0, 0, 0}, {1, 0, 0}}};
  for (const Case& c : cases) {
    EXPECT_TRUE(isNear(c.v.perpVector(), c.expected)) << c.v << c.v.perpVector();
  }
}

RC_GTEST_PROP(VectorProperties, ProductsAndAngles, ()) {
  const ZnGeVector3d a = anyVector(), b = anyVector();
  const ZnGeVector3d cross = a.crossProduct(b);
  const double size = a.length() * b.length();
  // Lagrange's identity, and the law of cosines.
  RC_ASSERT(isNear(cross.lengthSquared() / (size * size) + std::pow(a.dotProduct(b) / size, 2), 1.0));
  const double cosine = (a.lengthSquared() + b.lengthSquared() - (a - b).lengthSquared()) / (2.0 * size);
  RC_ASSERT(isNear(std::cos(a.angleTo(b)), cosine));
  RC_ASSERT(isNear(a.angleTo(b), b.angleTo(a)));

  RC_PRE(cross.length() > 0.1);
  // Turning by the signed angle about the reference brings one vector onto the other.
  for (const ZnGeVector3d& reference : {cross, -cross}) {
    const double turn = a.angleTo(b, reference);
    RC_ASSERT(turn >= 0.0 && turn < ZnGe::kTwoPi);
    RC_ASSERT(isNear(ZnGeVector3d(a).rotateBy(turn, reference).normal(), b.normal()));
  }
  RC_ASSERT(isNear(a.perpVector().dotProduct(a), 0.0, a.length()));
  RC_ASSERT(a.perpVector().isUnitLength());
}

RC_GTEST_PROP(VectorProperties, FlatOnesBehaveAsInSpace, ()) {
  const ZnGeVector2d a(*coordinate(), *coordinate()), b(*coordinate(), *coordinate());
  RC_PRE(a.length() > 0.5 && b.length() > 0.5);
  const ZnGeVector3d inSpaceA(a.x, a.y, 0.0), inSpaceB(b.x, b.y, 0.0);
  RC_ASSERT(isNear(a.crossProduct(b), inSpaceA.crossProduct(inSpaceB).z));
  RC_ASSERT(isNear(a.angleTo(b), inSpaceA.angleTo(inSpaceB)));
  RC_ASSERT(isNear(a.angle(), ZnGeVector3d::kXAxis.angleTo(inSpaceA, ZnGeVector3d::kZAxis)));
  RC_ASSERT(isNear(ZnGe::normalizeAngle(a.signedAngle()), a.angle()) &&
            std::fabs(a.signedAngle()) <= ZnGe::kPi);
  const double turnToB = a.signedAngleTo(b);
  RC_ASSERT(isNear(std::fabs(turnToB), a.angleTo(b)) && (turnToB >= 0.0) == (a.crossProduct(b) >= 0.0));
  const double turn = *angle();
  const ZnGeVector3d turned = ZnGeVector3d(inSpaceA).rotateBy(turn, ZnGeVector3d::kZAxis);
  const ZnGeVector2d flat = ZnGeVector2d(a).rotateBy(turn);
  RC_ASSERT(isNear(ZnGeVector3d(flat.x, flat.y, 0.0), turned));
}

TEST(Points, EqualWithinTheTolerance) {
  const ZnGePoint3d p(1.0, 2.0, 3.0);
  const double equalPoint = ZnGeTol().equalPoint();
  EXPECT_TRUE(p == p + ZnGeVector3d(0.0, 0.0, 0.9 * equalPoint));
  EXPECT_TRUE(p != p + ZnGeVector3d(0.0, 0.0, 1.1 * equalPoint));
  // Distance, not each coordinate by itself.
  EXPECT_FALSE(p.isEqualTo(p + ZnGeVector3d(0.9, 0.9, 0.9), ZnGeTol(1.0, 0.0)));
  EXPECT_TRUE(p.isEqualTo(p + ZnGeVector3d(0.5, 0.5, 0.5), ZnGeTol(1.0, 0.0)));
  EXPECT_TRUE(ZnGePoint2d(3.0, 4.0) != ZnGePoint2d(3.0, 4.0 + 2.0 * equalPoint));
}

} // namespace
