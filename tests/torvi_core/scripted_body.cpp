#include "torvi_core/scripted_body.h"

#include <algorithm>

#include "torvi/host/class_registration.h"

using Quorl::ErrorStatus;

TORVI_DEFINE_BODY_CLASS(ScriptedMarkBody, ZnDbCenterMarkActionBody)
TORVI_DEFINE_BODY_CLASS(ScriptedPlainBody, ZnDbTorviActionBody)

Script script;

int Script::count(const std::string& what) const {
  return static_cast<int>(std::count(log.begin(), log.end(), what));
}

ScriptedLayout::ScriptedLayout(ZnDbObjectId centerObject)
    : ZnDbTorviLayout(centerObject) {
  script.log.push_back("layout");
  transform_ = script.transform;
}

namespace {

ErrorStatus generate(ErrorStatus status, Curves& curves, Keys& keys) {
  script.generate(curves);
  for (const std::wstring& key : script.keys) keys.append(key);
  return status;
}

} // namespace

ErrorStatus ScriptedLayout::createEntities(ZnArray<ZnDbEntity*>& entities, Keys& keys) {
  script.log.push_back("create");
  for (const char kind : script.entities) {
    ZnDbEntity* entity = nullptr;
    if (kind == 'l') entity = new ZnDbLine;
    if (kind == 'a') entity = new ZnDbArc;
    entities.append(entity);
  }
  for (const std::wstring& key : script.keys) keys.append(key);
  return script.createStatus;
}

ErrorStatus ScriptedLayout::evaluateGeometry(Curves& curves, Keys& keys) {
  script.log.push_back("evaluate");
  return generate(script.evaluateStatus, curves, keys);
}

ErrorStatus ScriptedLayout::compareGeometry(Curves& curves, Keys& keys) {
  script.log.push_back("compare");
  return generate(script.compareStatus, curves, keys);
}

ErrorStatus ScriptedLayout::adjustEntities(const ZnArray<ZnDbEntity*>&, const Keys&) {
  script.log.push_back("adjust");
  return Quorl::eOk;
}

ErrorStatus ScriptedLayout::createEntitiesForKey(ZnArray<ZnDbEntity*>& entities, const ZnString& key) {
  if (!script.createForKey) return ZnDbTorviLayout::createEntitiesForKey(entities, key);
  script.createForKey(entities);
  return Quorl::eOk;
}

ErrorStatus ScriptedMarkBody::breakAssociativity() {
  script.log.push_back("break");
  return ZnDbTorviActionBody::breakAssociativity();
}

ErrorStatus ScriptedBuilder::subAddInputEdgeToBody(ZnDbTorviActionBody*, const ZnDbEdgeRef& edge) const {
  addedToBody.push_back(edge);
  return hookStatus;
}

void ScriptedTest::SetUp() {
  DrawingTest::SetUp();
  script = Script();
  ScriptedMarkBody::rxInit();
  ScriptedPlainBody::rxInit();
}

void ScriptedTest::TearDown() {
  for (const ZnString& fault : linkFaults(*db_)) ADD_FAILURE() << fault.utf8();
  DrawingTest::TearDown();
}

void ScriptedTest::withdrawClasses() {
  deleteZnRxClass(ScriptedMarkBody::desc());
  deleteZnRxClass(ScriptedPlainBody::desc());
}

ZnDbObjectId ScriptedTest::make(const std::vector<ZnDbObjectId>& inputs, ZnRxClass* bodyClass) {
  ScriptedBuilder builder(db_.get(), bodyClass);
  for (const ZnDbObjectId input : inputs) builder.addInputEdge(edgeOf(input));
  ZnDbObjectId center;
  EXPECT_EQ(builder.createTorvi(center), Quorl::eOk);
  script.log.clear();
  return center;
}

ZnDbObjectId ScriptedTest::addEmptyBlock() {
  ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
  record->setName(L"*U");
  ZnDbHolder<ZnDbBlockTable> table;
  EXPECT_EQ(table.openForWrite(db_->blockTableId()), Quorl::eOk);
  ZnDbObjectId id;
  EXPECT_EQ(table->add(id, record.object()), Quorl::eOk);
  return id;
}

ZnDbObjectId ScriptedTest::addReference(ZnDbObjectId block, const ZnGeMatrix3d& transform,
                                        ZnDbObjectId space) {
  auto* reference = new ZnDbBlockReference({0.0, 0.0, 0.0}, block);
  EXPECT_EQ(reference->setBlockTransform(transform), Quorl::eOk);
  return add(reference, space);
}

std::vector<ZnDbObjectId> ScriptedTest::liveEntities(ZnDbObjectId block) {
  std::vector<ZnDbObjectId> live;
  ZnDbHolder<ZnDbBlockTableRecord> record(block);
  EXPECT_TRUE(record.isOpen());
  for (const ZnDbObjectId id : record->entityIds())
    if (!id.isErased()) live.push_back(id);
  return live;
}
