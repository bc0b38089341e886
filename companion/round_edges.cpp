#include "companion/round_edges.h"

#include "companion/visible_entities.h"
#include "torvi/dbutils/lyx_utils.h"

namespace companion {

std::vector<RoundEdge> visibleRoundEdges(ZnDbObjectId space) {
  std::vector<RoundEdge> found;
  visitVisibleEntities(space, [&found](const VisibleEntity& visible) {
    ZnArray<ZnDbSubentId> edges;
    visible.entity.getSubentIds(ZnDb::kEdgeSubentType, edges);
    for (const ZnDbSubentId& subent : edges) {
      // A look at the entity's own curve first: most edges of a drawing are straight.
      const std::unique_ptr<ZnGeCurve3d> own = visible.entity.subentCurve(subent);
      if (!own || !own->isKindOf(ZnGe::kCircularArc3d)) continue;
      RoundEdge edge{ZnDbFullSubentPath(visible.path, subent), {}};
      const std::unique_ptr<ZnGeCurve3d> curve(
          ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(ZnDbEdgeRef(edge.path), false));
      if (!curve || !curve->isKindOf(ZnGe::kCircularArc3d)) continue;
      edge.curve = static_cast<const ZnGeCircArc3d&>(*curve);
      found.push_back(std::move(edge));
    }
  });
  return found;
}

} // namespace companion
