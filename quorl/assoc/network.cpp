#include "quorl/assoc/network.h"

#include "quorl/assoc/manager.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/table/dictionary.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocNetwork, ZnDbAssocAction, L"ASSOCNETWORK")

namespace {

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
    // An erased network too: its actions must not count as listed when it comes back.
    if (auto* network = ZnDbAssocNetwork::cast(action))
      network->takeMarked(marked);
    else if (!id.isErased() && zndbIsToEvaluate(action->status()) && !action->isActionBodyAProxy())
      marked.push_back(action);
  }
}

ErrorStatus ZnDbAssocNetwork::setStatus(ZnDbAssocStatus status, bool notifyOwning, bool setInOwnedActions) {
  if (setInOwnedActions) {
    for (const ZnDbObjectId id : getActions())
      if (auto* action = id.isErased() ? nullptr : ZnDbAssocAction::cast(id.slot()->object))
        action->setStatus(status, notifyOwning, true);
  }
  return ZnDbAssocAction::setStatus(status, notifyOwning, false);
}

void ZnDbAssocNetwork::subEvaluate(ZnDbAssocEvaluationCallback* callback) {
  ZnDbAssocManager::evaluateNetwork(this, callback);
}

ErrorStatus ZnDbAssocNetwork::subErase(bool erasing) {
  if (!erasing) return Quorl::eOk;
  std::vector<ZnDbObjectId> owned;
  for (const ZnDbObjectId id : getActions())
    if (owns(id))
      owned.push_back(id);
    else if (!id.isErased())
      return Quorl::eInUse; // nothing would evaluate what stands in that network
  if (const ErrorStatus status = ZnDbAssocAction::subErase(true); status != Quorl::eOk) return status;
  erasedTogether_.erase(owned);
  return Quorl::eOk;
}

void ZnDbAssocNetwork::subBringBack() {
  ZnDbAssocAction::subBringBack();
  erasedTogether_.bringBack();
}

// A member's own record undoes its coming and going.
template<class Walk> void ZnDbAssocNetwork::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.id(ZnReferenceKind::kSoftPointer, 330, L"parent network", parentNetworkId_);
  if (walk.isForUndo()) return;
  if (!Walk::kReads) getActions(); // closes the holes
  walk.mixedIds(360, 331, L"action", actions_, [&](ZnDbObjectId id) { return owns(id); });
  if (Walk::kReads) placesAreStale_ = true;
}

ZNDB_DEFINE_FIELDS(ZnDbAssocNetwork, ZnDbAssocAction)

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
