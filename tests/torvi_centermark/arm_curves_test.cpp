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
  const ZnGeCircArc3d circle_{ZnGePoint3d(30.0, 0.0, 0.0), ZnGeVector3d::kZAxis, 10.0};
  const ZnDbCenterMarkPropsProvider unmade_{ZnDbObjectId()};
};

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
