#include "companion/edge_ends.h"

namespace companion {

namespace {

constexpr size_t kMostEdges = 8;

std::vector<ZnGePoint2d> endsOf(const std::vector<StraightEdge>& edges) {
  std::vector<ZnGePoint2d> ends;
  for (const StraightEdge& edge : edges)
    for (const ZnGePoint3d& end : {edge.line.startPoint(), edge.line.endPoint()})
      ends.push_back({end.x, end.y});
  return ends;
}

} // namespace

EdgeEnds::EdgeEnds(const std::vector<StraightEdge>& edges)
    : edges_(edges)
    , index_(endsOf(edges)) {}

std::vector<EdgeFromEnd> EdgeEnds::at(const ZnGePoint3d& point, double reach) const {
  std::vector<EdgeFromEnd> found;
  for (const int end : index_.within({point.x, point.y}, reach)) {
    if (found.size() == kMostEdges) break;
    const ZnGeLineSeg3d& line = edges_[static_cast<size_t>(end / 2)].line;
    const bool atStart = end % 2 == 0;
    const ZnGePoint3d here = atStart ? line.startPoint() : line.endPoint();
    if (here.distanceTo(point) <= reach)
      found.push_back({end / 2, here, atStart ? line.endPoint() : line.startPoint()});
  }
  return found;
}

} // namespace companion
