#include <cmath>

#include "torvi_centermark/mark_fixture.h"

namespace {

using MarkWrapper = MarkTest;

TEST_F(MarkWrapper, SizesAndWhetherTheCrossIsTooLarge) {
  auto mark = wrap(mark_);
  for (const wchar_t* variable : {L"CENTERCROSSSIZE", L"CENTERCROSSGAP"}) put(variable, L"9");
  EXPECT_DOUBLE_EQ(mark.crossHairLength(), 2.0) << "that of its making";
  EXPECT_DOUBLE_EQ(mark.crossHairGap(), 1.0);
  mark.setHorizontalStartExtension(2.5);
  mark.setVerticalEndExtension(0.0);
  const bool kTooLarge[] = {false, false, true, false, false, true};
  for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line)
    EXPECT_EQ(mark.isCenterCrossTooLarge(static_cast<ZnCenterMarkSubEntType>(line)), kTooLarge[line]) << line;
  evaluate(mark_);
  // By half the cross and the gap there is room still, so the gap is drawn.
  EXPECT_TRUE(near(mark.getSubentLineGeometry(eLeftLine, true).endPoint(), {0.0, 1.0, 0.0}));
}

TEST_F(MarkWrapper, PointsOfATurnedMark) {
  auto mark = wrap(mark_);
  mark.setHorizontalStartExtension(4.0);
  mark.setVerticalEndExtension(6.0);
  mark.setAllOvershoots(1.5);
  setLocked(layerOf(mark_), true);
  EXPECT_EQ(mark.setRotation(0.7), Quorl::eOk);
  evaluate(mark_);
  const ZnGeVector3d x(std::cos(0.7), std::sin(0.7), 0.0), y(-x.y, x.x, 0.0), kOut[] = {-x, -y, x, y};
  ZnArray<ZnGePoint3d> points{ZnGePoint3d(9.0, 9.0, 9.0), ZnGePoint3d(8.0, 8.0, 8.0)};
  EXPECT_EQ(mark.getAllExtensionPoints(points), Quorl::eOk);
  EXPECT_EQ(mark.getAllOvershootPoints(points), Quorl::eOk);
  ASSERT_EQ(points.length(), 10);
  ZnGePoint3d four[8], middle;
  EXPECT_EQ(mark.getAllExtensionPoints(four[0], four[1], four[2], four[3]), Quorl::eOk);
  EXPECT_EQ(mark.getAllOvershootPoints(four[4], four[5], four[6], four[7]), Quorl::eOk);
  const ZnGePoint3d kSingle[] = {mark.horizontalStartExtensionPoint(), mark.verticalStartExtensionPoint(),
                                 mark.horizontalEndExtensionPoint(),   mark.verticalEndExtensionPoint(),
                                 mark.horizontalStartOvershootPoint(), mark.verticalStartOvershootPoint(),
                                 mark.horizontalEndOvershootPoint(),   mark.verticalEndOvershootPoint()};
  const double kReach[] = {4.0, 10.0, 10.0, 6.0, 5.5, 11.5, 11.5, 7.5};
  for (int i = 0; i < 8; ++i) {
    EXPECT_TRUE(near(points[2 + i], center_ + kOut[i % 4] * kReach[i])) << i;
    EXPECT_TRUE(near(four[i], points[2 + i]) && near(kSingle[i], points[2 + i])) << i;
  }
  EXPECT_EQ(mark.getCenterPoint(middle), Quorl::eOk);
  EXPECT_TRUE(near(middle, center_));
  EXPECT_TRUE(mark.doesActionMatchCurrentGeometry()) << "a turn is no mismatch";
  // An arm of the cross has no overshoot to cut off.
  EXPECT_EQ(mark.getSubentLineGeometry(eCrossHairHorizontalLine, true),
            mark.getSubentLineGeometry(eCrossHairHorizontalLine, false));
}

TEST_F(MarkWrapper, ADeadMarkAnswersNeutrally) {
  ZnDbCenterMarkObjectWrapper mark = wrap(mark_);
  erase(ZnDbAssocActionBody::parentAction(mark.actionBody()));
  erase(mark_);
  EXPECT_EQ(mark.getExtensionLineLength(eTopLine) + mark.getOvershoot(eTopLine) +
                mark.getMinExtension(eTopLine) + mark.getRefCircleRadius() + mark.rotation(),
            0.0);
  EXPECT_TRUE(mark.getSubEntVisibility(eTopLine) && mark.getExtensionLinesVisibility());
  EXPECT_TRUE(mark.getSubentDirection(eTopLine).isEqualTo(ZnGeVector3d::kXAxis));
  EXPECT_TRUE(near(mark.getSubentLineGeometry(eTopLine, true).endPoint(), {1.0, 0.0, 0.0}));
  ZnGeCircArc3d circle;
  ZnGePoint3d center;
  for (const Quorl::ErrorStatus status : {mark.setHorizontalStartExtension(1.0), mark.getRefCircle(circle),
                                          mark.getCenterPoint(center), mark.setRotation(1.0)})
    EXPECT_EQ(status, Quorl::eWasErased);
}

} // namespace
