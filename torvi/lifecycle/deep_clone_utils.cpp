#include "torvi/lifecycle/deep_clone_utils.h"

#include <algorithm>

#include "torvi/core/action_body.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/core/navigation.h"
#include "torvi/core/object_pointer.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/drawing/ask.h"
#include "torvi/drawing/blocks.h"

using Quorl::ErrorStatus;
using Utils = ZnTorviDeepCloneUtils;
using Ids = ZnArray<ZnDbObjectId>;

namespace {

constexpr int kExplodeContext = ZnDb::kExplodeContext;

// Ids of blocks whose center object is gone.
Ids& purgeList() {
  static Ids blocks;
  return blocks;
}

// The path of an edge after a clone. What was exploded stands one level higher than before.
ZnDbFullSubentPath remapEdgePath(const ZnDbFullSubentPath& path, const ZnDbIdMapping& map) {
  ZnDbFullSubentPath shortened = path;
  if (map.deepCloneContext() == kExplodeContext && shortened.objectIds().length() > 1)
    shortened.objectIds().removeAt(0);
  ZnDbCompoundObjectId object;
  object.setFullPath(shortened, nullptr);
  const ZnDbObjectId leaf = object.leafId();
  object.remap(map);
  Ids above;
  if (object.getPath(above) == Quorl::eOk)
    if (const ZnDbObjectId clone = Utils::getClonedId(map, leaf); !clone.isNull()) object.set(clone, above);
  Ids full;
  object.getFullPath(full);
  return ZnDbFullSubentPath(full, path.subentId());
}

void setEdgeParam(ZnDbObjectId paramId, const ZnDbFullSubentPath& path) {
  // A clone that was taken back leads nowhere.
  for (const ZnDbObjectId id : path.objectIds())
    if (id.isErased()) return;
  const ZnDbEdgeRef edge(ZnDbCompoundObjectId(path, nullptr), path.subentId(), ZnDbSubentId(), nullptr);
  ZnDbHolder<ZnDbAssocEdgeActionParam> param;
  if (param.openForWrite(paramId, true) != Quorl::eOk) return;
  param->setEdgeRef(edge, true, false, 0);
  if (param->isErased()) param->erase(false); // an edge that was lost with what was exploded comes back
}

void appendEdgeParams(ZnDbObjectId bodyId, Ids& params) {
  torvi::ask<ZnDbTorviActionBody>(bodyId, false, [&](const ZnDbTorviActionBody& body) {
    const int count = body.paramCount();
    for (int i = 0; i < count; ++i)
      if (const ZnDbObjectId id = body.paramAtIndex(i); id.isDerivedFrom(ZnDbAssocEdgeActionParam::desc()))
        params.append(id);
    return true;
  });
}

// As it is stored, live or not: what is to be cloned may be on its way out already.
ZnDbFullSubentPath pathOf(const ZnDbAssocEdgeActionParam& param) {
  ZnArray<ZnDbEdgeRef> edges;
  Ids path;
  if (param.edgeRefs(edges) != Quorl::eOk || edges.isEmpty()) return {};
  edges[0].entity().getFullPath(path);
  return ZnDbFullSubentPath(path, edges[0].subentId());
}

} // namespace

ZnDbObjectId Utils::getClonedId(const ZnDbIdMapping& map, ZnDbObjectId id) {
  ZnDbIdPair pair(id);
  return map.compute(pair) ? pair.value() : ZnDbObjectId();
}

void Utils::collectAllDeepCloneBtrIds(ZnDbIdMapping& map, Ids& blockIds) {
  for (const ZnDbIdPair& pair : map.pairs()) {
    ZnDbHolder<ZnDbEntity> entity(pair.key());
    if (entity.isOpen() && entity->blockId().isValid()) torvi::appendOnce(blockIds, entity->blockId());
  }
}

bool Utils::isCenterDependentObjectsCloned(const ZnDbIdMapping& map, const ZnDbObjectId& centerId) {
  const std::unique_ptr<ZnDbTorviObjectWrapper> center(makeTorviWrapper(centerId));
  ZnArray<ZnDbEdgeRef> edges;
  if (!center || center->getEdgeRefs(edges) != Quorl::eOk || edges.isEmpty()) return false;
  return std::all_of(edges.begin(), edges.end(), [&](const ZnDbEdgeRef& edge) {
    ZnDbIdPair pair(edge.entity().topId());
    return map.compute(pair);
  });
}

void Utils::collectAllOldEdgeParams(const Ids& blockIds, ZnTorviEdgeParamMap& params) {
  Ids bodies, paramIds, references;
  for (const ZnDbObjectId blockId : blockIds) {
    ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
    references.removeAll();
    if (!block.isOpen() || block->getBlockReferenceIds(references, true, false) != Quorl::eOk) continue;
    for (const ZnDbObjectId id : references) torvi::appendBodiesOn(id, true, bodies);
  }
  for (const ZnDbObjectId bodyId : bodies) appendEdgeParams(bodyId, paramIds);
  params.clear();
  for (const ZnDbObjectId id : paramIds) {
    ZnDbHolder<ZnDbAssocEdgeActionParam> param(id);
    if (param.isOpen()) params[id] = pathOf(*param);
  }
}

void Utils::getNewEdgeParamsWithNewSubentPath(ZnDbIdMapping& map, Ids& /*blockIds*/,
                                              ZnTorviEdgeParamMap& oldParams,
                                              ZnTorviEdgeParamMap& newParams) {
  if (&newParams != &oldParams) newParams = oldParams;
  for (auto& param : newParams) param.second = remapEdgePath(param.second, map);
}

void Utils::updateEdgeparams(ZnTorviEdgeParamMap& params) {
  for (const auto& param : params) setEdgeParam(param.first, param.second);
}

void Utils::updateEdgeparams(ZnTorviEdgeParamMap& oldParams, ZnTorviEdgeParamMap& newParams,
                             ZnDbObjectId erasedRef) {
  for (auto param = newParams.begin(); param != newParams.end();) {
    if (!oldParams[param->first].objectIds().contains(erasedRef)) {
      ++param;
      continue;
    }
    oldParams.erase(param->first);
    setEdgeParam(param->first, param->second);
    param = newParams.erase(param);
  }
}

void Utils::updateEdgeParamsWithNewSubentPath(ZnDbIdMapping& map, Ids& blockIds,
                                              ZnTorviEdgeParamMap& params) {
  if (params.empty()) return;
  ZnTorviEdgeParamMap remapped;
  getNewEdgeParamsWithNewSubentPath(map, blockIds, params, remapped);
  updateEdgeparams(remapped);
  blockIds.removeAll();
  params.clear();
}

void Utils::createCenterBtrToSubEntitiesMap(const Ids& blockIds, ZnTorviCenterBlockMap& centers) {
  for (const ZnDbObjectId blockId : blockIds) {
    ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
    if (!block.isOpen()) continue;
    ZnDbObjectId inner;
    const ZnDbObjectId reference = torvi::centerObjectWithBlock(*block, inner).reference;
    if (!ZnDbHolder<ZnDbBlockReference>(reference).isOpen()) continue;
    auto entities = std::make_unique<Ids>();
    for (const ZnDbObjectId id : block->entityIds())
      if (!id.isErased()) entities->append(id);
    Ids*& held = centers[reference];
    delete held;
    held = entities.release();
  }
}

void Utils::updateCenterBtrSubEntityProps(const ZnDbIdMapping& map, const ZnTorviCenterBlockMap& centers) {
  for (const auto& center : centers) {
    ZnDbHolder<ZnDbEntity> reference(center.first);
    if (!reference.isOpen()) continue;
    const ZnCmColor color = reference->color();
    const ZnCmTransparency transparency = reference->transparency();
    for (const ZnDbObjectId id : *center.second) {
      ZnDbHolder<ZnDbEntity> clone;
      if (clone.openForWrite(getClonedId(map, id)) != Quorl::eOk) continue;
      clone->setColor(color, true);
      clone->setTransparency(transparency, true);
    }
  }
}

void Utils::deleteCenterBlockMap(ZnTorviCenterBlockMap& centers) {
  for (const auto& center : centers) delete center.second;
  centers.clear();
}

void Utils::markBlockTableRecordToPurge(const ZnDbObjectId& blockId) { purgeList().append(blockId); }

// From the last to the first; entries of other drawings wait for the save of theirs.
void Utils::purgeMarkedBlockTableRecords(ZnDbDatabase* db) {
  Ids& blocks = purgeList();
  const auto isOthers = [db](ZnDbObjectId id) { return id.isValid() && id.database() != db; };
  for (int i = blocks.length() - 1; i >= 0; --i) {
    if (isOthers(blocks[i])) continue;
    ZnDbHolder<ZnDbBlockTableRecord> block(blocks[i]);
    Ids references;
    if (block.isOpen() && block.upgrade() == Quorl::eOk &&
        block->getBlockReferenceIds(references, true, false) == Quorl::eOk && references.isEmpty())
      block->erase(true);
  }
  Ids waiting;
  for (const ZnDbObjectId id : blocks)
    if (isOthers(id)) waiting.append(id);
  blocks = waiting;
}

void Utils::forgetMarkedBlockTableRecords(const ZnDbDatabase* db) {
  Ids& blocks = purgeList();
  Ids others;
  for (const ZnDbObjectId id : blocks)
    if (db && id.isValid() && id.database() != db) others.append(id);
  blocks = others;
}
