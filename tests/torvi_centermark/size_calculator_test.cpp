#include "torvi/centermark/size_calculator.h"

#include <rapidcheck.h>

#include <cmath>
#include <tuple>

#include "support/drawing_fixture.h"
#include "torvi/centermark/props_provider.h"
#include "torvi/style/set_layer.h"

namespace {

using Sizes = DrawingTest;

TEST_F(Sizes, AnotherRuleCanTakeTheConvertorsPlace) {
  auto mark = wrap(addMark(addCircle({}, 10.0)));
  mark.setCrossHairGapExpression(L"7");
  evaluate(mark.centerObjId());
  const ZnDbCenterMarkPropsProvider properties(mark.centerObjId());
  ZnDbCenterMarkSizeCalculator calculator(properties);
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

TEST_F(Sizes, AMarkAnswersForItselfAndElseTheStyle) {
  const ZnDbObjectId mark = addMark(addCircle({}, 10.0));
  wrap(mark).setHorizontalStartExtension(3.0);
  evaluate(mark);
  put(L"CENTERLTSCALE", ZnRxVariableValue::ofDouble(2.5));
  change<ZnDbEntity>(mark, [&](ZnDbEntity& entity) {
    entity.setLayer(db_->layerZero());
    entity.setLinetypeScale(4.0);
  });
  const ZnDbCenterMarkPropsProvider own(mark);
  EXPECT_TRUE(own.layerId() == db_->layerZero() && own.linetypeScale() == 4.0);
  EXPECT_TRUE(own.hasStoredObject() && own.refCircleRadius() == 10.0);
  EXPECT_EQ(ZnDbCenterMarkPropsProvider(mark, 4.0).refCircleRadius(), 4.0);
  const std::tuple<ZnCenterMarkSubEntType, double, double> rows[] = {
      {eCrossHairHorizontalLine, 0.0, 0.0}, {eLeftLine, 3.0, 3.0}, {eTopLine, 10.0, 7.0}};
  for (const auto& [line, extension, forRadius7] : rows) {
    EXPECT_EQ(own.extension(line), extension) << line;
    EXPECT_EQ(own.extensionLength(line, 7.0), forRadius7) << line;
    EXPECT_EQ(own.overshoot(line), line == eCrossHairHorizontalLine ? 0.0 : 0.5) << line;
  }
  evaluate(mark);
  erase(mark);
  ZnDbObjectId layer;
  EXPECT_EQ(ZnTorviSetLayer::getCenterLayerId(db_.get(), layer), Quorl::eOk);
  for (const ZnDbObjectId id : {ZnDbObjectId(), mark}) {
    const ZnDbCenterMarkPropsProvider none(id);
    EXPECT_TRUE(none.layerId() == layer && none.linetypeScale() == 2.5);
    EXPECT_EQ(none.extension(eLeftLine) + none.extensionLength(eLeftLine, 7.0) + none.refCircleRadius(), 0.0);
  }
}

TEST_F(Sizes, ByLayerMeansTheLayersLinetype) {
  const ZnDbObjectId dashed = addLinetype(L"L", {3.0, -1.0}, false), mark = addMark(addCircle({}, 10.0));
  change<ZnDbLayerTableRecord>(layerOf(mark), [&](auto& layer) { layer.setLinetypeObjectId(dashed); });
  const std::pair<ZnDbObjectId, ZnDbObjectId> rows[] = {{db_->byLayerLinetype(), dashed},
                                                        {db_->byBlockLinetype(), db_->byBlockLinetype()}};
  for (const auto& row : rows) {
    change<ZnDbEntity>(mark, [&](ZnDbEntity& entity) { entity.setLinetype(row.first); });
    EXPECT_EQ(getEffectiveLinetypeId(ZnDbCenterMarkPropsProvider(mark)), row.second);
  }
  evaluate(mark);
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  const ZnDbCenterMarkPropsProvider nowhere{ZnDbObjectId()};
  EXPECT_TRUE(!nowhere.database() && nowhere.linetypeId().isNull() && nowhere.layerId().isNull());
  EXPECT_EQ(nowhere.crossHairLengthExpression(), L"0.1x");
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

} // namespace
