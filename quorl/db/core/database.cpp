#include "quorl/db/core/database.h"

#include <algorithm>

#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/database_version.h"
#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/core/object_access.h"
#include "quorl/db/core/slot_table.h"
#include "quorl/db/core/tell_each.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

using Quorl::ErrorStatus;

ZnRxClass* ZnDbDatabase::gpDesc = nullptr;
void ZnDbDatabase::rxInit() {
  if (!gpDesc) gpDesc = newZnRxClass(className(), L"ZnRxObject");
}
static const bool registeredDatabase = (ZnDbDatabase::rxInit(), true);

ZnDbDatabase::ZnDbDatabase(bool buildDefaults)
    : slots_(std::make_unique<ZnDbSlotTable>())
    , savedByVersion_(Quorl::kFileVersion)
    , savedByMaintenanceVersion_(Quorl::kFileMaintenanceVersion)
    , undo_(std::make_unique<ZnDbUndoRecorder>(*this))
    , transactions_(std::make_unique<ZnDbTransactionManager>(*this)) {
  if (buildDefaults) {
    zndbBuildDefaults(*this);
    undo_->clear();
  }
  ZnRxEvent::instance().tell([&](ZnRxEventReactor& reactor) { reactor.databaseConstructed(this); });
}

ZnDbDatabase::~ZnDbDatabase() {
  ZnRxEvent::instance().tell([&](ZnRxEventReactor& reactor) { reactor.databaseToBeDestroyed(this); });
  zndbTellEach(reactors_, [this](ZnDbDatabaseReactor& reactor) { reactor.goodbye(this); });
  ZnDbHostApplicationServices* services = zndbHostApplicationServices();
  if (services->workingDatabase() == this) services->setWorkingDatabase(nullptr);
  undo_->clear();
  // Links first: an object may not take down its links on one that is gone already.
  slots_->forEach([](ZnDbSlot& slot) { slot.object->detachLinks(); });
  slots_->forEach([](ZnDbSlot& slot) { delete std::exchange(slot.object, nullptr); });
}

ErrorStatus ZnDbDatabase::addObject(ZnDbObject* object, ZnDbObjectId owner, ZnDbObjectId& id) {
  if (!object) return Quorl::eNullObjectPointer;
  if (object->database()) return Quorl::eAlreadyInDatabase;
  if (object->isA()->isAbstract()) return Quorl::eWrongObjectClass;
  ZnDbSlot* slot = slots_->make(this);
  slot->object = object;
  slot->objectClass = object->isA();
  slot->writers = 1;
  ZnDbObjectAccess::setSlot(object, slot);
  ZnDbObjectAccess::setOwner(object, owner);
  ZnDbObjectAccess::setNew(object);
  slots_->count(1);
  undo_->keepCreation(object);
  id = ZnDbObjectId(slot);
  return Quorl::eOk;
}

ErrorStatus ZnDbDatabase::getZnDbObjectId(ZnDbObjectId& id, bool create, ZnDbHandle handle,
                                          std::uint32_t /*extra*/) {
  id.setNull();
  if (handle.isNull()) return Quorl::eNullObjectId;
  ZnDbSlot* slot = slots_->find(handle.value, create);
  if (!slot || (!slot->object && !create)) return Quorl::eKeyNotFound;
  if (!slot->database) slots_->settle(slot, this, handle.value);
  id = ZnDbObjectId(slot);
  return Quorl::eOk;
}

ErrorStatus ZnDbDatabase::installObject(ZnDbObjectId id, ZnDbObject* object) {
  if (!id.slot() || id.database() != this || !object) return Quorl::eInvalidInput;
  if (id.isValid()) return Quorl::eDuplicateKey;
  id.slot()->object = object;
  id.slot()->objectClass = object->isA();
  ZnDbObjectAccess::setSlot(object, id.slot());
  slots_->count(1);
  return Quorl::eOk;
}

ZnDbObject* ZnDbDatabase::replaceObject(ZnDbObjectId id, ZnDbObject* object) {
  ZnDbSlot* slot = id.slot();
  ZnDbObject* before = slot->object;
  if (!slot->erased) before->detachLinks();
  ZnDbObjectAccess::setSlot(before, nullptr);
  slot->object = object;
  slot->objectClass = object->isA();
  ZnDbObjectAccess::setSlot(object, slot);
  return before;
}

std::vector<ZnDbObjectId> ZnDbDatabase::allObjectIds() const {
  std::vector<ZnDbObjectId> ids;
  ids.reserve(slots_->liveCount());
  slots_->forEach([&](ZnDbSlot& slot) { ids.push_back(ZnDbObjectId(&slot)); });
  return ids;
}

size_t ZnDbDatabase::objectCount() const { return slots_->liveCount(); }

ZnDbHandle ZnDbDatabase::nextHandle() const { return ZnDbHandle(slots_->next()); }

void ZnDbDatabase::setNextHandle(ZnDbHandle next) { slots_->setNext(next.value); }

ErrorStatus ZnDbDatabase::getSymbolTable(ZnDbSymbolTable*& table, const ZnRxClass* recordClass,
                                         ZnDbOpenMode mode) {
  table = nullptr;
  for (const ZnDbObjectId id : {ids_.blockTable, ids_.layerTable, ids_.linetypeTable, ids_.dimStyleTable}) {
    if (!id.isValid()) continue;
    const auto* candidate = static_cast<const ZnDbSymbolTable*>(id.slot()->object);
    if (candidate->recordClass() == recordClass) return zndbOpenObject(table, id, mode);
  }
  return Quorl::eKeyNotFound;
}

ZnDbObjectId ZnDbDatabase::getLayoutDictionary() const {
  ZnDbObjectId id;
  ZnDbHolder<ZnDbDictionary> named(ids_.namedObjects);
  if (named.isOpen()) named->getAt(L"QUORL_LAYOUT", id);
  return id;
}

bool ZnDbDatabase::isUndoing() const { return undo_->isUndoing(); }

void ZnDbDatabase::addReactor(ZnDbDatabaseReactor* reactor) {
  if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end()) reactors_.push_back(reactor);
}

void ZnDbDatabase::removeReactor(ZnDbDatabaseReactor* reactor) {
  reactors_.erase(std::remove(reactors_.begin(), reactors_.end(), reactor), reactors_.end());
}

void ZnDbDatabase::setOriginalFileSavedBy(int version, int maintenance) {
  savedByVersion_ = version;
  savedByMaintenanceVersion_ = maintenance;
}

std::vector<ZnString> ZnDbDatabase::audit(bool fix) {
  std::vector<ZnString> faults;
  for (const ZnDbObjectId id : allObjectIds()) {
    if (id.isErased()) continue;
    if (!fix) {
      id.slot()->object->audit(faults, false);
      continue;
    }
    ZnDbHolder<ZnDbObject> object;
    if (object.openForWrite(id, false, true) == Quorl::eOk) object->audit(faults, true);
  }
  return faults;
}
