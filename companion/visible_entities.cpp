#include "companion/visible_entities.h"

#include <unordered_map>

#include "torvi/core/object_wrapper.h"

namespace companion {

namespace {

class Walk {
public:
  explicit Walk(const std::function<void(const VisibleEntity&)>& visit)
      : visit_(visit) {}

  void block(ZnDbObjectId blockId, const ZnGeMatrix3d& toSpace) {
    ZnDbHolder<ZnDbBlockTableRecord> record(blockId);
    if (!record.isOpen()) return;
    for (const ZnDbObjectId id : record->entityIds())
      if (!id.isErased()) entity(id, toSpace);
  }

private:
  void entity(ZnDbObjectId id, const ZnGeMatrix3d& toSpace);
  bool isLayerShown(ZnDbObjectId layerId);

  const std::function<void(const VisibleEntity&)>& visit_;
  ZnArray<ZnDbObjectId> path_;
  std::unordered_map<ZnDbObjectId, bool> shownLayers_;
};

bool Walk::isLayerShown(ZnDbObjectId layerId) {
  const auto [place, isNew] = shownLayers_.try_emplace(layerId, true);
  if (isNew) {
    ZnDbHolder<ZnDbLayerTableRecord> layer(layerId);
    place->second = !layer.isOpen() || layer->isShown();
  }
  return place->second;
}

void Walk::entity(ZnDbObjectId id, const ZnGeMatrix3d& toSpace) {
  ZnDbHolder<ZnDbEntity> entity(id);
  if (!entity.isOpen() || entity->visibility() != ZnDb::kVisible || !isLayerShown(entity->layerId())) return;
  path_.append(id);
  if (const auto* reference = ZnDbBlockReference::cast(entity.object())) {
    if (!ZnDbTorviObjectWrapper::isCenterObject(id))
      block(reference->blockTableRecord(), toSpace * reference->blockTransform());
  } else {
    visit_({*entity, path_, toSpace});
  }
  path_.removeLast();
}

} // namespace

void visitVisibleEntities(ZnDbObjectId space, const std::function<void(const VisibleEntity&)>& visit) {
  Walk(visit).block(space, ZnGeMatrix3d::kIdentity);
}

} // namespace companion
