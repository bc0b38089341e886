#include "torvi_core/scripted_body.h"

#include "torvi/host/class_registration.h"

using Quorl::ErrorStatus;

TORVI_DEFINE_BODY_CLASS(ScriptedMarkBody, ZnDbCenterMarkActionBody)
TORVI_DEFINE_BODY_CLASS(ScriptedPlainBody, ZnDbTorviActionBody)

Script script;

ScriptedLayout::ScriptedLayout(ZnDbObjectId centerObject)
    : ZnDbTorviLayout(centerObject) {
  script.log.push_back("layout");
  transform_ = script.transform;
}

namespace {

ErrorStatus generate(const char* what, ErrorStatus status, Curves& curves, Keys& keys) {
  script.log.push_back(what);
  script.generate(curves);
  for (const std::wstring& key : script.keys) keys.append(key);
  return status;
}

} // namespace

ErrorStatus ScriptedLayout::createEntities(ZnArray<ZnDbEntity*>& entities, Keys& keys) {
  for (const char kind : script.entities) {
    ZnDbEntity* entity = nullptr;
    if (kind == 'l') entity = new ZnDbLine;
    if (kind == 'a') entity = new ZnDbArc;
    entities.append(entity);
  }
  for (const std::wstring& key : script.keys) keys.append(key);
  return Quorl::eOk;
}

ErrorStatus ScriptedLayout::evaluateGeometry(Curves& curves, Keys& keys) {
  return generate("evaluate", script.evaluateStatus, curves, keys);
}

ErrorStatus ScriptedLayout::compareGeometry(Curves& curves, Keys& keys) {
  return generate("compare", script.compareStatus, curves, keys);
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

void ScriptedTest::SetUp() {
  DrawingTest::SetUp();
  script = Script();
  ScriptedMarkBody::rxInit();
  ScriptedPlainBody::rxInit();
  circle_ = addCircle({0.0, 0.0, 0.0}, 5.0);
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
