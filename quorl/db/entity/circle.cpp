#include "quorl/db/entity/circle.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/entity/plane_image.h"
#include "quorl/ge/circ_arc3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbCircle, ZnDbCurve, L"CIRCLE")

namespace {
constexpr std::int16_t kVersion = 1;
}

bool ZnDbCircle::Shape::isUsable() const {
  return Quorl::isFinite(center) && Quorl::isUnit(normal) && Quorl::isFinite(radius) && radius >= 0.0;
}

ZnDbCircle::ZnDbCircle(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius) {
  setCenter(center);
  setNormal(normal);
  setRadius(radius);
}

ErrorStatus ZnDbCircle::setCenter(const ZnGePoint3d& center) {
  assertWriteEnabled();
  if (!Quorl::isFinite(center)) return Quorl::eInvalidInput;
  shape_.center = center;
  return Quorl::eOk;
}

ErrorStatus ZnDbCircle::setRadius(double radius) {
  assertWriteEnabled();
  if (!Quorl::isFinite(radius)) return Quorl::eInvalidInput;
  if (radius < 0.0) return Quorl::eOutOfRange;
  shape_.radius = radius;
  return Quorl::eOk;
}

ErrorStatus ZnDbCircle::setNormal(const ZnGeVector3d& normal) {
  assertWriteEnabled();
  return Quorl::takeNormal(normal, shape_.normal);
}

void ZnDbCircle::appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const {
  pieces.push_back(std::make_unique<ZnGeCircArc3d>(shape_.center, shape_.normal, shape_.radius));
}

ErrorStatus ZnDbCircle::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  ZnDbPlaneImage image;
  const ErrorStatus status = zndbUniformPlaneImage(shape_.normal, transform, image);
  if (status != Quorl::eOk) return status;
  shape_ = {transform * shape_.center, image.normal, shape_.radius * image.scale};
  return Quorl::eOk;
}

ErrorStatus ZnDbCircle::getPlane(ZnGePlane& plane) const {
  plane.set(shape_.center, shape_.normal);
  return Quorl::eOk;
}

ErrorStatus ZnDbCircle::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writePoint3d(shape_.center);
  filer.writeVector3d(shape_.normal);
  filer.writeDouble(shape_.radius);
  return filer.status();
}

ErrorStatus ZnDbCircle::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Shape read;
  read.center = filer.readPoint3d();
  read.normal = filer.readVector3d();
  read.radius = filer.readDouble();
  return zndbTakeOver(filer, shape_, std::move(read));
}

ErrorStatus ZnDbCircle::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writePoint3d(10, shape_.center);
  filer.writeVector3d(11, shape_.normal);
  filer.writeDouble(40, shape_.radius);
  return filer.status();
}

ErrorStatus ZnDbCircle::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::tdocInFields(filer); status != Quorl::eOk) return status;
  Shape read = shape_;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 10) read.center = item.point;
    if (item.code == 11) read.normal = item.point.asVector();
    if (item.code == 40) read.radius = item.real;
  });
  return zndbTakeOver(filer, shape_, std::move(read));
}
