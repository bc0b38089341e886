#include "interchange/import/shape_entities.h"

#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/spline.h"
#include "quorl/db/entity/text.h"
#include "quorl/ge/angles.h"
#include "quorl/ge/elliptical_arc3d.h"
#include "quorl/ge/nurb_curve3d.h"

#include <cmath>

namespace interchange {

namespace {

using Made = std::unique_ptr<ZnDbEntity>;

// Height of capitals as a part of the font's size: files name the size, drawings the height.
constexpr double kCapitals = 0.7;

ZnGePoint3d inPlane(ZnGePoint2d point) { return {point.x, point.y, 0.0}; }

Made make(const Line& line) { return std::make_unique<ZnDbLine>(inPlane(line.start), inPlane(line.end)); }

Made make(const Polyline& polyline) {
  if (polyline.vertices.size() < 2) return nullptr;
  auto entity = std::make_unique<ZnDbPolyline>();
  for (const Vertex& vertex : polyline.vertices) {
    if (entity->addVertexAt(entity->vertexCount(), vertex.point, vertex.bulge) != Quorl::eOk) return nullptr;
  }
  entity->setClosed(polyline.closed);
  return entity;
}

Made make(const Circle& circle) {
  auto entity = std::make_unique<ZnDbCircle>();
  const bool isUsable = circle.radius > 0 && entity->setCenter(inPlane(circle.center)) == Quorl::eOk &&
                        entity->setRadius(circle.radius) == Quorl::eOk;
  return isUsable ? std::move(entity) : nullptr;
}

Made make(const Arc& arc) {
  auto entity = std::make_unique<ZnDbArc>();
  const bool isUsable = arc.radius > 0 && entity->setCenter(inPlane(arc.center)) == Quorl::eOk &&
                        entity->setRadius(arc.radius) == Quorl::eOk &&
                        entity->setStartAngle(arc.startAngle) == Quorl::eOk &&
                        entity->setEndAngle(arc.endAngle) == Quorl::eOk;
  return isUsable ? std::move(entity) : nullptr;
}

Made make(const EllipseArc& ellipse) {
  const ZnGeVector3d major(ellipse.major.x, ellipse.major.y, 0.0);
  const ZnGeVector3d minor(-ellipse.major.y * ellipse.ratio, ellipse.major.x * ellipse.ratio, 0.0);
  const double end = ellipse.closed ? ellipse.startParam + ZnGe::kTwoPi : ellipse.endParam;
  auto entity = std::make_unique<ZnDbEllipse>();
  const ZnGeEllipticalArc3d curve(inPlane(ellipse.center), major, minor, ellipse.startParam, end);
  return entity->set(curve) == Quorl::eOk ? std::move(entity) : nullptr;
}

Made make(const Spline& spline) {
  std::vector<ZnGePoint3d> points;
  for (const ZnGePoint2d& point : spline.control) points.push_back(inPlane(point));
  ZnGeNurbCurve3d curve;
  if (curve.set(Spline::kDegree, spline.knots, points) != Quorl::eOk) return nullptr;
  auto entity = std::make_unique<ZnDbSpline>();
  return entity->setCurve(curve) == Quorl::eOk ? std::move(entity) : nullptr;
}

// Letters seen from behind lie in a plane that faces down, whose x axis runs the other way.
Made make(const Text& text) {
  const double height = kCapitals * text.height;
  const double drop = text.baseline == TextBaseline::Middle    ? 0.5 * height
                      : text.baseline == TextBaseline::Hanging ? height
                                                               : 0.0;
  const double side = text.mirrored ? -1 : 1;
  const ZnGeVector2d up{-side * std::sin(text.rotation), side * std::cos(text.rotation)};
  static constexpr ZnDb::TextAlign kAligns[] = {ZnDb::kTextLeft, ZnDb::kTextCenter, ZnDb::kTextRight};

  auto entity = std::make_unique<ZnDbText>();
  const bool isUsable =
      entity->setPosition(inPlane(text.position - drop * up)) == Quorl::eOk &&
      entity->setTextString(ZnString::fromUtf8(text.string)) == Quorl::eOk &&
      entity->setHeight(height) == Quorl::eOk && entity->setWidthFactor(text.widthFactor) == Quorl::eOk &&
      entity->setNormal(ZnGeVector3d::kZAxis * side) == Quorl::eOk &&
      entity->setRotation(text.mirrored ? ZnGe::kPi - text.rotation : text.rotation) == Quorl::eOk &&
      entity->setHorizontalAlign(kAligns[static_cast<int>(text.anchor)]) == Quorl::eOk;
  return isUsable ? std::move(entity) : nullptr;
}

// Uniform in z where it is in the plane.
ZnGeMatrix3d inSpace(const ZnGeMatrix2d& map) {
  return ZnGeMatrix3d(inPlane(map.origin()), {map.xAxis().x, map.xAxis().y, 0.0},
                      {map.yAxis().x, map.yAxis().y, 0.0}, ZnGeVector3d::kZAxis * map.meanScale());
}

} // namespace

std::unique_ptr<ZnDbEntity> entityOf(const Shape& shape, const std::vector<ZnDbObjectId>& blocks) {
  if (const auto* insert = std::get_if<Insert>(&shape)) {
    if (insert->block >= blocks.size()) return nullptr;
    auto entity = std::make_unique<ZnDbBlockReference>();
    const bool isUsable = entity->setBlockTableRecord(blocks[insert->block]) == Quorl::eOk &&
                          entity->setBlockTransform(inSpace(insert->matrix)) == Quorl::eOk;
    return isUsable ? Made(std::move(entity)) : nullptr;
  }
  return std::visit(
      [](const auto& known) -> Made {
        if constexpr (std::is_same_v<std::decay_t<decltype(known)>, Insert>)
          return nullptr;
        else
          return make(known);
      },
      shape);
}

} // namespace interchange
