#include "quorl/assoc/dependency.h"

#include "quorl/assoc/action.h"
#include "quorl/assoc/dependency_pe.h"
#include "quorl/assoc/evaluation_frame.h"
#include "quorl/assoc/path_fields.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocDependency, ZnDbObject, L"ASSOCDEPENDENCY")

namespace {

// An erased object may come back; one that never was, or is of another drawing, can't be watched.
bool canStandOn(const ZnDbCompoundObjectId& target, const ZnDbDatabase* database) {
  if (target.isEmpty() || target.leafId().database() != database) return false;
  for (const ZnDbObjectId id : target.pathIds())
    if (id.database() != database) return false;
  return true;
}

} // namespace

ZnDbAssocDependency::ZnDbAssocDependency() = default;
ZnDbAssocDependency::~ZnDbAssocDependency() = default;

void ZnDbAssocDependency::setIsReadDependency(bool isRead) {
  if (isRead == isRead_) return;
  assertWriteEnabled();
  isRead_ = isRead;
}

void ZnDbAssocDependency::setIsWriteDependency(bool isWrite) {
  if (isWrite == isWrite_) return;
  assertWriteEnabled();
  isWrite_ = isWrite;
}

void ZnDbAssocDependency::setOrder(int order) {
  if (order == order_) return;
  assertWriteEnabled();
  order_ = order;
}

ErrorStatus ZnDbAssocDependency::attachToObject(const ZnDbCompoundObjectId& target) {
  if (isAttached()) return Quorl::eNothingToDo;
  if (!canStandOn(target, database())) return Quorl::eInvalidInput;
  ZnDbCompoundObjectId standing = target;
  ZnDbHolder<ZnDbObject> leaf(target.leafId());
  if (leaf.isOpen()) {
    const auto* extension = ZnDbAssocDependencyPE::cast(leaf->queryX(ZnDbAssocDependencyPE::desc()));
    if (extension && !extension->allowsDirectDependency()) return Quorl::eInvalidInput;
    ZnDbCompoundObjectId redirected;
    if (extension &&
        extension->redirectToAnotherObject(leaf.object(), target, this, redirected) == Quorl::eOk &&
        canStandOn(redirected, database()))
      standing = redirected;
  }
  assertWriteEnabled();
  target_ = standing;
  attachLinks();
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocDependency::detachFromObject() {
  if (!isAttached()) return Quorl::eNothingToDo;
  assertWriteEnabled();
  detachLinks();
  target_.setEmpty();
  return Quorl::eOk;
}

bool ZnDbAssocDependency::isErasedOrBroken() const {
  if (target_.isEmpty() || target_.leafId().isErased()) return true;
  for (const ZnDbObjectId id : target_.pathIds())
    if (id.isErased()) return true;
  return false;
}

ZnDbAssocStatus ZnDbAssocDependency::status() const {
  if (!isAttached()) return kUnresolvedAssocStatus;
  if (isErasedOrBroken()) return kErasedAssocStatus;
  return changed_ ? kChangedDirectlyAssocStatus : kIsUpToDateAssocStatus;
}

ZnDbAssocAction* ZnDbAssocDependency::owningAction() const {
  const ZnDbObjectId id = ownerId();
  if (!id.isValid() || !id.isDerivedFrom(ZnDbAssocAction::desc())) return nullptr;
  return static_cast<ZnDbAssocAction*>(id.slot()->object);
}

ErrorStatus ZnDbAssocDependency::setDependencyBody(ZnDbObjectId body) {
  assertWriteEnabled();
  bodyId_ = body;
  return Quorl::eOk;
}

void ZnDbAssocDependency::watch(ZnDbObjectId object) {
  if (object.isNull()) return;
  if (!link_)
    link_.emplace(objectId(), object);
  else
    moreLinks_.push_back(std::make_unique<ZnDbWatchLink>(objectId(), object));
}

void ZnDbAssocDependency::attachLinks() {
  if (link_ || objectId().isNull() || isErased()) return;
  for (const ZnDbObjectId id : target_.pathIds()) watch(id);
  watch(target_.leafId());
}

void ZnDbAssocDependency::detachLinks() {
  moreLinks_.clear();
  link_.reset();
}

void ZnDbAssocDependency::watchedModified(const ZnDbObject*) {
  ZnDbAssocAction* action = owningAction();
  // What the action under evaluation writes is its own doing.
  if (!isRead_ || !action || action->isUnderEvaluation()) return;
  changed_ = true;
  const bool byEvaluation = ZnDbAssocEvaluationFrame::current(database()) != nullptr;
  action->mark(byEvaluation ? kChangedTransitivelyAssocStatus : kChangedDirectlyAssocStatus);
}

void ZnDbAssocDependency::watchedErased(const ZnDbObject*, bool erasing) {
  ZnDbAssocAction* action = owningAction();
  if (!action || action->isUnderEvaluation()) return;
  changed_ = true;
  // What an evaluation found erased for good may be back now.
  if (!erasing && action->status() == kErasedAssocStatus)
    action->setStatus(kChangedDirectlyAssocStatus);
  else
    action->mark(kChangedDirectlyAssocStatus);
}

template<class Walk> void ZnDbAssocDependency::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(290, L"reads", isRead_);
  walk.field(291, L"writes", isWrite_);
  walk.field(90, L"order", order_);
  walk.id(ZnReferenceKind::kHardOwner, 360, L"body", bodyId_);
  walk.field(330, L"object", target_);
}

ZNDB_DEFINE_FIELDS(ZnDbAssocDependency, ZnDbObject)

void ZnDbAssocDependency::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbObject::audit(faults, fix);
  if (!owningAction()) faults.push_back(L"dependency " + handleText(handle()) + L": it is in no action");
  bool missing = isAttached() && !target_.leafId().isValid();
  for (const ZnDbObjectId id : target_.pathIds()) missing = missing || !id.isValid();
  if (!missing) return;
  faults.push_back(L"dependency " + handleText(handle()) + L": an object on its path is missing");
  if (fix) detachFromObject();
}
