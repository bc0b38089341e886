#include "quorl/assoc/action_body.h"

#include <array>

#include "quorl/assoc/dependency.h"
#include "quorl/assoc/network.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/id_mapping.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbAssocActionBody, ZnDbObject)

namespace {

// Free memory of bodies by size, in steps of a pointer pair. Bigger bodies go to the system.
struct FreeBlock {
  FreeBlock* next;
};
constexpr size_t kStep = 16, kClasses = 32;
std::array<FreeBlock*, kClasses> freeBlocks{};

} // namespace

void* ZnDbAssocActionBody::operator new(size_t size) {
  const size_t kind = (size + kStep - 1) / kStep;
  if (kind >= kClasses) return ::operator new(size);
  if (FreeBlock* block = freeBlocks[kind]) {
    freeBlocks[kind] = block->next;
    return block;
  }
  return ::operator new(kind* kStep);
}

void ZnDbAssocActionBody::operator delete(void* memory, size_t size) noexcept {
  const size_t kind = (size + kStep - 1) / kStep;
  if (!memory || kind >= kClasses) return ::operator delete(memory);
  freeBlocks[kind] = new (memory) FreeBlock{freeBlocks[kind]};
}

ZnDbAssocActionBody::~ZnDbAssocActionBody() = default;

ErrorStatus ZnDbAssocActionBody::createActionAndActionBodyAndPostToDatabase(const ZnRxClass* bodyClass,
                                                                            ZnDbObjectId owner,
                                                                            ZnDbObjectId& actionId,
                                                                            ZnDbObjectId& bodyId) {
  actionId.setNull();
  bodyId.setNull();
  if (!ZnRxClass::isDerivedFrom(bodyClass, ZnDbAssocActionBody::desc()) || bodyClass->isAbstract())
    return Quorl::eWrongObjectClass;
  if (owner.isErased()) return Quorl::eInvalidOwner;
  const ZnDbObjectId networkId = ZnDbAssocNetwork::getInstanceFromObject(owner, true, true);
  if (networkId.isNull()) return Quorl::eInvalidOwner;
  auto* action = new ZnDbAssocAction;
  auto* network = static_cast<ZnDbAssocNetwork*>(networkId.slot()->object);
  if (const ErrorStatus status = network->addAction(action, actionId); status != Quorl::eOk) {
    delete action;
    return status;
  }
  auto* body = static_cast<ZnDbAssocActionBody*>(bodyClass->create());
  ErrorStatus status = owner.database()->addObject(body, actionId, bodyId);
  if (status == Quorl::eOk) status = action->setActionBody(bodyId);
  body->close();
  action->close();
  return status;
}

ZnDbObjectId ZnDbAssocActionBody::parentAction(ZnDbObjectId bodyId) {
  if (!bodyId.isValid() || !bodyId.isDerivedFrom(desc())) return {};
  return bodyId.slot()->object->ownerId();
}

ZnDbAssocStatus ZnDbAssocActionBody::status() const {
  const ZnDbAssocAction* parent = action();
  return parent ? parent->status() : kUnresolvedAssocStatus;
}

ErrorStatus ZnDbAssocActionBody::setStatus(ZnDbAssocStatus status, bool notifyOwning,
                                           bool setInOwnedActions) {
  ZnDbAssocAction* parent = action();
  return parent ? parent->setStatus(status, notifyOwning, setInOwnedActions) : Quorl::eNotInDatabase;
}

ZnDbAssocEvaluationCallback* ZnDbAssocActionBody::currentEvaluationCallback() const {
  const ZnDbAssocAction* parent = action();
  return parent ? parent->currentEvaluationCallback() : nullptr;
}

// Changes the action with write access to it, whatever mode the body is open in.
template<class Change> ErrorStatus ZnDbAssocActionBody::changeAction(Change&& change) {
  ZnDbAssocAction* parent = action();
  if (!parent) return Quorl::eNotInDatabase;
  ZnDbObject* opened = nullptr;
  ErrorStatus status = accessZnDbObjectForWrite(opened, parent->objectId(), nullptr);
  if (status != Quorl::eOk) return status;
  status = change(*parent);
  revertZnDbObjectFromWrite(opened);
  return status;
}

ErrorStatus ZnDbAssocActionBody::evaluateDependencies() {
  const ZnDbAssocAction* parent = action();
  if (!parent) return Quorl::eNotInDatabase;
  ErrorStatus status = Quorl::eOk;
  for (const ZnDbObjectId id : parent->dependencyIds()) {
    ZnDbAssocDependency* dependency = ZnDbAssocDependency::live(id);
    if (!dependency) continue;
    if (dependency->status() == kErasedAssocStatus) status = Quorl::eWasErased;
    dependency->setStatus(kIsUpToDateAssocStatus);
  }
  return status;
}

bool ZnDbAssocActionBody::hasAnyErasedOrBrokenDependencies() const {
  const ZnDbAssocAction* parent = action();
  if (!parent) return false;
  for (const ZnDbObjectId id : parent->dependencyIds())
    if (const auto* dependency = ZnDbAssocDependency::live(id); dependency && dependency->isErasedOrBroken())
      return true;
  return false;
}

bool ZnDbAssocActionBody::hasAnyNewlyErasedDependencies() const {
  const ZnDbAssocAction* parent = action();
  if (!parent) return false;
  for (const ZnDbObjectId id : parent->dependencyIds()) {
    const ZnDbAssocDependency* dependency = ZnDbAssocDependency::live(id);
    if (dependency && dependency->hasChanged() && dependency->isErasedOrBroken()) return true;
  }
  return false;
}

ErrorStatus ZnDbAssocActionBody::getDependencies(bool readOnesWanted, bool writeOnesWanted,
                                                 ZnArray<ZnDbObjectId>& ids) const {
  ids.removeAll();
  const ZnDbAssocAction* parent = action();
  return parent ? parent->getDependencies(readOnesWanted, writeOnesWanted, ids) : Quorl::eNotInDatabase;
}

ErrorStatus ZnDbAssocActionBody::removeAllDependencies(bool alsoEraseThem) {
  return changeAction([&](ZnDbAssocAction& parent) { return parent.removeAllDependencies(alsoEraseThem); });
}

ErrorStatus ZnDbAssocActionBody::addDependency(const ZnRxClass* dependencyClass,
                                               const ZnRxClass* dependencyBodyClass, bool isRead,
                                               bool isWrite, int order, ZnDbObjectId& id) {
  id.setNull();
  const ZnRxClass* cls = dependencyClass ? dependencyClass : ZnDbAssocDependency::desc();
  if (!cls->isDerivedFrom(ZnDbAssocDependency::desc()) || cls->isAbstract()) return Quorl::eWrongObjectClass;
  if (dependencyBodyClass &&
      (!dependencyBodyClass->isDerivedFrom(ZnDbObject::desc()) || dependencyBodyClass->isAbstract()))
    return Quorl::eWrongObjectClass;
  return changeAction([&](ZnDbAssocAction& parent) {
    auto* dependency = static_cast<ZnDbAssocDependency*>(cls->create());
    dependency->setIsReadDependency(isRead);
    dependency->setIsWriteDependency(isWrite);
    dependency->setOrder(order);
    ErrorStatus status = parent.addDependency(dependency, id);
    if (status != Quorl::eOk) {
      delete dependency;
      return status;
    }
    if (dependencyBodyClass) {
      auto* extra = static_cast<ZnDbObject*>(dependencyBodyClass->create());
      ZnDbObjectId extraId;
      status = database()->addObject(extra, id, extraId);
      if (status == Quorl::eOk) dependency->setDependencyBody(extraId);
      extra->close();
    }
    dependency->close();
    return status;
  });
}

ErrorStatus ZnDbAssocActionBody::addParam(const ZnString& name, const ZnRxClass* paramClass, ZnDbObjectId& id,
                                          int& index) {
  return changeAction([&](ZnDbAssocAction& parent) { return parent.addParam(name, paramClass, id, index); });
}

ErrorStatus ZnDbAssocActionBody::removeParam(ZnDbObjectId id, bool alsoErase) {
  return changeAction([&](ZnDbAssocAction& parent) { return parent.removeParam(id, alsoErase); });
}

ZnDbObjectId ZnDbAssocActionBody::paramAtName(const ZnString& name, int index) const {
  const ZnDbAssocAction* parent = action();
  return parent ? parent->paramAtName(name, index) : ZnDbObjectId();
}

ZnArray<ZnDbObjectId> ZnDbAssocActionBody::paramsAtName(const ZnString& name) const {
  const ZnDbAssocAction* parent = action();
  return parent ? parent->paramsAtName(name) : ZnArray<ZnDbObjectId>();
}

int ZnDbAssocActionBody::paramCountAtName(const ZnString& name) const {
  const ZnDbAssocAction* parent = action();
  return parent ? parent->paramCountAtName(name) : 0;
}

ZnDbObjectId ZnDbAssocActionBody::paramAtIndex(int index) const {
  const ZnDbAssocAction* parent = action();
  return parent ? parent->paramAtIndex(index) : ZnDbObjectId();
}

int ZnDbAssocActionBody::paramCount() const {
  const ZnDbAssocAction* parent = action();
  return parent ? parent->paramCount() : 0;
}

ErrorStatus ZnDbAssocActionBody::getValueParam(const ZnString& name, ZnDbEvalVariant& value,
                                               ZnString& expression, ZnString& evaluatorId, int index) const {
  const ZnDbAssocAction* parent = action();
  if (!parent) return Quorl::eNotInDatabase;
  ErrorStatus status = Quorl::eOk;
  const ZnDbAssocValue* found = parent->values().at(name.atom(), index, status);
  if (!found) return status;
  value = found->value;
  expression = found->expression;
  evaluatorId = found->evaluatorId;
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocActionBody::getValueParam(const ZnString& name, ZnDbEvalVariant& value,
                                               int index) const {
  const ZnDbAssocAction* parent = action();
  if (!parent) return Quorl::eNotInDatabase;
  ErrorStatus status = Quorl::eOk;
  const ZnDbAssocValue* found = parent->values().at(name.atom(), index, status);
  if (found) value = found->value;
  return status;
}

double ZnDbAssocActionBody::valueOf(const ZnString& name, double absent) const {
  const ZnDbAssocAction* parent = action();
  const ZnDbAssocValueParam* param = parent ? parent->values().find(name.atom()) : nullptr;
  if (param) param->at(0).value.getValue(absent);
  return absent;
}

ErrorStatus ZnDbAssocActionBody::setValueParam(const ZnString& name, const ZnDbEvalVariant& value,
                                               const ZnString& expression, const ZnString& evaluatorId,
                                               ZnString& errorMessage, bool /*silentMode*/, int index) {
  errorMessage.clear();
  const ZnDbAssocAction* parent = action();
  if (!parent) return Quorl::eNotInDatabase;
  const ZnAtom atom = name.atom();
  if (const ErrorStatus status = parent->values().checkPut(atom, index); status != Quorl::eOk) return status;
  ErrorStatus absent = Quorl::eOk;
  const ZnDbAssocValue* standing = parent->values().at(atom, index, absent);
  if (standing && standing->value == value && standing->expression == expression &&
      standing->evaluatorId == evaluatorId)
    return Quorl::eOk;
  return changeAction([&](ZnDbAssocAction& owner) {
    return owner.setValue(atom, index, {value, expression, evaluatorId});
  });
}

ErrorStatus ZnDbAssocActionBody::setValueParam(const ZnString& name, const ZnDbEvalVariant& value,
                                               int index) {
  ZnString message;
  return setValueParam(name, value, ZnString(), ZnString(), message, true, index);
}

ErrorStatus ZnDbAssocActionBody::removeValueParam(const ZnString& name) {
  return changeAction([&](ZnDbAssocAction& parent) { return parent.removeValue(name.atom()); });
}

void ZnDbAssocActionBody::ownedValueParamNames(ZnArray<ZnString>& names) const {
  names.removeAll();
  const ZnDbAssocAction* parent = action();
  if (!parent) return;
  for (const ZnDbAssocValueParam& param : parent->values().params()) names.append(ZnString(param.name()));
}

ErrorStatus ZnDbAssocActionBody::getValueParamArray(const ZnString& name, ZnArray<ZnDbEvalVariant>& values,
                                                    ZnArray<ZnString>& expressions,
                                                    ZnArray<ZnString>& evaluatorIds) const {
  const ZnDbAssocAction* parent = action();
  if (!parent) return Quorl::eNotInDatabase;
  const ZnDbAssocValueParam* param = parent->values().find(name.atom());
  if (!param) return Quorl::eKeyNotFound;
  values.setLogicalLength(param->count());
  expressions.setLogicalLength(param->count());
  evaluatorIds.setLogicalLength(param->count());
  for (int i = 0; i < param->count(); ++i) {
    values[i] = param->at(i).value;
    expressions[i] = param->at(i).expression;
    evaluatorIds[i] = param->at(i).evaluatorId;
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocActionBody::setValueParamArray(const ZnString& name,
                                                    const ZnArray<ZnDbEvalVariant>& values,
                                                    const ZnArray<ZnString>& expressions,
                                                    const ZnArray<ZnString>& evaluatorIds,
                                                    ZnArray<ZnString>& errorMessages, bool /*silentMode*/) {
  const int count = values.length();
  for (const ZnArray<ZnString>* texts : {&expressions, &evaluatorIds})
    if (!texts->isEmpty() && texts->length() != count) return Quorl::eInvalidInput;
  errorMessages.removeAll();
  errorMessages.setLogicalLength(count);
  std::vector<ZnDbAssocValue> array;
  for (int i = 0; i < count; ++i)
    array.push_back({values[i], expressions.isEmpty() ? ZnString() : expressions[i],
                     evaluatorIds.isEmpty() ? ZnString() : evaluatorIds[i]});
  return changeAction([&](ZnDbAssocAction& parent) { return parent.setValues(name.atom(), array); });
}

void ZnDbAssocActionBody::attachLinks() {
  if (ZnDbAssocAction* parent = action()) parent->attachLinks();
}

// A body that is cloned takes along where it names sub-entities; what its action writes is asked for before.
ErrorStatus ZnDbAssocActionBody::addMoreObjectsToDeepClone(ZnDbIdMapping&,
                                                           ZnArray<ZnDbObjectId>& more) const {
  const ZnDbHolder<ZnDbAssocActionBody> self(objectId());
  return collectPersSubentNamingDataOverride(more);
}

// The host asks the originals, which is what the override is for: it finds its clones in the mapping.
ErrorStatus ZnDbAssocActionBody::postProcessAfterDeepClone(ZnDbIdMapping& mapping) {
  const ZnDbHolder<ZnDbAssocActionBody> self(objectId());
  if (const ErrorStatus status = clonePersSubentNamingDataOverride(mapping.destDb(), mapping);
      status != Quorl::eOk)
    return status;
  return postProcessAfterDeepCloneOverride(mapping);
}

void ZnDbAssocActionBody::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbObject::audit(faults, fix);
  if (!action()) faults.push_back(L"action body " + handleText(handle()) + L": it is in no action");
  auditAssociativeDataOverride(faults, fix);
}
