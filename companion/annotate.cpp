#include "companion/annotate.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "companion/centers.h"
#include "companion/command_arguments.h"
#include "companion/corner_relief.h"
#include "companion/line_finds.h"
#include "companion/mark_commands.h"
#include "companion/object_naming.h"
#include "companion/pattern_marks.h"
#include "companion/tolerance.h"
#include "torvi/centermark/object_wrapper.h"
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

ErrorStatus readLimits(ZnRxCommandContext& context, const exchange::AnnotateWish& wish, Limits& limits) {
  limits.minRadius = wish.minRadius.value_or(limits.minRadius);
  limits.maxRadius = wish.maxRadius.value_or(limits.maxRadius);
  if (!(limits.minRadius >= 0.0) || !(limits.maxRadius >= limits.minRadius))
    return context.fail(Quorl::eInvalidInput, L"the radius limits admit no circle");
  if (!(wish.arcs >= 0.0 && wish.arcs <= 360.0))
    return context.fail(Quorl::eInvalidInput, L"the least span of an arc is from 0 to 360 degrees");
  limits.minSpan = wish.arcs / 180.0 * ZnGe::kPi;
  return Quorl::eOk;
}

std::string edgeName(const RoundEdge& edge) { return pathText(ZnDbCompoundObjectId(edge.path)); }

// Turns a mark on a slot's end into the slot's direction; one that lies straight needs nothing.
void turnToSlot(ZnDbObjectId markId, double direction) {
  if (std::fabs(std::sin(2.0 * direction)) <= kStraightSine) return;
  ZnDbCenterMarkObjectWrapper mark(markId);
  ZnGePoint3d origin;
  ZnGeVector3d x, y, normal;
  mark.blockTransform().getCoordSystem(origin, x, y, normal);
  // A mark turns about the normal of its circle, which an arc that runs clockwise has downwards.
  if (mark.setRotation(normal.z < 0.0 ? -direction : direction) == Quorl::eOk)
    ZnTorviLyxUtils::explicitlyEvaluateActionBody(mark.actionBody());
}

void createMarks(ZnRxCommandContext& context, ZnDbDatabase& database, const std::vector<Center>& centers,
                 const std::vector<bool>& isTaken, const LineFinds& lines,
                 exchange::AnnotateOutcome& outcome) {
  for (size_t i = 0; i < centers.size(); ++i) {
    context.progress(i + 1, centers.size());
    if (isTaken[i] || centers[i].isMarked) continue;
    const RoundEdge& edge = centers[i].outermost();
    ZnDbObjectId markId;
    ZnString why;
    if (createMark(database, edge.path, markId, why) == Quorl::eOk) {
      turnToSlot(markId, lines.slotDirection(edge));
      outcome.created.push_back(nameOf(markId));
      outcome.holes.push_back({edgeName(edge), nameOf(markId)});
    } else {
      outcome.failures.push_back({"center mark", edgeName(edge), why.utf8()});
    }
  }
}

// The patterns, and which centers they have taken.
std::vector<bool> createPatterns(ZnDbDatabase& database, const exchange::AnnotateWish& wish,
                                 const std::vector<RoundEdge>& edges, const std::vector<Center>& centers,
                                 exchange::AnnotateOutcome& outcome) {
  std::vector<bool> isTaken(centers.size(), false);
  if (!wish.patterns) return isTaken;
  for (const MadePattern& made :
       makePatterns(database, edges, centers, PatternSettings{wish.align}, outcome.inexactPatterns)) {
    const std::string handle = nameOf(made.id);
    outcome.patterns.push_back({handle, made.found.isRing ? "ring" : "row", evidenceText(made.found, edges),
                                made.showsCenterMark, made.aligned});
    outcome.created.push_back(handle);
    for (const int hole : made.found.holes) {
      isTaken[static_cast<size_t>(hole)] = true;
      outcome.holes.push_back({edgeName(centers[static_cast<size_t>(hole)].hole()), handle});
    }
  }
  return isTaken;
}

// What is to have a mark; what only looks as if it were is told.
std::vector<const RoundEdge*> admittedEdges(const std::vector<RoundEdge>& edges, const Limits& limits,
                                            const LineFinds& lines, exchange::AnnotateOutcome& outcome) {
  std::vector<const RoundEdge*> admitted;
  for (const RoundEdge& edge : edges) {
    if (!limits.admit(edge) && !lines.isSlotEnd(edge)) continue;
    if (isCornerRelief(edge))
      outcome.passedOver.push_back({edgeName(edge), "a relief at a corner of its outline"});
    else
      admitted.push_back(&edge);
  }
  return admitted;
}

} // namespace

ErrorStatus annotate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::AnnotateWish wish;
  if (const ErrorStatus status = begin(context, database, wish); status != Quorl::eOk) return status;
  Limits limits;
  if (const ErrorStatus status = readLimits(context, wish, limits); status != Quorl::eOk) return status;

  const ZnDbObjectId space = database->currentSpaceId();
  const std::vector<RoundEdge> edges = visibleRoundEdges(space);
  const LineFinds lines(wish, space, edges, limits.minRadius, limits.maxRadius);
  exchange::AnnotateOutcome outcome;
  const std::vector<Center> centers =
      centersOf(admittedEdges(edges, limits, lines, outcome), markedCircles(space));
  const std::vector<bool> isTaken = createPatterns(*database, wish, edges, centers, outcome);
  createMarks(context, *database, centers, isTaken, lines, outcome);
  lines.make(*database, outcome);
  context.result() = exchange::toJson(outcome);
  return Quorl::eOk;
}

} // namespace companion
