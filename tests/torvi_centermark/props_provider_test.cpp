#include "torvi/centermark/props_provider.h"

#include "support/drawing_fixture.h"
#include "torvi/style/set_layer.h"

namespace {

class Provider : public DrawingTest {
protected:
  // What the style says, whatever the provider was asked about.
  void expectStyle(const ZnDbCenterMarkPropsProvider& provider) {
    const ZnDbObjectId linetype = provider.linetypeId(); // loads it
    EXPECT_TRUE(linetype.isValid());
    EXPECT_EQ(linetype, ZnTorviLyxUtils::getLineTypeByName(db_.get(), L"CENTER"));
    EXPECT_EQ(provider.database(), db_.get());
    EXPECT_EQ(provider.linetypeScale(), 2.5);
    ZnDbObjectId layer;
    EXPECT_EQ(ZnTorviSetLayer::getCenterLayerId(db_.get(), layer), Quorl::eOk);
    EXPECT_EQ(provider.layerId(), layer);
    EXPECT_EQ(provider.crossHairLengthExpression().utf8(), "0.2x");
    EXPECT_EQ(provider.crossHairGapExpression().utf8(), "0.3x");
    EXPECT_EQ(provider.refCircleRadius(), 0.0);
    for (const ZnCenterMarkSubEntType type : {eCrossHairHorizontalLine, eLeftLine, eTopLine})
      EXPECT_TRUE(provider.extension(type) == 0.0 && provider.overshoot(type) == 0.0 &&
                  provider.extensionLength(type, 7.0) == 0.0);
  }
  void setStyle() {
    put(L"CENTERLTSCALE", ZnRxVariableValue::ofDouble(2.5));
    put(L"CENTERCROSSSIZE", L"0.2x");
    put(L"CENTERCROSSGAP", L"0.3x");
  }
};

TEST_F(Provider, AMarkAnswersForItself) {
  const ZnDbObjectId mark = addMark(addCircle({0.0, 0.0, 0.0}, 10.0));
  setStyle();
  auto wrapper = wrap(mark);
  wrapper.setHorizontalStartExtension(3.0);
  wrapper.setVerticalEndOvershoot(1.25);
  const ZnDbObjectId dashed = addLinetype(L"D", {3.0, -1.0}, false);
  change<ZnDbEntity>(mark, [&](ZnDbEntity& entity) {
    entity.setLinetype(dashed);
    entity.setLinetypeScale(4.0);
    entity.setLayer(db_->layerZero());
  });
  const ZnDbCenterMarkPropsProvider provider(mark);
  EXPECT_EQ(provider.objectId(), mark);
  EXPECT_TRUE(provider.hasStoredObject());
  EXPECT_EQ(provider.database(), db_.get());
  EXPECT_EQ(provider.linetypeId(), dashed);
  EXPECT_EQ(provider.linetypeScale(), 4.0);
  EXPECT_EQ(provider.layerId(), db_->layerZero());
  EXPECT_EQ(provider.crossHairLengthExpression().utf8(), "0.1x");
  EXPECT_EQ(provider.crossHairGapExpression().utf8(), "0.05x");
  EXPECT_EQ(provider.refCircleRadius(), 10.0);

  struct {
    ZnCenterMarkSubEntType type;
    double extension, overshoot, forRadius7;
  } const rows[] = {{eCrossHairHorizontalLine, 0.0, 0.0, 0.0},
                    {eLeftLine, 3.0, 0.5, 3.0},
                    {eRightLine, 10.0, 0.5, 7.0},
                    {eBottomLine, 10.0, 0.5, 7.0},
                    {eTopLine, 10.0, 1.25, 7.0}};
  for (const auto& row : rows) {
    EXPECT_EQ(provider.extension(row.type), row.extension) << row.type;
    EXPECT_EQ(provider.overshoot(row.type), row.overshoot) << row.type;
    EXPECT_EQ(provider.extensionLength(row.type, 7.0), row.forRadius7) << row.type;
  }
  evaluate(mark);
}

TEST_F(Provider, WithoutAnObjectTheStyleAnswers) {
  setStyle();
  EXPECT_FALSE(ZnTorviLyxUtils::getLineTypeByName(db_.get(), L"CENTER").isValid());
  expectStyle(ZnDbCenterMarkPropsProvider{ZnDbObjectId()});
}

TEST_F(Provider, WithoutADrawingNothingIsThere) {
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  const ZnDbCenterMarkPropsProvider provider{ZnDbObjectId()};
  EXPECT_EQ(provider.database(), nullptr);
  EXPECT_TRUE(provider.linetypeId().isNull());
  EXPECT_TRUE(provider.layerId().isNull());
  EXPECT_EQ(provider.crossHairLengthExpression().utf8(), "0.1x");
}

} // namespace
