#include "quorl/db/core/object.h"

#include <algorithm>

#include "quorl/db/core/database.h"
#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/object_access.h"
#include "quorl/db/core/object_reactor.h"
#include "quorl/db/core/slot_table.h"
#include "quorl/db/core/tell_each.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/core/watch_link.h"
#include "quorl/db/table/dictionary.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbObject, ZnGiDrawable)
ZNRX_DEFINE_ABSTRACT(ZnDbObjectReactor, ZnRxObject)

namespace {

// Calls for everyone who watches the slot. A watcher may take its link down meanwhile, and new ones may
// come, so the ring is copied first; most objects have one or two.
template<class Call> void forEachWatcher(const ZnDbSlot* slot, Call&& call) {
  if (!slot->watchers) return;
  constexpr size_t kFew = 16;
  ZnDbObjectId few[kFew];
  std::vector<ZnDbObjectId> many;
  size_t count = 0;
  const ZnDbWatchLink* link = slot->watchers;
  do {
    if (count < kFew)
      few[count] = link->watcher;
    else
      many.push_back(link->watcher);
    ++count;
    link = link->next;
  } while (link != slot->watchers);
  for (size_t i = 0; i < std::min(count, kFew); ++i)
    if (!few[i].isErased()) call(few[i].slot()->object);
  for (const ZnDbObjectId watcher : many)
    if (!watcher.isErased()) call(watcher.slot()->object);
}

} // namespace

ZnDbObject::~ZnDbObject() {
  if (reactors_) zndbTellEach(*reactors_, [this](ZnDbObjectReactor& reactor) { reactor.goodbye(this); });
}

void ZnDbObject::setOwnerId(ZnDbObjectId owner) {
  assertWriteEnabled();
  ownerId_ = owner;
}

bool ZnDbObject::isUndoing() const { return database() && database()->isUndoing(); }

void ZnDbObject::assertReadEnabled() const { QUORL_ASSERT(isReadEnabled()); }

void ZnDbObject::assertWriteEnabled(bool autoUndo, bool recordModified) {
  if (!slot_) return;
  QUORL_ASSERT(isWriteEnabled());
  if (autoUndo) slot_->database->undoRecorder().keepState(this);
  if (!recordModified) return;
  fieldsChanged_ = true;
  if (modified_) return;
  modified_ = true;
  ZnDbObjectAccess::tellOpenedForModify(this);
}

ErrorStatus ZnDbObject::close() {
  if (!slot_) return Quorl::eNotInDatabase;
  if (slot_->writers) {
    revertZnDbObjectFromWrite(this);
    return Quorl::eOk;
  }
  if (!slot_->readers) return Quorl::eNotOpenedYet;
  endZnDbObjectRead(this);
  return Quorl::eOk;
}

ErrorStatus ZnDbObject::upgradeOpen() {
  if (!slot_) return Quorl::eNotInDatabase;
  if (slot_->writers) return Quorl::eWasOpenForWrite;
  if (slot_->readers != 1) return Quorl::eWasOpenForRead;
  if (ZnDbObjectAccess::notLocked(this) != Quorl::eOk) return Quorl::eOnLockedLayer;
  slot_->readers = 0;
  slot_->writers = 1;
  return Quorl::eOk;
}

ErrorStatus ZnDbObject::downgradeOpen() {
  if (!slot_) return Quorl::eNotInDatabase;
  if (slot_->writers != 1) return Quorl::eNotOpenForWrite;
  slot_->readers = 1;
  revertZnDbObjectFromWrite(this);
  return Quorl::eOk;
}

ErrorStatus ZnDbObject::erase(bool erasing) {
  if (!slot_) return Quorl::eNotInDatabase;
  if (erasing == slot_->erased) return erasing ? Quorl::eWasErased : Quorl::eNothingToDo;
  ErrorStatus status = erasing ? Quorl::eOk : judgeReturn();
  if (status != Quorl::eOk) return status;
  const bool fieldsChanged = fieldsChanged_;
  assertWriteEnabled();
  status = subErase(erasing);
  fieldsChanged_ = fieldsChanged;
  if (status != Quorl::eOk) return status;
  ZnDbObjectAccess::markErased(this, erasing);
  eraseToggled_ = true;
  if (!erasing) subBringBack();
  takeExtension(erasing);
  return Quorl::eOk;
}

// An object stands in a drawing only where its owner does.
ErrorStatus ZnDbObject::judgeReturn() const {
  if (!ownerId_.isNull() && ownerId_.isErased()) return Quorl::eInvalidOwner;
  return judgePlace(*database());
}

// The extension dictionary goes with its object, and comes back if it had not gone before.
void ZnDbObject::takeExtension(bool erasing) {
  if (erasing) tookExtension_ = !extensionDictionary_.isErased();
  if (!tookExtension_) return;
  ZnDbHolder<ZnDbObject> extension;
  if (extension.openForWrite(extensionDictionary_, true) == Quorl::eOk) extension->erase(erasing);
}

ErrorStatus ZnDbObject::createExtensionDictionary() {
  if (!slot_) return Quorl::eNotInDatabase;
  if (!extensionDictionary_.isNull() && !extensionDictionary_.isErased()) return Quorl::eDuplicateKey;
  assertWriteEnabled();
  auto* dictionary = new ZnDbDictionary;
  const ErrorStatus status = database()->addObject(dictionary, objectId(), extensionDictionary_);
  if (status == Quorl::eOk) dictionary->close();
  return status;
}

void ZnDbObject::addReactor(ZnDbObjectReactor* reactor) {
  if (!reactors_) reactors_ = std::make_unique<std::vector<ZnDbObjectReactor*>>();
  if (std::find(reactors_->begin(), reactors_->end(), reactor) == reactors_->end())
    reactors_->push_back(reactor);
}

void ZnDbObject::removeReactor(ZnDbObjectReactor* reactor) {
  if (!reactors_) return;
  reactors_->erase(std::remove(reactors_->begin(), reactors_->end(), reactor), reactors_->end());
}

ZnRxObject* ZnDbObject::clone() const {
  auto* copy = static_cast<ZnDbObject*>(isA()->create());
  if (!copy) return nullptr;
  ZnDbMemoryFiler filer(ZnDbFiler::kClone, database());
  bdocOutFields(filer);
  filer.rewind();
  if (copy->bdocInFields(filer) != Quorl::eOk) {
    delete copy;
    return nullptr;
  }
  copy->extensionDictionary_.setNull();
  return copy;
}

ErrorStatus ZnDbObject::deepClone(ZnDbObject* owner, ZnDbObject*& copy, ZnDbIdMapping& mapping,
                                  bool isPrimary) {
  copy = nullptr;
  if (!database()) return Quorl::eNotInDatabase;
  if (!owner || !owner->database()) return Quorl::eInvalidOwner;
  const ErrorStatus status =
      database()->deepCloneObjects(ZnArray<ZnDbObjectId>{objectId()}, owner->objectId(), mapping, isPrimary);
  ZnDbIdPair pair(objectId());
  if (status == Quorl::eOk && mapping.compute(pair)) copy = pair.value().slot()->object;
  return status;
}

template<class Walk> void ZnDbObject::describeAll(Walk& walk) {
  walk.leading({330, 360});
  walk.id(ZnReferenceKind::kSoftPointer, 330, L"owner", ownerId_, {.nullIsWritten = true});
  walk.id(ZnReferenceKind::kHardOwner, 360, L"extension dictionary", extensionDictionary_,
          {ZnDbDictionary::desc()});
}

ZNDB_DEFINE_FILING(ZnDbObject)

bool ZnDbObject::hasSameFields(const ZnDbObject& other) const {
  if (isA() != other.isA()) return false;
  ZnDbMemoryFiler mine(ZnDbFiler::kClone), others(ZnDbFiler::kClone);
  bdocOutFields(mine);
  other.bdocOutFields(others);
  return mine.bytes() == others.bytes();
}

ZnString ZnDbObject::auditLabel() const { return isA()->name() + L" " + handleText(handle()); }

namespace {

// Holds every field against its rule.
class FieldAudit : public ZnDbFieldVisitor {
public:
  FieldAudit(std::vector<ZnString>& faults, const ZnString& label, bool fix)
      : faults_(faults)
      , label_(label)
      , fix_(fix) {}

  using ZnDbFieldVisitor::visit;
  Wish visit(const ZnDbField& field, ZnDbObjectId&) override { return judge(field, L" is missing"); }

protected:
  Wish any(const ZnDbField& field) override { return judge(field, L" is out of range"); }

private:
  Wish judge(const ZnDbField& field, const wchar_t* what) {
    if (field.status == Quorl::eOk) return kKeep;
    faults_.push_back(label_ + (field.entry < 0 ? L": its " : L": a ") + field.name + what);
    return fix_ ? kRepair : kKeep;
  }
  std::vector<ZnString>& faults_;
  ZnString label_;
  bool fix_;
};

} // namespace

void ZnDbObject::audit(std::vector<ZnString>& faults, bool fix) {
  const size_t before = faults.size();
  FieldAudit judge(faults, auditLabel(), false);
  walkFields(judge);
  if (!fix || faults.size() == before) return;
  assertWriteEnabled();
  std::vector<ZnString> toldAlready;
  FieldAudit repair(toldAlready, {}, true);
  walkFields(repair);
}

void ZnDbObjectAccess::tellOpenedForModify(ZnDbObject* object) {
  if (object->isNew_) return;
  if (object->reactors_)
    zndbTellEach(*object->reactors_, [&](ZnDbObjectReactor& reactor) { reactor.openedForModify(object); });
  zndbTellEach(object->database()->reactors(), [&](ZnDbDatabaseReactor& reactor) {
    reactor.objectOpenedForModify(object->database(), object);
  });
}

void ZnDbObjectAccess::tellModified(ZnDbObject* object, bool undone) {
  if (!undone) forEachWatcher(object->slot_, [&](ZnDbObject* watcher) { watcher->watchedModified(object); });
  if (object->reactors_)
    zndbTellEach(*object->reactors_, [&](ZnDbObjectReactor& reactor) {
      undone ? reactor.modifiedUndone(object) : reactor.modified(object);
    });
  zndbTellEach(object->database()->reactors(),
               [&](ZnDbDatabaseReactor& reactor) { reactor.objectModified(object->database(), object); });
}

void ZnDbObjectAccess::tellErased(ZnDbObject* object) {
  const bool erasing = object->slot_->erased;
  if (!object->isUndoing())
    forEachWatcher(object->slot_, [&](ZnDbObject* watcher) { watcher->watchedErased(object, erasing); });
  if (object->reactors_)
    zndbTellEach(*object->reactors_, [&](ZnDbObjectReactor& reactor) { reactor.erased(object, erasing); });
  zndbTellEach(object->database()->reactors(), [&](ZnDbDatabaseReactor& reactor) {
    reactor.objectErased(object->database(), object, erasing);
  });
}

void ZnDbObjectAccess::tellCopied(const ZnDbObject* original, const ZnDbObject* copy) {
  if (original->reactors_)
    zndbTellEach(*original->reactors_, [&](ZnDbObjectReactor& reactor) { reactor.copied(original, copy); });
}

void ZnDbObjectAccess::finishWrite(ZnDbObject* object) {
  object->subClose();
  const bool isNew = std::exchange(object->isNew_, false);
  object->modified_ = false;
  const bool changed = std::exchange(object->fieldsChanged_, false);
  const bool erased = std::exchange(object->eraseToggled_, false);
  if (isNew)
    zndbTellEach(object->database()->reactors(),
                 [&](ZnDbDatabaseReactor& reactor) { reactor.objectAppended(object->database(), object); });
  if (erased) tellErased(object);
  if (changed && !(erased && object->isErased())) tellModified(object, false);
}

void ZnDbObjectAccess::markErased(ZnDbObject* object, bool erased) {
  ZnDbSlot* slot = object->slot_;
  if (slot->erased == erased) return;
  if (erased) object->detachLinks();
  slot->erased = erased;
  slot->database->slots_->count(erased ? -1 : 1);
  if (!erased) object->attachLinks();
}
