// What holds for every bounded curve, whatever its class: one set of checks, run on curves of all kinds in
// several places of space.
#include <functional>
#include <string>

#include "ge_test_support.h"
#include "quorl/ge/circ_arc2d.h"
#include "quorl/ge/circ_arc3d.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/ge/line2d.h"
#include "quorl/ge/line3d.h"
#include "quorl/ge/line_seg3d.h"
#include "quorl/ge/nurb_curve3d.h"

using namespace geTest;

namespace {

// A multiple of 2 and 3, so that the knots of the splines below are among the places.
constexpr int kDense = 3840;

struct Sample {
  const char* name;
  std::shared_ptr<const ZnGeCurve3d> curve;
  bool isClosed;
  bool isSimple; // no point twice, so that a point gives its parameter back
};

ZnGeNurbCurve3d spline(int degree, const std::vector<double>& knots, const std::vector<ZnGePoint3d>& points,
                       const std::vector<double>& weights = {}) {
  ZnGeNurbCurve3d curve;
  EXPECT_EQ(curve.set(degree, knots, points, weights), Quorl::eOk);
  return curve;
}

template<class Curve> std::shared_ptr<const ZnGeCurve3d> share(const Curve& curve) {
  return std::make_shared<Curve>(curve);
}

std::vector<Sample> samples() {
  const ZnGeVector3d n(1, 2, 2), z(0, 0, 1), x(1, 0, 0);
  const double turn = ZnGe::kTwoPi;
  return {
      {"segment", share(ZnGeLineSeg3d({1, 2, 3}, ZnGePoint3d(-4, 2, 8))), false, true},
      {"circle", share(ZnGeCircArc3d({5, 0, 1}, n, 2.5)), true, true},
      {"quarter", share(ZnGeCircArc3d({0, 0, 0}, z, x, 4.0, 0.0, turn / 4)), false, true},
      {"arc through zero", share(ZnGeCircArc3d({1, 1, 1}, n, x, 1.5, 5.0, 1.0)), false, true},
      {"nearly full arc", share(ZnGeCircArc3d({1, 1, 1}, z, x, 1.5, 1.0, 0.9)), false, true},
      {"ellipse", share(ZnGeEllipticalArc3d({0, 1, 0}, {3, 0, 3}, {0, 2, 0})), true, true},
      {"flat elliptic arc", share(ZnGeEllipticalArc3d({2, 2, 0}, {5, 0, 0}, {0, 0.2, 0}, 4.0, 2.0)), false,
       true},
      {"cubic spline",
       share(spline(3, {0, 0, 0, 0, 1, 2, 2, 2, 2}, {{0, 0, 0}, {1, 4, 0}, {3, 4, 2}, {5, 0, 2}, {6, 1, 0}})),
       false, true},
      {"weighted spline",
       share(spline(2, {3, 3, 3, 4, 4, 4}, {{2, 0, 0}, {2, 2, 1}, {0, 2, 0}}, {1.0, 4.0, 0.5})), false, true},
      {"spline with a corner",
       share(spline(2, {0, 0, 0, 1, 1, 2, 2, 2}, {{0, 0, 0}, {1, 2, 0}, {2, 0, 0}, {3, 3, 1}, {4, 0, 0}})),
       false, true},
      {"polygon spline", share(spline(1, {0, 0, 1, 2, 3, 3}, {{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 0, 0}})),
       true, true},
      {"looped spline",
       share(spline(3, {0, 0, 0, 0, 1, 1, 1, 1}, {{0, 0, 0}, {9, 5, 0}, {-5, 5, 0}, {4, 0, 0}})), false,
       false}};
}

struct Place {
  const char* name;
  ZnGeMatrix3d map;
};

std::vector<Place> places() {
  return {{"as it is", ZnGeMatrix3d()},
          {"turned", ZnGeMatrix3d::rotation(2.0, {1, -1, 3}, {4, 4, 4})},
          {"mirrored", ZnGeMatrix3d::mirroring(ZnGePlane({1, 0, 0}, {3, 1, 2}))},
          {"small", ZnGeMatrix3d::scaling(0.01, {1, 2, 3}) * ZnGeMatrix3d::rotation(1.0, {0, 1, 1})},
          {"large", ZnGeMatrix3d::translation({40, -20, 7}) * ZnGeMatrix3d::scaling(25.0)}};
}

using Check =
    std::function<void(const Sample&, const ZnGeCurve3d& original, const ZnGeCurve3d& curve, const Place&)>;

void forEachCurve(const Check& check) {
  int count = 0;
  for (const Sample& sample : samples()) {
    for (const Place& place : places()) {
      SCOPED_TRACE(std::string(sample.name) + ", " + place.name);
      const std::unique_ptr<ZnGeCurve3d> curve(sample.curve->copy());
      curve->transformBy(place.map);
      check(sample, *sample.curve, *curve, place);
      ++count;
    }
  }
  ASSERT_EQ(count, 60);
}

double sizeOf(const ZnGeCurve3d& curve) { return curve.boundBox().diagonal().length(); }

TEST(CurveContract, TransformsMovePointsWithTheirParameter) {
  forEachCurve([](const Sample&, const ZnGeCurve3d& original, const ZnGeCurve3d& curve, const Place& place) {
    for (int i = 0; i <= 16; ++i) {
      EXPECT_TRUE(isNear(pointAtShare(curve, i / 16.0), place.map * pointAtShare(original, i / 16.0), 100.0));
    }
    EXPECT_NEAR(curve.length(), place.map.scale() * original.length(), kRounding * 1e3);
  });
}

TEST(CurveContract, UnevenTransformsToo) {
  const ZnGeMatrix3d uneven =
      ZnGeMatrix3d::scaling({3, 0.5, 1}, {1, 1, 1}) * ZnGeMatrix3d::rotation(1.0, {1, 1, 0});
  int count = 0;
  for (const Sample& sample : samples()) {
    // Circles are left out: they would become ellipses.
    if (sample.curve->isKindOf(ZnGe::kCircularArc3d)) continue;
    const std::unique_ptr<ZnGeCurve3d> curve(sample.curve->copy());
    curve->transformBy(uneven);
    for (int i = 0; i <= 16; ++i) {
      EXPECT_TRUE(
          isNear(pointAtShare(*curve, i / 16.0), uneven * pointAtShare(*sample.curve, i / 16.0), 10.0))
          << sample.name << i;
    }
    ++count;
  }
  EXPECT_EQ(count, 8);
}

TEST(CurveContract, CopiesReversalsAndKinds) {
  forEachCurve([](const Sample& sample, const ZnGeCurve3d&, const ZnGeCurve3d& curve, const Place&) {
    const std::unique_ptr<ZnGeCurve3d> reversed(curve.copy());
    EXPECT_TRUE(*reversed == curve);
    EXPECT_EQ(reversed->type(), curve.type());
    for (const ZnGe::EntityId id : {curve.type(), ZnGe::kCurve3d, ZnGe::kEntity3d})
      EXPECT_TRUE(curve.isKindOf(id));
    EXPECT_FALSE(curve.isKindOf(ZnGe::kSurface));
    EXPECT_EQ(curve.isKindOf(ZnGe::kLinearEnt3d), curve.type() == ZnGe::kLineSeg3d);
    EXPECT_EQ(curve.isClosed(), sample.isClosed);
    EXPECT_FALSE(curve.isDegenerate());

    reversed->reverseParam();
    EXPECT_TRUE(*reversed != curve);
    for (int i = 0; i <= 16; ++i) {
      EXPECT_TRUE(isNear(pointAtShare(*reversed, i / 16.0), pointAtShare(curve, 1.0 - i / 16.0), 100.0));
    }
    reversed->reverseParam();
    EXPECT_TRUE(reversed->isEqualTo(curve, ZnGeTol(kRounding * 100, kRounding)));
  });
}

TEST(CurveContract, DerivativesAreSlopes) {
  forEachCurve([](const Sample&, const ZnGeCurve3d&, const ZnGeCurve3d& curve, const Place&) {
    const ZnGeInterval range = curve.interval();
    const double step = 1e-5 * range.length();
    for (int i = 1; i < 16; ++i) {
      // Off the knots, where a spline may have a corner.
      const double t = range.lowerBound() + (i + 0.4) / 16.6 * range.length();
      const ZnGeVector3d slope = (curve.evalPoint(t + step) - curve.evalPoint(t - step)) / (2.0 * step);
      EXPECT_LE((curve.evaluateDerivative(t) - slope).length(), 1e-6 * sizeOf(curve)) << t;
    }
  });
}

TEST(CurveContract, NearestPointsBeatEverySample) {
  forEachCurve([](const Sample&, const ZnGeCurve3d&, const ZnGeCurve3d& curve, const Place&) {
    const ZnGeBoundBlock3d box = curve.boundBox();
    const ZnGeInterval range = curve.interval();
    for (int corner = 0; corner < 27; ++corner) {
      const double u = corner % 3 / 2.0, v = corner / 3 % 3 / 2.0, w = corner / 9 / 2.0;
      const ZnGeVector3d d = box.diagonal();
      // A grid that reaches beyond the box by as much again on every side.
      const ZnGePoint3d p =
          box.center() + ZnGeVector3d((2 * u - 1) * d.x, (2 * v - 1) * d.y, (2 * w - 1) * d.z);
      double least = curve.evalPoint(range.lowerBound()).distanceTo(p);
      for (int i = 0; i <= kDense; ++i) {
        least = std::min(least, pointAtShare(curve, i / double(kDense)).distanceTo(p));
      }
      EXPECT_LE(curve.distanceTo(p), least + kRounding) << p;
      const double param = curve.paramOf(p);
      EXPECT_TRUE(range.lowerBound() <= param && param <= range.upperBound());
      ZnGePointOnCurve3d foot;
      curve.getClosestPointTo(p, foot);
      EXPECT_EQ(foot.curve(), &curve);
      EXPECT_TRUE(isNear(foot, curve.closestPointTo(p)) && isNear(curve.evalPoint(foot.parameter()), foot));
    }
  });
}

TEST(CurveContract, PointsGiveTheirParameterBack) {
  forEachCurve([](const Sample& sample, const ZnGeCurve3d&, const ZnGeCurve3d& curve, const Place&) {
    if (!sample.isSimple) return;
    const ZnGeInterval range = curve.interval();
    for (int i = 1; i < 32; ++i) {
      const double t = range.lowerBound() + i / 32.0 * range.length();
      double param = range.lowerBound() - 1.0;
      ASSERT_TRUE(curve.isOn(curve.evalPoint(t), param)) << t;
      EXPECT_NEAR(param, t, 1e-7) << t;
    }
    // Exactly, so that callers may compare with the bounds; a closed curve has only the lower one.
    EXPECT_EQ(curve.paramOf(curve.evalPoint(range.lowerBound())), range.lowerBound());
    EXPECT_EQ(curve.paramOf(curve.evalPoint(range.upperBound())),
              sample.isClosed ? range.lowerBound() : range.upperBound());
  });
}

TEST(CurveContract, LengthsAreThoseOfFineChords) {
  forEachCurve([](const Sample&, const ZnGeCurve3d&, const ZnGeCurve3d& curve, const Place&) {
    double sum = 0.0;
    for (int i = 0; i < kDense; ++i) {
      sum +=
          pointAtShare(curve, i / double(kDense)).distanceTo(pointAtShare(curve, (i + 1) / double(kDense)));
    }
    EXPECT_NEAR(curve.length() / sum, 1.0, 1e-5);
    EXPECT_GE(curve.length(), sum * (1.0 - kRounding));
  });
}

TEST(CurveContract, BoxesHoldTheCurveAndTouchIt) {
  forEachCurve([](const Sample&, const ZnGeCurve3d&, const ZnGeCurve3d& curve, const Place&) {
    const ZnGeBoundBlock3d box = curve.boundBox();
    ZnGeBoundBlock3d sampled;
    for (int i = 0; i <= kDense; ++i) sampled.addPoint(pointAtShare(curve, i / double(kDense)));
    EXPECT_TRUE(box.contains(sampled, ZnGeTol(kRounding, kRounding)));
    EXPECT_TRUE(sampled.contains(box, ZnGeTol(1e-5 * sizeOf(curve), 0.0)));
  });
}

TEST(CurveContract, SamplesStayWithinTheChordHeight) {
  forEachCurve([](const Sample& sample, const ZnGeCurve3d&, const ZnGeCurve3d& curve, const Place&) {
    size_t coarserCount = 0;
    for (const double share : {0.1, 1e-2, 1e-4}) {
      const double height = share * sizeOf(curve);
      std::vector<ZnGePoint3d> points{{7, 7, 7}};
      curve.appendSamplePoints(height, points);
      ASSERT_GE(points.size(), 3u);
      EXPECT_EQ(points.front().x, 7.0) << "what was there stays";
      EXPECT_TRUE(isNear(points[1], pointAtShare(curve, 0.0)) &&
                  isNear(points.back(), pointAtShare(curve, 1.0)));
      EXPECT_EQ(isNear(points[1], points.back()), sample.isClosed);
      EXPECT_GE(points.size(), coarserCount);
      EXPECT_LT(points.size(), 1000u);
      coarserCount = points.size();
      // Walk the chords along with the curve: every place lies near the chord under it.
      size_t chord = 1;
      double worst = 0.0;
      for (int i = 0; i <= kDense; ++i) {
        const ZnGePoint3d p = pointAtShare(curve, i / double(kDense));
        double distance = ZnGeLineSeg3d(points[chord], points[chord + 1]).distanceTo(p);
        while (distance > height && chord + 2 < points.size()) {
          ++chord;
          distance = ZnGeLineSeg3d(points[chord], points[chord + 1]).distanceTo(p);
        }
        worst = std::max(worst, distance);
      }
      EXPECT_LE(worst, height * (1.0 + kRounding) + kRounding) << share;
    }
    std::vector<ZnGePoint3d> finest;
    curve.appendSamplePoints(-1.0, finest);
    EXPECT_LT(finest.size(), 50000u);
  });
}

TEST(EntityContract, NumbersOfKindsThatModulesCompare) {
  EXPECT_EQ(ZnGe::kCircularArc3d, 11);
  EXPECT_EQ(ZnGe::kLine3d, 19);
  EXPECT_EQ(ZnGe::kLineSeg3d, 23);
}

TEST(EntityContract, OthersThanBoundedCurves) {
  const ZnGeLine3d line;
  const ZnGePlane plane({0, 0, 1}, {0, 1, 1});
  const ZnGePointEnt3d point({1, 2, 3});
  const ZnGePointOnCurve3d onLine(line, 4.0);
  const ZnGeMatrix3d map = ZnGeMatrix3d::rotation(1.0, {1, 2, 3}, {4, 5, 6});
  const std::pair<const ZnGeEntity3d*, ZnGe::EntityId> entities[] = {{&line, ZnGe::kLinearEnt3d},
                                                                     {&plane, ZnGe::kSurface},
                                                                     {&point, ZnGe::kEntity3d},
                                                                     {&onLine, ZnGe::kPointEntity3d}};
  for (const auto& [entity, base] : entities) {
    const std::unique_ptr<ZnGeEntity3d> copy(entity->copy());
    EXPECT_TRUE(*copy == *entity && copy->isKindOf(base) && copy->isKindOf(entity->type()));
    copy->transformBy(map);
    EXPECT_TRUE(*copy != *entity);
    copy->transformBy(map.inverse());
    EXPECT_TRUE(copy->isEqualTo(*entity, ZnGeTol(kRounding, kRounding)));
    for (const auto& [other, ignored] : entities) EXPECT_EQ(*entity == *other, entity == other);
  }
  EXPECT_TRUE(isNear(onLine, ZnGePoint3d(4, 0, 0)));
  // A point that was moved by itself no longer lies on its curve.
  EXPECT_EQ(ZnGePointOnCurve3d(onLine).transformBy(map).curve(), nullptr);

  const ZnGeLine2d flatLine;
  const ZnGeCircArc2d flatArc;
  EXPECT_TRUE(flatLine.isKindOf(ZnGe::kLinearEnt2d) && !flatArc.isKindOf(ZnGe::kLinearEnt2d));
  const std::unique_ptr<ZnGeEntity2d> flatCopy(flatArc.copy());
  EXPECT_TRUE(*flatCopy == flatArc && *flatCopy != flatLine);
}

} // namespace
