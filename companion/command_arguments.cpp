#include "companion/command_arguments.h"

#include "companion/object_naming.h"
#include "torvi/core/object_wrapper.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

ZnString statusText(ErrorStatus status) { return ZnString::fromUtf8(Quorl::errorStatusText(status)); }

ErrorStatus workingDatabase(ZnRxCommandContext& context, ZnDbDatabase*& database) {
  database = zndbHostApplicationServices()->workingDatabase();
  return database ? Quorl::eOk : context.fail(Quorl::eNoDatabase, L"no drawing is open");
}

bool hasEvaluationFailed(ZnDbObjectId centerObject) {
  ZnDbHolder<ZnDbAssocAction> action(
      ZnDbAssocActionBody::parentAction(ZnTorviLyxUtils::getTorviActionBodyId(centerObject)));
  return !action.isOpen() || action->status() == kFailedToEvaluateAssocStatus;
}

bool isRound(const ZnDbEdgeRef& edge) {
  const std::unique_ptr<ZnGeCurve3d> curve(ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(edge, true));
  return curve && curve->isKindOf(ZnGe::kCircularArc3d) &&
         static_cast<const ZnGeCircArc3d&>(*curve).radius() > ZnGeContext::gTol.equalPoint();
}

ErrorStatus edgesOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                    const std::vector<exchange::Edge>& edges, std::vector<ZnDbFullSubentPath>& paths) {
  if (edges.empty()) return context.fail(Quorl::eNoInputEdges, L"no edge is given");
  for (const exchange::Edge& edge : edges)
    if (!edgeOf(database, edge, paths.emplace_back()))
      return context.fail(Quorl::eInvalidInput, L"an edge is given that the drawing does not have");
  return Quorl::eOk;
}

ErrorStatus centerObjectsOf(ZnRxCommandContext& context, ZnDbDatabase& database,
                            const std::vector<std::string>& handles, std::vector<ZnDbObjectId>& objects) {
  if (handles.empty()) return context.fail(Quorl::eNothingToDo, L"no center object is given");
  for (const std::string& handle : handles) {
    const ZnDbObjectId id = objectOf(database, handle);
    if (id.isNull() || !ZnDbTorviObjectWrapper(id).isCenterObject())
      return context.fail(Quorl::eInvalidInput, ZnString::fromUtf8("#" + handle + " is no center object"));
    objects.push_back(id);
  }
  return Quorl::eOk;
}

} // namespace companion
