// Comparison of curves and coordinate systems, and the small geometry of the module.
#include <cmath>
#include <memory>
#include <numbers>
#include <tuple>

#include "quorl/ge/elliptical_arc3d.h"
#include "torvi/core/action_body_utils.h"
#include "torvi_core/scripted_body.h"

namespace {

using Utils = ZnDbTorviActionBodyUtils;
using Lyx = ZnTorviLyxUtils;
using Seg = ZnGeLineSeg3d;
using Arc = ZnGeCircArc3d;
constexpr double kPi = std::numbers::pi;
const ZnGeVector3d kX(1, 0, 0), kY(0, 1, 0), kZ(0, 0, 1);

std::shared_ptr<ZnGeCurve3d> seg(const ZnGePoint3d& a, const ZnGePoint3d& b) {
  return std::make_shared<Seg>(a, b);
}
std::shared_ptr<ZnGeCurve3d> arc(double radius, double start, double end, const ZnGeVector3d& normal = kZ,
                                 const ZnGePoint3d& center = {}) {
  return std::make_shared<Arc>(center, normal, kX, radius, start, end);
}

TEST(CurveComparison, PairByPair) {
  const double within = ZnGeContext::gTol.equalPoint() * 0.5, beyond = ZnGeContext::gTol.equalPoint() * 2.0;
  const std::shared_ptr<ZnGeCurve3d> unit = seg({0, 0, 0}, {1, 0, 0}), quarter = arc(2.0, 0.0, 1.5);
  struct {
    const char* what;
    std::shared_ptr<ZnGeCurve3d> a, b;
    bool equal;
  } const rows[] = {
      {"segment, nearly", unit, seg({0, within, 0}, {1, 0, within}), true},
      {"segment, start off", unit, seg({0, beyond, 0}, {1, 0, 0}), false},
      {"segment, end off", unit, seg({0, 0, 0}, {1, 0, beyond}), false},
      {"segment, reversed", unit, seg({1, 0, 0}, {0, 0, 0}), false},
      {"arc, radius", quarter, arc(2.0 + 1e-12, 0.0, 1.5), false},
      {"arc, center nearly", quarter, arc(2.0, 0.0, 1.5, kZ, {within, 0, 0}), true},
      {"arc, center off", quarter, arc(2.0, 0.0, 1.5, kZ, {beyond, 0, 0}), false},
      {"arc, normal", quarter, arc(2.0, 0.0, 1.5, -kZ), false},
      {"arc, end off", quarter, arc(2.0, 0.0, 1.5 + beyond), false},
      {"arc, end nearly", quarter, arc(2.0, 0.0, 1.5 + within), true},
      {"arc, start off", quarter, arc(2.0, beyond, 1.5), false},
      {"circle by another turn", arc(2.0, 0.0, 2.0 * kPi), arc(2.0, 1.0, 1.0 + 2.0 * kPi), false},
      {"empty markers", std::make_shared<ZnGeLine3d>(), std::make_shared<ZnGeLine3d>(ZnGePoint3d(), kY),
       true},
      {"marker and segment", std::make_shared<ZnGeLine3d>(), unit, false},
      {"segment and arc", unit, quarter, false},
      {"neither", std::make_shared<ZnGeEllipticalArc3d>(), std::make_shared<ZnGeEllipticalArc3d>(), false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Utils::areTwoCurvesEqual(row.a.get(), row.b.get()), row.equal) << row.what;
    EXPECT_EQ(Utils::areTwoCurvesEqual(row.b.get(), row.a.get()), row.equal) << row.what << " turned round";
  }
}

TEST(CurveComparison, ListByList) {
  const Seg one(ZnGePoint3d(0, 0, 0), ZnGePoint3d(1, 0, 0)), two(ZnGePoint3d(0, 0, 0), ZnGePoint3d(2, 0, 0));
  const auto listOf = [&](const std::string& text) {
    Curves curves;
    for (const char c : text) curves.append(const_cast<Seg*>(c == '1' ? &one : &two));
    return curves;
  };
  const std::tuple<const char*, const char*, bool, bool> rows[] = {// without and with spare ones allowed
                                                                   {"", "1", false, true},
                                                                   {"1", "", false, false},
                                                                   {"12", "12", true, true},
                                                                   {"12", "121", false, true},
                                                                   {"12", "211", false, false}};
  for (const auto& [a, b, strict, withMore] : rows) {
    EXPECT_EQ(Utils::geCurvesAreEqual(listOf(a), listOf(b), false), strict) << a << b;
    EXPECT_EQ(Utils::geCurvesAreEqual(listOf(a), listOf(b), true), withMore) << a << b;
  }
}

const ZnGeMatrix3d kPlace = ZnGeMatrix3d::translation({3, -2, 5}) * ZnGeMatrix3d::rotation(0.7, {1, 2, 3});

// A scale makes no difference between coordinate systems, a mirror does.
TEST(FrameComparison, AligningTurnsAboutTheOwnOrigin) {
  const auto turn = [](double angle, const ZnGeVector3d& axis) {
    return ZnGeMatrix3d::rotation(angle, axis);
  };
  struct {
    const char* what;
    ZnGeMatrix3d reference, turned; // both in the matrix's own coordinates
    bool equal = false;             // before
  } const rows[] = {
      {"in the plane", turn(0.4, kZ), turn(0.4, kZ)},
      {"already there", ZnGeMatrix3d::scaling({3.0, 2.0, 0.5}), {}, true},
      {"opposite", turn(kPi, kZ), turn(kPi, kZ)},
      {"opposite by a flip", turn(kPi, kY), turn(kPi, kZ)},
      {"out of the plane", turn(0.4, kY), turn(0.4, kY)},
      {"moved", ZnGeMatrix3d::translation({0, 0, 1e-6}), {}},
      {"origins stay apart", ZnGeMatrix3d::translation({9, 9, 9}) * turn(1.0, kZ), turn(1.0, kZ)},
      {"mirrored back to front", ZnGeMatrix3d::mirroring(ZnGePlane({}, kZ)), {}},
      {"mirrored left to right", ZnGeMatrix3d::mirroring(ZnGePlane({}, kX)), turn(kPi, kZ)},
  };
  for (const auto& row : rows)
    for (const double scale : {1.0, 2.0}) { // which stays
      const ZnGeMatrix3d start = kPlace * ZnGeMatrix3d::scaling(scale);
      ZnGeMatrix3d m = start;
      EXPECT_EQ(Utils::areTwoCoordinatesEqual(start, start * row.reference), row.equal) << row.what;
      EXPECT_EQ(Utils::areTwoCoordinatesEqual(start * row.reference, start), row.equal) << row.what;
      Utils::rotateMatrixToAlignRefMatrix(m, start * row.reference);
      EXPECT_TRUE(m.isEqualTo(start * row.turned)) << row.what << scale;
    }
}

TEST(SmallGeometry, ExtendingALine) {
  struct {
    ZnGePoint3d start, end;
    double startBy, endBy;
    Quorl::ErrorStatus status;
    ZnGePoint3d newStart, newEnd;
  } const rows[] = {{{0, 0, 0}, {0, 4, 0}, 1.0, 2.0, Quorl::eOk, {0, -1, 0}, {0, 6, 0}},
                    {{0, 0, 0}, {0, 4, 0}, -1.0, -0.5, Quorl::eOk, {0, 1, 0}, {0, 3.5, 0}},
                    {{0, 0, 0}, {4, 0, 0}, -3.0, -3.0, Quorl::eOk, {3, 0, 0}, {1, 0, 0}},
                    {{1, 2, 3}, {1, 2, 3}, 5.0, 5.0, Quorl::eInvalidInput, {1, 2, 3}, {1, 2, 3}},
                    {{0, 0, 0}, {1e-11, 0, 0}, 1.0, 1.0, Quorl::eInvalidInput, {0, 0, 0}, {1e-11, 0, 0}}};
  for (const auto& row : rows) {
    Seg line(row.start, row.end);
    const Seg extended = Lyx::getExtendedLine(line, row.startBy, row.endBy);
    EXPECT_EQ(Lyx::extendLine(line, row.startBy, row.endBy), row.status);
    EXPECT_TRUE(near(line.startPoint(), row.newStart, 1e-12) && near(line.endPoint(), row.newEnd, 1e-12));
    EXPECT_TRUE(extended == line);
  }
  EXPECT_TRUE(Lyx::fuzzyEqual(1.0, 1.5, 0.5) && Lyx::fuzzyEqual(1.5, 1.0, 0.5));
  EXPECT_FALSE(Lyx::fuzzyEqual(1.0, 1.6, 0.5) || Lyx::fuzzyEqual(1.0, 1.0, -1.0));
}

TEST(SmallGeometry, QuadrantPointsDivideTheArcItself) {
  for (const double span : {2.0 * kPi, kPi, 0.5, 4.0})
    for (const double start : {0.0, 1.2, 5.0}) {
      const Arc shape({1, 2, 3}, {1, 1, 1}, kX, 4.0, start, start + span);
      ZnArray<ZnGePoint3d> points{ZnGePoint3d()};
      EXPECT_EQ(Lyx::getCircleQuadrantPoints(shape, points), Quorl::eOk);
      ASSERT_EQ(points.length(), 4);
      EXPECT_TRUE(near(points[0], shape.startPoint()));
      for (int i = 1; i < 4; ++i) {
        EXPECT_NEAR(points[i].distanceTo(shape.center()), 4.0, 1e-9);
        EXPECT_NEAR(points[i].distanceTo(points[i - 1]), 8.0 * std::sin(span / 8.0), 1e-9);
      }
      ZnGeMatrix3d ecs;
      EXPECT_EQ(Lyx::calcCircleEcs(shape, ecs), Quorl::eOk);
      EXPECT_TRUE(near(ecs * ZnGePoint3d(), shape.center()));
      EXPECT_TRUE((ecs * kX).isEqualTo((points[0] - shape.center()).normal()));
      EXPECT_TRUE((ecs * kY).isEqualTo((points[1] - shape.center()).normal()));
      EXPECT_TRUE((ecs * kZ).isEqualTo(shape.normal()));
    }
}

} // namespace
