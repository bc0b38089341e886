#include "quorl/db/table/block_table.h"

#include <algorithm>
#include <unordered_map>

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/core/object_access.h"
#include "quorl/db/entity/block_reference.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbBlockTable, ZnDbSymbolTable, L"BLOCKTABLE")
ZNRX_DEFINE_DRAWING_CLASS(ZnDbBlockTableRecord, ZnDbSymbolTableRecord, L"BLOCK")

namespace {

constexpr int kDeepestNesting = 64;

// Looks into each block once, however often it is shown: copies of copies double at every level.
class Containment {
public:
  explicit Containment(ZnDbObjectId containing)
      : containing_(containing) {}

  // Whether a reference to that block, placed in the given block, would make a block contain itself.
  bool wouldContain(ZnDbObjectId block, int depth = 0) {
    if (block == containing_ || depth > kDeepestNesting) return true;
    const auto* record = block.isValid() ? ZnDbBlockTableRecord::cast(block.slot()->object) : nullptr;
    if (!record) return false;
    int& seenAt = seenAt_.try_emplace(block, -1).first->second;
    if (seenAt >= depth) return false;
    seenAt = depth;
    for (const ZnDbObjectId id : record->entityIds()) {
      if (id.isErased() || !id.isDerivedFrom(ZnDbBlockReference::desc())) continue;
      const auto* nested = static_cast<const ZnDbBlockReference*>(id.slot()->object);
      if (wouldContain(nested->blockTableRecord(), depth + 1)) return true;
    }
    return false;
  }

private:
  ZnDbObjectId containing_;
  std::unordered_map<ZnDbObjectId, int> seenAt_; // the greatest depth: deeper it may still reach the limit
};

} // namespace

const ZnRxClass* ZnDbBlockTable::recordClass() const { return ZnDbBlockTableRecord::desc(); }

ErrorStatus ZnDbBlockTableRecord::appendZnDbEntity(ZnDbObjectId& id, ZnDbEntity* entity) {
  id.setNull();
  if (!entity) return Quorl::eNullObjectPointer;
  if (!database()) return Quorl::eNotInDatabase;
  if (entity->database()) return Quorl::eAlreadyInDatabase;
  if (const auto* reference = ZnDbBlockReference::cast(entity))
    if (Containment(objectId()).wouldContain(reference->blockTableRecord())) return Quorl::eInvalidOwner;
  assertWriteEnabled(false);
  const ErrorStatus status = database()->addObject(entity, objectId(), id);
  if (status != Quorl::eOk) return status;
  entities_.push_back(id);
  entity->completeFor(*database());
  entity->attachLinks();
  return Quorl::eOk;
}

ErrorStatus ZnDbBlockTableRecord::appendZnDbEntity(ZnDbEntity* entity) {
  ZnDbObjectId id;
  return appendZnDbEntity(id, entity);
}

ErrorStatus ZnDbBlockTableRecord::assumeOwnershipOf(const ZnArray<ZnDbObjectId>& ids) {
  if (!database()) return Quorl::eNotInDatabase;
  for (const ZnDbObjectId id : ids) {
    if (id.isErased() || id.database() != database()) return Quorl::eInvalidInput;
    if (!id.isDerivedFrom(ZnDbEntity::desc())) return Quorl::eWrongObjectClass;
  }
  assertWriteEnabled(false);
  for (const ZnDbObjectId id : ids) {
    ZnDbHolder<ZnDbEntity> entity;
    if (const ErrorStatus status = entity.openForWrite(id, false, true); status != Quorl::eOk) return status;
    const ZnDbObjectId before = entity->ownerId();
    if (before == objectId()) continue;
    entity->setOwnerId(objectId());
    if (before.isValid()) before.slot()->object->memberRemoved(id);
    memberAdded(id);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbBlockTableRecord::newIterator(ZnDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                              bool skipDeleted) const {
  iterator = new ZnDbBlockTableRecordIterator(*this, atBeginning, skipDeleted);
  return Quorl::eOk;
}

ErrorStatus ZnDbBlockTableRecord::getBlockReferenceIds(ZnArray<ZnDbObjectId>& ids, bool directOnly,
                                                       bool /*forceValidity*/) const {
  std::vector<ZnDbObjectId> found;
  for (const ZnDbBlockReference* reference : references_)
    if (!reference->isErased()) found.push_back(reference->objectId());
  std::sort(found.begin(), found.end());
  for (const ZnDbObjectId id : found) ids.append(id);
  if (directOnly) return Quorl::eOk;
  for (const ZnDbObjectId id : found) {
    const ZnDbObjectId owner = id.slot()->object->ownerId();
    const auto* outer = owner.isValid() ? ZnDbBlockTableRecord::cast(owner.slot()->object) : nullptr;
    if (outer && outer != this) outer->getBlockReferenceIds(ids, false);
  }
  return Quorl::eOk;
}

int ZnDbBlockTableRecord::countReferences(ZnDbObjectId& only) const {
  int count = 0;
  for (const ZnDbBlockReference* reference : references_) {
    if (reference->isErased()) continue;
    if (++count == 1) only = reference->objectId();
  }
  if (count != 1) only.setNull();
  return count;
}

bool ZnDbBlockTableRecord::isAnonymous() const { return name().view().starts_with(L"*") && !isLayout(); }

ErrorStatus ZnDbBlockTableRecord::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  ZnGeBoundBlock3d sum;
  for (const ZnDbObjectId id : entities_) {
    if (id.isErased()) continue;
    const auto* entity = ZnDbEntity::cast(id.slot()->object);
    ZnGeBoundBlock3d box;
    if (entity && entity->visibility() == ZnDb::kVisible && entity->getGeomExtents(box) == Quorl::eOk)
      sum.addBox(box);
  }
  if (sum.isEmpty()) return Quorl::eNothingToDo;
  extents = sum;
  return Quorl::eOk;
}

ErrorStatus ZnDbBlockTableRecord::subErase(bool erasing) {
  if (erasing) {
    erasedWithBlock_.clear();
    for (const ZnDbObjectId id : entities_)
      if (!id.isErased()) erasedWithBlock_.push_back(id);
  }
  for (const ZnDbObjectId id : erasedWithBlock_) {
    ZnDbHolder<ZnDbObject> entity;
    if (entity.openForWrite(id, true, true) == Quorl::eOk && entity->isErased() != erasing)
      entity->erase(erasing);
  }
  if (!erasing) erasedWithBlock_.clear();
  return Quorl::eOk;
}

template<class Walk> void ZnDbBlockTableRecord::describe(Walk& walk) {
  walk.section(className(), 0, 0);
  walk.field(290, L"from an external reference", external_);
  walk.id(ZnReferenceKind::kSoftPointer, 330, L"layout", layoutId_);
  if (!walk.isForUndo()) walk.ids(ZnReferenceKind::kHardOwner, 360, L"entity", entities_);
}

ZNDB_DEFINE_FIELDS(ZnDbBlockTableRecord, ZnDbSymbolTableRecord)

void ZnDbBlockTableRecord::memberAdded(ZnDbObjectId id) { entities_.push_back(id); }

// Searched from the end, where what came last stands.
void ZnDbBlockTableRecord::memberRemoved(ZnDbObjectId id) {
  const auto found = std::find(entities_.rbegin(), entities_.rend(), id);
  if (found != entities_.rend()) entities_.erase(std::next(found).base());
}

void ZnDbBlockTableRecord::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbSymbolTableRecord::audit(faults, fix);
  for (size_t i = 0; i < entities_.size(); ++i) {
    const ZnDbObjectId id = entities_[i];
    if (id.isValid() && id.isDerivedFrom(ZnDbEntity::desc()) && id.slot()->object->ownerId() == objectId())
      continue;
    faults.push_back(L"block " + name() + L": entry " + handleText(id.handle()) +
                     L" is no entity of this block");
    if (fix) entities_.erase(entities_.begin() + static_cast<std::ptrdiff_t>(i--));
  }
}

ZnDbBlockTableRecordIterator::ZnDbBlockTableRecordIterator(const ZnDbBlockTableRecord& record,
                                                           bool atBeginning, bool skipDeleted)
    : ids_(record.entityIds()) {
  start(atBeginning, skipDeleted);
}

void ZnDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
  skipDeleted_ = skipDeleted;
  at_ = atBeginning ? 0 : static_cast<int>(ids_.size()) - 1;
  skip(atBeginning);
}

void ZnDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
  if (done()) return;
  skipDeleted_ = skipDeleted;
  at_ += forward ? 1 : -1;
  skip(forward);
}

void ZnDbBlockTableRecordIterator::skip(bool forward) {
  while (skipDeleted_ && !done() && ids_[static_cast<size_t>(at_)].isErased()) at_ += forward ? 1 : -1;
}

ErrorStatus ZnDbBlockTableRecordIterator::getEntityId(ZnDbObjectId& id) const {
  if (done()) return Quorl::eOutOfRange;
  id = ids_[static_cast<size_t>(at_)];
  return Quorl::eOk;
}
