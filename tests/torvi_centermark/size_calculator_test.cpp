#include "torvi/centermark/size_calculator.h"

#include <rapidcheck.h>

#include <cmath>

#include "support/drawing_fixture.h"

namespace {

// A mark that exists in this table only.
struct Properties : IZnDbCenterMarkPropsProvider {
  ZnDbObjectId objectId() const override { return {}; }
  bool hasStoredObject() const override { return false; }
  ZnDbDatabase* database() const override { return database_; }
  ZnDbObjectId linetypeId() const override { return linetype_; }
  double linetypeScale() const override { return linetypeScale_; }
  ZnDbObjectId layerId() const override { return layer_; }
  ZnString crossHairLengthExpression() const override { return length_; }
  ZnString crossHairGapExpression() const override { return gap_; }
  double refCircleRadius() const override { return radius_; }
  double extensionLength(ZnCenterMarkSubEntType, double) const override { return 0.0; }
  double extension(ZnCenterMarkSubEntType type) const override { return extensions_[type - eLeftLine]; }
  double overshoot(ZnCenterMarkSubEntType) const override { return 0.5; }

  ZnDbDatabase* database_ = nullptr;
  ZnDbObjectId linetype_, layer_;
  double linetypeScale_ = 1.0;
  ZnString length_ = L"ByLinetype", gap_ = L"ByLinetype";
  double radius_ = 10.0;
  double extensions_[4] = {10.0, 10.0, 10.0, 10.0};
};

class Sizes : public DrawingTest {
protected:
  void SetUp() override {
    DrawingTest::SetUp();
    properties_.database_ = db_.get();
  }
  struct Row {
    const wchar_t *length, *gap;
    double cross, expectedGap;
    double radius = 10.0;
  };
  void expectSizes(std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
      properties_.length_ = row.length;
      properties_.gap_ = row.gap;
      double cross = -1.0, gap = -1.0;
      EXPECT_EQ(getCrossLengthAndGapFromProvider(properties_, cross, gap, row.radius), Quorl::eOk);
      EXPECT_DOUBLE_EQ(cross, row.cross) << ZnString(row.length).utf8();
      EXPECT_DOUBLE_EQ(gap, row.expectedGap) << ZnString(row.gap).utf8();
    }
  }
  Properties properties_;
};

TEST_F(Sizes, ExpressionsAreTakenFromTheDiameter) {
  expectSizes({{L"0.1x", L"0.05x", 1.0, 0.5, 5.0},
               {L"0.1x", L"0.05x", 2.0, 1.0, 0.0}, // asks for the circle's radius, which is 10
               {L"3", L"0.5", 3.0, 0.5, 5.0},
               {L"3", L"0.5x", 3.0, 2.0, 2.0},
               {L"abc", L"", 0.0, 0.0, 5.0},
               {L"1x", L"0", 0.5, 0.0, 0.25}});
}

TEST_F(Sizes, AnotherRuleCanTakeTheConvertorsPlace) {
  properties_.length_ = L"0.1x";
  properties_.gap_ = L"7";
  ZnDbCenterMarkSizeCalculator calculator(properties_);
  calculator.sizeConvertor = [](double base, const ZnString& text) { return base * 100.0 + text.length(); };
  EXPECT_EQ(calculator.calculateSizes(2.0), Quorl::eOk);
  EXPECT_EQ(calculator.crossLength, 404.0);
  EXPECT_EQ(calculator.crossGap, 401.0);
}

TEST_F(Sizes, PatternsAreReadFromTheirEnd) {
  struct {
    ZnDbObjectId linetype;
    Quorl::ErrorStatus status;
    double dash = 0.5, gap = 0.5, total = 1.0;
  } const rows[] = {{addLinetype(L"A", {1.25, -0.25, 0.25, -0.25}, true), Quorl::eOk, 0.25, 0.25, 2.0},
                    {addLinetype(L"B", {3.0, -1.5}, true), Quorl::eOk, 3.0, 1.5, 4.5},
                    {addLinetype(L"C", {12.0, -2.0, 2.0, -3.0}, true), Quorl::eOk, 2.0, 3.0, 19.0},
                    {addLinetype(L"D", {2.0, 1.0}, true), Quorl::eOk, 1.0, 0.0, 3.0},
                    {addLinetype(L"E", {-2.0, -1.0}, true), Quorl::eNothingToDo, -1.0, 1.0, 3.0},
                    {addLinetype(L"F", {1.0, -0.5, 0.0, -0.5}, true), Quorl::eNothingToDo},
                    {addLinetype(L"G", {2.0}, true), Quorl::eNothingToDo},
                    {addLinetype(L"H", {}, true), Quorl::eNothingToDo}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    double dash = -7.0, gap = -7.0, total = -7.0;
    bool fit = false;
    EXPECT_EQ(readLinetypePattern(dash, gap, total, fit, row.linetype), row.status);
    EXPECT_EQ(dash, row.dash);
    EXPECT_EQ(gap, row.gap);
    EXPECT_DOUBLE_EQ(total, row.total);
  }
  double dash = 0.0, gap = 0.0, total = 0.0;
  bool fit = true;
  EXPECT_EQ(readLinetypePattern(dash, gap, total, fit, ZnDbObjectId()), Quorl::eNullObjectId);
  EXPECT_FALSE(fit);
}

TEST_F(Sizes, TextsAndShapesMakeALinetypeUnfit) {
  const ZnDbObjectId linetype = addLinetype(L"T", {2.0, -1.0}, false);
  const auto isPlain = [&] { return isPlainDashLinetype(*ZnDbHolder<ZnDbLinetypeTableRecord>(linetype)); };
  EXPECT_TRUE(isPlain());
  change<ZnDbLinetypeTableRecord>(linetype, [](auto& record) { record.setTextAt(1, L"GAS"); });
  EXPECT_FALSE(isPlain());
  change<ZnDbLinetypeTableRecord>(linetype, [&](auto& record) {
    record.setTextAt(1, L"");
    record.setShapeStyleAt(0, linetype);
  });
  EXPECT_FALSE(isPlain());
}

TEST_F(Sizes, ByLinetypeAtBothScales) {
  properties_.linetype_ = addLinetype(L"L", {1.25, -0.25, 0.5, -0.25}, false);
  properties_.linetypeScale_ = 3.0;
  ASSERT_EQ(db_->setLtscale(2.0), Quorl::eOk);
  expectSizes({{L"ByLinetype", L"bylinetype", 3.0, 1.5},
               {L"BYLINETYPE", L"0.05x", 3.0, 1.0},
               {L"0.1x", L"ByLinetype", 2.0, 1.5}});
}

TEST_F(Sizes, AnUnusableLinetypeStillScalesWhatWasRead) {
  properties_.linetypeScale_ = 3.0;
  ASSERT_EQ(db_->setLtscale(2.0), Quorl::eOk);
  struct {
    ZnDbObjectId linetype;
    Quorl::ErrorStatus status;
    double cross, gap;
  } const rows[] = {{db_->continuousLinetype(), Quorl::eNothingToDo, 3.0, 3.0},
                    {addLinetype(L"GAPS", {-2.0, -1.0}, true), Quorl::eNothingToDo, -6.0, 6.0},
                    {ZnDbObjectId(), Quorl::eNullObjectId, 3.0, 3.0}};
  for (const auto& row : rows) {
    properties_.linetype_ = row.linetype;
    double cross = 0.1, gap = 0.1;
    EXPECT_EQ(getLinetypeCrossSizes(cross, gap, properties_), row.status);
    EXPECT_DOUBLE_EQ(cross, row.cross);
    EXPECT_DOUBLE_EQ(gap, row.gap);
  }
}

TEST_F(Sizes, WithoutAUsableLinetypeTheFixedExpressionsApply) {
  for (const ZnDbObjectId linetype : {db_->continuousLinetype(), ZnDbObjectId()}) {
    properties_.linetype_ = linetype;
    expectSizes({{L"ByLinetype", L"ByLinetype", 2.0, 1.0},
                 {L"ByLinetype", L"4", 2.0, 4.0},
                 {L"0.3x", L"ByLinetype", 6.0, 1.0}});
  }
}

TEST_F(Sizes, ByLayerMeansTheLayersLinetype) {
  const ZnDbObjectId dashed = addLinetype(L"L", {3.0, -1.0}, false);
  change<ZnDbLayerTableRecord>(db_->layerZero(),
                               [&](ZnDbLayerTableRecord& layer) { layer.setLinetypeObjectId(dashed); });
  properties_.linetype_ = db_->byLayerLinetype();
  properties_.layer_ = db_->layerZero();
  EXPECT_EQ(getEffectiveLinetypeId(properties_), dashed);
  properties_.database_ = nullptr; // then the working one knows what by layer is
  EXPECT_EQ(getEffectiveLinetypeId(properties_), dashed);
  properties_.layer_ = ZnDbObjectId();
  EXPECT_EQ(getEffectiveLinetypeId(properties_), db_->byLayerLinetype());
  properties_.linetype_ = db_->byBlockLinetype();
  EXPECT_EQ(getEffectiveLinetypeId(properties_), db_->byBlockLinetype());
}

// Scale times (repeats times pattern plus half cross plus gap) has to be the length.
TEST(FitPatternRepeat, FillsTheLengthWithWholeRepeats) {
  EXPECT_TRUE(rc::check([] {
    const double total = *rc::gen::inRange(100, 3000) / 100.0;
    const double start = total * *rc::gen::inRange(1, 60) / 100.0;
    const double length = start + total * *rc::gen::inRange(1, 4000) / 100.0;
    const double halfCross = start * 0.4, gap = start * 0.6;
    const double scale = fitPatternRepeat(length, total, halfCross, gap);
    RC_ASSERT(scale > 0.0);
    const double repeats = (length / scale - start) / total;
    const double whole = std::round(repeats);
    RC_ASSERT(std::fabs(repeats - whole) < 1e-6);
    RC_ASSERT(whole >= 2.0);
    // Never stretched, and one repeat less would have to be.
    RC_ASSERT(scale <= 1.0 + 1e-9);
    RC_ASSERT(whole == 2.0 || length > (whole - 1.0) * total + start * scale - 1e-6);
  }));
}

TEST(FitPatternRepeat, AShortLengthIsNotScaled) {
  for (const double length : {0.0, 1.0, 2.0}) EXPECT_EQ(fitPatternRepeat(length, 5.0, 1.0, 1.0), 1.0);
  EXPECT_NE(fitPatternRepeat(2.5, 5.0, 1.0, 1.0), 1.0);
}

TEST_F(Sizes, ALinetypeScaledToFitTakesTheAverageOfTheFourLines) {
  properties_.linetype_ = addLinetype(L"FIT", {6.0, -1.0, 2.0, -1.0}, true);
  const double lengths[4] = {20.5, 15.5, 30.5, 20.5}; // extension, overshoot and radius
  double sum = 0.0;
  for (int i = 0; i < 4; ++i) {
    properties_.extensions_[i] = lengths[i] - 10.5;
    // Half the cross is 1 and the gap 1.
    sum += fitPatternRepeat(lengths[i], 10.0, 1.0, 1.0);
  }
  double cross = 0.0, gap = 0.0;
  EXPECT_EQ(getCrossLengthAndGapFromProvider(properties_, cross, gap, 10.0), Quorl::eOk);
  EXPECT_NEAR(cross, 2.0 * sum / 4.0, 1e-12);
  EXPECT_NEAR(gap, 1.0 * sum / 4.0, 1e-12);
}

} // namespace
