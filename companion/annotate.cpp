#include "companion/annotate.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "companion/commands.h"
#include "companion/concentric_groups.h"
#include "companion/mark_commands.h"
#include "companion/object_naming.h"
#include "companion/round_edges.h"
#include "companion/tolerance.h"
#include "torvi/core/action_body.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

struct Limits {
  double minRadius = 0.0, maxRadius = std::numeric_limits<double>::infinity();
  double minSpan = ZnGe::kPi;

  bool admit(const RoundEdge& edge) const {
    const double radius = edge.curve.radius();
    return radius > 0.0 && radius >= minRadius && radius <= maxRadius && edge.span() >= minSpan - kSpanSlack;
  }
};

ErrorStatus readLimits(ZnRxCommandContext& context, Limits& limits) {
  const ZnRxCommandValue& arguments = context.arguments();
  limits.minRadius = arguments.at(L"minRadius").asDouble(limits.minRadius);
  limits.maxRadius = arguments.at(L"maxRadius").asDouble(limits.maxRadius);
  const double degrees = arguments.at(L"arcs").asDouble(180.0);
  if (!(limits.minRadius >= 0.0) || !(limits.maxRadius >= limits.minRadius))
    return context.fail(Quorl::eInvalidInput, L"the radius limits admit no circle");
  if (!(degrees >= 0.0 && degrees <= 360.0))
    return context.fail(Quorl::eInvalidInput, L"the least span of an arc is from 0 to 360 degrees");
  limits.minSpan = degrees / 180.0 * ZnGe::kPi;
  return Quorl::eOk;
}

// A circle of the space: one that could get a mark, or, without an edge, one that carries a mark.
struct Candidate {
  ZnGeCircArc3d curve;
  const RoundEdge* edge = nullptr;
};

// The circles that center marks of the space follow now.
void appendMarked(ZnDbObjectId space, std::vector<Candidate>& candidates) {
  ZnDbHolder<ZnDbAssocNetwork> network(ZnDbAssocNetwork::getInstanceFromObject(space, false, true, L""));
  if (!network.isOpen()) return;
  for (const ZnDbObjectId actionId : network->getActions()) {
    ZnDbHolder<ZnDbAssocAction> action(actionId);
    if (!action.isOpen()) continue;
    ZnDbHolder<ZnDbTorviActionBody> body(action->actionBody());
    ZnArray<ZnDbEdgeRef> edges;
    if (!body.isOpen() || body->centerObjectId().isErased() || body->getEdgeRefs(edges) != Quorl::eOk)
      continue;
    for (const ZnDbEdgeRef& edge : edges) {
      const std::unique_ptr<ZnGeCurve3d> curve(ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(edge, true));
      if (curve && curve->isKindOf(ZnGe::kCircArc3d))
        candidates.push_back({static_cast<const ZnGeCircArc3d&>(*curve), nullptr});
    }
  }
}

// Largest first; of equal ones the longer arc, and what was drawn first.
void sortOutermostFirst(std::vector<Candidate>& candidates) {
  std::stable_sort(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
    if (a.curve.radius() != b.curve.radius()) return a.curve.radius() > b.curve.radius();
    return a.curve.endAng() - a.curve.startAng() > b.curve.endAng() - b.curve.startAng();
  });
}

// The edges to be marked, in drawing order; marked counts the centers that have a mark.
std::vector<const RoundEdge*> chosenEdges(std::vector<Candidate> candidates, std::int64_t& marked) {
  struct Center {
    const RoundEdge* outermost = nullptr;
    bool isMarked = false;
  };
  sortOutermostFirst(candidates);
  ConcentricGroups groups;
  std::vector<Center> centers;
  for (const Candidate& candidate : candidates) {
    const auto index = static_cast<size_t>(groups.groupOf(candidate.curve));
    if (index == centers.size()) centers.emplace_back();
    Center& center = centers[index];
    if (!candidate.edge) center.isMarked = true;
    if (!center.outermost) center.outermost = candidate.edge;
  }
  std::vector<const RoundEdge*> chosen;
  for (const Center& center : centers) {
    if (center.isMarked)
      ++marked;
    else
      chosen.push_back(center.outermost);
  }
  // They all stand in one array, which is in drawing order.
  std::sort(chosen.begin(), chosen.end(), std::less<>());
  return chosen;
}

void createMarks(ZnRxCommandContext& context, ZnDbDatabase& database,
                 const std::vector<const RoundEdge*>& edges) {
  ZnRxCommandValue& created = context.result()[L"created"] = ZnRxCommandValue::array();
  ZnRxCommandValue failures = ZnRxCommandValue::array();
  for (size_t i = 0; i < edges.size(); ++i) {
    ZnDbObjectId markId;
    ZnString why;
    if (createMark(database, edges[i]->path, markId, why) == Quorl::eOk) {
      created.append(handleText(markId.handle()));
    } else {
      ZnRxCommandValue& failure = failures.append(ZnRxCommandValue::object());
      failure[L"edge"] = pathText(ZnDbCompoundObjectId(edges[i]->path));
      failure[L"why"] = why;
    }
    context.progress(i + 1, edges.size());
  }
  context.result()[L"failures"] = failures;
}

} // namespace

ErrorStatus annotate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  Limits limits;
  if (const ErrorStatus status = readLimits(context, limits); status != Quorl::eOk) return status;

  const ZnDbObjectId space = database->currentSpaceId();
  const std::vector<RoundEdge> edges = visibleRoundEdges(space);
  std::vector<Candidate> candidates;
  for (const RoundEdge& edge : edges)
    if (limits.admit(edge)) candidates.push_back({edge.curve, &edge});
  const auto outside = static_cast<std::int64_t>(edges.size() - candidates.size());
  appendMarked(space, candidates);

  std::int64_t marked = 0;
  const std::vector<const RoundEdge*> chosen = chosenEdges(std::move(candidates), marked);
  context.result() = ZnRxCommandValue::object();
  createMarks(context, *database, chosen);
  context.result()[L"marked"] = marked;
  context.result()[L"skipped"] = outside;
  return Quorl::eOk;
}

} // namespace companion
