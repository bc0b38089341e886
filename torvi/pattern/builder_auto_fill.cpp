#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "torvi/core/tolerance.h"
#include "torvi/drawing/edge_curves.h"
#include "torvi/drawing/views.h"
#include "torvi/pattern/builder.h"
#include "torvi/pattern/transient_layout.h"

using Quorl::ErrorStatus;

namespace {

std::optional<ZnGeCircArc3d> roundCurveOf(const ZnDbEdgeRef& edge) {
  const std::unique_ptr<ZnGeCurve3d> curve(torvi::evaluatedEdgeCurve(edge, false));
  if (!curve || !curve->isKindOf(ZnGe::kCircularArc3d)) return std::nullopt;
  return static_cast<const ZnGeCircArc3d&>(*curve);
}

// The path down to what holds the edge's entity; false for an edge that nothing holds.
bool enclosingPath(const ZnDbEdgeRef& edge, ZnArray<ZnDbObjectId>& path) {
  if (edge.entity().getFullPath(path) != Quorl::eOk || path.length() == 1) return false;
  path.removeLast();
  return true;
}

void removeMarked(ZnArray<ZnDbEdgeRef>& edges, const std::vector<bool>& marked) {
  ZnArray<ZnDbEdgeRef> kept;
  for (int i = 0; i < edges.length(); ++i)
    if (!marked[static_cast<size_t>(i)]) kept.append(edges[i]);
  edges = kept;
}

// A circle that fills a third of the view or more bounds the part and is no hole of it.
double largestHole(const ZnArray<ZnDbObjectId>& path) {
  constexpr double kBoundaryShare = 1.0 / 3.0;
  constexpr double kRadiusOfSize = 0.5;
  const double unlimited = std::numeric_limits<double>::max();
  if (!torvi::isInDrawingView(ZnDbFullSubentPath(path, ZnDbSubentId()))) return unlimited;
  ZnDbHolder<ZnDbViewport> viewport(path.first());
  ZnGeBoundBlock3d box;
  if (!viewport.isOpen() || viewport->getGeomExtents(box) != Quorl::eOk) return unlimited;
  const ZnGeVector3d size = box.max() - box.min();
  return kRadiusOfSize * std::sqrt(size.x * size.y * kBoundaryShare);
}

bool isShownCurve(ZnDbObjectId id) {
  ZnDbHolder<ZnDbCurve> curve(id);
  return curve.isOpen() && curve->visibility() != ZnDb::kInvisible;
}

// Of circles round one center the one that users mean as the hole.
bool isBetterHole(const ZnGeCircArc3d& arc, const ZnGeCircArc3d& than) {
  const bool isClosed = arc.isClosed();
  return isClosed == than.isClosed() ? arc.radius() > than.radius() : isClosed;
}

// Candidates in the order of their block, one for each center unless all are wanted.
class CandidateArcs {
public:
  explicit CandidateArcs(bool keepAll)
      : keepAll_(keepAll) {}

  void add(const ZnGeCircArc3d& arc, const ZnDbEdgeRef& edge, ZnArray<ZnDbEdgeRef>& edges) {
    const auto same =
        keepAll_ ? arcs_.end() : std::find_if(arcs_.begin(), arcs_.end(), [&](const auto& kept) {
          return kept.center().isEqualTo(arc.center(), candidateTolerance());
        });
    if (same == arcs_.end()) {
      arcs_.push_back(arc);
      edges.append(edge);
    } else if (isBetterHole(arc, *same)) {
      edges[static_cast<int>(same - arcs_.begin())] = edge;
      *same = arc;
    }
  }

private:
  bool keepAll_;
  std::vector<ZnGeCircArc3d> arcs_;
};

} // namespace

bool ZnCenterMarkPatternBuilder::autoFillPattern() {
  if (!autoFillMode() || inputEdges().isEmpty()) return false;
  ZnArray<ZnDbEdgeRef> candidates;
  if (!getCandidates(candidates)) return false;
  for (const ZnDbEdgeRef& edge : inputEdges()) candidates.remove(edge);
  if (candidates.isEmpty() || !narrowCandidates(candidates)) return false;
  ZnArray<ZnDbEdgeRef> all = inputEdges();
  all.append(candidates);
  modifyEdgeRefsAsPerBrokenView(all);
  autoFillTypeBefore_ = patternType_;
  if (!makeLayout(patternType_, referenceEdge_)->fitCandidateEdges(all, inputEdges().length())) return false;
  // The base's setter: the count of the user's own edges stays.
  ZnTorviBuilder::setInputEdges(all);
  updateBuilderFromLayout();
  return true;
}

void ZnCenterMarkPatternBuilder::undoAutoFillPattern() {
  patternType_ = autoFillTypeBefore_;
  if (inputEdges().length() == userEdgeCount_) return;
  ZnArray<ZnDbEdgeRef> edges = inputEdges();
  // A fill may have dropped edges of the user's own.
  if (edges.length() > userEdgeCount_) edges.setLogicalLength(userEdgeCount_);
  setInputEdges(edges);
}

// Nothing fills again, so the user's own edges have to say what the pattern is.
void ZnCenterMarkPatternBuilder::endAutoFill() {
  undoAutoFillPattern();
  updateBuilderFromLayout();
}

void ZnCenterMarkPatternBuilder::suppressAutoFill(bool suppress) {
  if (suppress == autoFillSuppressed_ || !autoFillMode_) return;
  autoFillSuppressed_ = suppress;
  if (suppress) endAutoFill();
}

void ZnCenterMarkPatternBuilder::setAutoFillMode(bool on) {
  if (on == autoFillMode_) return;
  autoFillMode_ = on;
  for (ZnCenterMarkPatternBuilder* builder : instances_) {
    if (on)
      builder->autoFillPattern();
    else
      builder->endAutoFill();
  }
}

// A block is searched once for each builder; the drawing does not change while a command picks edges.
bool ZnCenterMarkPatternBuilder::getCandidates(ZnArray<ZnDbEdgeRef>& candidates) {
  ZnArray<ZnDbObjectId> path;
  if (!enclosingPath(inputEdges().first(), path)) return false;
  const auto known = candidateEdges_.find(path.last());
  if (known == candidateEdges_.end() || known->second.isEmpty()) return getEdgeRefsInBlock(path, candidates);
  candidates = known->second;
  return true;
}

// False when the user's own edges are not what candidates have to be.
bool ZnCenterMarkPatternBuilder::narrowCandidates(ZnArray<ZnDbEdgeRef>& candidates) const {
  if (!hostDocumentKindQuery() || (!considerEqualDiametersOnly_ && !filterOpenArcs_)) return true;
  const std::optional<ZnGeCircArc3d> first = roundCurveOf(inputEdges().first());
  const double wanted = first ? first->radius() : 0.0;
  const auto fits = [&](const std::optional<ZnGeCircArc3d>& arc) {
    if (filterOpenArcs_ && !(arc && arc->isClosed())) return false;
    const double radius = arc ? arc->radius() : 0.0;
    return !considerEqualDiametersOnly_ || std::fabs(wanted - radius) < candidateTolerance().equalPoint();
  };
  for (const ZnDbEdgeRef& edge : inputEdges())
    if (!fits(roundCurveOf(edge))) return false;

  std::vector<std::pair<double, ZnDbEdgeRef>> kept;
  for (const ZnDbEdgeRef& edge : candidates) {
    const std::optional<ZnGeCircArc3d> arc = roundCurveOf(edge);
    if (fits(arc)) kept.emplace_back(arc ? arc->radius() : 0.0, edge);
  }
  std::stable_sort(kept.begin(), kept.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  candidates.removeAll();
  for (const auto& [radius, edge] : kept) candidates.append(edge);
  return true;
}

void ZnCenterMarkPatternBuilder::setCandidateEdgeRefs(const ZnArray<ZnDbEdgeRef>& edges) {
  if (!hostDocumentKindQuery() || edges.isEmpty()) return;
  candidateEdges_.clear();
  ZnArray<ZnDbObjectId> path;
  if (enclosingPath(edges.first(), path)) candidateEdges_[path.last()] = edges;
}

bool ZnCenterMarkPatternBuilder::getEdgeRefsInBlock(const ZnArray<ZnDbObjectId>& path,
                                                    ZnArray<ZnDbEdgeRef>& edges) {
  ZnDbHolder<ZnDbBlockReference> reference(path.last());
  if (!reference.isOpen()) return false;
  ZnDbHolder<ZnDbBlockTableRecord> block(reference->blockTableRecord());
  if (!block.isOpen()) return false;
  edges.removeAll();
  const double limit = largestHole(path);
  CandidateArcs arcs(hostDocumentKindQuery() && considerEqualDiametersOnly_ && filterOpenArcs_);
  ZnArray<ZnDbObjectId> entityPath = path;
  for (const ZnDbObjectId id : block->entityIds()) {
    if (!isShownCurve(id)) continue;
    entityPath.append(id);
    const ZnDbFullSubentPath subentPath(entityPath, ZnDbSubentId(ZnDb::kEdgeSubentType, 0));
    entityPath.removeLast();
    ZnDbEdgeRef edge;
    if (torvi::createEdgeRef(subentPath, edge) != Quorl::eOk) continue;
    const std::optional<ZnGeCircArc3d> arc = roundCurveOf(edge);
    if (arc && !arc->isDegenerate(candidateTolerance()) && arc->radius() <= limit)
      arcs.add(*arc, edge, edges);
  }
  candidateEdges_[path.last()] = edges;
  return !edges.isEmpty();
}

void ZnCenterMarkPatternBuilder::modifyEdgeRefsAsPerBrokenView(ZnArray<ZnDbEdgeRef>& edges) const {
  if (!hostDocumentKindQuery()) return;
  std::vector<bool> cutAway;
  for (const ZnDbEdgeRef& edge : edges) {
    ZnArray<ZnDbObjectId> path;
    edge.entity().getFullPath(path);
    const ZnDbLogicalTransformPE* shift = nullptr;
    for (int i = 0; i < path.length() && !shift; ++i) {
      const ZnRxClass* cls = path[i].objectClass();
      shift = cls ? ZnDbLogicalTransformPE::cast(cls->queryX(ZnDbLogicalTransformPE::desc())) : nullptr;
      if (shift && shift->queryTransform(path[i]) != Quorl::eOk) shift = nullptr;
    }
    cutAway.push_back(shift && shift->queryEdge(edge) == kEdgeIsCutAway);
  }
  removeMarked(edges, cutAway);
}
