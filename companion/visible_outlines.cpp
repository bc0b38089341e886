#include "companion/visible_outlines.h"

#include <memory>

#include "companion/tolerance.h"
#include "companion/visible_entities.h"

namespace companion {

std::vector<Outline> visibleOutlines(ZnDbObjectId space) {
  std::vector<std::vector<ZnGePoint2d>> chains;
  visitVisibleEntities(space, [&chains](const VisibleEntity& visible) {
    const auto* curve = ZnDbCurve::cast(&visible.entity);
    if (!curve) return;
    std::vector<std::unique_ptr<ZnGeCurve3d>> pieces;
    curve->appendPieces(pieces);
    std::vector<ZnGePoint2d> chain;
    for (const std::unique_ptr<ZnGeCurve3d>& piece : pieces) {
      std::vector<ZnGePoint3d> points;
      piece->appendSamplePoints(piece->length() * kOutlineChordShare, points);
      for (ZnGePoint3d& point : points) {
        point.transformBy(visible.toSpace);
        if (chain.empty() || chain.back() != ZnGePoint2d(point.x, point.y))
          chain.push_back({point.x, point.y});
      }
    }
    if (curve->isClosed() && chain.size() > 2 && chain.front() != chain.back())
      chain.push_back(chain.front());
    chains.push_back(std::move(chain));
  });
  return joinOutlines(std::move(chains));
}

} // namespace companion
