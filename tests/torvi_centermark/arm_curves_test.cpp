#include "torvi/centermark/mark_curves.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "support/drawing_fixture.h"
#include "torvi/centermark/props_provider.h"
#include "torvi/core/action_body_utils.h"

namespace {

using CurvePtr = std::unique_ptr<ZnGeCurve3d>;

TEST(ChordToArcAngle, TheChordOfTheAngleIsTheChord) {
  for (const double radius : {0.5, 10.0, 1e4})
    for (const double share : {-1.9, -1.0, -1e-6, 0.0, 0.3, 1.0, 1.999}) {
      const double chord = share * radius;
      EXPECT_NEAR(2.0 * radius * std::sin(chordToArcAngle(chord, radius) / 2.0), chord, 1e-9 * radius);
    }
  struct {
    double chord, radius, angle;
  } const rows[] = {{2.0, 1.0, std::numbers::pi},
                    {5.0, 1.0, std::numbers::pi},
                    {-5.0, 1.0, -std::numbers::pi},
                    {1.0, 0.0, 0.0},
                    {1.0, -2.0, 0.0}};
  for (const auto& row : rows) EXPECT_NEAR(chordToArcAngle(row.chord, row.radius), row.angle, 1e-12);
}

TEST(MakeCenterMarkCurve, AroundAPatternItIsAnArcThroughTheCenter) {
  const ZnGePoint3d pattern(2.0, -1.0, 0.0);
  for (const double direction : {0.0, 1.0, 3.0, 4.5, 6.2}) {
    const ZnGePoint3d center = pattern + ZnGeVector3d(std::cos(direction), std::sin(direction), 0.0) * 20.0;
    struct {
      double from, to;
    } const rows[] = {{2.0, 6.0}, {-6.0, -2.0}, {-1.0, 1.0}, {1.0, 0.5}};
    for (const auto& row : rows) {
      SCOPED_TRACE(testing::Message() << direction << ": " << row.from << " to " << row.to);
      const CurvePtr curve(makeCenterMarkCurve(center, &pattern, ZnGeVector3d::kZAxis, ZnGeVector3d::kXAxis,
                                               row.from, row.to, false));
      ASSERT_TRUE(curve->isKindOf(ZnGe::kCircularArc3d));
      const auto& arc = static_cast<const ZnGeCircArc3d&>(*curve);
      EXPECT_TRUE(near(arc.center(), pattern));
      EXPECT_NEAR(arc.radius(), 20.0, 1e-9);
      // The ends lie at their distances from the center, whichever comes first, the short way round.
      const double low = std::min(row.from, row.to), high = std::max(row.from, row.to);
      EXPECT_NEAR(arc.startPoint().distanceTo(center), std::fabs(low), 1e-8);
      EXPECT_NEAR(arc.endPoint().distanceTo(center), std::fabs(high), 1e-8);
      EXPECT_LT(arc.length(), 10.0);
      EXPECT_GT(arc.length(), 0.0);
    }
  }
}

class ArmCurves : public DrawingTest {
protected:
  void TearDown() override {
    ZnDbTorviActionBodyUtils::deleteCurves(curves_);
    DrawingTest::TearDown();
  }
  void build(const IZnDbCenterMarkPropsProvider& provider, const ZnCenterMarkArmLengths& arms,
             const ZnGePoint3d* patternCenter = nullptr, const ZnGeVector3d* y = nullptr) {
    ZnDbTorviActionBodyUtils::deleteCurves(curves_);
    EXPECT_EQ(buildCenterMarkCurves(curves_, provider, circle_, ZnGeVector3d::kZAxis, ZnGeVector3d::kXAxis, y,
                                    arms, patternCenter),
              Quorl::eOk);
    ASSERT_EQ(curves_.length(), 6);
  }
  // How far the line reaches from the center of the circle.
  double reach(ZnCenterMarkSubEntType type) const {
    const auto& line = static_cast<const ZnGeLineSeg3d&>(*curves_[type]);
    return circle_.center().distanceTo(type == eLeftLine || type == eBottomLine ? line.startPoint()
                                                                                : line.endPoint());
  }
  const ZnGeCircArc3d circle_{ZnGePoint3d(30.0, 0.0, 0.0), ZnGeVector3d::kZAxis, 10.0};
  const ZnDbCenterMarkPropsProvider unmade_{ZnDbObjectId()};
  ZnArray<ZnGeCurve3d*> curves_;
};

TEST_F(ArmCurves, ArmLengthsOfAMarkThatDoesNotExistYet) {
  build(unmade_, {kArmUnset, 7.0, -eBottomLine, 2.5});
  const double kReach[] = {10.5, 7.0, 10.5, 2.5};
  for (const ZnCenterMarkSubEntType line : {eLeftLine, eRightLine, eBottomLine, eTopLine})
    EXPECT_NEAR(reach(line), kReach[line - eLeftLine], 1e-12) << line;
}

TEST_F(ArmCurves, ArmLengthsOfAStoredMark) {
  const ZnDbObjectId mark = addMark(addCircle({0.0, 0.0, 0.0}, 20.0));
  wrap(mark).setHorizontalEndExtension(9.0);
  const ZnDbCenterMarkPropsProvider provider(mark);
  build(provider, kStoredArmLengths);
  EXPECT_NEAR(reach(eLeftLine), 20.5, 1e-12);
  EXPECT_NEAR(reach(eRightLine), 9.5, 1e-12);
  build(provider, {kArmUnset, 0.0, 3.0, -eTopLine});
  EXPECT_NEAR(reach(eLeftLine), 10.5, 1e-12);
  EXPECT_EQ(curves_[eRightLine]->type(), ZnGe::kLine3d);
  EXPECT_NEAR(reach(eBottomLine), 3.0, 1e-12);
  EXPECT_NEAR(reach(eTopLine), 20.5, 1e-12);
  evaluate(mark);
}

TEST_F(ArmCurves, WithAPatternCenterHorizontalLinesRunAroundIt) {
  const ZnGePoint3d pattern = ZnGePoint3d::kOrigin;
  build(unmade_, {kArmUnset, kArmUnset, kArmUnset, kArmUnset}, &pattern);
  for (const ZnCenterMarkSubEntType type : {eCrossHairHorizontalLine, eLeftLine, eRightLine}) {
    ASSERT_TRUE(curves_[type]->isKindOf(ZnGe::kCircularArc3d)) << type;
    const auto& arc = static_cast<const ZnGeCircArc3d&>(*curves_[type]);
    EXPECT_NEAR(arc.radius(), 30.0, 1e-12);
    EXPECT_TRUE(near(arc.center(), pattern));
  }
  const auto& arm = static_cast<const ZnGeCircArc3d&>(*curves_[eCrossHairHorizontalLine]);
  const ZnGePoint3d end = arm.endPoint(), start = arm.startPoint();
  EXPECT_NEAR(end.distanceTo(circle_.center()), 1.0, 1e-9);
  EXPECT_GT(end.y, 0.0);
  EXPECT_TRUE(near(start, {end.x, -end.y, 0.0}));
  EXPECT_LT(arm.length(), 2.1);
  // Vertical lines run outwards from the pattern's center.
  EXPECT_TRUE(near(static_cast<ZnGeLineSeg3d*>(curves_[eTopLine])->endPoint(), {40.5, 0.0, 0.0}));
}

TEST_F(ArmCurves, TheWholeIsTheCrossAndThenTheExtensionLines) {
  build(unmade_, kStoredArmLengths);
  ZnArray<ZnGeCurve3d*> halves;
  EXPECT_EQ(addCrossHairCurves(halves, unmade_, circle_, ZnGeVector3d::kZAxis, ZnGeVector3d::kXAxis,
                               ZnGeVector3d::kYAxis),
            Quorl::eOk);
  EXPECT_EQ(halves.length(), 2);
  EXPECT_EQ(addExtensionCurves(halves, unmade_, circle_, ZnGeVector3d::kZAxis, ZnGeVector3d::kXAxis,
                               ZnGeVector3d::kYAxis, kStoredArmLengths),
            Quorl::eOk);
  EXPECT_TRUE(ZnDbTorviActionBodyUtils::geCurvesAreEqual(halves, curves_, false));
  ZnDbTorviActionBodyUtils::deleteCurves(halves);
}

TEST_F(ArmCurves, AGivenSecondDirectionIsUsedAtUnitLength) {
  const ZnGeVector3d y(0.0, -5.0, 0.0);
  build(unmade_, {kArmUnset, kArmUnset, kArmUnset, 4.0}, nullptr, &y);
  EXPECT_TRUE(near(static_cast<ZnGeLineSeg3d*>(curves_[eTopLine])->endPoint(), {30.0, -4.0, 0.0}));
}

TEST_F(ArmCurves, NoCircleNoCurves) {
  const ZnGeCircArc3d point(ZnGePoint3d::kOrigin, ZnGeVector3d::kZAxis, 0.0);
  EXPECT_EQ(buildCenterMarkCurves(curves_, unmade_, point, ZnGeVector3d::kZAxis, ZnGeVector3d::kXAxis,
                                  nullptr, kStoredArmLengths),
            Quorl::eInvalidInput);
  EXPECT_EQ(generateCenterMarkCurves(curves_, unmade_), Quorl::eInvalidInput);
  EXPECT_TRUE(curves_.isEmpty());
}

} // namespace
