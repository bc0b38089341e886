#include "db_core/small_drawing.h"
#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/table/layer_table.h"

namespace {

class Cloning : public SmallDrawing {
protected:
  static ZnDbObjectId cloneOf(const ZnDbIdMapping& mapping, ZnDbObjectId id) {
    ZnDbIdPair pair(id);
    return mapping.compute(pair) ? pair.value() : ZnDbObjectId();
  }
};

struct Told : ZnRxEventReactor {
  Told() { ZnRxEvent::instance().addReactor(this); }
  ~Told() override { ZnRxEvent::instance().removeReactor(this); }
  void beginDeepClone(ZnDbDatabase*, ZnDbIdMapping&) override { events += "begin "; }
  void beginDeepCloneTranslation(ZnDbIdMapping& mapping) override {
    events += "translate " + std::to_string(mapping.pairs().size()) + ' ';
  }
  void abortDeepClone(ZnDbIdMapping&) override { events += "abort "; }
  void endDeepClone(ZnDbIdMapping&) override { events += "end "; }
  std::string events;
};

TEST_F(Cloning, CopiesWithinADrawing) {
  const ZnDbObjectId id = addCircle(3.0, 2.0);
  Told told;
  ZnDbIdMapping mapping(ZnDb::kCopyContext, &db, &db);
  ASSERT_EQ(db.deepCloneObjects({id}, db.modelSpaceId(), mapping), Quorl::eOk);
  const ZnDbObjectId copy = cloneOf(mapping, id);
  ASSERT_TRUE(copy.isValid());
  EXPECT_EQ(radiusOf(copy), 2.0);
  EXPECT_EQ(mapping.deepCloneContext(), ZnDb::kCopyContext);
  ZnDbIdMappingIter pairs(mapping);
  ZnDbIdPair pair;
  for (pairs.start(); pair.key() != id && pairs.getMap(pair);) pairs.next();
  EXPECT_EQ(pair.value(), copy);
  EXPECT_EQ(told.events, "begin translate 1 end ");
  ZnDbHolder<ZnDbCircle> circle(copy);
  EXPECT_EQ(circle->ownerId(), db.modelSpaceId());
  EXPECT_EQ(circle->layerId(), db.layerZero());
}

TEST_F(Cloning, TakesAlongWhatIsOwned) {
  const ZnDbObjectId block = addBlock(L"*U");
  const ZnDbObjectId inside = addCircle(1.0, 1.0, block);
  ZnDbIdMapping mapping(ZnDb::kCopyContext, &db, &db);
  ASSERT_EQ(db.deepCloneObjects({block}, db.blockTableId(), mapping), Quorl::eOk);
  const ZnDbObjectId copy = cloneOf(mapping, block);
  ZnDbHolder<ZnDbBlockTableRecord> record(copy);
  ASSERT_TRUE(record.isOpen());
  ASSERT_EQ(record->entityIds().size(), 1u);
  EXPECT_EQ(record->entityIds()[0], cloneOf(mapping, inside));
  EXPECT_FALSE(record->name() == ZnDbHolder<ZnDbBlockTableRecord>(block)->name())
      << "anonymous names never meet";
  ZnDbObjectId found;
  EXPECT_EQ(ZnDbHolder<ZnDbBlockTable>(db.blockTableId())->getIdAt(record->name(), found), Quorl::eOk);
  EXPECT_EQ(found, copy);
}

TEST_F(Cloning, AcrossDrawingsRecordsOfOneNameServe) {
  const ZnDbObjectId shared = addLayer(L"Shared", [](auto&) {}), own = addLayer(L"Own", [](auto&) {});
  HostDrawing elsewhere;
  ZnDbDatabase& other = elsewhere.db;
  const ZnDbObjectId twin = elsewhere.addLayer(L"SHARED", [](auto&) {});
  const ZnDbObjectId first = addCircle(0.0, 1.0), second = addCircle(5.0, 1.0);
  for (auto [circle, layer] : {std::pair{first, shared}, std::pair{second, own}})
    change(circle, [&, layer = layer](ZnDbEntity& e) { EXPECT_EQ(e.setLayer(layer), Quorl::eOk); });
  ZnDbIdMapping mapping(ZnDb::kWholeDrawingContext, &db, &other);
  ASSERT_EQ(db.deepCloneObjects({first, second}, other.modelSpaceId(), mapping), Quorl::eOk);
  EXPECT_EQ(ZnDbHolder<ZnDbCircle>(cloneOf(mapping, first))->layerId(), twin);
  const ZnDbObjectId brought = ZnDbHolder<ZnDbCircle>(cloneOf(mapping, second))->layerId();
  ASSERT_TRUE(brought.isValid());
  EXPECT_EQ(brought.database(), &other);
  EXPECT_TRUE(ZnDbHolder<ZnDbLayerTableRecord>(brought)->name() == L"Own");
  EXPECT_EQ(ZnDbHolder<ZnDbLayerTableRecord>(brought)->linetypeObjectId(), other.continuousLinetype());
  EXPECT_TRUE(other.audit(false).empty());
}

TEST_F(Cloning, RefusesAndLeavesNothing) {
  const ZnDbObjectId id = addCircle(0.0, 1.0), gone = addCircle(0.0, 1.0);
  erase(gone);
  const std::string before = dump();
  Told told;
  ZnDbIdMapping mapping(ZnDb::kCopyContext, &db, &db);
  EXPECT_EQ(db.deepCloneObjects({}, db.modelSpaceId(), mapping), Quorl::eNothingToDo);
  EXPECT_EQ(db.deepCloneObjects({id}, ZnDbObjectId(), mapping), Quorl::eInvalidOwner);
  EXPECT_EQ(db.deepCloneObjects({id, gone}, db.modelSpaceId(), mapping), Quorl::eInvalidInput);
  EXPECT_EQ(told.events, "begin abort ");
  EXPECT_EQ(dump(), before);
}

} // namespace
