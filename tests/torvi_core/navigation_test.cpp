// From one part of a center object to another, what counts as one, and the doors for evaluation and
// dependencies.
#include "torvi/core/object_pointer.h"
#include "torvi_core/scripted_body.h"

namespace {

using Lyx = ZnTorviLyxUtils;
using Ids = ZnArray<ZnDbObjectId>;

class Navigation : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    mark_ = addMark(circle_);
    plain_ = addReference(addEmptyBlock());
  }
  // A center object with lines in its block and in a nested one: the line outside, and the two within.
  ZnDbObjectId makeNested() {
    script.entities = "lll";
    script.keys = {L"1", L"2", L"2"};
    return make({circle_});
  }
  ZnDbObjectId nestedOf(ZnDbObjectId center) const { return wrap(center).getOutputEdge(L"2"); }
  ZnDbObjectId mark_, plain_;
};

TEST_F(Navigation, FromReferenceToBodyAndBack) {
  const ZnDbObjectId body = bodyOf(mark_);
  EXPECT_EQ(Lyx::getTorviFromActionBodyId(body), mark_);
  EXPECT_EQ(Lyx::getTorviActionBodyId(ZnDbHolder<ZnDbBlockReference>(mark_).object()), body);
  EXPECT_EQ(Lyx::getTorviObjIdFromObj(ZnDbHolder<ZnDbBlockReference>(mark_).object()), mark_);
  for (const ZnDbObjectId id : {plain_, circle_, db_->layerZero(), ZnDbObjectId()})
    EXPECT_TRUE(Lyx::getTorviActionBodyId(id).isNull());
  ZnDbBlockReference blockless;
  EXPECT_TRUE(Lyx::getTorviActionBodyId(static_cast<ZnDbBlockReference*>(nullptr)).isNull() &&
              Lyx::getTorviObjIdFromObj(nullptr).isNull() && Lyx::getTorviObjIdFromObj(&blockless).isNull() &&
              Lyx::getTorviFromActionBodyId(circle_).isNull());
  // One that only reads the reference is found by the wider question.
  const ZnDbObjectId readersBody = bodyOf(make({mark_}));
  Ids readers, ofBlock, narrow;
  Lyx::getAllTorviActionBodiesDependOnBlkRef(mark_, readers);
  Lyx::getAllTorviActionBodiesDependOnBTR(blockOf(mark_), ofBlock);
  EXPECT_TRUE(readers.length() == 2 && readers.contains(body) && readers.contains(readersBody));
  EXPECT_EQ(ofBlock, readers);
  for (const bool erased : {false, false, true}) { // each once
    if (erased) erase(mark_);
    Lyx::getCenterActionBodiesOfBlockRef(mark_, narrow);
    EXPECT_EQ(narrow, Ids{body}) << erased;
  }
  EXPECT_EQ(Lyx::getTorviActionBodyId(mark_), body);
}

TEST_F(Navigation, LinesOfNestedBlocksAreFoundAndBroughtBack) {
  const ZnDbObjectId center = makeNested(), nested = nestedOf(center), nestedBlock = blockOf(nested);
  add(new ZnDbCircle, blockOf(center));
  Ids all, found;
  for (int again = 0; again < 2; ++again) {
    EXPECT_EQ(Lyx::getEntitesIdsFromBlkRef(center, all, false), Quorl::eOk);
    ASSERT_EQ(all.length(), 3) << "lines and arcs alone, each once";
  }
  erase(all[0]);
  erase(nested);
  EXPECT_EQ(Lyx::getEntitesIdsFromBlkRef(center, found, false), Quorl::eOk);
  EXPECT_TRUE(found.isEmpty());
  for (int again = 0; again < 2; ++again) {
    found.removeAll();
    EXPECT_EQ(Lyx::getEntitesIdsFromBlkRef(center, found, true), Quorl::eOk);
    EXPECT_EQ(found, all);
    EXPECT_FALSE(all[0].isErased() || nested.isErased());
    if (again > 0) continue; // a nested block comes back too, with the reference that showed it
    erase(nested);
    erase(nestedBlock);
  }
  for (const ZnDbObjectId id : {circle_, ZnDbObjectId()})
    EXPECT_NE(Lyx::getEntitesIdsFromBlkRef(id, found, false), Quorl::eOk);
}

TEST_F(Navigation, CurvesOfCenterObjectsAtAnyDepth) {
  const ZnDbObjectId center = makeNested(), nested = nestedOf(center);
  const auto lineShown = [&](int references) {
    const ZnDbObjectId block = addEmptyBlock();
    while (references-- > 0) addReference(block);
    return add(new ZnDbLine, block);
  };
  const auto ownerOf = [](const ZnDbCurve* curve) {
    ZnDbObjectId id;
    ZnDbTorviType type = kTorviNone;
    const bool found = Lyx::isCenterObjectCurve(curve, id, type);
    EXPECT_EQ(found, !id.isNull());
    EXPECT_EQ(type, found ? kCenterMark : kTorviNone);
    return id;
  };
  const ZnDbObjectId own = liveEntities(blockOf(center))[0];
  struct {
    const char* what;
    ZnDbObjectId curve, owner;
  } const rows[] = {{"in its block", own, center},
                    {"nested", liveEntities(blockOf(nested))[1], center},
                    {"in the space", circle_, {}},
                    {"in a plain block", lineShown(1), {}},
                    {"in a block shown twice", lineShown(2), {}},
                    {"in a block not shown", lineShown(0), {}}};
  for (const auto& row : rows)
    EXPECT_EQ(ownerOf(ZnDbHolder<ZnDbCurve>(row.curve).object()), row.owner) << row.what;
  const ZnDbLine homeless;
  EXPECT_TRUE(ownerOf(nullptr).isNull() && ownerOf(&homeless).isNull());
  // A second reference takes the center object's curves away from it.
  const ZnDbObjectId second = addReference(blockOf(center));
  EXPECT_TRUE(ownerOf(ZnDbHolder<ZnDbCurve>(own).object()).isNull());
  erase(second);
}

TEST_F(Navigation, FromABlockToTheCenterObject) {
  const ZnDbObjectId center = makeNested(), nested = nestedOf(center);
  struct {
    ZnDbObjectId block, found, sub;
  } const rows[] = {{blockOf(center), center, {}},
                    {blockOf(nested), center, nested},
                    {blockOf(plain_), {}, {}},
                    {db_->modelSpaceId(), {}, {}}};
  for (const auto& row : rows) {
    ZnDbObjectId sub = circle_;
    ZnDbHolder<ZnDbBlockTableRecord> block(row.block);
    EXPECT_EQ(Lyx::getTorviObjIdFromBlockTableRecord(*block, sub), row.found) << &row - rows;
    EXPECT_EQ(sub, row.sub) << &row - rows;
  }
  Ids ids{circle_};
  const std::vector<ZnDbObjectId> held = liveEntities(blockOf(center));
  ASSERT_EQ(held.size(), 2u);
  erase(held[0]);
  Lyx::getTorviSubEntIdsFromBlockTableRecord(ids, *ZnDbHolder<ZnDbBlockTableRecord>(blockOf(center)));
  EXPECT_EQ(ids, (Ids{circle_, held[1]}));
  for (const ZnDbObjectId id : {held[0], held[0], ZnDbObjectId()}) Lyx::uneraseObject(id);
  EXPECT_FALSE(held[0].isErased());
}

TEST_F(Navigation, ActionsOfAllSpaces) {
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  const ZnDbObjectId onPaper = make({add(new ZnDbCircle, db_->paperSpaceId())});
  const ZnDbObjectId furtherLayout = addEmptyBlock();
  change<ZnDbBlockTableRecord>(furtherLayout, [&](auto& block) { block.setLayoutId(db_->layerZero()); });
  ASSERT_EQ(db_->setCurrentSpaceId(furtherLayout), Quorl::eOk);
  const ZnDbObjectId onFurther = make({add(new ZnDbCircle, furtherLayout)});
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  Ids actions{circle_}, lines;
  for (ZnDbDatabase* database : {db_.get(), db_.get(), static_cast<ZnDbDatabase*>(nullptr)}) {
    Lyx::getAllCenterActionIds(database, actions);
    ASSERT_EQ(actions.length(), 4) << "each once, behind what was there";
  }
  for (const ZnDbObjectId center : {mark_, onPaper, onFurther})
    EXPECT_TRUE(actions.contains(ZnDbAssocActionBody::parentAction(bodyOf(center))));
  EXPECT_EQ(Lyx::getCurrentLayoutBTRId(), db_->paperSpaceId());
  EXPECT_TRUE(Lyx::getModelSpaceBTRId(db_.get()) == db_->modelSpaceId() &&
              Lyx::getModelSpaceBTRId(nullptr).isNull());
  const auto onLayer = [&](ZnDbObjectId id) {
    return Lyx::isAnyCenterMarksOnLayer(ZnDbHolder<ZnDbLayerTableRecord>(id).object(), actions);
  };
  EXPECT_TRUE(onLayer(layerOf(mark_)));
  EXPECT_FALSE(onLayer(db_->layerZero()) || Lyx::isAnyCenterMarksOnLayer(nullptr, actions));
  Lyx::getCenterLinesDependOnEnt(circle_, lines);
  EXPECT_TRUE(lines.isEmpty()) << "a mark is none";
}

TEST_F(Navigation, TheHostListsTheMarksBlock) {
  ZnDbSymbolTable* table = nullptr;
  ASSERT_EQ(db_->getSymbolTable(table, ZnDbBlockTableRecord::desc(), ZnDbOpenMode::kForRead), Quorl::eOk);
  ZnDbSymbolTableIterator* made = nullptr;
  ASSERT_EQ(table->newIterator(made), Quorl::eOk);
  const std::unique_ptr<ZnDbSymbolTableIterator> records(made);
  ZnDbObjectId id;
  while (id != blockOf(mark_) && !records->done()) {
    EXPECT_EQ(records->getRecordId(id), Quorl::eOk);
    records->step();
  }
  EXPECT_EQ(id, blockOf(mark_));
  table->close();
  std::vector<ZnString> faults;
  EXPECT_EQ(ZnDbHolder<ZnDbTorviActionBody>(bodyOf(mark_))->auditAssociativeDataOverride(faults, false),
            Quorl::eOk);
  EXPECT_TRUE(faults.empty());
}

TEST_F(Navigation, LinetypesAreLoadedWhereTheFileHasThem) {
  EXPECT_EQ(Lyx::getContinuousLineTypeId(db_.get()), db_->continuousLinetype());
  EXPECT_TRUE(Lyx::getLineTypeByName(nullptr, L"CONTINUOUS").isNull() &&
              Lyx::getCenterLineTypeId(nullptr).isNull());
  put(L"CENTERLTYPE", L"No such linetype");
  EXPECT_EQ(Lyx::ensureCenterLinetypeLoaded(db_.get()), Quorl::eLinetypeNotLoaded);
  EXPECT_TRUE(Lyx::getCenterLineTypeId(db_.get()).isNull());
  put(L"CENTERLTYPE", L"HIDDEN");
  EXPECT_TRUE(Lyx::getLineTypeByName(db_.get(), L"HIDDEN").isNull());
  EXPECT_EQ(Lyx::ensureCenterLinetypeLoaded(nullptr), Quorl::eOk) << "in the working drawing";
  EXPECT_EQ(Lyx::getCenterLineTypeId(db_.get()), Lyx::getLineTypeByName(db_.get(), L"hidden"));
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(Lyx::ensureCenterLinetypeLoaded(nullptr), Quorl::eInvalidInput);
}

TEST_F(Navigation, DependenciesReadOrReadAndWrite) {
  const auto dependents = [](ZnDbObjectId id, bool write) {
    Ids actions;
    ZnDbAssocAction::getActionsDependentOnObject(id, !write, write, actions);
    return actions.length();
  };
  const ZnDbObjectId body = bodyOf(mark_), line = addLineOf("0,0 1,0"), other = addLineOf("0,0 2,0");
  change<ZnDbTorviActionBody>(body, [&](ZnDbTorviActionBody& held) {
    ZnDbObjectId dependency;
    EXPECT_EQ(Lyx::addReadOnlyDependencyToObject(&held, line, dependency), Quorl::eOk);
    EXPECT_EQ(ZnDbHolder<ZnDbAssocDependency>(dependency)->dependentOnObject(), line);
    EXPECT_EQ(Lyx::addReadWriteDependencyToObject(&held, other, dependency), Quorl::eOk);
    EXPECT_EQ(Lyx::addReadOnlyDependencyToObject(&held, {}, dependency), Quorl::eInvalidInput);
  });
  EXPECT_TRUE(dependents(line, false) == 1 && dependents(line, true) == 0);
  EXPECT_TRUE(dependents(other, false) == 1 && dependents(other, true) == 1);
  EXPECT_EQ(Lyx::setCenterDependencyId(body, {}), Quorl::eInvalidInput);
  EXPECT_NE(Lyx::setCenterDependencyId(circle_, plain_), Quorl::eOk);
  EXPECT_EQ(Lyx::setCenterDependencyId(body, plain_), Quorl::eOk);
  EXPECT_EQ(Lyx::getTorviFromActionBodyId(body), plain_);
  for (const ZnDbObjectId id : {circle_, mark_}) { // a circle is no reference
    Lyx::deleteCenterDependenciesOnObject(id);
    EXPECT_EQ(Lyx::getTorviActionBodyId(mark_).isNull(), id == mark_);
  }
  for (const ZnDbObjectId id : {line, other, plain_})
    EXPECT_EQ(dependents(id, false) + dependents(id, true), 0);
}

TEST_F(Navigation, EvaluationOfTheNetworkAndOfOneAction) {
  const ZnDbObjectId first = make({circle_}), second = make({circle_});
  change<ZnDbCircle>(circle_, [](ZnDbCircle& circle) { circle.setRadius(6.0); });
  script.log.clear();
  EXPECT_EQ(Lyx::evaluateAction(ZnDbAssocActionBody::parentAction(bodyOf(first))), Quorl::eOk);
  EXPECT_EQ(script.count("evaluate"), 1);
  EXPECT_NE(statusOf(second), kIsUpToDateAssocStatus);
  evaluate(first);
  EXPECT_EQ(script.count("evaluate"), 3);
  EXPECT_EQ(statusOf(second), kIsUpToDateAssocStatus);
  for (const ZnDbObjectId id : {circle_, ZnDbObjectId()}) {
    EXPECT_EQ(Lyx::explicitlyEvaluateActionBody(id), Quorl::eNullObjectId);
    EXPECT_NE(Lyx::evaluateAction(id), Quorl::eOk);
    Lyx::printCenterDisassociatedMessage(id);
  }
  EXPECT_TRUE(printed_.isEmpty());
  Lyx::printCenterDisassociatedMessage(bodyOf(mark_));
  EXPECT_FALSE(printed_.isEmpty());
}

} // namespace
