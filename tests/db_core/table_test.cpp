#include "db_core/small_drawing.h"
#include "quorl/db/table/layer_table.h"

using Quorl::ErrorStatus;

namespace {

class Tables : public SmallDrawing {
protected:
  ErrorStatus addLayer(const wchar_t* name, ZnDbObjectId& id) {
    ZnDbHolder<ZnDbLayerTable> table;
    EXPECT_EQ(table.openForWrite(db.layerTableId()), Quorl::eOk);
    auto* layer = new ZnDbLayerTableRecord;
    ErrorStatus status = layer->setName(name);
    if (status == Quorl::eOk) status = table->add(id, layer);
    if (status == Quorl::eOk)
      layer->close();
    else
      delete layer;
    return status;
  }
  ZnDbObjectId layerAt(const wchar_t* name) {
    ZnDbObjectId id;
    ZnDbHolder<ZnDbLayerTable>(db.layerTableId())->getIdAt(name, id);
    return id;
  }
};

TEST_F(Tables, NamesOfRecords) {
  struct Case {
    const wchar_t* name;
    ErrorStatus expected;
  };
  const Case cases[] = {
      {L"Center Lines", Quorl::eOk}, {L"center LINES", Quorl::eDuplicateKey}, {L"0", Quorl::eDuplicateKey},
      {L"", Quorl::eInvalidName},    {L"a/b", Quorl::eInvalidName},           {L" lead", Quorl::eInvalidName},
      {L"a=b", Quorl::eInvalidName}, {L"Mittellinien \u00dc", Quorl::eOk},    {L"tab\t", Quorl::eInvalidName},
  };
  for (const Case& c : cases) {
    ZnDbObjectId id;
    EXPECT_EQ(addLayer(c.name, id), c.expected) << ZnString(c.name).utf8();
    if (c.expected == Quorl::eOk) EXPECT_EQ(layerAt(c.name), id);
  }
  EXPECT_FALSE(layerAt(L"MITTELLINIEN \u00fc").isNull());
  EXPECT_TRUE(layerAt(L"never named").isNull());
}

TEST_F(Tables, EntitiesOfABlockAreWalkedBothWays) {
  const ZnDbObjectId block = addBlock(L"Walked"), first = addCircle(1.0, 1.0, block),
                     gone = addCircle(2.0, 1.0, block), last = addCircle(3.0, 1.0, block);
  erase(gone);
  change<ZnDbBlockTableRecord>(block, [](auto& record) { record.setIsFromExternalReference(true); });
  const ZnDbHolder<ZnDbBlockTableRecord> record(block);
  EXPECT_TRUE(record->isFromExternalReference());
  for (const bool forward : {true, false})
    for (const bool skipping : {true, false}) {
      std::vector<ZnDbObjectId> wanted{first, gone, last}, found;
      if (skipping) wanted.erase(wanted.begin() + 1);
      if (!forward) std::reverse(wanted.begin(), wanted.end());
      ZnDbBlockTableRecordIterator* made = nullptr;
      ASSERT_EQ(record->newIterator(made, forward, skipping), Quorl::eOk);
      const std::unique_ptr<ZnDbBlockTableRecordIterator> walk(made);
      for (; !walk->done(); walk->step(forward, skipping))
        EXPECT_EQ(walk->getEntityId(found.emplace_back()), Quorl::eOk);
      EXPECT_EQ(found, wanted) << forward << skipping;
      EXPECT_EQ(walk->getEntityId(found.emplace_back()), Quorl::eOutOfRange);
    }
}

// Names with numbers have an index of their own, and must answer like all other names.
TEST_F(Tables, NumberedNames) {
  const auto blockAt = [this](const wchar_t* name) {
    ZnDbObjectId id;
    ZnDbHolder<ZnDbBlockTable>(db.blockTableId())->getIdAt(name, id);
    return id;
  };
  const wchar_t* names[] = {L"*U7", L"*D7", L"*U07", L"*U70000000", L"*U7000000000", L"*Ux", L"*U"};
  for (const wchar_t* name : names) {
    SCOPED_TRACE(ZnString(name).utf8());
    const ZnDbObjectId id = addBlock(name);
    const ZnString given = ZnDbHolder<ZnDbBlockTableRecord>(id)->name();
    if (name != names[6]) EXPECT_EQ(given, name);
    EXPECT_EQ(blockAt(given.c_str()), id);
  }
  EXPECT_EQ(blockAt(L"*u7"), blockAt(L"*U7"));
  EXPECT_TRUE(blockAt(L"*U8").isNull());
  EXPECT_TRUE(ZnDbHolder<ZnDbBlockTableRecord>(blockAt(L"*U7"))->isAnonymous());
  ZnDbHolder<ZnDbBlockTableRecord> space(db.modelSpaceId());
  EXPECT_TRUE(space->isLayout() && !space->isAnonymous());
  // The next numbers pass by what is taken.
  for (int i = 0; i < 10; ++i) addBlock(L"*U");

  db.undoRecorder().startStep();
  const ZnDbObjectId last = addBlock(L"*U");
  const ZnString name = ZnDbHolder<ZnDbBlockTableRecord>(last)->name();
  ASSERT_EQ(db.undoRecorder().undo(), Quorl::eOk);
  EXPECT_TRUE(blockAt(name.c_str()).isNull()) << "taken back";
  ASSERT_EQ(db.undoRecorder().redo(), Quorl::eOk);
  EXPECT_EQ(blockAt(name.c_str()), last);
}

} // namespace
