#include "companion/mark_commands.h"

#include "companion/commands.h"
#include "companion/object_naming.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

ZnString statusText(ErrorStatus status) { return ZnString::fromUtf8(Quorl::errorStatusText(status)); }

// A mark follows circles and arcs only, and its body would find that out by failing.
bool isRound(const ZnDbEdgeRef& edge) {
  const std::unique_ptr<ZnGeCurve3d> curve(ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(edge, true));
  return curve && curve->isKindOf(ZnGe::kCircArc3d) &&
         static_cast<const ZnGeCircArc3d&>(*curve).radius() > ZnGeContext::gTol.equalPoint();
}

bool hasFailed(ZnDbObjectId markId) {
  ZnDbHolder<ZnDbAssocAction> action(
      ZnDbAssocActionBody::parentAction(ZnTorviLyxUtils::getTorviActionBodyId(markId)));
  return !action.isOpen() || action->status() == kFailedToEvaluateAssocStatus;
}

ErrorStatus edgesOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                    std::vector<ZnDbFullSubentPath>& paths) {
  const ZnRxCommandValue::Array& edges = context.arguments().at(L"edges").items();
  if (edges.empty()) return context.fail(Quorl::eNoInputEdges, L"no edge is given");
  for (const ZnRxCommandValue& edge : edges)
    if (!edgeOf(database, edge, paths.emplace_back()))
      return context.fail(Quorl::eInvalidInput, L"an edge is given that the drawing does not have");
  return Quorl::eOk;
}

ErrorStatus centerObjectsOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                            std::vector<ZnDbObjectId>& objects) {
  const ZnRxCommandValue::Array& handles = context.arguments().at(L"objects").items();
  if (handles.empty()) return context.fail(Quorl::eNothingToDo, L"no center object is given");
  for (const ZnRxCommandValue& handle : handles) {
    const ZnDbObjectId id = objectOf(database, handle);
    if (id.isNull() || !ZnDbTorviObjectWrapper(id).isCenterObject())
      return context.fail(Quorl::eInvalidInput, ZnString(L"#") + handle.asString() + L" is no center object");
    objects.push_back(id);
  }
  return Quorl::eOk;
}

} // namespace

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
  if (status == Quorl::eOk && hasFailed(markId)) status = Quorl::eInvalidInput;
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
  std::vector<ZnDbFullSubentPath> edges;
  if (const ErrorStatus status = edgesOf(context, *database, edges); status != Quorl::eOk) return status;

  ZnDbTransaction all(*database);
  ZnRxCommandValue created = ZnRxCommandValue::array();
  for (const ZnDbFullSubentPath& edge : edges) {
    ZnDbObjectId markId;
    ZnString why;
    if (const ErrorStatus status = createMark(*database, edge, markId, why); status != Quorl::eOk)
      return context.fail(status, why);
    created.append(handleText(markId.handle()));
  }
  context.result()[L"created"] = created;
  return all.end();
}

ErrorStatus reassociate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  std::vector<ZnDbObjectId> marks;
  if (const ErrorStatus status = centerObjectsOf(context, *database, marks); status != Quorl::eOk)
    return status;
  std::vector<ZnDbFullSubentPath> paths;
  if (const ErrorStatus status = edgesOf(context, *database, paths); status != Quorl::eOk) return status;
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
  if (status == Quorl::eOk && hasFailed(marks.front())) status = Quorl::eInvalidInput;
  if (status == Quorl::eOk) return transaction.end();
  return context.fail(status,
                      ZnString(L"the mark could not be tied to the edge (") + statusText(status) + L")");
}

ErrorStatus disassociate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  std::vector<ZnDbObjectId> objects;
  if (const ErrorStatus status = centerObjectsOf(context, *database, objects); status != Quorl::eOk)
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
