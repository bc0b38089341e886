#include "companion/report.h"

#include <algorithm>
#include <unordered_map>

#include "companion/commands.h"
#include "companion/curve_values.h"
#include "companion/object_naming.h"
#include "torvi/centerline/object_wrapper.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/action_body.h"
#include "torvi/core/object_pointer.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/pattern/layout.h"
#include "torvi/pattern/object_wrapper.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

ZnRxCommandValue matrixValue(const ZnGeMatrix3d& matrix) {
  ZnRxCommandValue rows = ZnRxCommandValue::array();
  for (int row = 0; row < 4; ++row) {
    ZnRxCommandValue& values = rows.append(ZnRxCommandValue::array());
    for (int column = 0; column < 4; ++column) values.append(matrix(row, column));
  }
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

ZnRxCommandValue curvesOf(const ZnDbTorviObjectWrapper& wrapper) {
  ZnRxCommandValue curves = ZnRxCommandValue::array();
  ZnArray<ZnDbObjectId> ids;
  wrapper.getCenterEntitesIds(ids);
  const auto keys = keysOf(wrapper);
  const ZnGeMatrix3d toWorld = wrapper.blockTransform();
  for (int i = 0; i < ids.length(); ++i) {
    ZnDbHolder<ZnDbEntity> entity(ids[i]);
    if (!entity.isOpen()) continue;
    ZnRxCommandValue& curve = curves.append(ZnRxCommandValue::object());
    curve[L"index"] = i;
    const auto key = keys.find(ids[i]);
    curve[L"key"] = key == keys.end() ? ZnString() : key->second;
    describeShape(*entity, toWorld, curve);
    curve[L"visible"] = entity->visibility() == ZnDb::kVisible;
    curve[L"linetype"] = entity->linetype();
  }
  return curves;
}

ZnRxCommandValue edgesOf(const ZnDbTorviObjectWrapper& wrapper) {
  ZnRxCommandValue handles = ZnRxCommandValue::array();
  ZnArray<ZnDbEdgeRef> edges;
  wrapper.getEdgeRefs(edges);
  for (const ZnDbEdgeRef& edge : edges)
    if (!edge.isEmpty()) handles.append(pathText(edge.entity()));
  return handles;
}

// Edges stand at the places that keys name them by; an emptied place is passed over.
ZnRxCommandValue membersOf(const ZnDbCenterMarkPatternObjectWrapper& pattern) {
  ZnRxCommandValue members = ZnRxCommandValue::array();
  ZnArray<ZnDbEdgeRef> edges;
  pattern.getEdgeRefs(edges);
  for (int i = 0; i < edges.length(); ++i) {
    if (edges[i].isEmpty()) continue;
    ZnRxCommandValue& member = members.append(ZnRxCommandValue::object());
    member[L"edge"] = pathText(edges[i].entity());
    member[L"key"] = ZnDbCenterMarkPatternActionBody::dependencyKey(i, -1);
  }
  return members;
}

ZnRxCommandValue overshootsOf(const ZnDbCenterMarkPatternObjectWrapper& pattern) {
  ZnRxCommandValue overshoots = ZnRxCommandValue::array();
  ZnArray<ZnString> keys;
  pattern.getCenterLineDependencyKeys(keys);
  for (const ZnString& key : keys) {
    ZnRxCommandValue& entry = overshoots.append(ZnRxCommandValue::object());
    entry[L"key"] = key;
    entry[L"start"] = pattern.startOvershoot(key);
    entry[L"end"] = pattern.endOvershoot(key);
  }
  return overshoots;
}

void describePattern(const ZnDbCenterMarkPatternObjectWrapper& pattern, ZnRxCommandValue& center) {
  const CenterMarkPatternType type = pattern.getCenterPatternType();
  center[L"type"] = type == kCenterPatternPolar ? L"polar" : L"linear";
  center[L"fullPCD"] = pattern.isFullPCD();
  center[L"showCenterMark"] = pattern.showCenterMark();
  center[L"members"] = membersOf(pattern);
  ZnDbEdgeRef reference;
  double pick = 0.0;
  center[L"referenceEdge"] = {};
  if (pattern.getReferenceEdge(reference, pick)) center[L"referenceEdge"] = pathText(reference.entity());
  center[L"overshoots"] = overshootsOf(pattern);
}

// Lengths as they count now, also of extensions that follow the edges.
void describeLine(const ZnDbCenterLineObjectWrapper& line, ZnRxCommandValue& center) {
  center[L"startExtension"] = line.startExtension();
  center[L"endExtension"] = line.endExtension();
  center[L"startOvershoot"] = line.startOvershoot();
  center[L"endOvershoot"] = line.endOvershoot();
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

ZnRxCommandValue describe(const ZnDbTorviObjectWrapper& wrapper) {
  ZnRxCommandValue center = ZnRxCommandValue::object();
  center[L"handle"] = handleText(wrapper.centerObjId().handle());
  const torvi::Kind* kind = torvi::kindOfType(wrapper.centerType());
  center[L"kind"] = kind ? kind->name : L"";
  center[L"associative"] = wrapper.isAssociative();
  ZnDbHolder<ZnDbEntity> reference(wrapper.centerObjId());
  center[L"layer"] = reference.isOpen() ? reference->layer() : ZnString();
  center[L"linetype"] = wrapper.linetype();
  center[L"edges"] = edgesOf(wrapper);
  center[L"center"] = {};
  center[L"radius"] = {};
  ZnGeCircArc3d circle;
  const auto* mark = dynamic_cast<const ZnDbCenterMarkObjectWrapper*>(&wrapper);
  if (mark && (mark->getRefCircle(circle) == Quorl::eOk || pitchCircleOf(wrapper, circle))) {
    center[L"center"] = pointValue(circle.center());
    center[L"radius"] = circle.radius();
  }
  if (const auto* line = dynamic_cast<const ZnDbCenterLineObjectWrapper*>(&wrapper))
    describeLine(*line, center);
  if (const auto* pattern = dynamic_cast<const ZnDbCenterMarkPatternObjectWrapper*>(&wrapper))
    describePattern(*pattern, center);
  center[L"transform"] = matrixValue(wrapper.blockTransform());
  center[L"curves"] = curvesOf(wrapper);
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
  ZnRxCommandValue centers = ZnRxCommandValue::array();
  const std::vector<ZnDbObjectId> objects = centerObjects(*database);
  for (size_t i = 0; i < objects.size(); ++i) {
    const ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(objects[i]);
    if (wrapper.openStatus() == Quorl::eOk) centers.append(describe(*wrapper));
    context.progress(i + 1, objects.size());
  }
  context.result()[L"centers"] = centers;
  return Quorl::eOk;
}

} // namespace companion
