#include "quorl/edit/transfer.h"

#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/open.h"
#include "quorl/db/core/transaction.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"

using Quorl::ErrorStatus;
using Ids = ZnArray<ZnDbObjectId>;

namespace {

// All or the status of the first that can't be moved.
ErrorStatus place(const ZnDbIdMapping& mapping, const Ids& originals, const ZnGeMatrix3d& transform,
                  Ids& made) {
  for (const ZnDbObjectId id : originals) {
    ZnDbIdPair pair(id);
    if (!mapping.compute(pair) || !pair.isCloned()) continue;
    ZnDbHolder<ZnDbEntity> clone;
    ErrorStatus status = clone.openForWrite(pair.value(), false, true);
    if (status == Quorl::eOk && !(transform == ZnGeMatrix3d::kIdentity))
      status = clone->transformBy(transform);
    if (status != Quorl::eOk) return status;
    made.append(pair.value());
  }
  return Quorl::eOk;
}

Ids contentOf(ZnDbObjectId blockId) {
  Ids content;
  const ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  if (!block.isOpen()) return content;
  for (const ZnDbObjectId id : block->entityIds())
    if (!id.isErased()) content.append(id);
  return content;
}

ZnString nameOf(ZnDbObjectId blockId) {
  const ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  return block.isOpen() ? block->name() : ZnString();
}

template<class Call> void tell(Call&& call) { ZnRxEvent::instance().tell(call); }

} // namespace

ErrorStatus zndbCopyOut(const Ids& entities, ZnDbDatabase& to, const ZnGePoint3d& base,
                        const ZnDbTransferNames& names) {
  if (entities.isEmpty()) return Quorl::eNothingToDo;
  ZnDbDatabase* from = entities.first().database();
  if (!from || from == &to) return Quorl::eInvalidInput;
  ZnDbTransaction there(to), here(*from);
  ZnDbIdMapping mapping(ZnDb::kCopyOutContext, from, &to);
  if (names.keptApart) mapping.setNamePrefix(names.prefix);
  if (const ErrorStatus status = from->deepCloneObjects(entities, to.modelSpaceId(), mapping);
      status != Quorl::eOk)
    return status;
  Ids made;
  const ErrorStatus status = place(mapping, entities, ZnGeMatrix3d::translation(-base.asVector()), made);
  if (status != Quorl::eOk) return status;
  there.end();
  return here.end();
}

ErrorStatus zndbInsertDrawing(ZnDbObjectId into, ZnDbDatabase& from, const ZnGeMatrix3d& transform,
                              const ZnDbTransferNames& names, Ids& made) {
  ZnDbDatabase* to = into.database();
  if (!to || to == &from) return Quorl::eInvalidInput;
  const Ids content = contentOf(from.modelSpaceId());
  if (content.isEmpty()) return Quorl::eNothingToDo;
  bool isSpace = false;
  {
    // Closed again by then: what goes in may need a network there.
    const ZnDbHolder<ZnDbBlockTableRecord> block(into);
    if (!block.isOpen()) return block.status();
    isSpace = block->isLayout();
  }
  ZnDbIdMapping mapping(isSpace ? ZnDb::kCopyInContext : ZnDb::kInsertContext, &from, to);
  if (names.keptApart) mapping.setNamePrefix(names.prefix);
  const ZnString name = nameOf(into);
  tell([&](ZnRxEventReactor& reactor) { reactor.beginInsert(to, name.c_str(), &from); });
  ErrorStatus status = from.deepCloneObjects(content, into, mapping);
  if (status == Quorl::eOk) {
    tell([&](ZnRxEventReactor& reactor) { reactor.otherInsert(to, mapping, &from); });
    status = place(mapping, content, transform, made);
  }
  tell([&](ZnRxEventReactor& reactor) { reactor.endInsert(to); });
  return status;
}

ErrorStatus zndbInsertAsBlock(ZnDbDatabase& to, const ZnString& name, ZnDbDatabase& from,
                              const ZnDbTransferNames& names, ZnDbObjectId& block) {
  ZnDbTransaction transaction(to);
  {
    ZnDbHolder<ZnDbBlockTable> table;
    ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
    ErrorStatus status = record->setName(name);
    if (status == Quorl::eOk) status = table.openForWrite(to.blockTableId());
    if (status == Quorl::eOk) status = table->add(block, record.object());
    if (status != Quorl::eOk) return status;
  }
  Ids made;
  const ErrorStatus status = zndbInsertDrawing(block, from, ZnGeMatrix3d::kIdentity, names, made);
  return status == Quorl::eOk ? transaction.end() : status;
}
