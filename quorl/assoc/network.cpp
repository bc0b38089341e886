#include "quorl/assoc/network.h"

#include "quorl/assoc/manager.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/field_io.h"
#include "quorl/db/table/dictionary.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocNetwork, ZnDbAssocAction, L"ASSOCNETWORK")

namespace {

constexpr std::int16_t kVersion = 1;
constexpr int kParentCode = 330, kNetworkCode = 331, kMemberCode = 360;

ZnString entryName(const ZnString& key) {
  static const ZnString plain(L"QUORL_ASSOCNETWORK");
  return key.isEmpty() ? plain : plain + L"_" + key.view();
}

ZnDbObjectId networkAt(ZnDbObjectId dictionaryId, const ZnString& name) {
  ZnDbObjectId id;
  const ZnDbHolder<ZnDbDictionary> dictionary(dictionaryId);
  if (dictionary.isOpen()) dictionary->getAt(name, id);
  return id.isDerivedFrom(ZnDbAssocNetwork::desc()) ? id : ZnDbObjectId();
}

ZnDbObjectId makeNetwork(ZnDbObjectId dictionaryId, const ZnString& name) {
  ZnDbHolder<ZnDbDictionary> dictionary;
  ZnDbObjectId id;
  if (dictionary.openForWrite(dictionaryId) != Quorl::eOk) return id;
  auto* network = new ZnDbAssocNetwork;
  if (dictionary->setAt(name, network, id) == Quorl::eOk)
    network->close();
  else
    delete network;
  return id;
}

// The extension dictionary of an object, made where missing; null where that can't be.
ZnDbObjectId extensionOf(ZnDbObjectId ownerId, bool createIfMissing) {
  ZnDbHolder<ZnDbObject> owner(ownerId);
  if (!owner.isOpen()) return {};
  const ZnDbObjectId standing = owner->extensionDictionary();
  if (!standing.isErased() || !createIfMissing) return standing;
  if (owner.upgrade(true) != Quorl::eOk || owner->createExtensionDictionary() != Quorl::eOk) return {};
  return owner->extensionDictionary();
}

} // namespace

ZnDbObjectId ZnDbAssocNetwork::getInstanceFromObject(ZnDbObjectId owner, bool createIfMissing,
                                                     bool addToTopLevel, const ZnString& key) {
  const ZnDbObjectId dictionary = extensionOf(owner, createIfMissing);
  if (dictionary.isErased()) return {};
  const ZnString name = entryName(key);
  const ZnDbObjectId standing = networkAt(dictionary, name);
  if (!standing.isNull() || !createIfMissing) return standing;
  const ZnDbObjectId id = makeNetwork(dictionary, name);
  if (id.isNull() || !addToTopLevel) return id;
  const ZnDbObjectId topId = getInstanceFromDatabase(owner.database(), true);
  if (topId.isNull()) return id;
  static_cast<ZnDbAssocNetwork*>(topId.slot()->object)->moveActionHere(id);
  return id;
}

ZnDbObjectId ZnDbAssocNetwork::getInstanceFromDatabase(ZnDbDatabase* database, bool createIfMissing,
                                                       const ZnString& key) {
  if (!database) return {};
  const ZnDbObjectId dictionary = database->namedObjectsDictionaryId();
  const ZnString name = entryName(key);
  const ZnDbObjectId standing = networkAt(dictionary, name);
  return standing.isNull() && createIfMissing ? makeNetwork(dictionary, name) : standing;
}

ZnDbObjectId ZnDbAssocNetwork::owningNetworkId() const { return parentNetworkId_; }

bool ZnDbAssocNetwork::owns(ZnDbObjectId id) const {
  return id.isValid() && id.slot()->object->ownerId() == objectId();
}

bool ZnDbAssocNetwork::holds(const ZnDbAssocAction* action) const {
  if (placesAreStale_) compact();
  const auto place = static_cast<int>(action->placeInNetwork_);
  return place < actions_.length() && actions_[place] == action->objectId();
}

void ZnDbAssocNetwork::enter(ZnDbAssocAction* action) {
  if (holds(action)) return;
  action->placeInNetwork_ = static_cast<size_t>(actions_.append(action->objectId()));
}

void ZnDbAssocNetwork::compact() const {
  int kept = 0;
  for (int i = 0; i < actions_.length(); ++i) {
    const ZnDbObjectId id = actions_[i];
    if (id.isNull()) continue;
    if (auto* action = id.isValid() ? ZnDbAssocAction::cast(id.slot()->object) : nullptr)
      action->placeInNetwork_ = static_cast<size_t>(kept);
    actions_[kept++] = id;
  }
  actions_.setLogicalLength(kept);
  holes_ = 0;
  placesAreStale_ = false;
}

const ZnArray<ZnDbObjectId>& ZnDbAssocNetwork::getActions() const {
  if (holes_ > 0 || placesAreStale_) compact();
  return actions_;
}

ErrorStatus ZnDbAssocNetwork::addAction(ZnDbAssocAction* action, ZnDbObjectId& id) {
  id.setNull();
  if (!action) return Quorl::eInvalidInput;
  if (!database()) return Quorl::eNotInDatabase;
  if (action->database()) {
    id = action->objectId();
    return moveActionHere(id);
  }
  if (const ErrorStatus status = database()->addObject(action, objectId(), id); status != Quorl::eOk)
    return status;
  enter(action);
  action->attachLinks();
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocNetwork::moveActionHere(ZnDbObjectId actionId) {
  if (actionId.isErased() || actionId.database() != database() ||
      !actionId.isDerivedFrom(ZnDbAssocAction::desc()))
    return Quorl::eInvalidInput;
  ZnDbHolder<ZnDbAssocAction> action;
  if (const ErrorStatus status = action.openForWrite(actionId); status != Quorl::eOk) return status;
  if (ZnDbAssocNetwork* before = action->owningNetwork()) before->memberRemoved(actionId);
  // A network stays in the dictionary of its object, which owns it.
  if (auto* network = ZnDbAssocNetwork::cast(action.object())) {
    network->assertWriteEnabled();
    network->parentNetworkId_ = objectId();
  } else {
    action->setOwnerId(objectId());
  }
  enter(action.object());
  action->attachLinks();
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocNetwork::removeAction(ZnDbObjectId actionId, bool alsoErase) {
  if (!actionId.isValid() || !actionId.isDerivedFrom(ZnDbAssocAction::desc())) return Quorl::eInvalidInput;
  if (!holds(static_cast<const ZnDbAssocAction*>(actionId.slot()->object))) return Quorl::eInvalidOwner;
  ZnDbHolder<ZnDbAssocAction> action;
  if (const ErrorStatus status = action.openForWrite(actionId, true); status != Quorl::eOk) return status;
  if (alsoErase) return action->erase(true);
  memberRemoved(actionId);
  if (auto* network = ZnDbAssocNetwork::cast(action.object())) {
    network->assertWriteEnabled();
    network->parentNetworkId_.setNull();
  } else {
    action->setOwnerId(ZnDbObjectId());
  }
  return Quorl::eOk;
}

void ZnDbAssocNetwork::memberAdded(ZnDbObjectId id) {
  if (!id.isValid() || !id.isDerivedFrom(ZnDbAssocAction::desc())) return;
  enter(static_cast<ZnDbAssocAction*>(id.slot()->object));
}

void ZnDbAssocNetwork::memberRemoved(ZnDbObjectId id) {
  if (!id.isValid() || !id.isDerivedFrom(ZnDbAssocAction::desc())) return;
  auto* action = static_cast<ZnDbAssocAction*>(id.slot()->object);
  if (!holds(action)) return;
  actions_[static_cast<int>(action->placeInNetwork_)].setNull();
  ++holes_;
}

void ZnDbAssocNetwork::takeMarked(std::vector<ZnDbAssocAction*>& marked) {
  std::vector<ZnDbObjectId> now;
  now.swap(marked_);
  for (const ZnDbObjectId id : now) {
    if (!id.isValid() || !id.isDerivedFrom(ZnDbAssocAction::desc())) continue;
    auto* action = static_cast<ZnDbAssocAction*>(id.slot()->object);
    action->queued_ = false;
    if (id.isErased()) continue;
    if (auto* network = ZnDbAssocNetwork::cast(action))
      network->takeMarked(marked);
    else if (zndbIsToEvaluate(action->status()) && !action->isActionBodyAProxy())
      marked.push_back(action);
  }
}

ErrorStatus ZnDbAssocNetwork::setStatus(ZnDbAssocStatus status, bool notifyOwning, bool setInOwnedActions) {
  if (setInOwnedActions) {
    for (const ZnDbObjectId id : getActions())
      if (!id.isErased())
        static_cast<ZnDbAssocAction*>(id.slot()->object)->setStatus(status, notifyOwning, true);
  }
  return ZnDbAssocAction::setStatus(status, notifyOwning, false);
}

void ZnDbAssocNetwork::subEvaluate(ZnDbAssocEvaluationCallback* callback) {
  ZnDbAssocManager::evaluateNetwork(this, callback);
}

ErrorStatus ZnDbAssocNetwork::subErase(bool erasing) {
  if (const ErrorStatus status = ZnDbAssocAction::subErase(erasing); status != Quorl::eOk) return status;
  if (!erasing) return Quorl::eOk;
  for (const ZnDbObjectId id : getActions()) {
    ZnDbHolder<ZnDbAssocAction> action;
    if (action.openForWrite(id) == Quorl::eOk && owns(id)) action->erase(true);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocNetwork::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbAssocAction::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writeSoftPointerId(parentNetworkId_);
  // A member's own record undoes its coming and going.
  if (filer.kind() == ZnDbFiler::kUndo) return filer.status();
  std::int32_t live = 0;
  for (const ZnDbObjectId id : getActions()) live += id.isErased() ? 0 : 1;
  filer.writeInt32(live);
  for (const ZnDbObjectId id : actions_) {
    if (id.isErased()) continue;
    const bool owned = owns(id);
    filer.writeBool(owned);
    owned ? filer.writeHardOwnershipId(id) : filer.writeSoftPointerId(id);
  }
  return filer.status();
}

ErrorStatus ZnDbAssocNetwork::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbAssocAction::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  parentNetworkId_ = filer.readSoftPointerId();
  if (filer.kind() == ZnDbFiler::kUndo) return filer.status();
  actions_.removeAll();
  placesAreStale_ = true;
  const int count = filer.readCount();
  for (int i = 0; i < count && filer.status() == Quorl::eOk; ++i) {
    const ZnDbObjectId id = filer.readBool() ? filer.readHardOwnershipId() : filer.readSoftPointerId();
    if (!id.isNull()) actions_.append(id);
  }
  return filer.status();
}

ErrorStatus ZnDbAssocNetwork::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbAssocAction::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  if (!parentNetworkId_.isNull()) filer.writeId(kParentCode, parentNetworkId_);
  for (const ZnDbObjectId id : getActions())
    if (!id.isErased()) filer.writeId(owns(id) ? kMemberCode : kNetworkCode, id);
  return filer.status();
}

ErrorStatus ZnDbAssocNetwork::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbAssocAction::tdocInFields(filer); status != Quorl::eOk) return status;
  actions_.removeAll();
  placesAreStale_ = true;
  return zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == kParentCode) parentNetworkId_ = item.id;
    if (item.code == kMemberCode || item.code == kNetworkCode) actions_.append(item.id);
  });
}

void ZnDbAssocNetwork::loaded() {
  // A copied space brings a network that the top level one has not heard of.
  if (ZnDbAssocNetwork* parent = owningNetwork()) parent->enter(this);
  ZnDbAssocAction::loaded();
}

void ZnDbAssocNetwork::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbAssocAction::audit(faults, fix);
  for (int i = getActions().length(); i-- > 0;) {
    const ZnDbObjectId id = actions_[i];
    const auto* member = id.isValid() ? ZnDbAssocAction::cast(id.slot()->object) : nullptr;
    if (member && (id.isErased() || member->owningNetwork() == this)) continue;
    faults.push_back(L"network " + handleText(handle()) + L": entry " + handleText(id.handle()) +
                     L" is no member");
    if (!fix) continue;
    actions_.removeAt(i);
    placesAreStale_ = true;
  }
}
