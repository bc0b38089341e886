#include "quorl/assoc/action.h"

#include <algorithm>

#include "quorl/assoc/action_body.h"
#include "quorl/assoc/action_param.h"
#include "quorl/assoc/dependency.h"
#include "quorl/assoc/evaluation_frame.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/undo.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocAction, ZnDbObject, L"ASSOCACTION")

namespace {

bool takeOut(std::vector<ZnDbObjectId>& list, ZnDbObjectId id) {
  const auto found = std::find(list.begin(), list.end(), id);
  if (found == list.end()) return false;
  list.erase(found);
  return true;
}

void eraseObject(ZnDbObjectId id, bool erasing) {
  ZnDbHolder<ZnDbObject> object;
  if (object.openForWrite(id, true, true) == Quorl::eOk && object->isErased() != erasing)
    object->erase(erasing);
}

} // namespace

ZnDbAssocAction::ZnDbAssocAction() = default;
ZnDbAssocAction::~ZnDbAssocAction() = default;

// The state for undo is kept whether or not somebody has the action open: parameters and dependencies change
// it while it is read.
void ZnDbAssocAction::beginChange() {
  if (isWriteEnabled())
    assertWriteEnabled();
  else
    database()->undoRecorder().keepState(this);
}

ErrorStatus ZnDbAssocAction::setStatus(ZnDbAssocStatus status, bool notifyOwning,
                                       bool /*setInOwnedActions*/) {
  if (status != status_) {
    // An evaluation that finds nothing new takes its mark back, and has then not been there.
    if (database()) database()->undoRecorder().keepStateWhileItDiffers(this);
    if (ZnDbAssocActionBody* own = body()) own->notificationOverride(status);
    status_ = status;
  }
  if (notifyOwning && zndbIsToEvaluate(status)) enterInNetwork();
  return Quorl::eOk;
}

void ZnDbAssocAction::mark(ZnDbAssocStatus status) {
  if (status_ == kSuppressedAssocStatus || status_ == kErasedAssocStatus || isErased()) return;
  setStatus(zndbIsToEvaluate(status_) ? status_ : status);
}

ZnDbAssocNetwork* ZnDbAssocAction::owningNetwork() const {
  const ZnDbObjectId id = owningNetworkId();
  if (!id.isValid() || !id.isDerivedFrom(ZnDbAssocNetwork::desc())) return nullptr;
  return static_cast<ZnDbAssocNetwork*>(id.slot()->object);
}

void ZnDbAssocAction::enterInNetwork() {
  ZnDbAssocAction* member = this;
  while (!member->queued_) {
    ZnDbAssocNetwork* network = member->owningNetwork();
    if (!network) return;
    member->queued_ = true;
    network->marked_.push_back(member->objectId());
    member = network;
  }
}

bool ZnDbAssocAction::isUnderEvaluation() const {
  const ZnDbSlot* slot = objectId().slot();
  return slot && slot->evaluating;
}

ZnDbAssocEvaluationCallback* ZnDbAssocAction::currentEvaluationCallback() const {
  const ZnDbAssocEvaluationFrame* frame = ZnDbAssocEvaluationFrame::of(this);
  return frame ? frame->callback() : nullptr;
}

void ZnDbAssocAction::evaluate(ZnDbAssocEvaluationCallback* callback) {
  if (isErased() || status_ == kSuppressedAssocStatus || status_ == kErasedAssocStatus) return;
  if (isActionBodyAProxy() || isUnderEvaluation()) return;
  const ZnDbAssocEvaluationFrame frame(this, callback);
  if (callback) callback->beginEvaluation(this);
  subEvaluate(callback);
  if (zndbIsToEvaluate(status_)) setStatus(kIsUpToDateAssocStatus);
  if (callback && status_ == kErasedAssocStatus) callback->actionErased(this);
  if (callback) callback->endEvaluation(this);
}

void ZnDbAssocAction::subEvaluate(ZnDbAssocEvaluationCallback*) {
  if (ZnDbAssocActionBody* own = body()) own->evaluateOverride();
}

ZnDbAssocActionBody* ZnDbAssocAction::body() const {
  if (bodyId_.isErased() || !bodyId_.isDerivedFrom(ZnDbAssocActionBody::desc())) return nullptr;
  return static_cast<ZnDbAssocActionBody*>(bodyId_.slot()->object);
}

bool ZnDbAssocAction::isActionBodyAProxy() const {
  return bodyId_.isValid() && !bodyId_.isDerivedFrom(ZnDbAssocActionBody::desc());
}

ErrorStatus ZnDbAssocAction::setActionBody(ZnDbObjectId newBody) {
  if (newBody.isValid() && !newBody.isDerivedFrom(ZnDbAssocActionBody::desc()))
    return Quorl::eWrongObjectClass;
  beginChange();
  bodyId_ = newBody;
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::getDependencies(bool readOnesWanted, bool writeOnesWanted,
                                             ZnArray<ZnDbObjectId>& ids) const {
  ids.removeAll();
  for (const ZnDbObjectId id : dependencies_) {
    const ZnDbAssocDependency* dependency = ZnDbAssocDependency::live(id);
    if (!dependency) continue;
    if ((readOnesWanted && dependency->isReadDependency()) ||
        (writeOnesWanted && dependency->isWriteDependency()))
      ids.append(id);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::addDependency(ZnDbAssocDependency* dependency, ZnDbObjectId& id) {
  if (!dependency) return Quorl::eNullObjectPointer;
  if (!database()) return Quorl::eNotInDatabase;
  if (const ErrorStatus status = database()->addObject(dependency, objectId(), id); status != Quorl::eOk)
    return status;
  beginChange();
  dependencies_.push_back(id);
  dependency->attachLinks();
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::removeDependency(ZnDbObjectId id, bool alsoErase) {
  if (std::find(dependencies_.begin(), dependencies_.end(), id) == dependencies_.end())
    return Quorl::eKeyNotFound;
  beginChange();
  takeOut(dependencies_, id);
  if (alsoErase) {
    eraseObject(id, true);
    return Quorl::eOk;
  }
  // It watches on behalf of nobody.
  ZnDbHolder<ZnDbAssocDependency> dependency;
  if (dependency.openForWrite(id, true) == Quorl::eOk) {
    dependency->detachFromObject();
    dependency->setOwnerId(ZnDbObjectId());
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::removeAllDependencies(bool alsoEraseThem) {
  const std::vector<ZnDbObjectId> all = dependencies_;
  for (const ZnDbObjectId id : all)
    if (const ErrorStatus status = removeDependency(id, alsoEraseThem); status != Quorl::eOk) return status;
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::addParam(const ZnString& name, const ZnRxClass* paramClass, ZnDbObjectId& id,
                                      int& index) {
  id.setNull();
  index = -1;
  if (!ZnRxClass::isDerivedFrom(paramClass, ZnDbAssocActionParam::desc()) || paramClass->isAbstract())
    return Quorl::eInvalidInput;
  if (!database()) return Quorl::eNotInDatabase;
  auto* param = static_cast<ZnDbAssocActionParam*>(paramClass->create());
  param->setName(name);
  const ErrorStatus status = database()->addObject(param, objectId(), id);
  if (status != Quorl::eOk) {
    delete param;
    return status;
  }
  beginChange();
  params_.push_back(id);
  groupsAreStale_ = true;
  param->close();
  index = paramCount() - 1;
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::removeParam(ZnDbObjectId id, bool alsoErase) {
  if (std::find(params_.begin(), params_.end(), id) == params_.end()) return Quorl::eKeyNotFound;
  beginChange();
  // Erased first: the parameter takes its dependency out of the action with it.
  if (alsoErase) eraseObject(id, true);
  takeOut(params_, id);
  groupsAreStale_ = true;
  return Quorl::eOk;
}

void ZnDbAssocAction::refreshGroups() const {
  groups_.clear();
  liveParams_.clear();
  for (const ZnDbObjectId id : params_) {
    if (id.isErased()) continue;
    liveParams_.push_back(id);
    const auto* param = ZnDbAssocActionParam::cast(id.slot()->object);
    if (!param) continue;
    const ZnAtom name = param->name().atom();
    auto found =
        std::find_if(groups_.begin(), groups_.end(), [&](const ParamGroup& g) { return g.name == name; });
    if (found == groups_.end()) found = groups_.insert(groups_.end(), ParamGroup{name, {}});
    found->ids.push_back(id);
  }
  groupsAreStale_ = false;
}

const ZnDbAssocAction::ParamGroup* ZnDbAssocAction::group(const ZnString& name) const {
  if (groupsAreStale_) refreshGroups();
  const ZnAtom wanted = name.atom();
  for (const ParamGroup& candidate : groups_)
    if (candidate.name == wanted) return &candidate;
  return nullptr;
}

const std::vector<ZnDbObjectId>& ZnDbAssocAction::liveParams() const {
  if (groupsAreStale_) refreshGroups();
  return liveParams_;
}

int ZnDbAssocAction::paramCount() const { return static_cast<int>(liveParams().size()); }

int ZnDbAssocAction::paramCountAtName(const ZnString& name) const {
  const ParamGroup* found = group(name);
  return found ? static_cast<int>(found->ids.size()) : 0;
}

ZnDbObjectId ZnDbAssocAction::paramAtIndex(int index) const {
  return index < 0 || index >= paramCount() ? ZnDbObjectId() : liveParams_[static_cast<size_t>(index)];
}

ZnDbObjectId ZnDbAssocAction::paramAtName(const ZnString& name, int index) const {
  const ParamGroup* found = group(name);
  if (!found || index < 0 || index >= static_cast<int>(found->ids.size())) return {};
  return found->ids[static_cast<size_t>(index)];
}

const std::vector<ZnDbObjectId>& ZnDbAssocAction::paramIdsAtName(const ZnString& name) const {
  static const std::vector<ZnDbObjectId> none;
  const ParamGroup* found = group(name);
  return found ? found->ids : none;
}

ZnArray<ZnDbObjectId> ZnDbAssocAction::paramsAtName(const ZnString& name) const {
  ZnArray<ZnDbObjectId> ids;
  const ParamGroup* found = group(name);
  if (!found) return ids;
  ids.setPhysicalLength(static_cast<int>(found->ids.size()));
  for (const ZnDbObjectId id : found->ids) ids.append(id);
  return ids;
}

ErrorStatus ZnDbAssocAction::setValue(ZnAtom name, int index, const ZnDbAssocValue& value) {
  if (const ErrorStatus status = values_.checkPut(name, index); status != Quorl::eOk) return status;
  ErrorStatus absent = Quorl::eOk;
  if (const ZnDbAssocValue* standing = values_.at(name, index, absent); standing && *standing == value)
    return Quorl::eOk;
  beginChange();
  values_.put(name, index, value);
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::setValues(ZnAtom name, const std::vector<ZnDbAssocValue>& values) {
  if (name.isNull() || values.empty()) return Quorl::eInvalidInput;
  const ZnDbAssocValueParam* standing = values_.find(name);
  bool same = standing && standing->count() == static_cast<int>(values.size());
  for (int i = 0; same && i < standing->count(); ++i)
    same = standing->at(i) == values[static_cast<size_t>(i)];
  if (same) return Quorl::eOk;
  beginChange();
  values_.putArray(name, values);
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::removeValue(ZnAtom name) {
  if (!values_.find(name)) return Quorl::eKeyNotFound;
  beginChange();
  values_.remove(name);
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::getActionsDependentOnObject(const ZnDbObject* object, bool readWanted,
                                                         bool writeWanted, ZnArray<ZnDbObjectId>& actions) {
  if (!object) return Quorl::eNullObjectPointer;
  return getActionsDependentOnObject(object->objectId(), readWanted, writeWanted, actions);
}

ErrorStatus ZnDbAssocAction::getActionsDependentOnObject(ZnDbObjectId object, bool readWanted,
                                                         bool writeWanted, ZnArray<ZnDbObjectId>& actions) {
  static std::uint32_t queries = 0;
  if (object.isNull()) return Quorl::eNullObjectId;
  const ZnDbWatchLink* const first = object.slot()->watchers;
  if (!first) return Quorl::eOk;
  const std::uint32_t query = ++queries;
  const ZnDbWatchLink* link = first;
  do {
    const ZnDbAssocDependency* dependency = ZnDbAssocDependency::live(link->watcher);
    link = link->next;
    if (!dependency) continue;
    const bool wanted =
        (readWanted && dependency->isReadDependency()) || (writeWanted && dependency->isWriteDependency());
    const ZnDbAssocAction* action = wanted ? dependency->owningAction() : nullptr;
    if (!action || action->isErased() || action->seenBy_ == query) continue;
    action->seenBy_ = query;
    actions.append(action->objectId());
  } while (link != first);
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocAction::subErase(bool erasing) {
  if (!erasing) return Quorl::eOk;
  std::vector<ZnDbObjectId> owned = params_;
  owned.insert(owned.end(), dependencies_.begin(), dependencies_.end());
  owned.push_back(bodyId_);
  erasedTogether_.erase(owned);
  return Quorl::eOk;
}

void ZnDbAssocAction::subBringBack() { erasedTogether_.bringBack(); }
