#include "companion/annotate.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "companion/centers.h"
#include "companion/commands.h"
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

void passOver(const RoundEdge& edge, const wchar_t* why, ZnRxCommandValue& passedOver) {
  ZnRxCommandValue& entry = passedOver.append(ZnRxCommandValue::object());
  entry[L"edge"] = pathText(ZnDbCompoundObjectId(edge.path));
  entry[L"why"] = ZnString(why);
}

void tellHole(const ZnDbFullSubentPath& path, ZnDbObjectId owner, ZnRxCommandValue& holes) {
  ZnRxCommandValue& entry = holes.append(ZnRxCommandValue::object());
  entry[L"edge"] = pathText(ZnDbCompoundObjectId(path));
  entry[L"belongsTo"] = handleText(owner.handle());
}

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
                 const std::vector<bool>& isTaken, const LineFinds& lines) {
  for (size_t i = 0; i < centers.size(); ++i) {
    context.progress(i + 1, centers.size());
    if (isTaken[i] || centers[i].isMarked) continue;
    const ZnDbFullSubentPath& path = centers[i].outermost().path;
    ZnDbObjectId markId;
    ZnString why;
    if (createMark(database, path, markId, why) == Quorl::eOk) {
      turnToSlot(markId, lines.slotDirection(centers[i].outermost()));
      context.result()[L"created"].append(handleText(markId.handle()));
      tellHole(path, markId, context.result()[L"holes"]);
    } else {
      ZnRxCommandValue& failure = context.result()[L"failures"].append(ZnRxCommandValue::object());
      failure[L"what"] = L"center mark";
      failure[L"edge"] = pathText(ZnDbCompoundObjectId(path));
      failure[L"why"] = why;
    }
  }
}

// The patterns, and which centers they have taken.
std::vector<bool> createPatterns(ZnRxCommandContext& context, ZnDbDatabase& database,
                                 const std::vector<RoundEdge>& edges, const std::vector<Center>& centers) {
  std::vector<bool> isTaken(centers.size(), false);
  ZnRxCommandValue patterns = ZnRxCommandValue::array();
  const ZnRxCommandValue& arguments = context.arguments();
  if (arguments.at(L"patterns").asBool(true)) {
    const PatternSettings settings{arguments.at(L"align").asDouble(0.0)};
    int refused = 0;
    for (const MadePattern& made : makePatterns(database, edges, centers, settings, refused)) {
      ZnRxCommandValue& entry = patterns.append(ZnRxCommandValue::object());
      entry[L"handle"] = handleText(made.id.handle());
      entry[L"type"] = made.found.isRing ? L"ring" : L"row";
      entry[L"evidence"] = evidenceText(made.found, edges);
      entry[L"showsCenterMark"] = made.showsCenterMark;
      entry[L"aligned"] = made.aligned;
      context.result()[L"created"].append(handleText(made.id.handle()));
      for (const int hole : made.found.holes) {
        isTaken[static_cast<size_t>(hole)] = true;
        tellHole(centers[static_cast<size_t>(hole)].hole().path, made.id, context.result()[L"holes"]);
      }
    }
    context.result()[L"inexactPatterns"] = refused;
  }
  context.result()[L"patterns"] = patterns;
  return isTaken;
}

} // namespace

ErrorStatus annotate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  Limits limits;
  if (const ErrorStatus status = readLimits(context, limits); status != Quorl::eOk) return status;

  const ZnDbObjectId space = database->currentSpaceId();
  const std::vector<RoundEdge> edges = visibleRoundEdges(space);
  const LineFinds lines(context, space, edges, limits.minRadius, limits.maxRadius);
  std::vector<const RoundEdge*> admitted;
  ZnRxCommandValue passedOver = ZnRxCommandValue::array();
  for (const RoundEdge& edge : edges) {
    if (!limits.admit(edge) && !lines.isSlotEnd(edge)) continue;
    if (isCornerRelief(edge))
      passOver(edge, L"a relief at a corner of its outline", passedOver);
    else
      admitted.push_back(&edge);
  }
  const std::vector<Center> centers = centersOf(admitted, markedCircles(space));

  context.result() = ZnRxCommandValue::object();
  context.result()[L"created"] = ZnRxCommandValue::array();
  context.result()[L"holes"] = ZnRxCommandValue::array();
  context.result()[L"failures"] = ZnRxCommandValue::array();
  const std::vector<bool> isTaken = createPatterns(context, *database, edges, centers);
  createMarks(context, *database, centers, isTaken, lines);
  lines.make(context, *database);
  context.result()[L"marked"] = static_cast<std::int64_t>(
      std::count_if(centers.begin(), centers.end(), [](const Center& center) { return center.isMarked; }));
  context.result()[L"skipped"] =
      static_cast<std::int64_t>(edges.size() - admitted.size() - passedOver.items().size());
  context.result()[L"passedOver"] = passedOver;
  return Quorl::eOk;
}

} // namespace companion
