// Ellipses and splines against formulas that the library does not use.
#include <algorithm>

#include "ge_test_support.h"
#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/ge/nurb_curve3d.h"

using namespace geTest;

namespace {

RC_GTEST_PROP(EllipseProperties, NearestPointOfAnArc, ()) {
  const double a = *positive(), ratio = *rc::gen::element(1e-3, 0.1, 0.5, 0.9, 0.9999, 1.0);
  const double start = *angle(), end = *angle();
  const ZnGeEllipticalArc3d arc({1, 2, 3}, {a, 0, 0}, {0, a * ratio, 0}, start, end);
  // Inside the evolute, near its cusp and far out: where one, three or four normals pass.
  const double reach = *rc::gen::element(0.0, 0.01, 0.3, 1.0, 5.0);
  const double towards = *angle();
  const ZnGePoint3d p(1 + reach * a * std::cos(towards), 2 + reach * a * std::sin(towards), 3.5);
  double least = arc.startPoint().distanceTo(p);
  constexpr int kSteps = 2000;
  for (int i = 0; i <= kSteps; ++i)
    least = std::min(least, pointAtShare(arc, i / double(kSteps)).distanceTo(p));
  const double found = arc.distanceTo(p);
  RC_ASSERT(found <= least + kRounding * a);
  const double param = arc.paramOf(p);
  RC_ASSERT(param >= arc.startParam() && param <= arc.endParam());
  RC_ASSERT(isNear(arc.evalPoint(param).distanceTo(p), found, a));
}

RC_GTEST_PROP(EllipseProperties, ConjugateDiametersGiveTheSamePoints, ()) {
  const ZnGePoint3d center = anyPoint();
  const ZnGeVector3d p = anyVector(), q = anyVector();
  const double start = *angle(), end = start + *rc::gen::element(0.0, 0.5, 3.0, ZnGe::kTwoPi);
  const ZnGeEllipticalArc3d arc(center, p, q, start, end);
  const double size = p.length() + q.length();
  for (const double share : {0.0, 0.2, 0.5, 1.0}) {
    const double t = start + share * (end - start);
    RC_ASSERT(isNear(pointAtShare(arc, share), center + p * std::cos(t) + q * std::sin(t), size));
  }
  RC_ASSERT(arc.majorRadius() >= arc.minorRadius() - kRounding * size);
  RC_ASSERT(isNear(arc.majorAxis().dotProduct(arc.minorAxis()), 0.0, size * size));
  // Two theorems of Apollonius on conjugate diameters.
  RC_ASSERT(isNear(arc.majorAxis().lengthSquared() + arc.minorAxis().lengthSquared(),
                   p.lengthSquared() + q.lengthSquared(), size * size));
  RC_ASSERT(isNear(arc.majorRadius() * arc.minorRadius(), p.crossProduct(q).length(), size * size));
}

TEST(Ellipses, DegenerateKindsAndKnownLengths) {
  struct Case {
    const char* name;
    ZnGeEllipticalArc3d arc;
    bool isDegenerate;
    ZnGe::EntityId kind;
    double length;
  };
  const Case cases[] = {
      {"circle", ZnGeEllipticalArc3d(), false, ZnGe::kEllipticalArc3d, ZnGe::kTwoPi},
      {"from an arc", ZnGeEllipticalArc3d(ZnGeCircArc3d({0, 0, 0}, {0, 1, 0}, {1, 0, 0}, 3, 1, 2)), false,
       ZnGe::kEllipticalArc3d, 3.0},
      // The perimeter of half axes 2 and 1 is 8 E(3/4), E the complete integral.
      {"two to one", {{0, 0, 0}, {0, 2, 0}, {1, 0, 0}}, false, ZnGe::kEllipticalArc3d, 9.6884482205476761984},
      {"flat", {{0, 0, 0}, {2, 0, 0}, {0, 0, 0}}, true, ZnGe::kLineSeg3d, 8.0},
      {"point", {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}, true, ZnGe::kPointEntity3d, 0.0},
      {"empty span", {{0, 0, 0}, {2, 0, 0}, {0, 1, 0}, 1.0, 1.0}, true, ZnGe::kPointEntity3d, 0.0}};
  for (const Case& c : cases) {
    ZnGe::EntityId kind;
    EXPECT_EQ(c.arc.isDegenerate(kind), c.isDegenerate) << c.name;
    EXPECT_EQ(kind, c.kind) << c.name;
    EXPECT_NEAR(c.arc.length(), c.length, kRounding) << c.name;
  }
}

std::vector<double> bezierKnots(int degree) {
  std::vector<double> knots(degree + 1, 0.0);
  knots.resize(2 * degree + 2, 1.0);
  return knots;
}

std::vector<ZnGePoint3d> anyPoints(int count) {
  std::vector<ZnGePoint3d> points;
  for (int i = 0; i < count; ++i) points.push_back(anyPoint());
  return points;
}

// Repeated interpolation between neighbouring control points.
ZnGePoint3d deCasteljau(std::vector<ZnGePoint3d> points, double t) {
  for (; points.size() > 1; points.pop_back()) {
    for (size_t i = 0; i + 1 < points.size(); ++i) points[i] += (points[i + 1] - points[i]) * t;
  }
  return points.front();
}

// The basis functions as they are defined, each from two of the degree below.
double basis(const std::vector<double>& knots, int i, int degree, double t) {
  if (degree == 0) return knots[i] <= t && t < knots[i + 1] ? 1.0 : 0.0;
  const double left = knots[i + degree] - knots[i], right = knots[i + degree + 1] - knots[i + 1];
  return (left > 0.0 ? (t - knots[i]) / left * basis(knots, i, degree - 1, t) : 0.0) +
         (right > 0.0 ? (knots[i + degree + 1] - t) / right * basis(knots, i + 1, degree - 1, t) : 0.0);
}

RC_GTEST_PROP(SplineProperties, BezierCasesFollowDeCasteljau, ()) {
  const int degree = *rc::gen::inRange(1, 9);
  const std::vector<ZnGePoint3d> points = anyPoints(degree + 1);
  ZnGeNurbCurve3d curve;
  RC_ASSERT(curve.set(degree, bezierKnots(degree), points) == Quorl::eOk);
  for (const double t : {0.0, 0.1, 0.5, 0.77, 1.0}) {
    RC_ASSERT(isNear(curve.evalPoint(t), deCasteljau(points, t), 100.0));
    // The derivative of a Bezier curve is one of degree less 1 on the differences.
    std::vector<ZnGePoint3d> differences;
    for (int i = 0; i < degree; ++i) {
      differences.push_back(ZnGePoint3d() + (points[i + 1] - points[i]) * degree);
    }
    RC_ASSERT(isNear(curve.evaluateDerivative(t), deCasteljau(differences, t).asVector(), 1e3));
  }
  RC_ASSERT(isNear(curve.evalPoint(-3.0), points.front()) && isNear(curve.evalPoint(3.0), points.back()));
}

RC_GTEST_PROP(SplineProperties, SumOfBasisFunctions, ()) {
  const int degree = *rc::gen::inRange(1, 5), count = degree + 1 + *rc::gen::inRange(0, 5);
  const bool isRational = *rc::gen::element(false, true);
  std::vector<double> knots{-1.0};
  for (int i = 1; i < count + degree + 1; ++i)
    knots.push_back(knots.back() + *rc::gen::element(0.25, 1.0, 2.0));
  // Clamped at the start in half of the cases, and with a double knot inside where the degree allows.
  if (*rc::gen::element(false, true)) std::fill(knots.begin(), knots.begin() + degree, knots[degree]);
  if (degree > 1 && count > degree + 2) knots[degree + 1] = knots[degree + 2];
  const std::vector<ZnGePoint3d> points = anyPoints(count);
  std::vector<double> weights;
  for (int i = 0; isRational && i < count; ++i) weights.push_back(*rc::gen::element(0.5, 1.0, 3.0));
  ZnGeNurbCurve3d curve;
  RC_ASSERT(curve.set(degree, knots, points, weights) == Quorl::eOk);
  for (const double share : {0.0, 0.21, 0.5, 0.83}) {
    const double t = knots[degree] + share * (knots[count] - knots[degree]);
    ZnGeVector3d sum;
    double weightSum = 0.0;
    for (int i = 0; i < count; ++i) {
      const double factor = basis(knots, i, degree, t) * (isRational ? weights[i] : 1.0);
      sum += points[i].asVector() * factor;
      weightSum += factor;
    }
    RC_ASSERT(isNear(curve.evalPoint(t).asVector(), sum / weightSum, 100.0));
  }
}

TEST(Splines, UnsoundDefinitionsAreRefused) {
  struct Case {
    const char* name;
    int degree;
    std::vector<double> knots, weights;
    int pointCount;
    Quorl::ErrorStatus expected;
  };
  const double nan = std::nan("");
  const Case cases[] = {{"sound", 2, {0, 0, 0, 1, 2, 2, 2}, {}, 4, Quorl::eOk},
                        {"double knot", 2, {0, 0, 0, 1, 1, 2, 2, 2}, {}, 5, Quorl::eOk},
                        {"triple knot tears", 2, {0, 0, 0, 1, 1, 1, 2, 2, 2}, {}, 6, Quorl::eInvalidInput},
                        {"degree 0", 0, {0, 1, 2, 3, 4}, {}, 4, Quorl::eInvalidInput},
                        {"degree too high", 16, std::vector<double>(34, 1.0), {}, 17, Quorl::eInvalidInput},
                        {"too few points", 3, {0, 0, 0, 0, 1, 1, 1}, {}, 3, Quorl::eInvalidInput},
                        {"too few knots", 2, {0, 0, 0, 1, 1, 1}, {}, 4, Quorl::eInvalidInput},
                        {"falling knots", 2, {0, 0, 0, 1, 2, 1.5, 2}, {}, 4, Quorl::eInvalidInput},
                        {"empty interval", 2, {0, 0, 1, 1, 1, 1, 2}, {}, 4, Quorl::eInvalidInput},
                        {"knot that is none", 2, {0, 0, 0, nan, 2, 2, 2}, {}, 4, Quorl::eInvalidInput},
                        {"zero weight", 2, {0, 0, 0, 1, 2, 2, 2}, {1, 0, 1, 1}, 4, Quorl::eInvalidInput},
                        {"missing weight", 2, {0, 0, 0, 1, 2, 2, 2}, {1, 1, 1}, 4, Quorl::eInvalidInput}};
  for (const Case& c : cases) {
    ZnGeNurbCurve3d curve;
    ASSERT_EQ(curve.set(1, {0, 0, 1, 1}, {{0, 0, 0}, {8, 0, 0}}), Quorl::eOk);
    std::vector<ZnGePoint3d> points;
    for (int i = 0; i < c.pointCount; ++i) points.emplace_back(i, i * i, 0);
    EXPECT_EQ(curve.set(c.degree, c.knots, points, c.weights), c.expected) << c.name;
    EXPECT_EQ(curve.degree(), c.expected == Quorl::eOk ? c.degree : 1) << c.name;
  }
}

TEST(Splines, EmptyOnesAnswerLikeAPoint) {
  const ZnGeNurbCurve3d empty;
  std::vector<ZnGePoint3d> points;
  empty.appendSamplePoints(0.1, points);
  EXPECT_TRUE(points.empty());
  EXPECT_TRUE(empty.isDegenerate());
  EXPECT_FALSE(empty.isClosed());
  EXPECT_TRUE(empty.boundBox().isEmpty());
  EXPECT_EQ(empty.length(), 0.0);
  EXPECT_NEAR(empty.distanceTo({3, 4, 0}), 5.0, kRounding);
}

} // namespace
