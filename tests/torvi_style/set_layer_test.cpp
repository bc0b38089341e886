#include "torvi/style/set_layer.h"

#include "support/drawing_fixture.h"

namespace {

class CenterLayer : public DrawingTest {
protected:
  void SetUp() override {
    DrawingTest::SetUp();
    put(L"CENTERLAYER", L"");
  }

  ZnDbObjectId layerNamed(const wchar_t* name) {
    ZnDbHolder<ZnDbLayerTable> table(db_->layerTableId());
    ZnDbObjectId id;
    table->getIdAt(name, id);
    return id;
  }
  ZnDbObjectId centerLayer() {
    ZnDbObjectId id;
    EXPECT_EQ(ZnTorviSetLayer::getCenterLayerId(db_.get(), id), Quorl::eOk);
    return id;
  }
  ZnDbObjectId addLayer(const wchar_t* name) {
    ZnDbHolder<ZnDbLayerTableRecord> record(new ZnDbLayerTableRecord);
    record->setName(name);
    ZnDbHolder<ZnDbLayerTable> table;
    EXPECT_EQ(table.openForWrite(db_->layerTableId()), Quorl::eOk);
    ZnDbObjectId id;
    EXPECT_EQ(table->add(id, record.object()), Quorl::eOk);
    EXPECT_EQ(record->setLinetypeObjectId(db_->continuousLinetype()), Quorl::eOk);
    return id;
  }
};

struct Traits {
  ZnDb::LineWeight lineWeight = ZnDb::kLineWeightByDefault;
  ZnDbObjectId linetype;
  ZnCmColor color;
  ZnCmTransparency transparency;
  friend bool operator==(const Traits&, const Traits&) = default;
};

Traits traitsOf(ZnDbObjectId layerId) {
  ZnDbHolder<ZnDbLayerTableRecord> layer(layerId);
  EXPECT_TRUE(layer.isOpen());
  return {layer->lineWeight(), layer->linetypeObjectId(), layer->color(), layer->transparency()};
}

TEST_F(CenterLayer, NamesFollowTheVariable) {
  EXPECT_EQ(ZnTorviSetLayer::centerLayerName().utf8(), "Center Lines");
  EXPECT_EQ(ZnTorviSetLayer::currentLayer().utf8(), "0");
  put(L"CENTERLAYER", L"Axes");
  EXPECT_EQ(ZnTorviSetLayer::centerLayerName().utf8(), "Axes");
  put(L"CENTERLAYER", L".");
  ASSERT_EQ(db_->setCurrentLayer(addLayer(L"Walls")), Quorl::eOk);
  EXPECT_EQ(ZnTorviSetLayer::centerLayerName().utf8(), "Walls");
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(ZnTorviSetLayer::currentLayer().utf8(), "Center Lines");
}

TEST_F(CenterLayer, IsMadeLikeTheStandardLayerAndFoundAgain) {
  change<ZnDbLayerTableRecord>(db_->layerZero(), [](ZnDbLayerTableRecord& layer) {
    layer.setColor(ZnCmColor::fromIndex(3));
    layer.setLineWeight(ZnDb::kLineWeight070);
  });
  EXPECT_TRUE(layerNamed(L"Center Lines").isNull());
  const ZnDbObjectId made = centerLayer();
  EXPECT_EQ(made, layerNamed(L"Center Lines"));
  EXPECT_EQ(traitsOf(made), traitsOf(db_->layerZero()));
  EXPECT_EQ(centerLayer(), made);
}

TEST_F(CenterLayer, StatusesOfWhatCantBe) {
  ZnDbObjectId id;
  EXPECT_EQ(ZnTorviSetLayer::getCenterLayerId(nullptr, id), Quorl::eNoDatabase);
  const size_t before = db_->objectCount();
  put(L"CENTERLAYER", L"a<b");
  EXPECT_EQ(ZnTorviSetLayer::getCenterLayerId(db_.get(), id), Quorl::eInvalidName);
  EXPECT_EQ(db_->objectCount(), before);
}

TEST_F(CenterLayer, EntitiesMoveToItEvenFromALockedLayer) {
  const ZnDbObjectId circle = addCircle({0.0, 0.0, 0.0}, 1.0);
  const ZnDbObjectId locked = addLayer(L"Locked");
  change<ZnDbEntity>(circle, [&](ZnDbEntity& entity) { entity.setLayer(locked); });
  change<ZnDbLayerTableRecord>(locked, [](ZnDbLayerTableRecord& layer) { layer.setIsLocked(true); });
  EXPECT_EQ(ZnTorviSetLayer::setCenterLayer(circle), Quorl::eOk);
  EXPECT_EQ(ZnDbHolder<ZnDbEntity>(circle)->layerId(), layerNamed(L"Center Lines"));
  EXPECT_NE(ZnTorviSetLayer::setCenterLayer(ZnDbObjectId()), Quorl::eOk);
}

TEST_F(CenterLayer, ClearedOverridesStillApply) {
  ASSERT_EQ(zndbClearTorviLayerOverrides(), Quorl::eOk);
  const Traits expected{ZnDb::kLineWeight025, traitsOf(db_->layerZero()).linetype, ZnCmColor(),
                        ZnCmTransparency()};
  EXPECT_EQ(traitsOf(centerLayer()), expected);
}

TEST_F(CenterLayer, OverridesActOnLayersThatTheModuleMakes) {
  const ZnDbObjectId dashed = addLinetype(L"D", {3.0, -1.0}, false);
  const Traits wanted{ZnDb::kLineWeight050, dashed, ZnCmColor::fromIndex(1), ZnCmTransparency(100)};
  const ZnDbObjectId old = centerLayer();
  const Traits before = traitsOf(old);
  ASSERT_EQ(zndbApplyTorviLayerOverrides(wanted.lineWeight, dashed, wanted.color, wanted.transparency),
            Quorl::eOk);
  EXPECT_EQ(centerLayer(), old);
  EXPECT_EQ(traitsOf(old), before);
  put(L"CENTERLAYER", L"New");
  EXPECT_EQ(traitsOf(centerLayer()), wanted);

  // What is no linetype changes nothing.
  for (const ZnDbObjectId bad : {ZnDbObjectId(), db_->layerZero()})
    EXPECT_EQ(zndbApplyTorviLayerOverrides(ZnDb::kLineWeight211, bad, ZnCmColor(), ZnCmTransparency()),
              Quorl::eInvalidLinetypeId);
  put(L"CENTERLAYER", L"New again");
  EXPECT_EQ(traitsOf(centerLayer()), wanted);

  ASSERT_EQ(zndbClearTorviLayerOverrides(), Quorl::eOk);
  put(L"CENTERLAYER", L"New once more");
  Traits withoutLinetype = wanted;
  withoutLinetype.linetype = traitsOf(db_->layerZero()).linetype;
  EXPECT_EQ(traitsOf(centerLayer()), withoutLinetype);
}

// Color and linetype come before the lineweight, transparency after it.
TEST_F(CenterLayer, ARefusedLineWeightStopsTheTransparency) {
  const Traits standard = traitsOf(db_->layerZero());
  const Traits wanted{standard.lineWeight, addLinetype(L"D", {3.0, -1.0}, false), ZnCmColor::fromIndex(1),
                      standard.transparency};
  ASSERT_EQ(zndbApplyTorviLayerOverrides(ZnDb::kLineWeightByLayer, wanted.linetype, wanted.color,
                                         ZnCmTransparency(100)),
            Quorl::eOk);
  EXPECT_EQ(traitsOf(centerLayer()), wanted);
}

TEST_F(CenterLayer, ALinetypeOfAnotherDrawingIsLeftAlone) {
  auto other = std::make_unique<ZnDbDatabase>();
  ASSERT_EQ(zndbApplyTorviLayerOverrides(ZnDb::kLineWeight050, other->continuousLinetype(),
                                         ZnCmColor::fromIndex(2), ZnCmTransparency(100)),
            Quorl::eOk);
  other.reset();
  const Traits made = traitsOf(centerLayer());
  EXPECT_EQ(made.lineWeight, ZnDb::kLineWeight050);
  EXPECT_EQ(made.linetype, traitsOf(db_->layerZero()).linetype);
}

} // namespace
