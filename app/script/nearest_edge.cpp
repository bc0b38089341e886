#include "app/script/nearest_edge.h"

#include <algorithm>
#include <limits>

#include "app/tolerance.h"
#include "quorl/db/block_reference.h"
#include "quorl/db/block_table.h"
#include "quorl/db/edge_ref.h"
#include "quorl/db/layer_table.h"

namespace app {

namespace {

class Search {
public:
  explicit Search(const ZnGePoint3d& point)
      : point_(point) {}

  struct Found {
    ZnDbFullSubentPath path;
    double distance = std::numeric_limits<double>::infinity();
    bool isThere() const { return !path.objectIds().isEmpty(); }
  };

  void walk(ZnDbObjectId blockId, const ZnGeMatrix3d& toSpace, Found* nearest);
  Found drawn, generated;

private:
  void visit(const ZnDbEntity& entity, const ZnGeMatrix3d& toSpace, Found* nearest);
  bool isTooFar(const ZnDbEntity& entity, const ZnGeMatrix3d& toSpace) const;
  void tryEdges(const ZnDbEntity& entity, Found& nearest);

  ZnGePoint3d point_;
  ZnArray<ZnDbObjectId> path_;
};

bool isShown(const ZnDbEntity& entity) {
  ZnDbHolder<ZnDbLayerTableRecord> layer(entity.layerId());
  return entity.visibility() == ZnDb::kVisible && (!layer.isOpen() || layer->isShown());
}

// The box spares most entities the look at their edges.
bool Search::isTooFar(const ZnDbEntity& entity, const ZnGeMatrix3d& toSpace) const {
  ZnGeBoundBlock3d box;
  return entity.getGeomExtents(box) == Quorl::eOk &&
         box.transformBy(toSpace).distanceTo(point_) > std::max(drawn.distance, generated.distance);
}

void Search::walk(ZnDbObjectId blockId, const ZnGeMatrix3d& toSpace, Found* nearest) {
  ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  if (!block.isOpen()) return;
  // Whatever lies within generated content is generated too.
  if (block->isAnonymous()) nearest = &generated;
  for (const ZnDbObjectId id : block->entityIds()) {
    ZnDbHolder<ZnDbEntity> entity(id);
    if (!entity.isOpen() || !isShown(*entity) || isTooFar(*entity, toSpace)) continue;
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
  ZnArray<ZnDbSubentId> edges;
  entity.getSubentIds(ZnDb::kEdgeSubentType, edges);
  for (const ZnDbSubentId& subent : edges) {
    const ZnDbFullSubentPath path(path_, subent);
    std::unique_ptr<ZnGeCurve3d> curve;
    if (ZnDbEdgeRef(path).evaluateCurve(curve) != Quorl::eOk) continue;
    const double distance = curve->distanceTo(point_);
    if (distance < nearest.distance) nearest = {path, distance};
  }
}

} // namespace

bool nearestEdge(const ZnDbDatabase& database, const ZnGePoint3d& point, Pick pick,
                 ZnDbFullSubentPath& path) {
  Search search(point);
  search.walk(database.currentSpaceId(), ZnGeMatrix3d::kIdentity, &search.drawn);
  const bool generatedFirst = pick == Pick::kGeneratedFirst;
  const Search::Found& first = generatedFirst ? search.generated : search.drawn;
  const Search::Found& second = generatedFirst ? search.drawn : search.generated;
  const bool takeSecond = pick != Pick::kDrawnOnly && second.isThere() &&
                          (!first.isThere() || second.distance + kPickSlack < first.distance);
  path = (takeSecond ? second : first).path;
  return !path.objectIds().isEmpty();
}

} // namespace app
