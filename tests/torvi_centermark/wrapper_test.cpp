#include <cmath>

#include "support/drawing_fixture.h"

namespace {

class MarkWrapper : public DrawingTest {
protected:
  void SetUp() override {
    DrawingTest::SetUp();
    mark_ = addMark(addCircle({1.0, 2.0, 0.0}, 10.0));
  }
  ZnDbObjectId mark_;
};

TEST_F(MarkWrapper, ExpressionsAreCheckedAndNormalised) {
  struct {
    const wchar_t* text;
    const char *asLength, *asGap; // what is stored; null for a refusal
  } const rows[] = {{L"0", nullptr, "0"},       {L"0x", nullptr, "0x"},
                    {L" .5X ", ".5x", ".5x"},   {L"bylinetype", "ByLinetype", "ByLinetype"},
                    {L"abc", nullptr, nullptr}, {L"-1", nullptr, nullptr}};
  auto mark = wrap(mark_);
  for (const auto& row : rows) {
    SCOPED_TRACE(ZnString(row.text).utf8());
    mark.setCrossHairLengthExpression(L"9");
    mark.setCrossHairGapExpression(L"9");
    EXPECT_EQ(mark.setCrossHairLengthExpression(row.text), row.asLength ? Quorl::eOk : Quorl::eInvalidInput);
    EXPECT_EQ(mark.setCrossHairGapExpression(row.text), row.asGap ? Quorl::eOk : Quorl::eInvalidInput);
    EXPECT_EQ(mark.crossHairLengthExpression().utf8(), row.asLength ? row.asLength : "9");
    EXPECT_EQ(mark.crossHairGapExpression().utf8(), row.asGap ? row.asGap : "9");
  }
  evaluate(mark_);
}

TEST_F(MarkWrapper, SizesAndWhetherTheCrossIsTooLarge) {
  auto mark = wrap(mark_);
  EXPECT_DOUBLE_EQ(mark.crossHairLength(), 2.0);
  EXPECT_DOUBLE_EQ(mark.crossHairGap(), 1.0);
  mark.setHorizontalStartExtension(2.5);
  mark.setVerticalEndExtension(0.0);
  const bool kTooLarge[] = {false, false, true, false, false, true};
  for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line)
    EXPECT_EQ(mark.isCenterCrossTooLarge(static_cast<ZnCenterMarkSubEntType>(line)), kTooLarge[line]) << line;
  evaluate(mark_);
  // By half the cross and the gap there is room still, so the gap is drawn.
  EXPECT_TRUE(near(mark.getSubentLineGeometry(eLeftLine, true).endPoint(), {-1.0, 2.0, 0.0}));
}

TEST_F(MarkWrapper, PointsOfATurnedMark) {
  auto mark = wrap(mark_);
  mark.setHorizontalStartExtension(4.0);
  mark.setVerticalEndExtension(6.0);
  mark.setAllOvershoots(1.5);
  const double angle = 0.7;
  EXPECT_EQ(mark.setRotation(angle), Quorl::eOk);
  evaluate(mark_);
  EXPECT_NEAR(mark.rotation(), angle, 1e-12);
  const ZnGePoint3d center(1.0, 2.0, 0.0);
  const ZnGeVector3d x(std::cos(angle), std::sin(angle), 0.0), y(-x.y, x.x, 0.0);
  const ZnGePoint3d kReach[] = {center - x * 4.0, center - y * 10.0, center + x * 10.0, center + y * 6.0};
  const ZnGeVector3d kOut[] = {-x, -y, x, y};

  ZnArray<ZnGePoint3d> points{ZnGePoint3d(9.0, 9.0, 9.0), ZnGePoint3d(8.0, 8.0, 8.0)};
  EXPECT_EQ(mark.getAllExtensionPoints(points), Quorl::eOk);
  EXPECT_EQ(mark.getAllOvershootPoints(points), Quorl::eOk);
  ASSERT_EQ(points.length(), 10);
  ZnGePoint3d four[8];
  EXPECT_EQ(mark.getAllExtensionPoints(four[0], four[1], four[2], four[3]), Quorl::eOk);
  EXPECT_EQ(mark.getAllOvershootPoints(four[4], four[5], four[6], four[7]), Quorl::eOk);
  const ZnGePoint3d kSingle[] = {mark.horizontalStartExtensionPoint(), mark.verticalStartExtensionPoint(),
                                 mark.horizontalEndExtensionPoint(),   mark.verticalEndExtensionPoint(),
                                 mark.horizontalStartOvershootPoint(), mark.verticalStartOvershootPoint(),
                                 mark.horizontalEndOvershootPoint(),   mark.verticalEndOvershootPoint()};
  for (int i = 0; i < 8; ++i) {
    EXPECT_TRUE(near(points[2 + i], i < 4 ? kReach[i] : kReach[i - 4] + kOut[i - 4] * 1.5)) << i;
    EXPECT_TRUE(near(four[i], points[2 + i]) && near(kSingle[i], points[2 + i])) << i;
  }
  // An arm of the cross has no overshoot to cut off.
  EXPECT_EQ(mark.getSubentLineGeometry(eCrossHairHorizontalLine, true),
            mark.getSubentLineGeometry(eCrossHairHorizontalLine, false));
  EXPECT_TRUE(wrap(mark_).doesActionMatchCurrentGeometry());
}

TEST_F(MarkWrapper, OvershootsAreCutOffAtTheirStoredLengthWhateverTheScale) {
  change<ZnDbBlockReference>(mark_, [](ZnDbBlockReference& reference) {
    EXPECT_EQ(reference.transformBy(ZnGeMatrix3d::scaling(2.0, {1.0, 2.0, 0.0})), Quorl::eOk);
  });
  struct {
    ZnCenterMarkSubEntType line;
    ZnGeVector3d out;
    bool farEndIsStart;
  } const rows[] = {{eLeftLine, -ZnGeVector3d::kXAxis, true},
                    {eRightLine, ZnGeVector3d::kXAxis, false},
                    {eBottomLine, -ZnGeVector3d::kYAxis, true},
                    {eTopLine, ZnGeVector3d::kYAxis, false}};
  const ZnGePoint3d center(1.0, 2.0, 0.0);
  for (const auto& row : rows)
    for (const bool includeOvershoot : {true, false}) {
      const ZnGeLineSeg3d line = wrap(mark_).getSubentLineGeometry(row.line, includeOvershoot);
      const ZnGePoint3d farEnd = center + row.out * (includeOvershoot ? 21.0 : 20.5);
      EXPECT_TRUE(near(row.farEndIsStart ? line.startPoint() : line.endPoint(), farEnd)) << row.line;
      EXPECT_NEAR(line.length(), includeOvershoot ? 17.0 : 16.5, 1e-9) << row.line;
    }
  evaluate(mark_);
}

TEST_F(MarkWrapper, RotationIsSetOnALockedLayer) {
  setLocked(layerOf(mark_), true);
  EXPECT_EQ(wrap(mark_).setRotation(1.25), Quorl::eOk);
  EXPECT_NEAR(wrap(mark_).rotation(), 1.25, 1e-12);
  ZnGePoint3d center;
  EXPECT_EQ(wrap(mark_).getCenterPoint(center), Quorl::eOk);
  EXPECT_TRUE(near(center, {1.0, 2.0, 0.0}));
}

TEST_F(MarkWrapper, ADeadMarkAnswersNeutrally) {
  ZnDbCenterMarkObjectWrapper mark = wrap(mark_);
  erase(ZnDbAssocActionBody::parentAction(mark.actionBody()));
  erase(mark_);
  for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line) {
    const auto type = static_cast<ZnCenterMarkSubEntType>(line);
    EXPECT_EQ(mark.getExtensionLineLength(type) + mark.getOvershoot(type) + mark.getMinExtension(type), 0.0);
    EXPECT_TRUE(mark.getSubEntVisibility(type));
    EXPECT_TRUE(mark.getSubentDirection(type).isEqualTo(ZnGeVector3d::kXAxis));
    EXPECT_TRUE(near(mark.getSubentLineGeometry(type, true).endPoint(), {1.0, 0.0, 0.0}));
  }
  EXPECT_TRUE(mark.getExtensionLinesVisibility());
  EXPECT_TRUE(mark.getRefCircleRadius() == 0.0 && mark.rotation() == 0.0);
  ZnGeCircArc3d circle;
  ZnGePoint3d center;
  for (const Quorl::ErrorStatus status : {mark.setHorizontalStartExtension(1.0), mark.getRefCircle(circle),
                                          mark.getCenterPoint(center), mark.setRotation(1.0)})
    EXPECT_EQ(status, Quorl::eWasErased);
}

} // namespace
