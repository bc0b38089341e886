#include "companion/round_edges.h"

#include <unordered_map>

#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

namespace companion {

namespace {

class Collector {
public:
  std::vector<RoundEdge> collect(ZnDbObjectId space) {
    walk(space);
    return std::move(found_);
  }

private:
  void walk(ZnDbObjectId blockId);
  void visit(ZnDbObjectId entityId);
  void addEdges(const ZnDbEntity& entity);
  bool isLayerShown(ZnDbObjectId layerId);

  ZnArray<ZnDbObjectId> path_;
  std::vector<RoundEdge> found_;
  std::unordered_map<ZnDbObjectId, bool> shownLayers_;
};

bool Collector::isLayerShown(ZnDbObjectId layerId) {
  const auto [place, isNew] = shownLayers_.try_emplace(layerId, true);
  if (isNew) {
    ZnDbHolder<ZnDbLayerTableRecord> layer(layerId);
    place->second = !layer.isOpen() || layer->isShown();
  }
  return place->second;
}

void Collector::walk(ZnDbObjectId blockId) {
  ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  if (!block.isOpen()) return;
  for (const ZnDbObjectId id : block->entityIds())
    if (!id.isErased()) visit(id);
}

void Collector::visit(ZnDbObjectId entityId) {
  ZnDbHolder<ZnDbEntity> entity(entityId);
  if (!entity.isOpen() || entity->visibility() != ZnDb::kVisible || !isLayerShown(entity->layerId())) return;
  path_.append(entityId);
  if (const auto* reference = ZnDbBlockReference::cast(entity.object())) {
    if (!ZnDbTorviObjectWrapper::isCenterObject(entityId)) walk(reference->blockTableRecord());
  } else {
    addEdges(*entity);
  }
  path_.removeLast();
}

void Collector::addEdges(const ZnDbEntity& entity) {
  ZnArray<ZnDbSubentId> edges;
  entity.getSubentIds(ZnDb::kEdgeSubentType, edges);
  for (const ZnDbSubentId& subent : edges) {
    // A look at the entity's own curve first: most edges of a drawing are straight.
    const std::unique_ptr<ZnGeCurve3d> own = entity.subentCurve(subent);
    if (!own || !own->isKindOf(ZnGe::kCircArc3d)) continue;
    RoundEdge edge{ZnDbFullSubentPath(path_, subent), {}};
    const std::unique_ptr<ZnGeCurve3d> curve(
        ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(ZnDbEdgeRef(edge.path), false));
    if (!curve || !curve->isKindOf(ZnGe::kCircArc3d)) continue;
    edge.curve = static_cast<const ZnGeCircArc3d&>(*curve);
    found_.push_back(std::move(edge));
  }
}

} // namespace

std::vector<RoundEdge> visibleRoundEdges(ZnDbObjectId space) { return Collector().collect(space); }

} // namespace companion
