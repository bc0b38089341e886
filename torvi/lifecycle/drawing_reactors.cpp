#include "torvi/lifecycle/drawing_reactors.h"

#include <memory>

#include "torvi/centerline/direction_marks.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/drawing/blocks.h"
#include "torvi/host/class_registration.h"
#include "torvi/lifecycle/clone_reactors.h"
#include "torvi/lifecycle/updates.h"

ZnRxClass* ZnDbDatabaseReactor_Torvi::gpDesc = nullptr;

void ZnDbDatabaseReactor_Torvi::rxInit() {
  torviRegisterPlainClass(gpDesc, className(), ZnDbDatabaseReactor::className());
}

// What is undone comes back as it was, with nobody's help.
void ZnDbDatabaseReactor_Torvi::objectModified(ZnDbDatabase* db, const ZnDbObject* object) {
  if (!db || !object || object->isUndoing()) return;
  if (ZnDbViewport::cast(object)) {
    if (object->objectId().isValid() && torvi::recordsViewports)
      torvi::appendOnce(torvi::viewportsToUpdate(), object->objectId());
  } else if (const auto* layer = ZnDbLayerTableRecord::cast(object)) {
    if (!zndbCurrentGlobals().isLayerUpdateStopped) torvi::updateMarksWithLayersLinetype(db, layer);
  }
}

void ZnDbDatabaseReactor_Torvi::objectErased(ZnDbDatabase* db, const ZnDbObject* object, bool erasing) {
  const auto* reference = ZnDbBlockReference::cast(object);
  if (!db || !reference || reference->objectId().isNull() || !erasing || reference->isUndoing()) return;
  if (ZnDbTorviObjectWrapper::isCenterObject(reference->objectId()))
    ZnTorviDeepCloneUtils::markBlockTableRecordToPurge(reference->blockTableRecord());
  ZnRxEventReactor_TorviDeepCloneExplode::referenceErased(reference->objectId(),
                                                          reference->blockTableRecord());
}

void ZnDbDatabaseReactor_Torvi::headerVariableChanged(ZnDbDatabase* db, const ZnString& name, bool success) {
  static const ZnString kLinetypeScale = L"LTSCALE";
  if (db && success && !db->isUndoing() && name.equalsNoCase(kLinetypeScale)) torvi::updateAllCenterMarks(db);
}

namespace {

std::unique_ptr<ZnRxEventReactor_Torvi> drawings;

ZnRxEvent* hostEvents() { return ZnRxEvent::cast(znrxSysRegistry()->at(L"ZnRxEvent")); }

void remove() {
  if (ZnRxEvent* events = hostEvents(); events && drawings) events->removeReactor(drawings.get());
  drawings.reset();
}

} // namespace

void ZnRxEventReactor_Torvi::attach() {
  remove();
  drawings = std::make_unique<ZnRxEventReactor_Torvi>();
  if (ZnDbDatabase* working = zndbHostApplicationServices()->workingDatabase())
    drawings->databaseConstructed(working);
  if (ZnRxEvent* events = hostEvents()) events->addReactor(drawings.get());
}

void ZnRxEventReactor_Torvi::detach() {
  remove();
  torvi::forgetUpdatesOf(nullptr);
  ZnTorviDeepCloneUtils::forgetMarkedBlockTableRecords(nullptr);
}

ZnRxEventReactor_Torvi::~ZnRxEventReactor_Torvi() {
  for (ZnDbDatabase* db : attached_) db->removeReactor(&reactor_);
}

void ZnRxEventReactor_Torvi::drawingFileOpened(ZnDbDatabase* db, const wchar_t* /*file*/) {
  databaseConstructed(db);
  torvi::upgradeOldCenterActions(db);
}

void ZnRxEventReactor_Torvi::firstOpenCompleted(ZnDbDatabase* db) { torvi::upgradeOldCenterActions(db); }

void ZnRxEventReactor_Torvi::databaseConstructed(ZnDbDatabase* db) {
  if (!db) return;
  db->addReactor(&reactor_);
  attached_.insert(db);
}

void ZnRxEventReactor_Torvi::databaseToBeDestroyed(ZnDbDatabase* db) {
  if (!db) return;
  db->removeReactor(&reactor_);
  attached_.erase(db);
  torvi::setLongTransactionActive(db, false);
  torvi::forgetUpdatesOf(db);
  torvi::forgetDirectionMarksOf(*db);
  ZnTorviDeepCloneUtils::forgetMarkedBlockTableRecords(db);
  ZnRxEventReactor_TorviDeepCloneExplode::forget(*db);
}

void ZnRxEventReactor_Torvi::beginSave(ZnDbDatabase* db, const wchar_t* /*file*/) {
  ZnTorviDeepCloneUtils::purgeMarkedBlockTableRecords(db);
}
