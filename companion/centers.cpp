#include "companion/centers.h"

#include <algorithm>

#include "companion/center_bodies.h"
#include "companion/concentric_groups.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/pattern/action_body.h"

namespace companion {

namespace {

// A circle that could get a mark, or, without an edge, one that carries a mark.
struct Candidate {
  ZnGeCircArc3d curve;
  const RoundEdge* edge = nullptr;
};

void sortOutermostFirst(std::vector<Candidate>& candidates) {
  std::stable_sort(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
    if (a.curve.radius() != b.curve.radius()) return a.curve.radius() > b.curve.radius();
    return a.curve.endAng() - a.curve.startAng() > b.curve.endAng() - b.curve.startAng();
  });
}

bool isShown(ZnDbObjectId output) { return !output.isNull() && !output.isErased(); }

} // namespace

const RoundEdge& Center::hole() const {
  const auto full =
      std::find_if(edges.begin(), edges.end(), [](const RoundEdge* edge) { return edge->isFullCircle(); });
  return full == edges.end() ? outermost() : **full;
}

std::vector<Center> centersOf(const std::vector<const RoundEdge*>& edges,
                              const std::vector<ZnGeCircArc3d>& marked) {
  std::vector<Candidate> candidates;
  for (const RoundEdge* edge : edges) candidates.push_back({edge->curve, edge});
  for (const ZnGeCircArc3d& circle : marked) candidates.push_back({circle, nullptr});
  sortOutermostFirst(candidates);
  ConcentricGroups groups;
  std::vector<Center> centers;
  for (const Candidate& candidate : candidates) {
    const auto index = static_cast<size_t>(groups.groupOf(candidate.curve));
    if (index == centers.size()) centers.emplace_back();
    if (candidate.edge)
      centers[index].edges.push_back(candidate.edge);
    else
      centers[index].isMarked = true;
  }
  std::erase_if(centers, [](const Center& center) { return center.edges.empty(); });
  // The edges stand in one array, which is in drawing order.
  std::sort(centers.begin(), centers.end(),
            [](const Center& a, const Center& b) { return std::less<>()(a.edges.front(), b.edges.front()); });
  return centers;
}

std::vector<ZnGeCircArc3d> markedCircles(ZnDbObjectId space) {
  std::vector<ZnGeCircArc3d> circles;
  visitCenterBodies(space, [&circles](const ZnDbTorviActionBody& body) {
    ZnArray<ZnDbEdgeRef> edges;
    if (body.getEdgeRefs(edges) != Quorl::eOk) return;
    const auto* pattern = ZnDbCenterMarkPatternActionBody::cast(&body);
    for (int i = 0; i < edges.length(); ++i) {
      // A circle that does not lie on a pattern's ring is one of its edges, but has no mark.
      if (pattern && !isShown(pattern->getOutputEdge(ZnDbCenterMarkPatternActionBody::dependencyKey(i, -1))))
        continue;
      const std::unique_ptr<ZnGeCurve3d> curve(ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(edges[i], true));
      if (curve && curve->isKindOf(ZnGe::kCircularArc3d))
        circles.push_back(static_cast<const ZnGeCircArc3d&>(*curve));
    }
  });
  return circles;
}

} // namespace companion
