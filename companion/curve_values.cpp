#include "companion/curve_values.h"

#include <memory>

namespace companion {

namespace {

double degrees(double radians) { return radians / ZnGe::kPi * 180.0; }

} // namespace

exchange::Point pointValue(const ZnGePoint3d& point) { return {point.x, point.y, point.z}; }

ZnGePoint3d pointOf(const exchange::Point& value) { return {value[0], value[1], value[2]}; }

exchange::Shape shapeOf(const ZnDbEntity& entity, const ZnGeMatrix3d& toWorld) {
  exchange::Shape shape;
  if (const auto* line = ZnDbLine::cast(&entity)) {
    shape.type = "line";
    shape.start = pointValue(toWorld * line->startPoint());
    shape.end = pointValue(toWorld * line->endPoint());
    return shape;
  }
  // A copy in world coordinates: angles turn with the reference.
  const std::unique_ptr<ZnRxObject> copy(ZnDbArc::cast(&entity)->clone());
  auto* world = static_cast<ZnDbArc*>(copy.get());
  world->transformBy(toWorld);
  shape.type = "arc";
  shape.start = pointValue(world->startPoint());
  shape.end = pointValue(world->endPoint());
  shape.center = pointValue(world->center());
  shape.radius = world->radius();
  shape.startAngle = degrees(world->startAngle());
  shape.endAngle = degrees(world->endAngle());
  return shape;
}

} // namespace companion
