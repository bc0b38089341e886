#include "quorl/db/entity/ellipse.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/ge/elliptical_arc3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbEllipse, ZnDbCurve, L"ELLIPSE")

namespace {

constexpr std::int16_t kVersion = 1;

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
  if (!Quorl::isFinite(center)) return Quorl::eInvalidInput;
  shape_.center = center;
  return Quorl::eOk;
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

ErrorStatus ZnDbEllipse::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writePoint3d(shape_.center);
  filer.writeVector3d(shape_.major);
  filer.writeVector3d(shape_.minor);
  filer.writeDouble(shape_.startParam);
  filer.writeDouble(shape_.endParam);
  return filer.status();
}

ErrorStatus ZnDbEllipse::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Shape read;
  read.center = filer.readPoint3d();
  read.major = filer.readVector3d();
  read.minor = filer.readVector3d();
  read.startParam = filer.readDouble();
  read.endParam = filer.readDouble();
  return zndbTakeOver(filer, shape_, std::move(read));
}

ErrorStatus ZnDbEllipse::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writePoint3d(10, shape_.center);
  filer.writeVector3d(11, shape_.major);
  filer.writeVector3d(12, shape_.minor);
  filer.writeDouble(40, shape_.startParam);
  filer.writeDouble(41, shape_.endParam);
  return filer.status();
}

ErrorStatus ZnDbEllipse::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::tdocInFields(filer); status != Quorl::eOk) return status;
  Shape read = shape_;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 10) read.center = item.point;
    if (item.code == 11) read.major = item.point.asVector();
    if (item.code == 12) read.minor = item.point.asVector();
    if (item.code == 40) read.startParam = item.real;
    if (item.code == 41) read.endParam = item.real;
  });
  return zndbTakeOver(filer, shape_, std::move(read));
}
