#include "app/script/nearest_edge.h"

#include <algorithm>
#include <limits>

#include "app/tolerance.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/edge_ref.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/layer_table.h"

namespace app {

namespace {

constexpr double kNowhere = std::numeric_limits<double>::infinity();

class Search {
public:
  Search(const ZnGePoint3d& point, Pick pick)
      : point_(point)
      , pick_(pick) {}

  // Looks at an entity of the space whose box is that far away; false when no other that is as far, or
  // farther, can change the answer.
  bool tryEntity(ZnDbObjectId id, double boxDistance);
  const PickedEdge* answer() const;

private:
  struct Found : PickedEdge {
    Found() { distance = kNowhere; }
    std::uint64_t entity = 0; // handle of the entity of the space
    bool isThere() const { return !path.objectIds().isEmpty(); }
  };

  void walk(ZnDbObjectId blockId, const ZnGeMatrix3d& toSpace, Found* nearest);
  void visit(const ZnDbEntity& entity, const ZnGeMatrix3d& toSpace, Found* nearest);
  void tryEdges(const ZnDbEntity& entity, Found& nearest);
  const Found& first() const { return pick_ == Pick::kGeneratedFirst ? generated_ : drawn_; }
  const Found& second() const { return pick_ == Pick::kGeneratedFirst ? drawn_ : generated_; }
  // Edges farther away are not the answer.
  double farthest() const {
    return pick_ == Pick::kDrawnOnly ? drawn_.distance
                                     : std::min(first().distance, second().distance + kPickSlack);
  }

  ZnGePoint3d point_;
  Pick pick_;
  ZnArray<ZnDbObjectId> path_;
  Found drawn_, generated_;
};

bool isShown(const ZnDbEntity& entity) {
  ZnDbHolder<ZnDbLayerTableRecord> layer(entity.layerId());
  return entity.visibility() == ZnDb::kVisible && (!layer.isOpen() || layer->isShown());
}

bool Search::tryEntity(ZnDbObjectId id, double boxDistance) {
  if (boxDistance > farthest()) return false;
  ZnDbHolder<ZnDbEntity> entity(id);
  if (!entity.isOpen() || !isShown(*entity)) return true;
  path_.append(id);
  visit(*entity, ZnGeMatrix3d::kIdentity, &drawn_);
  path_.removeLast();
  return true;
}

void Search::walk(ZnDbObjectId blockId, const ZnGeMatrix3d& toSpace, Found* nearest) {
  ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  if (!block.isOpen()) return;
  // Whatever lies within generated content is generated too.
  if (block->isAnonymous()) nearest = &generated_;
  if (nearest == &generated_ && pick_ == Pick::kDrawnOnly) return;
  for (const ZnDbObjectId id : block->entityIds()) {
    ZnDbHolder<ZnDbEntity> entity(id);
    if (!entity.isOpen() || !isShown(*entity)) continue;
    // The box spares most entities the look at their edges.
    ZnGeBoundBlock3d box;
    if (entity->getGeomExtents(box) == Quorl::eOk && box.transformBy(toSpace).distanceTo(point_) > farthest())
      continue;
    path_.append(id);
    visit(*entity, toSpace, nearest);
    path_.removeLast();
  }
}

void Search::visit(const ZnDbEntity& entity, const ZnGeMatrix3d& toSpace, Found* nearest) {
  if (const auto* reference = ZnDbBlockReference::cast(&entity))
    walk(reference->blockTableRecord(), toSpace * reference->blockTransform(), nearest);
  else
    tryEdges(entity, *nearest);
}

void Search::tryEdges(const ZnDbEntity& entity, Found& nearest) {
  const std::uint64_t madeAs = path_.first().handle().value;
  ZnArray<ZnDbSubentId> edges;
  entity.getSubentIds(ZnDb::kEdgeSubentType, edges);
  for (const ZnDbSubentId& subent : edges) {
    const ZnDbFullSubentPath path(path_, subent);
    std::unique_ptr<ZnGeCurve3d> curve;
    if (ZnDbEdgeRef(path).evaluateCurve(curve) != Quorl::eOk) continue;
    const double distance = curve->distanceTo(point_);
    if (distance > nearest.distance || (distance == nearest.distance && madeAs >= nearest.entity)) continue;
    nearest.path = path;
    nearest.distance = distance;
    nearest.entity = madeAs;
  }
}

const PickedEdge* Search::answer() const {
  const bool takeSecond =
      pick_ != Pick::kDrawnOnly && second().isThere() && second().distance + kPickSlack < first().distance;
  const Found& found = takeSecond ? second() : first();
  return found.isThere() ? &found : nullptr;
}

} // namespace

bool nearestEdge(SpaceIndex& index, const ZnGePoint3d& point, Pick pick, PickedEdge& edge) {
  Search search(point, pick);
  index.visitNearest(point, [&](ZnDbObjectId id, double distance) { return search.tryEntity(id, distance); });
  if (const PickedEdge* answer = search.answer()) edge = *answer;
  return search.answer() != nullptr;
}

double pickReach(SpaceIndex& index) { return std::max(kPickReach * index.diagonal(), kPickSlack); }

} // namespace app
