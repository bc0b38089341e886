#include "torvi/core/action_body.h"
#include "torvi/core/action_body_utils.h"

using Quorl::ErrorStatus;

namespace {

// A sub-block belongs to one object alone: what one generates or erases in it must not show in the other.
void appendSubBlocks(ZnDbObjectId blockId, ZnArray<ZnDbObjectId>& ids) {
  ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  if (!block.isOpen()) return;
  for (const ZnDbObjectId id : block->entityIds())
    if (!id.isErased() && id.isDerivedFrom(ZnDbBlockReference::desc()))
      ids.append(ZnDbTorviActionBodyUtils::getBTRIdFromBlockRef(id));
}

} // namespace

ErrorStatus ZnDbTorviActionBody::addMoreObjectsToDeepCloneOverride(ZnDbIdMapping& idMap,
                                                                   ZnArray<ZnDbObjectId>& ids) const {
  ZnDbIdPair pair(centerObjectId(), ZnDbObjectId(), false, false, true);
  if (!idMap.compute(pair)) return Quorl::eOk;
  ids.append(ownerId());
  const ZnDbObjectId blockId = ZnDbTorviActionBodyUtils::getBTRIdFromBlockRef(centerObjectId());
  ids.append(blockId);
  appendSubBlocks(blockId, ids);
  return Quorl::eOk;
}

ErrorStatus ZnDbTorviActionBody::postProcessAfterDeepCloneOverride(ZnDbIdMapping& idMap) {
  using Utils = ZnDbTorviActionBodyUtils;
  const ZnDbObjectId refId = centerObjectId();
  if (refId.isNull()) return Quorl::eOk;
  const ZnDbObjectId clonedRef = Utils::mapId(idMap, refId);
  const ZnDbObjectId clonedInput = Utils::mapId(idMap, getInputEdge(0).entity().topId());
  const ZnDbObjectId clonedBlock = Utils::mapId(idMap, Utils::getBTRIdFromBlockRef(refId));
  Utils::setBTRIdForBlockRef(clonedRef, clonedBlock);
  Utils::ensureClonedCenterLineOwnedByDestBTR(clonedInput, clonedRef);
  return Quorl::eOk;
}
