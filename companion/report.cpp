#include "companion/report.h"

#include <algorithm>
#include <unordered_map>

#include "companion/commands.h"
#include "companion/curve_values.h"
#include "companion/object_naming.h"
#include "exchange/report.h"
#include "torvi/centerline/object_wrapper.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/action_body.h"
#include "torvi/core/kind.h"
#include "torvi/core/object_pointer.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/pattern/layout.h"
#include "torvi/pattern/object_wrapper.h"

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

exchange::ReportedPattern patternOf(const ZnDbCenterMarkPatternObjectWrapper& pattern) {
  exchange::ReportedPattern told;
  told.type = pattern.getCenterPatternType() == kCenterPatternPolar ? "polar" : "linear";
  told.fullPCD = pattern.isFullPCD();
  told.showCenterMark = pattern.showCenterMark();
  ZnArray<ZnDbEdgeRef> edges;
  pattern.getEdgeRefs(edges);
  // Edges stand at the places that keys name them by; an emptied place is passed over.
  for (int i = 0; i < edges.length(); ++i)
    if (!edges[i].isEmpty())
      told.members.push_back(
          {pathText(edges[i].entity()), ZnDbCenterMarkPatternActionBody::dependencyKey(i, -1).utf8()});
  ZnDbEdgeRef reference;
  double pick = 0.0;
  if (pattern.getReferenceEdge(reference, pick)) told.referenceEdge = pathText(reference.entity());
  ZnArray<ZnString> keys;
  pattern.getCenterLineDependencyKeys(keys);
  for (const ZnString& key : keys)
    told.overshoots.push_back({key.utf8(), pattern.startOvershoot(key), pattern.endOvershoot(key)});
  return told;
}

// A ring has its circle, marked in the middle or not.
bool pitchCircleOf(const ZnDbTorviObjectWrapper& wrapper, ZnGeCircArc3d& circle) {
  const auto* pattern = dynamic_cast<const ZnDbCenterMarkPatternObjectWrapper*>(&wrapper);
  ZnArray<ZnDbEdgeRef> edges;
  if (!pattern || pattern->getCenterPatternType() != kCenterPatternPolar ||
      pattern->getEdgeRefs(edges) != Quorl::eOk)
    return false;
  ZnDbCenterMarkPatternLayout layout(wrapper.centerObjId());
  if (!layout.loadCircles(edges) || !layout.analysePattern() || layout.majorCurves().isEmpty() ||
      !layout.majorCurves().first()->isKindOf(ZnGe::kCircularArc3d))
    return false;
  circle = static_cast<const ZnGeCircArc3d&>(*layout.majorCurves().first());
  return true;
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
  ZnGeCircArc3d circle;
  const auto* mark = dynamic_cast<const ZnDbCenterMarkObjectWrapper*>(&wrapper);
  if (mark && (mark->getRefCircle(circle) == Quorl::eOk || pitchCircleOf(wrapper, circle))) {
    center.center = pointValue(circle.center());
    center.radius = circle.radius();
  }
  // Lengths as they count now, also of extensions that follow the edges.
  if (const auto* line = dynamic_cast<const ZnDbCenterLineObjectWrapper*>(&wrapper))
    center.lengths = {line->startExtension(), line->endExtension(), line->startOvershoot(),
                      line->endOvershoot()};
  if (const auto* pattern = dynamic_cast<const ZnDbCenterMarkPatternObjectWrapper*>(&wrapper))
    center.pattern = patternOf(*pattern);
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
