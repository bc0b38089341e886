#include "quorl/db/entity/ellipse.h"

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/ge/elliptical_arc3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbEllipse, ZnDbCurve, L"ELLIPSE")

namespace {

bool hasArea(const ZnGeVector3d& major, const ZnGeVector3d& minor) {
  return major.crossProduct(minor).length() > ZnGe::kSingularRatio * major.lengthSquared();
}

} // namespace

bool ZnDbEllipse::Shape::isUsable() const {
  return Quorl::isFinite(center) && Quorl::isFinite(major) && Quorl::isFinite(minor) &&
         hasArea(major, minor) && major.isPerpendicularTo(minor) && Quorl::isFinite(startParam) &&
         Quorl::isFinite(endParam);
}

ZnGeVector3d ZnDbEllipse::normal() const {
  const ZnGeVector3d area = shape_.major.crossProduct(shape_.minor);
  return area / area.length();
}

double ZnDbEllipse::radiusRatio() const { return shape_.minor.length() / shape_.major.length(); }

ErrorStatus ZnDbEllipse::set(const ZnGeEllipticalArc3d& ellipse) {
  assertWriteEnabled();
  Shape shape{ellipse.center(), ellipse.majorAxis(), ellipse.minorAxis(), ellipse.startParam(),
              ellipse.endParam()};
  if (!Quorl::isFinite(shape.center) || !Quorl::isFinite(shape.major) || !Quorl::isFinite(shape.minor))
    return Quorl::eInvalidInput;
  if (!hasArea(shape.major, shape.minor)) return Quorl::eDegenerateGeometry;
  if (!shape.isUsable()) return Quorl::eInvalidInput;
  shape_ = shape;
  return Quorl::eOk;
}

ErrorStatus ZnDbEllipse::setCenter(const ZnGePoint3d& center) {
  assertWriteEnabled();
  return ZnDbRule::take(shape_.center, center);
}

void ZnDbEllipse::appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const {
  pieces.push_back(std::make_unique<ZnGeEllipticalArc3d>(shape_.center, shape_.major, shape_.minor,
                                                         shape_.startParam, shape_.endParam));
}

bool ZnDbEllipse::isClosed() const {
  return shape_.endParam - shape_.startParam >= ZnGe::kTwoPi - ZnGeContext::gTol.equalVector();
}

ErrorStatus ZnDbEllipse::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  if (!Quorl::isFinite(transform)) return Quorl::eInvalidInput;
  ZnGeEllipticalArc3d image(shape_.center, shape_.major, shape_.minor, shape_.startParam, shape_.endParam);
  image.transformBy(transform);
  return set(image);
}

ErrorStatus ZnDbEllipse::getPlane(ZnGePlane& plane) const {
  plane.set(shape_.center, normal());
  return Quorl::eOk;
}

template<class Walk> void ZnDbEllipse::describe(Walk& walk) {
  walk.section(className(), 1);
  const auto fields = [](auto& inner, auto& shape) {
    inner.field(10, L"center", shape.center);
    inner.field(11, L"major axis", shape.major);
    inner.field(12, L"minor axis", shape.minor);
    inner.field(40, L"start parameter", shape.startParam);
    inner.field(41, L"end parameter", shape.endParam);
  };
  walk.whole(L"shape", shape_, fields, [](const Shape& shape) { return shape.isUsable(); });
}

ZNDB_DEFINE_FIELDS(ZnDbEllipse, ZnDbCurve)
