#include "torvi/centermark/mark_curves.h"

#include <cmath>
#include <numbers>

#include "support/drawing_fixture.h"
#include "torvi/centermark/props_provider.h"
#include "torvi/core/action_body_utils.h"

namespace {

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

class ArmCurves : public DrawingTest {
protected:
  using Arms = ZnCenterMarkArmLengths;
  // How far left, right, bottom and top reach from the center of the circle.
  std::vector<double> reaches(const IZnDbCenterMarkPropsProvider& provider, const Arms& arms) {
    OwnedCurves six;
    EXPECT_EQ(buildCenterMarkCurves(six.curves, provider, circle_, ZnGeVector3d::kZAxis, ZnGeVector3d::kXAxis,
                                    nullptr, arms, nullptr),
              Quorl::eOk);
    std::vector<double> found;
    for (int i = eLeftLine; i <= eTopLine && six.curves.length() == 6; ++i) {
      const ZnGeCurve3d& line = *six.curves[i];
      const bool none = line.type() == ZnGe::kLine3d, outIsStart = i == eLeftLine || i == eBottomLine;
      const double end = outIsStart ? line.interval().lowerBound() : line.interval().upperBound();
      found.push_back(none ? 0.0 : std::round(circle_.center().distanceTo(line.evalPoint(end)) * 1e9) / 1e9);
    }
    return found;
  }
  const ZnGeCircArc3d circle_{ZnGePoint3d(30.0, 0.0, 0.0), ZnGeVector3d::kZAxis, 10.0};
  const ZnDbCenterMarkPropsProvider unmade_{ZnDbObjectId()};
};

TEST_F(ArmCurves, ArmLengthsAreGivenStoredOrThoseOfAnotherLine) {
  const ZnDbObjectId mark = addMark(addCircle({0.0, 0.0, 0.0}, 20.0));
  wrap(mark).setHorizontalEndExtension(9.0);
  evaluate(mark);
  const ZnDbCenterMarkPropsProvider made(mark);
  struct {
    const IZnDbCenterMarkPropsProvider& provider;
    Arms arms;
    std::vector<double> reaches;
  } const rows[] = {{unmade_, {kArmUnset, 7.0, -eBottomLine, 2.5}, {10.5, 7.0, 10.5, 2.5}},
                    {made, kStoredArmLengths, {20.5, 9.5, 20.5, 20.5}},
                    {made, {kArmUnset, 0.0, 3.0, -eTopLine}, {10.5, 0.0, 3.0, 20.5}}};
  for (const auto& row : rows) EXPECT_EQ(reaches(row.provider, row.arms), row.reaches) << &row - rows;
}

TEST_F(ArmCurves, TheWholeIsTheCrossAndThenTheExtensionLines) {
  const ZnGeVector3d x = ZnGeVector3d::kXAxis, z = ZnGeVector3d::kZAxis, down(0.0, -5.0, 0.0);
  for (const ZnGeVector3d& y : {ZnGeVector3d::kYAxis, down}) {
    OwnedCurves whole, halves;
    EXPECT_EQ(buildCenterMarkCurves(whole.curves, unmade_, circle_, z, x, &y, kStoredArmLengths, nullptr),
              Quorl::eOk);
    EXPECT_EQ(addCrossHairCurves(halves.curves, unmade_, circle_, z, x, y.normal()), Quorl::eOk);
    EXPECT_EQ(halves.curves.length(), 2);
    EXPECT_EQ(addExtensionCurves(halves.curves, unmade_, circle_, z, x, y.normal(), kStoredArmLengths),
              Quorl::eOk);
    EXPECT_TRUE(ZnDbTorviActionBodyUtils::geCurvesAreEqual(halves.curves, whole.curves, false));
  }
  const ZnGeCircArc3d point(ZnGePoint3d::kOrigin, z, 0.0);
  OwnedCurves none;
  EXPECT_EQ(buildCenterMarkCurves(none.curves, unmade_, point, z, x, nullptr, kStoredArmLengths, nullptr),
            Quorl::eInvalidInput);
  EXPECT_EQ(generateCenterMarkCurves(none.curves, unmade_), Quorl::eInvalidInput);
  EXPECT_TRUE(none.curves.isEmpty());
}

} // namespace
