#include "companion/mark_commands.h"

#include "companion/center_kind.h"
#include "companion/command_arguments.h"
#include "companion/curve_values.h"
#include "companion/object_naming.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

ErrorStatus createMark(ZnDbDatabase& database, const ZnDbFullSubentPath& path, ZnDbObjectId& markId,
                       ZnString& why) {
  ZnDbEdgeRef edge;
  ErrorStatus status = ZnTorviLyxUtils::createEdgeRef(path, edge);
  if (status == Quorl::eOk && !isRound(edge)) {
    why = L"the edge is no circle or arc";
    return Quorl::eInvalidInput;
  }
  ZnDbTransaction transaction(database);
  if (status == Quorl::eOk) status = ZnTorviLyxUtils::createCenterMark(edge, markId, &database);
  if (status == Quorl::eOk && hasEvaluationFailed(markId)) status = Quorl::eInvalidInput;
  if (status == Quorl::eOk) status = transaction.end();
  if (status != Quorl::eOk) {
    why = ZnString(L"the mark could not be made (") + statusText(status) + L")";
    markId.setNull();
  }
  return status;
}

namespace {

ErrorStatus centerMark(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::CenterWish wish;
  if (const ErrorStatus status = begin(context, database, wish); status != Quorl::eOk) return status;
  std::vector<ZnDbFullSubentPath> edges;
  if (const ErrorStatus status = edgesOf(context, *database, wish.edges, edges); status != Quorl::eOk)
    return status;

  ZnDbTransaction all(*database);
  exchange::CenterOutcome outcome;
  for (const ZnDbFullSubentPath& edge : edges) {
    ZnDbObjectId markId;
    ZnString why;
    if (const ErrorStatus status = createMark(*database, edge, markId, why); status != Quorl::eOk)
      return context.fail(status, why);
    outcome.created.push_back(nameOf(markId));
  }
  context.result() = exchange::toJson(outcome);
  return all.end();
}

ErrorStatus reassociateMark(ZnRxCommandContext& context, ZnDbDatabase& database,
                            const exchange::CenterWish& wish, ZnDbObjectId mark) {
  std::vector<ZnDbFullSubentPath> paths;
  if (const ErrorStatus status = edgesOf(context, database, wish.edges, paths); status != Quorl::eOk)
    return status;
  if (paths.size() != 1) return context.fail(Quorl::eInvalidInput, L"one edge is wanted for a mark");
  ZnDbEdgeRef edge;
  ErrorStatus status = ZnTorviLyxUtils::createEdgeRef(paths.front(), edge);
  if (status == Quorl::eOk && !isRound(edge))
    return context.fail(Quorl::eInvalidInput, L"the edge is no circle or arc");
  ZnDbTransaction transaction(database);
  // A mark that was told to follow again is no longer one that its user let go.
  if (status == Quorl::eOk) status = ZnDbTorviObjectWrapper(mark).setIsExplicitlyDeassociatived(false);
  if (status == Quorl::eOk) status = ZnTorviLyxUtils::reAssociateCenterMark(mark, edge);
  if (status == Quorl::eOk && hasEvaluationFailed(mark)) status = Quorl::eInvalidInput;
  if (status == Quorl::eOk) return transaction.end();
  return context.fail(status,
                      ZnString(L"the mark could not be tied to the edge (") + statusText(status) + L")");
}

void describeMark(const ZnDbTorviObjectWrapper& wrapper, exchange::ReportedCenter& told) {
  const auto& mark = static_cast<const ZnDbCenterMarkObjectWrapper&>(wrapper);
  ZnGeCircArc3d circle;
  if (mark.getRefCircle(circle) != Quorl::eOk) return;
  told.center = pointValue(circle.center());
  told.radius = circle.radius();
}

constexpr CommandRow kCommands[] = {{L"CENTERMARK", centerMark}};

} // namespace

const CenterKind kMarkKind = {kCenterMark, kCommands, describeMark, reassociateMark};

} // namespace companion
