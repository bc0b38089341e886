// What a drawing refuses because it would be none afterwards, and what undoing must give back: each is a way
// in which a drawing once broke.
#include "db_core/small_drawing.h"
#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/field_visitor.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/object_reactor.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"
#include "quorl/rx/res_buf.h"
#include "quorl/rx/variables_dictionary.h"

using Quorl::ErrorStatus;

namespace {

class Refusals : public SmallDrawing {
protected:
  template<class T, class Call> static ErrorStatus with(ZnDbObjectId id, Call&& call) {
    ZnDbHolder<T> object;
    EXPECT_EQ(object.openForWrite(id, true), Quorl::eOk);
    return call(*object);
  }
  static ErrorStatus eraseIt(ZnDbObjectId id, bool erasing = true) {
    return with<ZnDbObject>(id, [=](ZnDbObject& object) { return object.erase(erasing); });
  }
  ErrorStatus show(ZnDbObjectId block, ZnDbObjectId into) {
    auto* reference = new ZnDbBlockReference(ZnGePoint3d(), block);
    return put(reference, into);
  }
  ErrorStatus put(ZnDbEntity* entity, ZnDbObjectId into) {
    const ErrorStatus status = with<ZnDbBlockTableRecord>(
        into, [&](ZnDbBlockTableRecord& record) { return record.appendZnDbEntity(entity); });
    if (status == Quorl::eOk)
      entity->close();
    else
      delete entity;
    return status;
  }
  ErrorStatus clone(const ZnArray<ZnDbObjectId>& ids, ZnDbObjectId owner) {
    ZnDbIdMapping mapping(ZnDb::kCopyContext, &db, &db);
    return db.deepCloneObjects(ids, owner, mapping);
  }
  ZnDbObjectId addLayer(const wchar_t* name) {
    return addRecord<ZnDbLayerTableRecord>(db.layerTableId(), name);
  }
  ZnDbObjectId layerNamed(const wchar_t* name) {
    ZnDbObjectId id;
    ZnDbHolder<ZnDbLayerTable>(db.layerTableId())->getIdAt(name, id);
    return id;
  }
  void setLayer(ZnDbObjectId entity, ZnDbObjectId layer) {
    EXPECT_EQ(with<ZnDbEntity>(entity, [&](ZnDbEntity& e) { return e.setLayer(layer); }), Quorl::eOk);
  }
};

TEST_F(Refusals, ABlockInItself) {
  const ZnDbObjectId inner = addBlock(L"inner"), outer = addBlock(L"outer"), other = addBlock(L"other");
  addCircle(0.0, 1.0, inner);
  const ZnDbObjectId nested = addReference(inner, outer), shown = addReference(outer),
                     loose = addReference(other);
  EXPECT_EQ(show(outer, inner), Quorl::eInvalidOwner);
  EXPECT_EQ(show(inner, inner), Quorl::eInvalidOwner);
  const auto moveShown = [&](ZnDbBlockTableRecord& record) {
    return record.assumeOwnershipOf({loose, shown});
  };
  EXPECT_EQ(with<ZnDbBlockTableRecord>(inner, moveShown), Quorl::eInvalidOwner);
  EXPECT_EQ(loose.slot()->object->ownerId(), db.modelSpaceId()) << "all are moved or none";
  const auto showOuter = [&](ZnDbBlockReference& reference) { return reference.setBlockTableRecord(outer); };
  EXPECT_EQ(with<ZnDbBlockReference>(nested, showOuter), Quorl::eInvalidOwner);
  const auto setField = [&](ZnDbObject& object) { return zndbSetField(object, L"block", outer); };
  EXPECT_EQ(with<ZnDbObject>(nested, setField), Quorl::eInvalidOwner);
  EXPECT_EQ(clone({shown}, inner), Quorl::eInvalidOwner);
  ASSERT_EQ(eraseIt(nested), Quorl::eOk);
  EXPECT_EQ(show(outer, inner), Quorl::eOk) << "nothing shows it there any more";
  EXPECT_EQ(eraseIt(nested, false), Quorl::eInvalidOwner);
  EXPECT_TRUE(nested.isErased());
}

TEST_F(Refusals, BlocksBeyondTheDeepestLevel) {
  ZnDbObjectId top = addBlock(L"0");
  const ZnDbObjectId bottom = top;
  for (int level = 1; level <= ZnDbBlockTableRecord::kDeepestNesting; ++level) {
    const ZnDbObjectId next = addBlock(std::to_wstring(level).c_str());
    addReference(top, next);
    top = next;
  }
  const ZnDbObjectId above = addBlock(L"above"), below = addBlock(L"below");
  EXPECT_EQ(show(top, above), Quorl::eInvalidOwner);
  EXPECT_EQ(show(below, bottom), Quorl::eInvalidOwner);
}

TEST_F(Refusals, WhatIsNeeded) {
  const ZnDbObjectId block = addBlock(L"part"), layer = addLayer(L"Steel"), entity = addCircle(0.0, 1.0);
  const ZnDbObjectId reference = addReference(block);
  setLayer(entity, layer);
  for (const ZnDbObjectId id :
       {db.layerZero(), db.byLayerLinetype(), db.byBlockLinetype(), db.continuousLinetype(),
        db.modelSpaceId(), db.paperSpaceId(), db.layerTableId(), db.dimstyle(), db.namedObjectsDictionaryId(),
        db.getLayoutDictionary(), block, layer})
    EXPECT_EQ(eraseIt(id), Quorl::eInUse) << id.objectClass()->name().utf8();
  const auto rename = [](ZnDbSymbolTableRecord& record) { return record.setName(L"mine"); };
  EXPECT_EQ(with<ZnDbSymbolTableRecord>(db.layerZero(), rename), Quorl::eInUse);
  // Whatever changes the layer, the count follows.
  undo().startStep();
  setLayer(entity, db.layerZero());
  EXPECT_EQ(eraseIt(layer), Quorl::eOk);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_EQ(eraseIt(layer), Quorl::eInUse);
  EXPECT_EQ(eraseIt(entity), Quorl::eOk);
  EXPECT_EQ(eraseIt(reference), Quorl::eOk);
  EXPECT_EQ(eraseIt(layer), Quorl::eOk);
  EXPECT_EQ(eraseIt(block), Quorl::eOk);
}

TEST_F(Refusals, TwoRecordsOfOneName) {
  undo().startStep();
  const ZnDbObjectId first = addLayer(L"Steel");
  undo().startStep();
  ASSERT_EQ(eraseIt(first), Quorl::eOk);
  undo().startStep();
  const ZnDbObjectId second = addLayer(L"STEEL");
  EXPECT_EQ(eraseIt(first, false), Quorl::eDuplicateKey);
  EXPECT_EQ(clone({second}, db.layerTableId()), Quorl::eDuplicateKey);
  for (const auto& [name, expected] :
       {std::pair(L"0", Quorl::eDuplicateKey), {L"a/b", Quorl::eInvalidName}, {L"Brass", Quorl::eOk}}) {
    const auto set = [name = ZnString(name)](ZnDbObject& object) {
      return zndbSetField(object, L"name", name);
    };
    EXPECT_EQ(with<ZnDbObject>(second, set), expected);
  }
  EXPECT_EQ(layerNamed(L"brass"), second);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_TRUE(layerNamed(L"Steel").isNull());
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_EQ(layerNamed(L"Steel"), first);
  ASSERT_EQ(undo().redo(), Quorl::eOk);
  ASSERT_EQ(undo().redo(), Quorl::eOk);
  EXPECT_EQ(layerNamed(L"Brass"), second);
  EXPECT_TRUE(layerNamed(L"Steel").isNull());
}

TEST_F(Refusals, IdsOfAnotherDrawing) {
  ZnDbDatabase other;
  ZnDbDatabase* const drawings[] = {&db, &other};
  for (ZnDbDatabase* drawing : drawings) {
    auto* line = new ZnDbLine(ZnGePoint3d(), ZnGePoint3d(1, 0, 0));
    ASSERT_EQ(line->setLayer(drawing->layerZero()), Quorl::eOk);
    EXPECT_EQ(put(line, db.modelSpaceId()), drawing == &db ? Quorl::eOk : Quorl::eInvalidInput);
    line = new ZnDbLine(ZnGePoint3d(), ZnGePoint3d(1, 0, 0));
    ASSERT_EQ(line->setLinetype(drawing->continuousLinetype()), Quorl::eOk);
    EXPECT_EQ(put(line, db.modelSpaceId()), drawing == &db ? Quorl::eOk : Quorl::eInvalidInput);
    EXPECT_EQ(show(drawing->paperSpaceId(), db.modelSpaceId()),
              drawing == &db ? Quorl::eOk : Quorl::eInvalidInput);
  }
}

TEST_F(Refusals, ClonesInTheWrongPlace) {
  const ZnDbObjectId block = addBlock(L"*U"), line = addCircle(0.0, 1.0, block);
  struct Told : ZnDbDatabaseReactor {
    void objectAppended(ZnDbDatabase*, const ZnDbObject*) override { ++count; }
    int count = 0;
  } told;
  db.addReactor(&told);
  EXPECT_EQ(clone({line}, db.layerTableId()), Quorl::eInvalidOwner);
  EXPECT_EQ(clone({line, block}, db.modelSpaceId()), Quorl::eInvalidOwner);
  const ZnDbObjectId reference = addReference(block);
  told.count = 0;
  EXPECT_EQ(clone({reference}, block), Quorl::eInvalidOwner);
  EXPECT_EQ(told.count, 0) << "nobody hears of what never was";
  EXPECT_EQ(clone({line, block}, db.blockTableId()), Quorl::eOk);
  EXPECT_EQ(told.count, 2) << "the line came within its block";
  db.removeReactor(&told);
}

TEST_F(Refusals, ACopyIsToldOfAndSaysWhetherItWasAskedFor) {
  struct Told : ZnDbObjectReactor {
    void copied(const ZnDbObject* from, const ZnDbObject* to) override { original = from, copy = to; }
    const ZnDbObject *original = nullptr, *copy = nullptr;
  } told;
  ZnDbHolder<ZnDbObject> circle(addCircle(0.0, 1.0));
  circle->addReactor(&told);
  const ZnDbHolder<ZnDbObject> space(db.modelSpaceId());
  for (const bool asked : {true, false}) {
    ZnDbIdMapping mapping(ZnDb::kCopyContext, &db, &db);
    ZnDbObject* copy = nullptr;
    ASSERT_EQ(circle->deepClone(const_cast<ZnDbObject*>(space.object()), copy, mapping, asked), Quorl::eOk);
    EXPECT_TRUE(told.original == circle.object() && told.copy == copy);
    ZnDbIdPair pair(circle->objectId());
    EXPECT_TRUE(mapping.compute(pair) && pair.isPrimary() == asked);
  }
  circle->removeReactor(&told);
}

TEST_F(Refusals, UndoWhileAnObjectOfTheStepIsOpen) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  undo().startStep();
  setRadius(id, 2.0);
  {
    const ZnDbHolder<ZnDbCircle> reading(id);
    EXPECT_EQ(undo().undo(), Quorl::eWasOpenForRead);
    EXPECT_EQ(reading->radius(), 2.0);
  }
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  const ZnDbHolder<ZnDbCircle> reading(id);
  EXPECT_EQ(undo().redo(), Quorl::eWasOpenForRead);
}

TEST_F(Refusals, UndoGivesBackTheDrawingOrder) {
  const ZnDbObjectId block = addBlock(L"part");
  const ZnDbObjectId a = addCircle(0, 1), b = addCircle(0, 2), c = addCircle(0, 3),
                     inBlock = addCircle(0, 4, block);
  const auto order = [](ZnDbObjectId of) { return ZnDbHolder<ZnDbBlockTableRecord>(of)->entityIds(); };
  const auto before = order(db.modelSpaceId());
  undo().startStep();
  EXPECT_EQ(with<ZnDbBlockTableRecord>(block,
                                       [&](ZnDbBlockTableRecord& r) {
                                         return r.assumeOwnershipOf({c, a});
                                       }),
            Quorl::eOk);
  const std::vector<ZnDbObjectId> moved = {inBlock, c, a};
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(order(block), moved);
    EXPECT_EQ(order(db.modelSpaceId()), std::vector<ZnDbObjectId>{b});
    ASSERT_EQ(undo().undo(), Quorl::eOk);
    EXPECT_EQ(order(db.modelSpaceId()), before);
    ASSERT_EQ(undo().redo(), Quorl::eOk);
  }
}

TEST_F(Refusals, ErasingADictionaryTakesNothingBackThatWasGone) {
  ZnDbHolder<ZnDbDictionary> named;
  ASSERT_EQ(named.openForWrite(db.namedObjectsDictionaryId()), Quorl::eOk);
  ZnDbHolder<ZnDbDictionary> mine(new ZnDbDictionary);
  ZnDbObjectId id, old, now;
  ASSERT_EQ(named->setAt(L"MINE", mine.object(), id), Quorl::eOk);
  for (ZnDbObjectId* entry : {&old, &now}) {
    ZnDbHolder<ZnDbDictionary> made(new ZnDbDictionary);
    ASSERT_EQ(mine->setAt(L"a", made.object(), *entry), Quorl::eOk);
  }
  ASSERT_EQ(mine->erase(), Quorl::eOk);
  ASSERT_EQ(mine->erase(false), Quorl::eOk);
  EXPECT_TRUE(old.isErased());
  EXPECT_FALSE(now.isErased());
}

TEST_F(Refusals, NothingComesBackIntoWhatIsGone) {
  const ZnDbObjectId block = addBlock(L"part"), layer = addLayer(L"Steel");
  const ZnDbObjectId inBlock = addCircle(0.0, 1.0, block), alone = addCircle(0.0, 2.0, block),
                     onLayer = addCircle(0.0, 3.0);
  setLayer(onLayer, layer);
  undo().startStep();
  ASSERT_EQ(eraseIt(alone), Quorl::eOk);
  for (const ZnDbObjectId id : {block, onLayer, layer}) ASSERT_EQ(eraseIt(id), Quorl::eOk);
  const std::string gone = dump();
  EXPECT_EQ(eraseIt(inBlock, false), Quorl::eInvalidOwner);
  EXPECT_EQ(eraseIt(onLayer, false), Quorl::eInvalidInput);
  undo().startStep();
  for (int round = 0; round < 2; ++round) {
    ASSERT_EQ(eraseIt(block, false), Quorl::eOk);
    EXPECT_FALSE(inBlock.isErased()) << "round " << round;
    EXPECT_TRUE(alone.isErased()) << "it had gone before";
    ASSERT_EQ(undo().undo(), Quorl::eOk);
    EXPECT_EQ(dump(), gone);
  }
}

TEST_F(Refusals, AnExtensionThatHadGoneStaysAway) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  ASSERT_EQ(with<ZnDbObject>(id, [](ZnDbObject& object) { return object.createExtensionDictionary(); }),
            Quorl::eOk);
  const ZnDbObjectId extension = id.slot()->object->extensionDictionary();
  for (const bool before : {false, true}) {
    if (before) ASSERT_EQ(eraseIt(extension), Quorl::eOk);
    ASSERT_EQ(eraseIt(id), Quorl::eOk);
    EXPECT_TRUE(extension.isErased());
    ASSERT_EQ(eraseIt(id, false), Quorl::eOk);
    EXPECT_EQ(extension.isErased(), before);
  }
}

TEST_F(Refusals, TheAuditFindsNamesThatFindNothing) {
  ZnDbHolder<ZnDbLayerTable> table;
  ASSERT_EQ(table.openForWrite(db.layerTableId()), Quorl::eOk);
  const ZnDbObjectId first = addLayer(L"Steel"), lost = addLayer(L"Brass");
  table->removeName(first, L"Steel");
  const ZnDbObjectId second = addLayer(L"Steel");
  table->removeName(lost, L"Brass");
  table->enterName(lost, L"ghost");
  table.close();
  std::string faults;
  for (const ZnString& fault : db.audit(true)) faults += fault.utf8() + '\n';
  for (const char* expected : {"finds no record", "another has its name Steel"})
    EXPECT_NE(faults.find(expected), std::string::npos) << faults;
  EXPECT_TRUE(db.audit(false).empty());
  EXPECT_EQ(layerNamed(L"Brass"), lost);
  EXPECT_TRUE(layerNamed(L"ghost").isNull());
  EXPECT_TRUE(layerNamed(L"Steel") != layerNamed(L"Steel_2") && !layerNamed(L"Steel_2").isNull());
  EXPECT_TRUE(layerNamed(L"Steel_2") == first || layerNamed(L"Steel_2") == second);
}

TEST_F(Refusals, MemoryForUndoIsBounded) {
  const std::int16_t usual = ZnRxVariablesDictionary::get()->getInt16(L"UNDOMEMORY");
  const auto setBound = [](std::int16_t megabytes) {
    ZnString error;
    return ZnRxVariablesDictionary::get()->set(L"UNDOMEMORY", resbuf::ofShort(megabytes), error);
  };
  const ZnString large(std::wstring(1 << 15, L'x'));
  for (const auto& [megabytes, isBounded] : {std::pair(std::int16_t{1}, true), {std::int16_t{0}, false}}) {
    ASSERT_EQ(setBound(megabytes), Quorl::eOk);
    undo().clear();
    constexpr int kSteps = 20;
    for (int i = 0; i < kSteps; ++i) {
      undo().startStep();
      db.put(ZnAtom::of(L"TEXT"), ZnRxVariableValue::ofString(large));
      ZnDbHolder<ZnDbLinetypeTableRecord> linetype;
      ASSERT_EQ(linetype.openForWrite(db.continuousLinetype()), Quorl::eOk);
      linetype->setDescription(large);
    }
    undo().startStep();
    EXPECT_EQ(undo().gaveUpSteps(), isBounded);
    EXPECT_EQ(undo().keptBytes() <= (1u << 20), isBounded);
    size_t taken = 0;
    while (undo().undo() == Quorl::eOk) ++taken;
    EXPECT_EQ(taken < kSteps, isBounded);
    EXPECT_GT(taken, 0u) << "the last steps are there";
  }
  EXPECT_EQ(setBound(usual), Quorl::eOk);
}

TEST_F(Refusals, WatchersHearOfAllThatHappened) {
  struct Told : ZnDbDatabaseReactor {
    void headerVariableChanged(ZnDbDatabase*, const ZnString& name, bool) override {
      heard += name.utf8() + " ";
    }
    void objectErased(ZnDbDatabase*, const ZnDbObject*, bool erasing) override {
      heard += erasing ? "erased " : "back ";
    }
    void objectModified(ZnDbDatabase*, const ZnDbObject*) override { heard += "modified "; }
    std::string heard;
  } told;
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  erase(id);
  undo().startStep();
  ASSERT_EQ(db.setLtscale(2.0), Quorl::eOk);
  db.addReactor(&told);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_EQ(with<ZnDbCircle>(id,
                             [](ZnDbCircle& circle) {
                               EXPECT_EQ(circle.erase(false), Quorl::eOk);
                               return circle.setRadius(2.0);
                             }),
            Quorl::eOk);
  erase(id);
  EXPECT_EQ(told.heard, "LTSCALE back modified erased ");
  db.removeReactor(&told);
}

TEST_F(Refusals, AnAbortGivesBackWhatCouldBeRedone) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  undo().startStep();
  setRadius(id, 2.0);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  for (const bool aborted : {true, false}) {
    {
      ZnDbTransaction transaction(db);
      setRadius(id, 3.0);
      if (!aborted) EXPECT_EQ(transaction.end(), Quorl::eOk);
    }
    EXPECT_EQ(undo().canRedo(), aborted);
  }
}

TEST_F(Refusals, AnAmendmentIsNoStepAndLosesNoRedo) {
  const ZnDbObjectId id = addCircle(0.0, 1.0), other = addCircle(5.0, 1.0);
  undo().startStep();
  setRadius(id, 2.0);
  undo().startStep();
  setRadius(id, 3.0);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  const size_t depth = undo().undoDepth();
  {
    const ZnDbUndoRecorder::Amendment finishing(undo());
    setRadius(other, 7.0);
  }
  EXPECT_EQ(undo().undoDepth(), depth);
  ASSERT_EQ(undo().redo(), Quorl::eOk);
  EXPECT_EQ(radiusOf(id), 3.0);
  EXPECT_EQ(radiusOf(other), 7.0);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_EQ(radiusOf(other), 1.0) << "undone with the step that it finished";
}

} // namespace
