#include "quorl/db/table/block_table.h"

#include <algorithm>
#include <deque>
#include <unordered_map>

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/core/object_access.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/block_reference.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbBlockTable, ZnDbSymbolTable, L"BLOCKTABLE")
ZNRX_DEFINE_DRAWING_CLASS(ZnDbBlockTableRecord, ZnDbSymbolTableRecord, L"BLOCK")

namespace {

ZnDbBlockTableRecord* recordAt(ZnDbObjectId id) {
  return id.isValid() ? ZnDbBlockTableRecord::cast(id.slot()->object) : nullptr;
}

// Walks from a block up to the blocks in which it stands, each once.
class BlocksAbove {
public:
  explicit BlocksAbove(const ZnDbBlockTableRecord& block) { enter(block, 0); }

  bool contain(ZnDbObjectId block) const { return levels_.count(block) > 0; }
  int highest() const { return highest_; }

private:
  void enter(const ZnDbBlockTableRecord& block, int level) {
    const auto [known, isNew] = levels_.try_emplace(block.objectId(), level);
    if ((!isNew && known->second >= level) || level > ZnDbBlockTableRecord::kDeepestNesting) return;
    known->second = level;
    highest_ = std::max(highest_, level);
    ZnArray<ZnDbObjectId> references;
    block.getBlockReferenceIds(references);
    for (const ZnDbObjectId id : references)
      if (const ZnDbBlockTableRecord* outer = recordAt(id.slot()->object->ownerId()))
        enter(*outer, level + 1);
  }

  std::unordered_map<ZnDbObjectId, int> levels_;
  int highest_ = 0;
};

} // namespace

// A block that stands in another has fewer levels in it. So where that one has fewer than this, nothing
// changes above, and the common case, a block without blocks in it, costs nothing.
bool ZnDbBlockTableRecord::mayShow(ZnDbObjectId block) const {
  const ZnDbBlockTableRecord* shown = recordAt(block);
  if (!shown) return true;
  if (shown->nesting_ < nesting_) return true;
  if (shown == this) return false;
  if (references_.empty()) return shown->nesting_ < kDeepestNesting;
  const BlocksAbove above(*this);
  return !above.contain(block) && above.highest() + 1 + shown->nesting_ <= kDeepestNesting;
}

void ZnDbBlockTableRecord::raiseNesting(int levels) {
  if (levels <= nesting_ || levels > kDeepestNesting) return;
  nesting_ = levels;
  for (const ZnDbBlockReference* reference : references_)
    if (ZnDbBlockTableRecord* outer = recordAt(reference->ownerId())) outer->raiseNesting(levels + 1);
}

const ZnRxClass* ZnDbBlockTable::recordClass() const { return ZnDbBlockTableRecord::desc(); }

ErrorStatus ZnDbBlockTableRecord::appendZnDbEntity(ZnDbObjectId& id, ZnDbEntity* entity) {
  id.setNull();
  if (!entity) return Quorl::eNullObjectPointer;
  if (!database()) return Quorl::eNotInDatabase;
  if (entity->database()) return Quorl::eAlreadyInDatabase;
  if (const auto* reference = ZnDbBlockReference::cast(entity))
    if (!mayShow(reference->blockTableRecord())) return Quorl::eInvalidOwner;
  if (const ErrorStatus status = entity->judgePlace(*database()); status != Quorl::eOk) return status;
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
  std::deque<ZnDbHolder<ZnDbEntity>> entities; // all open before the first moves
  for (const ZnDbObjectId id : ids) {
    if (id.isErased() || id.database() != database()) return Quorl::eInvalidInput;
    if (!id.isDerivedFrom(ZnDbEntity::desc())) return Quorl::eWrongObjectClass;
    const auto* reference = ZnDbBlockReference::cast(id.slot()->object);
    if (reference && !mayShow(reference->blockTableRecord())) return Quorl::eInvalidOwner;
    if (id.slot()->object->ownerId() == objectId()) continue;
    if (const ErrorStatus status = entities.emplace_back().openForWrite(id, false, true);
        status != Quorl::eOk)
      return status;
  }
  assertWriteEnabled(false);
  for (ZnDbHolder<ZnDbEntity>& entity : entities) moveEntity(*entity);
  return Quorl::eOk;
}

void ZnDbBlockTableRecord::moveEntity(ZnDbEntity& entity) {
  ZnDbBlockTableRecord* before = recordAt(entity.ownerId());
  if (before) before->keepOrder(entity.objectId());
  // Kept now, whatever the step has of it: from the order before to the order after it must be one change.
  ZnDbObjectAccess::slot(&entity)->undoStamp = 0;
  entity.detachLinks();
  entity.setOwnerId(objectId());
  if (before) before->memberRemoved(entity.objectId());
  memberAdded(entity.objectId());
  keepOrder(entity.objectId());
  entity.attachLinks();
}

// An entity that undoing brings back is put at the end, and from there to its place; doing it again goes the
// other way. Kept for the block that it leaves before the entity's own state, so that it is undone after it,
// and for the block that it enters after it, so that it is done again after it.
void ZnDbBlockTableRecord::keepOrder(ZnDbObjectId id) {
  const auto place = std::find(entities_.begin(), entities_.end(), id) - entities_.begin();
  database()->undoRecorder().keepHeader([this, id, place] {
    const auto at = std::find(entities_.begin(), entities_.end(), id);
    if (at == entities_.end()) return;
    if (at - entities_.begin() == place)
      std::rotate(at, at + 1, entities_.end());
    else
      std::rotate(entities_.begin() + place, at, at + 1);
  });
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

void ZnDbBlockTableRecord::setLayoutId(ZnDbObjectId layout) {
  assertWriteEnabled();
  layoutId_ = layout;
}

void ZnDbBlockTableRecord::setIsFromExternalReference(bool external) {
  assertWriteEnabled();
  external_ = external;
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
  if (erasing && !references_.empty()) return Quorl::eInUse;
  if (const ErrorStatus status = ZnDbSymbolTableRecord::subErase(erasing); status != Quorl::eOk)
    return status;
  if (erasing) erasedTogether_.erase(entities_);
  return Quorl::eOk;
}

void ZnDbBlockTableRecord::subBringBack() { erasedTogether_.bringBack(); }

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
