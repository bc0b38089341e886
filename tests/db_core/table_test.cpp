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

TEST_F(Tables, RenamingErasingAndUndoKeepTheIndex) {
  ZnDbObjectId id, second;
  ASSERT_EQ(addLayer(L"A", id), Quorl::eOk);
  db.undoRecorder().startStep();
  {
    ZnDbHolder<ZnDbLayerTableRecord> layer;
    ASSERT_EQ(layer.openForWrite(id), Quorl::eOk);
    EXPECT_EQ(layer->setName(L"0"), Quorl::eDuplicateKey);
    ASSERT_EQ(layer->setName(L"B"), Quorl::eOk);
  }
  EXPECT_TRUE(layerAt(L"A").isNull());
  EXPECT_EQ(layerAt(L"b"), id);
  ASSERT_EQ(db.undoRecorder().undo(), Quorl::eOk);
  EXPECT_EQ(layerAt(L"A"), id);
  EXPECT_TRUE(layerAt(L"B").isNull());
  erase(id);
  EXPECT_TRUE(layerAt(L"A").isNull()) << "an erased record counts as not found";
  ASSERT_EQ(addLayer(L"A", second), Quorl::eOk);
  EXPECT_EQ(layerAt(L"A"), second);
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

TEST_F(Tables, BlocksKnowTheirReferences) {
  const ZnDbObjectId inner = addBlock(L"Inner"), outer = addBlock(L"Outer");
  addCircle(0.0, 1.0, inner);
  const ZnDbObjectId nested = addReference(inner, outer);
  const ZnDbObjectId shown = addReference(outer);
  using Ids = std::vector<ZnDbObjectId>;
  EXPECT_EQ(referencesOf(inner), (Ids{nested}));
  EXPECT_EQ(referencesOf(inner, false), (Ids{nested, shown}));
  erase(nested);
  EXPECT_EQ(referencesOf(inner), Ids());
  erase(nested, false);
  const ZnDbObjectId second = addReference(inner), third = addReference(inner), other = addBlock(L"Other");
  EXPECT_EQ(referencesOf(inner), (Ids{nested, second, third}));
  change<ZnDbBlockReference>(second, [&](ZnDbBlockReference& reference) {
    EXPECT_EQ(reference.setBlockTableRecord(other), Quorl::eOk);
  });
  EXPECT_EQ(referencesOf(other), (Ids{second}));
  EXPECT_EQ(referencesOf(inner), (Ids{nested, third}));
}

TEST_F(Tables, ABlockNeverContainsItself) {
  const ZnDbObjectId inner = addBlock(L"Inner"), outer = addBlock(L"Outer");
  addReference(inner, outer);
  ZnDbHolder<ZnDbBlockTableRecord> record;
  ASSERT_EQ(record.openForWrite(inner), Quorl::eOk);
  for (const ZnDbObjectId target : {inner, outer}) {
    auto* reference = new ZnDbBlockReference(ZnGePoint3d(), target);
    EXPECT_EQ(record->appendZnDbEntity(reference), Quorl::eInvalidOwner);
    delete reference;
  }
}

TEST_F(Tables, DictionaryEntries) {
  ZnDbHolder<ZnDbDictionary> named;
  ASSERT_EQ(named.openForWrite(db.namedObjectsDictionaryId()), Quorl::eOk);
  const int before = named->entryCount();
  ZnDbObjectId first, second, found;
  auto* entry = new ZnDbDictionary;
  ASSERT_EQ(named->setAt(L"Entry", entry, first), Quorl::eOk);
  entry->close();
  EXPECT_EQ(named->getAt(L"ENTRY", found), Quorl::eOk);
  EXPECT_EQ(found, first);
  auto* replacing = new ZnDbDictionary;
  ASSERT_EQ(named->setAt(L"entry", replacing, second), Quorl::eOk);
  replacing->close();
  EXPECT_TRUE(first.isErased());
  EXPECT_EQ(named->entryCount(), before + 1);
  EXPECT_EQ(named->remove(L"Entry"), Quorl::eOk);
  EXPECT_EQ(named->remove(L"Entry"), Quorl::eKeyNotFound);
  EXPECT_EQ(named->getAt(L"Entry", found), Quorl::eKeyNotFound);
}

} // namespace
