#include "companion/line_commands.h"

#include <memory>

#include "companion/center_kind.h"
#include "companion/command_arguments.h"
#include "companion/curve_values.h"
#include "companion/object_naming.h"
#include "torvi/centerline/object_wrapper.h"
#include "torvi/core/edge_relations.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;
using torvi::EdgeMeeting;

namespace companion {

namespace {

constexpr size_t kEdges = 2;

// The edges as the module takes them, with their shapes now.
struct StraightEdges {
  ZnArray<ZnDbEdgeRef> refs;
  ZnGeLineSeg3d shapes[kEdges];
};

// What the two kinds differ in.
struct Between {
  const wchar_t* needs;
  // Why nothing can stand between the edges; null when something can.
  const wchar_t* (*refusal)(const StraightEdges& edges);
  ErrorStatus (*create)(const StraightEdges& edges, const ZnGePoint3d* picks, ZnDbObjectId& id,
                        ZnDbDatabase& database);
  ErrorStatus (*reassociate)(ZnDbObjectId id, const StraightEdges& edges, const ZnGePoint3d* picks);
};

bool areParallel(const StraightEdges& edges) { return torvi::areParallel(edges.shapes[0], edges.shapes[1]); }

std::optional<EdgeMeeting> meetingOf(const StraightEdges& edges) {
  return EdgeMeeting::of(edges.shapes[0], edges.shapes[1]);
}

const wchar_t* refusalOfLine(const StraightEdges& edges) {
  if (!areParallel(edges)) return meetingOf(edges) ? nullptr : L"the edges do not lie in one plane";
  return torvi::haveOneMiddle(edges.shapes[0], edges.shapes[1]) ? L"the edges lie one upon the other"
                                                                : nullptr;
}

const wchar_t* refusalOfExtension(const StraightEdges& edges) {
  if (areParallel(edges)) return L"the edges run side by side and never meet";
  const std::optional<EdgeMeeting> meeting = meetingOf(edges);
  if (!meeting) return L"the edges do not lie in one plane";
  const bool reached = meeting->isOnEdge(0) || meeting->isOnEdge(1);
  return reached ? L"an edge reaches the crossing by itself" : nullptr;
}

constexpr Between kLine = {
    L"a center line needs two straight edges", refusalOfLine,
    [](const StraightEdges& edges, const ZnGePoint3d* picks, ZnDbObjectId& id, ZnDbDatabase& database) {
      return ZnTorviLyxUtils::createCenterLine(edges.refs, picks, id, &database);
    },
    [](ZnDbObjectId id, const StraightEdges& edges, const ZnGePoint3d* picks) {
      return ZnTorviLyxUtils::reAssociateCenterLine(id, edges.refs, picks);
    }};

constexpr Between kExtension = {
    L"an edge extension needs two straight edges", refusalOfExtension,
    [](const StraightEdges& edges, const ZnGePoint3d*, ZnDbObjectId& id, ZnDbDatabase& database) {
      return ZnTorviLyxUtils::createEdgeExtension(edges.refs, id, &database);
    },
    [](ZnDbObjectId id, const StraightEdges& edges, const ZnGePoint3d*) {
      return ZnTorviLyxUtils::reAssociateEdgeExtension(id, edges.refs);
    }};

bool straightEdges(const std::vector<ZnDbFullSubentPath>& paths, StraightEdges& edges) {
  if (paths.size() != kEdges) return false;
  for (size_t i = 0; i < kEdges; ++i) {
    ZnDbEdgeRef ref;
    if (ZnTorviLyxUtils::createEdgeRef(paths[i], ref) != Quorl::eOk) return false;
    const std::unique_ptr<ZnGeCurve3d> curve(ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(ref, false));
    if (!curve || !curve->isKindOf(ZnGe::kLineSeg3d) || curve->isDegenerate()) return false;
    edges.shapes[i] = static_cast<const ZnGeLineSeg3d&>(*curve);
    edges.refs.append(ref);
  }
  return true;
}

// The work of creating and of reassociating, done whole or not at all. An object without id is to be made.
ErrorStatus tie(const Between& kind, ZnDbDatabase& database, const PickedEdges& picked, ZnDbObjectId& id,
                ZnString& why) {
  StraightEdges edges;
  const bool straight = straightEdges(picked.paths, edges);
  const wchar_t* refusal = straight ? kind.refusal(edges) : kind.needs;
  if (refusal) {
    why = refusal;
    return Quorl::eInvalidInput;
  }
  ZnGePoint3d picks[kEdges];
  for (size_t i = 0; i < kEdges; ++i)
    picks[i] = i < picked.picks.size() && picked.picks[i] ? *picked.picks[i] : edges.shapes[i].midPoint();
  ZnDbTransaction transaction(database);
  ZnDbObjectId tied = id;
  // What was told to follow again is no longer something that its user let go.
  ErrorStatus status = id.isNull() ? kind.create(edges, picks, tied, database)
                                   : ZnDbTorviObjectWrapper(id).setIsExplicitlyDeassociatived(false);
  if (status == Quorl::eOk && !id.isNull()) status = kind.reassociate(id, edges, picks);
  if (status == Quorl::eOk && hasEvaluationFailed(tied)) status = Quorl::eInvalidInput;
  if (status == Quorl::eOk) status = transaction.end();
  if (status == Quorl::eOk)
    id = tied;
  else
    why = ZnString(L"nothing could be drawn between the edges (") + statusText(status) + L")";
  return status;
}

ErrorStatus pickedEdgesOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                          const exchange::CenterWish& wish, PickedEdges& edges) {
  for (const std::optional<exchange::Point>& pick : wish.picks)
    edges.picks.push_back(pick ? std::optional(pointOf(*pick)) : std::nullopt);
  return edgesOf(context, database, wish.edges, edges.paths);
}

template<const Between& kind> ErrorStatus make(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::CenterWish wish;
  if (const ErrorStatus status = begin(context, database, wish); status != Quorl::eOk) return status;
  PickedEdges edges;
  if (const ErrorStatus status = pickedEdgesOf(context, *database, wish, edges); status != Quorl::eOk)
    return status;
  ZnDbObjectId id;
  ZnString why;
  if (const ErrorStatus status = tie(kind, *database, edges, id, why); status != Quorl::eOk)
    return context.fail(status, why);
  context.result() = exchange::toJson(exchange::CenterOutcome{{nameOf(id)}});
  return Quorl::eOk;
}

template<const Between& kind>
ErrorStatus tieAgain(ZnRxCommandContext& context, ZnDbDatabase& database, const exchange::CenterWish& wish,
                     ZnDbObjectId centerObject) {
  PickedEdges edges;
  if (const ErrorStatus status = pickedEdgesOf(context, database, wish, edges); status != Quorl::eOk)
    return status;
  ZnString why;
  const ErrorStatus status = tie(kind, database, edges, centerObject, why);
  return status == Quorl::eOk ? status : context.fail(status, why);
}

// Lengths as they count now, also of extensions that follow the edges.
void describeLine(const ZnDbTorviObjectWrapper& wrapper, exchange::ReportedCenter& told) {
  const auto& line = static_cast<const ZnDbCenterLineObjectWrapper&>(wrapper);
  told.lengths = {line.startExtension(), line.endExtension(), line.startOvershoot(), line.endOvershoot()};
}

constexpr CommandRow kLineCommands[] = {{L"CENTERLINE", make<kLine>}};
constexpr CommandRow kExtensionCommands[] = {{L"EDGEEXTENSION", make<kExtension>}};

} // namespace

const CenterKind kLineKind = {kCenterLine, kLineCommands, describeLine, tieAgain<kLine>};
const CenterKind kExtensionKind = {kEdgeExtension, kExtensionCommands, nullptr, tieAgain<kExtension>};

ErrorStatus createLine(ZnDbDatabase& database, const PickedEdges& edges, ZnDbObjectId& lineId,
                       ZnString& why) {
  lineId.setNull();
  return tie(kLine, database, edges, lineId, why);
}

} // namespace companion
