// From one part of a center object to another, what counts as one, and the doors for evaluation and
// dependencies.
#include <algorithm>

#include "torvi/core/object_pointer.h"
#include "torvi_core/scripted_body.h"

namespace {

using Lyx = ZnTorviLyxUtils;
using Ids = ZnArray<ZnDbObjectId>;

class Navigation : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    circle_ = addCircle({0.0, 0.0, 0.0}, 5.0);
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
  ZnDbObjectId circle_, mark_, plain_;
};

TEST_F(Navigation, WhatIsACenterObjectAndOfWhichKind) {
  const ZnDbObjectId unknown = make({circle_}, ScriptedPlainBody::desc());
  struct {
    ZnDbObjectId id;
    bool any, isMark;
  } const rows[] = {{mark_, true, true},
                    {plain_, false, false},
                    {circle_, false, false},
                    {unknown, false, false},
                    {{}, false, false}};
  for (const auto& row : rows) {
    for (const ZnDbTorviType type :
         {kCenterMark, kCenterLine, kEdgeExtension, kCenterMarkPattern, kTorviAny}) {
      EXPECT_EQ(Lyx::isCenterObject(row.id, type), row.any) << type;
      EXPECT_EQ(Lyx::isCenterObjectOfType(row.id, type),
                type == kTorviAny ? row.any : row.isMark && type == kCenterMark)
          << type;
      ZnResBufList context(znutBuildList(5003, 7, 5000));
      EXPECT_EQ(Lyx::isCenterObject(row.id, type, context), row.any);
      ASSERT_TRUE(context) << "only a pattern asked as one changes it";
    }
  }
  ZnResBufList context;
  EXPECT_FALSE(Lyx::isCenterObject(static_cast<ZnDbTorviObjectWrapper*>(nullptr), kTorviAny, context));
}

TEST_F(Navigation, FromReferenceToBodyAndBack) {
  const ZnDbObjectId body = bodyOf(mark_);
  EXPECT_EQ(Lyx::getTorviFromActionBodyId(body), mark_);
  EXPECT_EQ(Lyx::getTorviActionBodyId(ZnDbHolder<ZnDbBlockReference>(mark_).object()), body);
  EXPECT_EQ(Lyx::getTorviObjIdFromObj(ZnDbHolder<ZnDbBlockReference>(mark_).object()), mark_);
  for (const ZnDbObjectId id : {plain_, circle_, db_->layerZero(), ZnDbObjectId()})
    EXPECT_TRUE(Lyx::getTorviActionBodyId(id).isNull());
  EXPECT_TRUE(Lyx::getTorviActionBodyId(static_cast<ZnDbBlockReference*>(nullptr)).isNull());
  EXPECT_TRUE(Lyx::getTorviObjIdFromObj(nullptr).isNull());
  const ZnDbBlockReference blockless;
  EXPECT_TRUE(Lyx::getTorviObjIdFromObj(const_cast<ZnDbBlockReference*>(&blockless)).isNull());
  EXPECT_TRUE(Lyx::getTorviFromActionBodyId(circle_).isNull());

  Ids bodies;
  Lyx::getCenterActionBodiesOfBlockRef(mark_, bodies);
  Lyx::getCenterActionBodiesOfBlockRef(mark_, bodies);
  EXPECT_EQ(bodies, Ids{body}) << "each once";
  // One that only reads the reference is found by the wider question.
  const ZnDbObjectId reader = make({mark_}), readersBody = bodyOf(reader);
  Ids readers, ofBlock, narrow;
  Lyx::getAllTorviActionBodiesDependOnBlkRef(mark_, readers);
  Lyx::getAllTorviActionBodiesDependOnBTR(blockOf(mark_), ofBlock);
  Lyx::getCenterActionBodiesOfBlockRef(mark_, narrow);
  EXPECT_TRUE(readers.length() == 2 && readers.contains(body) && readers.contains(readersBody));
  EXPECT_EQ(ofBlock, readers);
  EXPECT_EQ(narrow, Ids{body});
  erase(mark_);
  narrow.removeAll();
  Lyx::getCenterActionBodiesOfBlockRef(mark_, narrow);
  EXPECT_EQ(narrow, Ids{body}) << "an erased one too";
  EXPECT_EQ(Lyx::getTorviActionBodyId(mark_), body);
}

TEST_F(Navigation, LinesOfNestedBlocksAreFoundAndBroughtBack) {
  const ZnDbObjectId center = makeNested(), nested = nestedOf(center);
  add(new ZnDbCircle, blockOf(center));
  Ids all, found;
  EXPECT_EQ(Lyx::getEntitesIdsFromBlkRef(center, all, false), Quorl::eOk);
  ASSERT_EQ(all.length(), 3) << "lines and arcs alone";
  EXPECT_EQ(Lyx::getEntitesIdsFromBlkRef(center, all, false), Quorl::eOk);
  EXPECT_EQ(all.length(), 3) << "each once";
  erase(all[0]);
  erase(nested);
  EXPECT_EQ(Lyx::getEntitesIdsFromBlkRef(center, found, false), Quorl::eOk);
  EXPECT_TRUE(found.isEmpty());
  EXPECT_EQ(Lyx::getEntitesIdsFromBlkRef(center, found, true), Quorl::eOk);
  EXPECT_EQ(found, all);
  EXPECT_FALSE(all[0].isErased() || nested.isErased());
  erase(blockOf(nested));
  found.removeAll();
  EXPECT_EQ(Lyx::getEntitesIdsFromBlkRef(center, found, true), Quorl::eOk);
  EXPECT_EQ(found, all) << "a nested block too";
  for (const ZnDbObjectId id : {circle_, ZnDbObjectId()})
    EXPECT_NE(Lyx::getEntitesIdsFromBlkRef(id, found, false), Quorl::eOk);
}

TEST_F(Navigation, CurvesOfCenterObjectsAtAnyDepth) {
  const ZnDbObjectId center = makeNested(), nested = nestedOf(center);
  const ZnDbObjectId twice = addEmptyBlock(), inTwice = add(new ZnDbLine, twice);
  addReference(twice);
  addReference(twice);
  const ZnDbObjectId once = addEmptyBlock(), inOnce = add(new ZnDbLine, once);
  addReference(once);
  const ZnDbObjectId unused = addEmptyBlock(), inUnused = add(new ZnDbLine, unused);
  struct {
    const char* what;
    ZnDbObjectId curve, owner;
  } const rows[] = {{"in its block", liveEntities(blockOf(center))[0], center},
                    {"nested", liveEntities(blockOf(nested))[1], center},
                    {"in the space", circle_, {}},
                    {"in a plain block", inOnce, {}},
                    {"in a block shown twice", inTwice, {}},
                    {"in a block not shown", inUnused, {}}};
  for (const auto& row : rows) {
    ZnDbObjectId id;
    ZnDbTorviType type = kTorviNone;
    const bool found = Lyx::isCenterObjectCurve(ZnDbHolder<ZnDbCurve>(row.curve).object(), id, type);
    EXPECT_EQ(found, !row.owner.isNull()) << row.what;
    EXPECT_EQ(id, row.owner) << row.what;
    EXPECT_EQ(type, found ? kCenterMark : kTorviNone) << row.what;
  }
  ZnDbObjectId id;
  ZnDbTorviType type = kTorviNone;
  const ZnDbLine homeless;
  EXPECT_FALSE(Lyx::isCenterObjectCurve(nullptr, id, type) || Lyx::isCenterObjectCurve(&homeless, id, type));
  // A second reference takes the center object's curves away from it.
  const ZnDbObjectId second = addReference(blockOf(center));
  EXPECT_FALSE(
      Lyx::isCenterObjectCurve(ZnDbHolder<ZnDbCurve>(liveEntities(blockOf(center))[0]).object(), id, type));
  erase(second);
}

TEST_F(Navigation, FromABlockToTheCenterObject) {
  const ZnDbObjectId center = makeNested(), nested = nestedOf(center);
  const ZnDbObjectId plainBlock = blockOf(plain_);
  struct {
    const char* what;
    ZnDbObjectId block, found, sub;
  } const rows[] = {{"own", blockOf(center), center, {}},
                    {"nested", blockOf(nested), center, nested},
                    {"plain", plainBlock, {}, {}},
                    {"space", db_->modelSpaceId(), {}, {}}};
  for (const auto& row : rows) {
    ZnDbObjectId sub = circle_;
    ZnDbHolder<ZnDbBlockTableRecord> block(row.block);
    EXPECT_EQ(Lyx::getTorviObjIdFromBlockTableRecord(*block, sub), row.found) << row.what;
    EXPECT_EQ(sub, row.sub) << row.what;
  }
  Ids ids{circle_};
  const std::vector<ZnDbObjectId> held = liveEntities(blockOf(center));
  erase(held[0]);
  Lyx::getTorviSubEntIdsFromBlockTableRecord(ids, *ZnDbHolder<ZnDbBlockTableRecord>(blockOf(center)));
  ASSERT_EQ(held.size(), 2u);
  EXPECT_EQ(ids, (Ids{circle_, held[1]}));
  Lyx::uneraseObject(held[0]);
  Lyx::uneraseObject(held[0]);
  Lyx::uneraseObject(ZnDbObjectId());
  EXPECT_FALSE(held[0].isErased());
}

TEST_F(Navigation, ActionsOfAllSpaces) {
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  const ZnDbObjectId onPaper = make({add(new ZnDbCircle, db_->paperSpaceId())});
  Ids actions{circle_};
  for (int again = 0; again < 2; ++again) Lyx::getAllCenterActionIds(db_.get(), actions);
  ASSERT_EQ(actions.length(), 3) << "each once, behind what was there";
  for (const ZnDbObjectId center : {mark_, onPaper})
    EXPECT_TRUE(actions.contains(ZnDbAssocActionBody::parentAction(bodyOf(center))));
  Lyx::getAllCenterActionIds(nullptr, actions);
  EXPECT_EQ(actions.length(), 3);

  EXPECT_EQ(Lyx::getCurrentLayoutBTRId(), db_->paperSpaceId());
  EXPECT_EQ(Lyx::getModelSpaceBTRId(db_.get()), db_->modelSpaceId());
  EXPECT_TRUE(Lyx::getModelSpaceBTRId(nullptr).isNull());
  const ZnDbObjectId layer = ZnDbHolder<ZnDbEntity>(mark_)->layerId();
  const auto onLayer = [&](ZnDbObjectId id) {
    return Lyx::isAnyCenterMarksOnLayer(ZnDbHolder<ZnDbLayerTableRecord>(id).object(), actions);
  };
  EXPECT_TRUE(onLayer(layer));
  EXPECT_FALSE(onLayer(db_->layerZero()) || Lyx::isAnyCenterMarksOnLayer(nullptr, actions));
  Ids lines;
  Lyx::getCenterLinesDependOnEnt(circle_, lines);
  EXPECT_TRUE(lines.isEmpty()) << "a mark is none";
}

TEST_F(Navigation, MirroredReferences) {
  EXPECT_FALSE(Lyx::isCenterMirrored(mark_) || Lyx::isCenterMirrored(circle_) || Lyx::isCenterMirrored({}));
  change<ZnDbBlockReference>(plain_, [](ZnDbBlockReference& reference) {
    reference.setBlockTransform(ZnGeMatrix3d::mirroring(ZnGePlane({}, {1.0, 1.0, 0.0})));
  });
  EXPECT_TRUE(Lyx::isCenterMirrored(plain_));
}

TEST_F(Navigation, LinetypesAreLoadedWhereTheFileHasThem) {
  EXPECT_EQ(Lyx::getContinuousLineTypeId(db_.get()), db_->continuousLinetype());
  EXPECT_TRUE(Lyx::getLineTypeByName(nullptr, L"CONTINUOUS").isNull());
  EXPECT_TRUE(Lyx::getCenterLineTypeId(nullptr).isNull());
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
  const auto dependents = [](ZnDbObjectId id, bool read, bool write) {
    Ids actions;
    ZnDbAssocAction::getActionsDependentOnObject(id, read, write, actions);
    return actions.length();
  };
  const ZnDbObjectId body = bodyOf(mark_), line = addLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
  const ZnDbObjectId other = addLine({0.0, 0.0, 0.0}, {2.0, 0.0, 0.0});
  change<ZnDbTorviActionBody>(body, [&](ZnDbTorviActionBody& held) {
    ZnDbObjectId dependency;
    EXPECT_EQ(Lyx::addReadOnlyDependencyToObject(&held, line, dependency), Quorl::eOk);
    EXPECT_EQ(ZnDbHolder<ZnDbAssocDependency>(dependency)->dependentOnObject(), line);
    EXPECT_EQ(Lyx::addReadWriteDependencyToObject(&held, other, dependency), Quorl::eOk);
    EXPECT_EQ(Lyx::addReadOnlyDependencyToObject(&held, {}, dependency), Quorl::eInvalidInput);
  });
  EXPECT_EQ(dependents(line, true, false), 1);
  EXPECT_EQ(dependents(line, false, true), 0);
  EXPECT_EQ(dependents(other, true, false), 1);
  EXPECT_EQ(dependents(other, false, true), 1);

  EXPECT_EQ(Lyx::setCenterDependencyId(body, {}), Quorl::eInvalidInput);
  EXPECT_NE(Lyx::setCenterDependencyId(circle_, plain_), Quorl::eOk);
  EXPECT_EQ(Lyx::getTorviFromActionBodyId(body), mark_);
  EXPECT_EQ(Lyx::setCenterDependencyId(body, plain_), Quorl::eOk);
  EXPECT_EQ(Lyx::getTorviFromActionBodyId(body), plain_);

  Lyx::deleteCenterDependenciesOnObject(circle_);
  EXPECT_EQ(Lyx::getTorviActionBodyId(mark_), body) << "a circle is no reference";
  Lyx::deleteCenterDependenciesOnObject(mark_);
  EXPECT_TRUE(Lyx::getTorviActionBodyId(mark_).isNull());
  for (const ZnDbObjectId id : {line, other, plain_}) EXPECT_EQ(dependents(id, true, true), 0);
}

TEST_F(Navigation, EvaluationOfTheNetworkAndOfOneAction) {
  const ZnDbObjectId first = make({circle_}), second = make({circle_});
  change<ZnDbCircle>(circle_, [](ZnDbCircle& circle) { circle.setRadius(6.0); });
  script.log.clear();
  EXPECT_EQ(Lyx::evaluateAction(ZnDbAssocActionBody::parentAction(bodyOf(first))), Quorl::eOk);
  EXPECT_EQ(script.count("evaluate"), 1);
  EXPECT_NE(statusOf(second), kIsUpToDateAssocStatus);
  EXPECT_EQ(Lyx::explicitlyEvaluateActionBody(bodyOf(first)), Quorl::eOk);
  EXPECT_EQ(script.count("evaluate"), 3);
  EXPECT_EQ(statusOf(second), kIsUpToDateAssocStatus);
  script.evaluateStatus = Quorl::eInvalidInput;
  EXPECT_EQ(Lyx::explicitlyEvaluateActionBody(bodyOf(first)), Quorl::eOk);
  EXPECT_EQ(statusOf(first), kFailedToEvaluateAssocStatus);
  EXPECT_EQ(Lyx::evaluateAction(ZnDbAssocActionBody::parentAction(bodyOf(second))), Quorl::eOk);
  EXPECT_EQ(statusOf(second), kFailedToEvaluateAssocStatus);
  for (const ZnDbObjectId id : {circle_, ZnDbObjectId()}) {
    EXPECT_EQ(Lyx::explicitlyEvaluateActionBody(id), Quorl::eNullObjectId);
    EXPECT_NE(Lyx::evaluateAction(id), Quorl::eOk);
  }
}

} // namespace
