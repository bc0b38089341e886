#include "companion/report.h"

#include <algorithm>
#include <unordered_map>

#include "companion/center_kind.h"
#include "companion/command_arguments.h"
#include "companion/curve_values.h"
#include "companion/object_naming.h"
#include "torvi/core/action_body.h"
#include "torvi/core/kind.h"
#include "torvi/core/object_pointer.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

std::array<std::array<double, 4>, 4> rowsOf(const ZnGeMatrix3d& matrix) {
  std::array<std::array<double, 4>, 4> rows;
  for (size_t row = 0; row < rows.size(); ++row)
    for (size_t column = 0; column < rows[row].size(); ++column)
      rows[row][column] = matrix(static_cast<int>(row), static_cast<int>(column));
  return rows;
}

// The key of each generated entity: its own, or that of the sub-block that gathers it.
std::unordered_map<ZnDbObjectId, ZnString> keysOf(const ZnDbTorviObjectWrapper& wrapper) {
  std::unordered_map<ZnDbObjectId, ZnString> keys;
  ZnArray<ZnString> names;
  wrapper.getOutputEdgeKeys(names);
  for (const ZnString& name : names) {
    const ZnDbObjectId output = wrapper.getOutputEdge(name);
    ZnArray<ZnDbObjectId> gathered;
    if (output.isDerivedFrom(ZnDbBlockReference::desc()))
      ZnTorviLyxUtils::getEntitesIdsFromBlkRef(output, gathered, false);
    else
      gathered.append(output);
    for (const ZnDbObjectId id : gathered) keys.emplace(id, name);
  }
  return keys;
}

std::vector<exchange::ReportedCurve> curvesOf(const ZnDbTorviObjectWrapper& wrapper) {
  std::vector<exchange::ReportedCurve> curves;
  ZnArray<ZnDbObjectId> ids;
  wrapper.getCenterEntitesIds(ids);
  const auto keys = keysOf(wrapper);
  const ZnGeMatrix3d toWorld = wrapper.blockTransform();
  for (int i = 0; i < ids.length(); ++i) {
    ZnDbHolder<ZnDbEntity> entity(ids[i]);
    if (!entity.isOpen()) continue;
    const auto key = keys.find(ids[i]);
    curves.push_back({i, key == keys.end() ? std::string() : key->second.utf8(), shapeOf(*entity, toWorld),
                      entity->visibility() == ZnDb::kVisible, entity->linetype().utf8()});
  }
  return curves;
}

std::vector<std::string> edgesOf(const ZnDbTorviObjectWrapper& wrapper) {
  std::vector<std::string> names;
  ZnArray<ZnDbEdgeRef> edges;
  wrapper.getEdgeRefs(edges);
  for (const ZnDbEdgeRef& edge : edges)
    if (!edge.isEmpty()) names.push_back(pathText(edge.entity()));
  return names;
}

exchange::ReportedCenter describe(const ZnDbTorviObjectWrapper& wrapper) {
  exchange::ReportedCenter center;
  center.handle = nameOf(wrapper.centerObjId());
  const torvi::Kind* kind = torvi::kindOfType(wrapper.centerType());
  center.kind = kind ? ZnString(kind->name).utf8() : std::string();
  center.associative = wrapper.isAssociative();
  ZnDbHolder<ZnDbEntity> reference(wrapper.centerObjId());
  if (reference.isOpen()) center.layer = reference->layer().utf8();
  center.linetype = wrapper.linetype().utf8();
  center.edges = edgesOf(wrapper);
  if (const CenterKind* own = centerKindOf(wrapper.centerType()); own && own->describe)
    own->describe(wrapper, center);
  center.transform = rowsOf(wrapper.blockTransform());
  center.curves = curvesOf(wrapper);
  return center;
}

std::vector<ZnDbObjectId> centerObjects(ZnDbDatabase& database) {
  ZnArray<ZnDbObjectId> actions;
  ZnTorviLyxUtils::getAllCenterActionIds(&database, actions);
  std::vector<ZnDbObjectId> objects;
  for (const ZnDbObjectId actionId : actions) {
    ZnDbHolder<ZnDbAssocAction> action(actionId);
    if (!action.isOpen()) continue;
    const ZnDbObjectId object = ZnTorviLyxUtils::getTorviFromActionBodyId(action->actionBody());
    if (!object.isErased()) objects.push_back(object);
  }
  std::sort(objects.begin(), objects.end());
  return objects;
}

} // namespace

ErrorStatus report(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  if (const ErrorStatus status = workingDatabase(context, database); status != Quorl::eOk) return status;
  exchange::ReportOutcome outcome;
  const std::vector<ZnDbObjectId> objects = centerObjects(*database);
  for (size_t i = 0; i < objects.size(); ++i) {
    const ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(objects[i]);
    if (wrapper.openStatus() == Quorl::eOk) outcome.centers.push_back(describe(*wrapper));
    context.progress(i + 1, objects.size());
  }
  context.result() = exchange::toJson(outcome);
  return Quorl::eOk;
}

} // namespace companion
