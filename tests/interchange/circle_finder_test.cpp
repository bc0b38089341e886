#include "interchange/recognize/circle_finder.h"

#include "interchange/recognize/contour_shapes.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

using namespace interchange;

namespace {

ZnGeVector2d polar(double radius, double angle) {
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

double rounded(double value, int decimals) {
  const double scale = std::pow(10, decimals);
  return std::round(value * scale) / scale;
}

ZnGePoint2d rounded(ZnGePoint2d p, int decimals) { return {rounded(p.x, decimals), rounded(p.y, decimals)}; }

// The usual cubic for an arc of a regular division, its handles scaled by `stretch`.
Contour cubicRound(int pieces, ZnGePoint2d center, double radius, int decimals, double stretch = 1) {
  Contour contour;
  contour.closed = true;
  const double step = 2 * M_PI / pieces;
  const double handle = 4.0 / 3.0 * std::tan(step / 4) * radius * stretch;
  for (int i = 0; i < pieces; ++i) {
    const double a = i * step, b = (i + 1) % pieces * step;
    const ZnGePoint2d p = center + polar(radius, a), q = center + polar(radius, b);
    const ZnGePoint2d c = p + polar(handle, a + M_PI / 2), d = q + polar(handle, b - M_PI / 2);
    contour.segments.push_back(Segment::cubic(rounded(p, decimals), rounded(c, decimals),
                                              rounded(d, decimals), rounded(q, decimals)));
  }
  return contour;
}

Contour quadraticRound(int pieces, ZnGePoint2d center, double radius, int decimals) {
  Contour contour;
  contour.closed = true;
  const double step = 2 * M_PI / pieces;
  for (int i = 0; i < pieces; ++i) {
    const double a = i * step, b = (i + 1) % pieces * step;
    const ZnGePoint2d control = center + polar(radius / std::cos(step / 2), a + step / 2);
    contour.segments.push_back(Segment::quadratic(rounded(center + polar(radius, a), decimals),
                                                  rounded(control, decimals),
                                                  rounded(center + polar(radius, b), decimals)));
  }
  return contour;
}

Contour polygon(const std::vector<ZnGePoint2d>& vertices) {
  Contour contour;
  contour.closed = true;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    contour.segments.push_back(Segment::line(vertices[i], vertices[(i + 1) % vertices.size()]));
  }
  return contour;
}

Contour regularPolygon(int sides, ZnGePoint2d center, double radius, int decimals) {
  std::vector<ZnGePoint2d> vertices;
  for (int i = 0; i < sides; ++i)
    vertices.push_back(rounded(center + polar(radius, 2 * M_PI * i / sides), decimals));
  return polygon(vertices);
}

Contour arcs(std::vector<EllipticArc> list) {
  Contour contour;
  contour.closed = true;
  for (const EllipticArc& arc : list) contour.segments.push_back(Segment::ellipticArc(arc));
  return contour;
}

struct Spelling {
  const char* name;
  Contour contour;
  RoundSpelling spelling;
  int pieces;
  double radiusSlack; // of a circle of radius 7 about (31, -12)
};

const ZnGePoint2d kCenter{31, -12};
constexpr double kRadius = 7;

std::vector<Spelling> spellings() {
  const auto turn = [](double start, double sweep) {
    return EllipticArc{kCenter, {kRadius, 0}, {0, kRadius}, start, sweep};
  };
  Contour seamed = arcs({turn(0.2, 6.26)});
  seamed.segments.push_back(Segment::line(seamed.segments[0].end, seamed.segments[0].start));
  std::vector<Spelling> list{
      {"one whole arc", arcs({turn(1, 2 * M_PI)}), RoundSpelling::Whole, 1, 1e-12},
      {"backwards", arcs({turn(1, -2 * M_PI)}), RoundSpelling::Whole, 1, 1e-12},
      {"two arcs", arcs({turn(0, M_PI), turn(M_PI, M_PI)}), RoundSpelling::Arcs, 2, 1e-12},
      {"uneven arcs", arcs({turn(0, 4), turn(4, 1), turn(5, 2 * M_PI - 5)}), RoundSpelling::Arcs, 3, 1e-9},
      {"one arc and a seam", seamed, RoundSpelling::Arcs, 1, 1e-9},
      {"8 quadratics", quadraticRound(8, kCenter, kRadius, 3), RoundSpelling::Curves, 8, 0.02},
      {"16-gon", regularPolygon(16, kCenter, kRadius, 3), RoundSpelling::Polygon, 16, 2e-3},
      {"20-gon", regularPolygon(20, kCenter, kRadius, 3), RoundSpelling::Polygon, 20, 2e-3},
      {"120-gon", regularPolygon(120, kCenter, kRadius, 3), RoundSpelling::Polygon, 120, 2e-3}};
  for (const int pieces : {2, 3, 4, 5, 6, 8, 11, 24}) {
    list.push_back({"cubics", cubicRound(pieces, kCenter, kRadius, 3), RoundSpelling::Curves, pieces, 2e-3});
  }
  return list;
}

TEST(CircleFinder, FindsEverySpellingWithItsOwnRadius) {
  for (const Spelling& c : spellings()) {
    SCOPED_TRACE(std::string(c.name) + " x" + std::to_string(c.pieces));
    const auto circle = findCircle(c.contour, {});
    ASSERT_TRUE(circle);
    EXPECT_NEAR(circle->center.distanceTo(kCenter), 0, c.radiusSlack);
    EXPECT_NEAR(circle->radius, kRadius, c.radiusSlack);
    EXPECT_EQ(circle->fit.spelling, c.spelling);
    EXPECT_EQ(circle->fit.pieces, c.pieces);
    EXPECT_DOUBLE_EQ(circle->fit.relative, circle->fit.deviation / circle->radius);
  }
}

// The figures from the literature: how far n cubics and n sides leave their circle.
TEST(CircleFinder, DeviationIsThatOfTheDrawnCurve) {
  struct Case {
    Contour contour;
    double relative, slack;
  };
  const std::vector<Case> cases{{cubicRound(2, kCenter, kRadius, 9), 0.0184, 1e-4},
                                {cubicRound(4, kCenter, kRadius, 9), 0.000273, 2e-5},
                                {regularPolygon(20, kCenter, kRadius, 9), 1 - std::cos(M_PI / 20), 1e-6},
                                {regularPolygon(16, kCenter, kRadius, 9), 1 - std::cos(M_PI / 16), 1e-6}};
  for (const Case& c : cases) {
    const auto circle = findCircle(c.contour, {});
    ASSERT_TRUE(circle);
    EXPECT_NEAR(circle->fit.relative, c.relative, c.slack);
  }
}

// Eight parabolas leave their circle at the middles alone, which weigh as much as the ends.
TEST(CircleFinder, EndsAndMiddlesCountAlike) {
  const double half = M_PI / 8, atMiddle = kRadius * (std::cos(half) + 1 / std::cos(half)) / 2;
  const auto circle = findCircle(quadraticRound(8, kCenter, kRadius, 12), {});
  ASSERT_TRUE(circle);
  EXPECT_NEAR(circle->radius, std::sqrt((kRadius * kRadius + atMiddle * atMiddle) / 2), 1e-9);
}

// Small holes have few decimals in their radius; the finder must not ask for more than there are.
TEST(CircleFinder, FindsSmallRoundedHoles) {
  for (const double radius : {0.1, 0.25, 0.5, 1.1, 3.0}) {
    for (const int pieces : {4, 8, 11}) {
      const auto circle = findCircle(cubicRound(pieces, {10.1234, 20.4321}, radius, 3), {});
      ASSERT_TRUE(circle) << radius << " x" << pieces;
      EXPECT_NEAR(circle->radius, radius, 1e-3);
    }
  }
}

Contour mapped(Contour contour, const ZnGeMatrix2d& map) {
  contour.transform(map);
  return contour;
}

Contour withoutLast(Contour contour) {
  contour.segments.pop_back();
  contour.closed = false;
  return contour;
}

// A round with a chord across it at a part of the radius.
Contour flattened(double depth) {
  const double angle = std::acos(1 - depth);
  Contour contour = arcs({{kCenter, {kRadius, 0}, {0, kRadius}, angle, 2 * M_PI - 2 * angle}});
  contour.segments.push_back(Segment::line(contour.segments[0].end, contour.segments[0].start));
  return contour;
}

// Corners rounded so that all vertices lie on one circle: a square with short sides between them.
Contour concyclicOutline() {
  std::vector<ZnGePoint2d> vertices;
  for (int corner = 0; corner < 4; ++corner) {
    for (int i = 0; i < 21; ++i)
      vertices.push_back(ZnGePoint2d::kOrigin + polar(100, corner * M_PI / 2 + (i - 10) * 0.004));
  }
  return polygon(vertices);
}

TEST(CircleFinder, LeavesFalseFriendsAlone) {
  struct Case {
    const char* name;
    Contour contour;
  };
  const Contour whole = arcs({{kCenter, {kRadius, 0}, {0, kRadius}, 0, 2 * M_PI}});
  std::vector<ZnGePoint2d> uneven, star;
  for (int i = 0; i < 20; ++i) {
    uneven.push_back(ZnGePoint2d::kOrigin + polar(kRadius, 2 * M_PI * i / 20 + (i % 2 ? 0.06 : 0)));
    star.push_back(ZnGePoint2d::kOrigin + polar(kRadius, 2 * M_PI * i * 9 / 20));
  }
  const Contour twice = arcs({{kCenter, {kRadius, 0}, {0, kRadius}, 0, 2 * M_PI},
                              {kCenter, {kRadius, 0}, {0, kRadius}, 0, 2 * M_PI}});
  const Contour thereAndBack = arcs(
      {{kCenter, {kRadius, 0}, {0, kRadius}, 0, M_PI}, {kCenter, {kRadius, 0}, {0, kRadius}, M_PI, -M_PI}});
  const std::vector<Case> cases{
      {"octagon", regularPolygon(8, kCenter, kRadius, 3)},
      {"dodecagon", regularPolygon(12, kCenter, kRadius, 3)},
      {"15-gon", regularPolygon(15, kCenter, kRadius, 6)},
      {"unequal sides", polygon(uneven)},
      {"star polygon", polygon(star)},
      {"outline with corners on a circle", concyclicOutline()},
      {"isometric ellipse", mapped(whole, ZnGeMatrix2d::scaling({1, 0.4444}))},
      {"ellipse a percent off", mapped(whole, ZnGeMatrix2d::scaling({1, 0.99}))},
      {"cubic ellipse two percent off",
       mapped(cubicRound(4, kCenter, kRadius, 6), ZnGeMatrix2d::scaling({1, 0.98}))},
      {"superellipse", cubicRound(4, kCenter, kRadius, 3, 1.12)},
      {"hollow sides", cubicRound(4, kCenter, kRadius, 3, 0.85)},
      {"shallow flat", flattened(0.01)},
      {"deep flat", flattened(0.3)},
      {"open", withoutLast(cubicRound(11, kCenter, kRadius, 3))},
      {"two turns", twice},
      {"half a turn and back", thereAndBack},
      {"lens", arcs({{{0, -3}, {5, 0}, {0, 5}, std::atan2(3, 4), M_PI - 2 * std::atan2(3, 4)},
                     {{0, 3}, {5, 0}, {0, 5}, -M_PI + std::atan2(3, 4), M_PI - 2 * std::atan2(3, 4)}})}};
  for (const Case& c : cases) EXPECT_FALSE(findCircle(c.contour, {})) << c.name;
}

TEST(CircleFinder, ToleranceAndSidesAreTheCallers) {
  FitOptions strict;
  strict.circleTolerance = 0.01;
  EXPECT_FALSE(findCircle(cubicRound(2, kCenter, kRadius, 3), strict));
  EXPECT_FALSE(findCircle(regularPolygon(20, kCenter, kRadius, 3), strict));
  EXPECT_TRUE(findCircle(regularPolygon(24, kCenter, kRadius, 3), strict));
  FitOptions loose;
  loose.polygonSides = 24;
  EXPECT_FALSE(findCircle(regularPolygon(20, kCenter, kRadius, 3), loose));
  // A tenth of a micrometre a unit: rounding to whole units is as good as three decimals of a millimetre.
  loose.millimetresPerUnit = 1e-3;
  EXPECT_TRUE(
      findCircle(mapped(cubicRound(11, kCenter, 0.5, 3), ZnGeMatrix2d::scaling({1000, 1000})), loose));
}

// Moving, turning, mirroring, scaling and reversing a drawing changes where its circles are, not whether.
RC_GTEST_PROP(CircleFinder, IsInvariantUnderSimilarity, ()) {
  const auto list = spellings();
  const Spelling& c = list[*rc::gen::inRange<std::size_t>(0, list.size())];
  const double angle = *rc::gen::inRange(0, 628) / 100.0;
  const double scale = *rc::gen::inRange(20, 500) / 100.0;
  const bool mirror = *rc::gen::arbitrary<bool>();
  const ZnGeMatrix2d map =
      ZnGeMatrix2d::translation({1.0 * *rc::gen::inRange(-500, 500), 1.0 * *rc::gen::inRange(-500, 500)}) *
      ZnGeMatrix2d::rotation(angle) * ZnGeMatrix2d::scaling({scale, mirror ? -scale : scale});
  const auto circle = findCircle(mapped(c.contour, map), {});
  RC_ASSERT(circle.has_value());
  const auto original = findCircle(c.contour, {});
  RC_ASSERT(circle->center.distanceTo(map * original->center) < 1e-6);
  RC_ASSERT(std::abs(circle->radius - scale * original->radius) < 1e-6);
  RC_ASSERT(std::abs(circle->fit.relative - original->fit.relative) < 1e-6);
}

} // namespace
