#include "torvi/drawing/blocks.h"

#include "torvi/drawing/ask.h"

using Quorl::ErrorStatus;

namespace torvi {

ZnDbObjectId blockOfReference(ZnDbObjectId refId) {
  return ask<ZnDbBlockReference>(refId, ZnDbObjectId(), &ZnDbBlockReference::blockTableRecord);
}

ZnDbObjectId firstReferenceOfSameBlock(const ZnDbBlockReference* reference) {
  if (!reference) return {};
  ZnDbHolder<ZnDbBlockTableRecord> block(reference->blockTableRecord());
  ZnArray<ZnDbObjectId> ids;
  if (!block.isOpen() || block->getBlockReferenceIds(ids, true, false) != Quorl::eOk || ids.isEmpty())
    return {};
  return ids.first();
}

ZnDbObjectId onlyReferenceOf(const ZnDbBlockTableRecord& block) {
  ZnDbObjectId only;
  return block.countReferences(only) == 1 ? only : ZnDbObjectId();
}

bool isMirrored(ZnDbObjectId refId) {
  ZnDbHolder<ZnDbBlockReference> reference(refId);
  return reference.isOpen() && reference->blockTransform().det() < 0.0;
}

ErrorStatus curvesOfReference(ZnDbObjectId refId, ZnArray<ZnDbObjectId>& ids, bool unerase) {
  ZnDbHolder<ZnDbBlockReference> reference;
  if (const ErrorStatus status = reference.open(refId); status != Quorl::eOk) return status;
  const ZnDbObjectId blockId = reference->blockTableRecord();
  if (unerase) uneraseObject(blockId);
  ZnDbHolder<ZnDbBlockTableRecord> block;
  if (const ErrorStatus status = block.open(blockId); status != Quorl::eOk) return status;
  for (const ZnDbObjectId id : block->entityIds()) {
    if (id.isErased() && !unerase) continue;
    if (unerase) uneraseObject(id);
    if (id.isDerivedFrom(ZnDbLine::desc()) || id.isDerivedFrom(ZnDbArc::desc())) {
      appendOnce(ids, id);
    } else if (id.isDerivedFrom(ZnDbBlockReference::desc())) {
      if (const ErrorStatus status = curvesOfReference(id, ids, unerase); status != Quorl::eOk) return status;
    }
  }
  return Quorl::eOk;
}

void uneraseObject(ZnDbObjectId id) {
  if (id.isNull() || !id.isErased()) return;
  // A reference comes back only to a block that is there.
  if (const ZnDbHolder<ZnDbBlockReference> reference(id, true); reference.isOpen())
    uneraseObject(reference->blockTableRecord());
  ZnDbHolder<ZnDbObject> object;
  if (object.openForWrite(id, true, true) == Quorl::eOk) object->erase(false);
}

ZnDbObjectId modelSpaceId(ZnDbDatabase* db) {
  ZnDbObjectId id;
  if (!db) return id;
  ZnDbHolder<ZnDbBlockTable> table(db->blockTableId());
  if (table.isOpen()) table->getIdAt(L"*Model_Space", id);
  return id;
}

ZnArray<ZnDbObjectId> spacesOf(ZnDbDatabase& db) {
  ZnArray<ZnDbObjectId> spaces;
  ZnDbHolder<ZnDbBlockTable> table(db.blockTableId());
  if (!table.isOpen()) return spaces;
  for (const ZnDbObjectId id : table->recordIds()) {
    ZnDbHolder<ZnDbBlockTableRecord> record(id);
    if (!record.isOpen()) continue;
    const ZnString& name = record->name();
    if (record->isLayout() || name.equalsNoCase(L"*Paper_Space") || name.equalsNoCase(L"*Model_Space"))
      appendOnce(spaces, id);
  }
  return spaces;
}

} // namespace torvi
