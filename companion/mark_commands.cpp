#include "companion/mark_commands.h"

#include "companion/command_arguments.h"
#include "companion/commands.h"
#include "companion/line_commands.h"
#include "companion/object_naming.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

bool hasEvaluationFailed(ZnDbObjectId centerObject) {
  ZnDbHolder<ZnDbAssocAction> action(
      ZnDbAssocActionBody::parentAction(ZnTorviLyxUtils::getTorviActionBodyId(centerObject)));
  return !action.isOpen() || action->status() == kFailedToEvaluateAssocStatus;
}

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

ErrorStatus centerMark(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  exchange::CenterWish wish;
  if (const ErrorStatus status = readWish(context, wish); status != Quorl::eOk) return status;
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

ErrorStatus reassociate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  exchange::CenterWish wish;
  if (const ErrorStatus status = readWish(context, wish); status != Quorl::eOk) return status;
  std::vector<ZnDbObjectId> marks;
  if (const ErrorStatus status = centerObjectsOf(context, *database, wish.objects, marks);
      status != Quorl::eOk)
    return status;
  if (ZnDbTorviObjectWrapper::getCenterType(marks.front()) == kCenterMarkPattern)
    return context.fail(Quorl::eWrongWrapperKind, L"a pattern gets its edges by CENTERPATTERN EDIT");
  if (marks.size() == 1 && isBetweenEdges(marks.front()))
    return reassociateBetweenEdges(context, *database, wish, marks.front());
  std::vector<ZnDbFullSubentPath> paths;
  if (const ErrorStatus status = edgesOf(context, *database, wish.edges, paths); status != Quorl::eOk)
    return status;
  if (marks.size() != 1 || paths.size() != 1)
    return context.fail(Quorl::eInvalidInput, L"one mark and one edge are wanted");
  if (ZnDbTorviObjectWrapper::getCenterType(marks.front()) != kCenterMark)
    return context.fail(Quorl::eWrongWrapperKind, L"the object is no center mark");

  ZnDbEdgeRef edge;
  ErrorStatus status = ZnTorviLyxUtils::createEdgeRef(paths.front(), edge);
  if (status == Quorl::eOk && !isRound(edge))
    return context.fail(Quorl::eInvalidInput, L"the edge is no circle or arc");
  ZnDbTransaction transaction(*database);
  // A mark that was told to follow again is no longer one that its user let go.
  if (status == Quorl::eOk)
    status = ZnDbTorviObjectWrapper(marks.front()).setIsExplicitlyDeassociatived(false);
  if (status == Quorl::eOk) status = ZnTorviLyxUtils::reAssociateCenterMark(marks.front(), edge);
  if (status == Quorl::eOk && hasEvaluationFailed(marks.front())) status = Quorl::eInvalidInput;
  if (status == Quorl::eOk) return transaction.end();
  return context.fail(status,
                      ZnString(L"the mark could not be tied to the edge (") + statusText(status) + L")");
}

ErrorStatus disassociate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  exchange::CenterWish wish;
  if (const ErrorStatus status = readWish(context, wish); status != Quorl::eOk) return status;
  std::vector<ZnDbObjectId> objects;
  if (const ErrorStatus status = centerObjectsOf(context, *database, wish.objects, objects);
      status != Quorl::eOk)
    return status;
  ZnDbTransaction transaction(*database);
  for (const ZnDbObjectId id : objects) {
    ZnDbTorviObjectWrapper wrapper(id);
    ErrorStatus status = wrapper.breakAssociativity();
    if (status == Quorl::eOk) status = wrapper.setIsExplicitlyDeassociatived(true);
    if (status == Quorl::eOk) status = ZnTorviLyxUtils::explicitlyEvaluateActionBody(wrapper.actionBody());
    if (status != Quorl::eOk)
      return context.fail(status, ZnString(L"#") + handleText(id.handle()) + L" could not be let go (" +
                                      statusText(status) + L")");
  }
  return transaction.end();
}

} // namespace companion
