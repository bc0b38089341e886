#include "companion/curve_values.h"

#include <memory>

namespace companion {

ZnRxCommandValue pointValue(const ZnGePoint3d& point) {
  ZnRxCommandValue value = ZnRxCommandValue::array();
  for (const double coordinate : {point.x, point.y, point.z}) value.append(coordinate);
  return value;
}

double degrees(double radians) { return radians / ZnGe::kPi * 180.0; }

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

} // namespace companion
