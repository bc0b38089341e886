#include "companion/straight_edges.h"

#include <memory>

#include "companion/visible_entities.h"

namespace companion {

std::vector<StraightEdge> visibleStraightEdges(ZnDbObjectId space) {
  std::vector<StraightEdge> found;
  visitVisibleEntities(space, [&found](const VisibleEntity& visible) {
    ZnArray<ZnDbSubentId> edges;
    visible.entity.getSubentIds(ZnDb::kEdgeSubentType, edges);
    for (const ZnDbSubentId& subent : edges) {
      const std::unique_ptr<ZnGeCurve3d> curve = visible.entity.subentCurve(subent);
      if (!curve || !curve->isKindOf(ZnGe::kLineSeg3d)) continue;
      ZnGeLineSeg3d line = static_cast<const ZnGeLineSeg3d&>(*curve);
      line.transformBy(visible.toSpace);
      if (!line.isDegenerate()) found.push_back({ZnDbFullSubentPath(visible.path, subent), line});
    }
  });
  return found;
}

} // namespace companion
