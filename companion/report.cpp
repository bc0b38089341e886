#include "companion/report.h"

#include <algorithm>

#include "companion/commands.h"
#include "companion/object_naming.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/action_body.h"
#include "torvi/core/object_pointer.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

const wchar_t* kindName(ZnDbTorviType kind) {
  switch (kind) {
  case kCenterMark:
    return L"CENTERMARK";
  case kCenterLine:
    return L"CENTERLINE";
  case kCenterMarkPattern:
    return L"CENTERMARKPATTERN";
  case kEdgeExtension:
    return L"EDGEEXTENSION";
  default:
    return L"";
  }
}

ZnRxCommandValue pointValue(const ZnGePoint3d& point) {
  ZnRxCommandValue value = ZnRxCommandValue::array();
  for (const double coordinate : {point.x, point.y, point.z}) value.append(coordinate);
  return value;
}

ZnRxCommandValue matrixValue(const ZnGeMatrix3d& matrix) {
  ZnRxCommandValue rows = ZnRxCommandValue::array();
  for (int row = 0; row < 4; ++row) {
    ZnRxCommandValue& values = rows.append(ZnRxCommandValue::array());
    for (int column = 0; column < 4; ++column) values.append(matrix(row, column));
  }
  return rows;
}

double degrees(double radians) { return radians / ZnGe::kPi * 180.0; }

// The key of each generated entity that stands under one.
std::vector<std::pair<ZnDbObjectId, ZnString>> keysOf(const ZnDbTorviObjectWrapper& wrapper) {
  std::vector<std::pair<ZnDbObjectId, ZnString>> keys;
  ZnArray<ZnString> names;
  wrapper.getOutputEdgeKeys(names);
  for (const ZnString& name : names) keys.emplace_back(wrapper.getOutputEdge(name), name);
  return keys;
}

ZnString keyOf(const std::vector<std::pair<ZnDbObjectId, ZnString>>& keys, ZnDbObjectId id) {
  for (const auto& [output, name] : keys)
    if (output == id) return name;
  return {};
}

// The shape of one generated entity; all fields are there for every type, so that readers need not ask.
void describeShape(const ZnDbEntity& entity, const ZnGeMatrix3d& toWorld, ZnRxCommandValue& curve) {
  const auto* line = ZnDbLine::cast(&entity);
  const auto* arc = ZnDbArc::cast(&entity);
  curve[L"type"] = line ? L"line" : L"arc";
  if (line) {
    curve[L"start"] = pointValue(toWorld * line->startPoint());
    curve[L"end"] = pointValue(toWorld * line->endPoint());
    for (const wchar_t* absent : {L"center", L"radius", L"startAngle", L"endAngle"}) curve[absent] = {};
    return;
  }
  // A copy in world coordinates: angles turn with the reference.
  const std::unique_ptr<ZnRxObject> copy(arc->clone());
  auto* world = static_cast<ZnDbArc*>(copy.get());
  world->transformBy(toWorld);
  curve[L"start"] = pointValue(world->startPoint());
  curve[L"end"] = pointValue(world->endPoint());
  curve[L"center"] = pointValue(world->center());
  curve[L"radius"] = world->radius();
  curve[L"startAngle"] = degrees(world->startAngle());
  curve[L"endAngle"] = degrees(world->endAngle());
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
    curve[L"key"] = keyOf(keys, ids[i]);
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

ZnRxCommandValue describe(const ZnDbTorviObjectWrapper& wrapper) {
  ZnRxCommandValue center = ZnRxCommandValue::object();
  center[L"handle"] = handleText(wrapper.centerObjId().handle());
  center[L"kind"] = kindName(wrapper.centerType());
  center[L"associative"] = wrapper.isAssociative();
  ZnDbHolder<ZnDbEntity> reference(wrapper.centerObjId());
  center[L"layer"] = reference.isOpen() ? reference->layer() : ZnString();
  center[L"linetype"] = wrapper.linetype();
  center[L"edges"] = edgesOf(wrapper);
  center[L"center"] = {};
  center[L"radius"] = {};
  ZnGeCircArc3d circle;
  const auto* mark = dynamic_cast<const ZnDbCenterMarkObjectWrapper*>(&wrapper);
  if (mark && mark->getRefCircle(circle) == Quorl::eOk) {
    center[L"center"] = pointValue(circle.center());
    center[L"radius"] = circle.radius();
  }
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
