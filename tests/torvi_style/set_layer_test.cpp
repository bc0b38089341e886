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
  const ZnDbObjectId made = centerLayer();
  EXPECT_EQ(made, layerNamed(L"Center Lines"));
  EXPECT_EQ(traitsOf(made), traitsOf(db_->layerZero()));
  EXPECT_EQ(centerLayer(), made);
}

TEST_F(CenterLayer, EntitiesMoveToItEvenFromALockedLayer) {
  const ZnDbObjectId circle = addCircle({0.0, 0.0, 0.0}, 1.0), locked = addLayer(L"Locked");
  change<ZnDbEntity>(circle, [&](ZnDbEntity& entity) { entity.setLayer(locked); });
  setLocked(locked, true);
  EXPECT_EQ(ZnTorviSetLayer::setCenterLayer(circle), Quorl::eOk);
  EXPECT_EQ(layerOf(circle), layerNamed(L"Center Lines"));
  EXPECT_NE(ZnTorviSetLayer::setCenterLayer(ZnDbObjectId()), Quorl::eOk);
  ZnDbObjectId id;
  EXPECT_EQ(ZnTorviSetLayer::getCenterLayerId(nullptr, id), Quorl::eNoDatabase);
  const size_t before = db_->objectCount();
  put(L"CENTERLAYER", L"a<b");
  EXPECT_EQ(ZnTorviSetLayer::getCenterLayerId(db_.get(), id), Quorl::eInvalidName);
  EXPECT_EQ(db_->objectCount(), before);
}

TEST_F(CenterLayer, ClearedOverridesStillApply) {
  ASSERT_EQ(zndbClearTorviLayerOverrides(), Quorl::eOk);
  const Traits expected{ZnDb::kLineWeight025, traitsOf(db_->layerZero()).linetype, ZnCmColor(),
                        ZnCmTransparency()};
  EXPECT_EQ(traitsOf(centerLayer()), expected);
}

TEST_F(CenterLayer, OverridesActOnLayersThatTheModuleMakes) {
  const ZnDbObjectId dashed = addLinetype(L"D", {3.0, -1.0}, false), old = centerLayer();
  const Traits wanted{ZnDb::kLineWeight050, dashed, ZnCmColor::fromIndex(1), ZnCmTransparency(100)};
  const Traits standard = traitsOf(db_->layerZero()), before = traitsOf(old);
  const auto apply = [](const Traits& traits) {
    return zndbApplyTorviLayerOverrides(traits.lineWeight, traits.linetype, traits.color,
                                        traits.transparency);
  };
  const auto made = [&](const wchar_t* name) {
    put(L"CENTERLAYER", name);
    return traitsOf(centerLayer());
  };
  ASSERT_EQ(apply(wanted), Quorl::eOk);
  EXPECT_EQ(centerLayer(), old);
  EXPECT_EQ(traitsOf(old), before);
  EXPECT_EQ(made(L"New"), wanted);
  for (const ZnDbObjectId bad : {ZnDbObjectId(), db_->layerZero()})
    EXPECT_EQ(apply({ZnDb::kLineWeight211, bad, {}, {}}), Quorl::eInvalidLinetypeId);
  EXPECT_EQ(made(L"New again"), wanted) << "what is no linetype changes nothing";
  ASSERT_EQ(zndbClearTorviLayerOverrides(), Quorl::eOk);
  Traits cleared = wanted;
  cleared.linetype = standard.linetype;
  EXPECT_EQ(made(L"New once more"), cleared) << "the others still apply";
  // Color and linetype come before the lineweight, transparency after it: one that is refused stops it.
  ASSERT_EQ(apply({ZnDb::kLineWeightByLayer, dashed, wanted.color, wanted.transparency}), Quorl::eOk);
  EXPECT_EQ(made(L"Refused"), (Traits{standard.lineWeight, dashed, wanted.color, standard.transparency}));
  auto other = std::make_unique<ZnDbDatabase>();
  ASSERT_EQ(apply({ZnDb::kLineWeight050, other->continuousLinetype(), wanted.color, {}}), Quorl::eOk);
  EXPECT_EQ(made(L"Of another drawing").linetype, standard.linetype);
  other.reset();
  EXPECT_EQ(made(L"Of one that is gone").linetype, standard.linetype);
}

} // namespace
