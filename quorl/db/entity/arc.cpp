#include "quorl/db/entity/arc.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/entity/plane_image.h"
#include "quorl/ge/circ_arc3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbArc, ZnDbCurve, L"ARC")

namespace {
constexpr std::int16_t kVersion = 1;
}

bool ZnDbArc::Shape::isUsable() const {
  return Quorl::isFinite(center) && Quorl::isUnit(normal) && Quorl::isFinite(radius) && radius >= 0.0 &&
         Quorl::isFinite(startAngle) && Quorl::isFinite(endAngle);
}

ZnDbArc::ZnDbArc(const ZnGePoint3d& center, double radius, double startAngle, double endAngle)
    : ZnDbArc(center, ZnGeVector3d::kZAxis, radius, startAngle, endAngle) {}

ZnDbArc::ZnDbArc(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius, double startAngle,
                 double endAngle) {
  setCenter(center);
  setNormal(normal);
  setRadius(radius);
  setStartAngle(startAngle);
  setEndAngle(endAngle);
}

double ZnDbArc::totalAngle() const {
  return ZnGe::endAngleAbove(shape_.startAngle, shape_.endAngle) - shape_.startAngle;
}

ZnGePoint3d ZnDbArc::startPoint() const { return geometry().startPoint(); }

ZnGePoint3d ZnDbArc::endPoint() const { return geometry().endPoint(); }

ErrorStatus ZnDbArc::setCenter(const ZnGePoint3d& center) {
  assertWriteEnabled();
  if (!Quorl::isFinite(center)) return Quorl::eInvalidInput;
  shape_.center = center;
  return Quorl::eOk;
}

ErrorStatus ZnDbArc::setRadius(double radius) {
  assertWriteEnabled();
  if (!Quorl::isFinite(radius)) return Quorl::eInvalidInput;
  if (radius < 0.0) return Quorl::eOutOfRange;
  shape_.radius = radius;
  return Quorl::eOk;
}

ErrorStatus ZnDbArc::setNormal(const ZnGeVector3d& normal) {
  assertWriteEnabled();
  return Quorl::takeNormal(normal, shape_.normal);
}

ErrorStatus ZnDbArc::setStartAngle(double angle) {
  assertWriteEnabled();
  if (!Quorl::isFinite(angle)) return Quorl::eInvalidInput;
  shape_.startAngle = angle;
  return Quorl::eOk;
}

ErrorStatus ZnDbArc::setEndAngle(double angle) {
  assertWriteEnabled();
  if (!Quorl::isFinite(angle)) return Quorl::eInvalidInput;
  shape_.endAngle = angle;
  return Quorl::eOk;
}

ZnGeCircArc3d ZnDbArc::geometry() const {
  return {shape_.center, shape_.normal,     shape_.normal.perpVector(),
          shape_.radius, shape_.startAngle, shape_.endAngle};
}

void ZnDbArc::appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const {
  pieces.push_back(std::make_unique<ZnGeCircArc3d>(geometry()));
}

ErrorStatus ZnDbArc::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  ZnDbPlaneImage image;
  const ErrorStatus status = zndbUniformPlaneImage(shape_.normal, transform, image);
  if (status != Quorl::eOk) return status;
  if (image.turn != 0.0) {
    const double span = totalAngle();
    shape_.startAngle = ZnGe::normalizeAngle(shape_.startAngle + image.turn);
    shape_.endAngle = shape_.startAngle + span;
  }
  shape_.center = transform * shape_.center;
  shape_.normal = image.normal;
  shape_.radius *= image.scale;
  return Quorl::eOk;
}

ErrorStatus ZnDbArc::getPlane(ZnGePlane& plane) const {
  plane.set(shape_.center, shape_.normal);
  return Quorl::eOk;
}

ErrorStatus ZnDbArc::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writePoint3d(shape_.center);
  filer.writeVector3d(shape_.normal);
  filer.writeDouble(shape_.radius);
  filer.writeDouble(shape_.startAngle);
  filer.writeDouble(shape_.endAngle);
  return filer.status();
}

ErrorStatus ZnDbArc::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Shape read;
  read.center = filer.readPoint3d();
  read.normal = filer.readVector3d();
  read.radius = filer.readDouble();
  read.startAngle = filer.readDouble();
  read.endAngle = filer.readDouble();
  return zndbTakeOver(filer, shape_, std::move(read));
}

ErrorStatus ZnDbArc::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbCurve::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writePoint3d(10, shape_.center);
  filer.writeVector3d(11, shape_.normal);
  filer.writeDouble(40, shape_.radius);
  filer.writeDouble(50, shape_.startAngle);
  filer.writeDouble(51, shape_.endAngle);
  return filer.status();
}

ErrorStatus ZnDbArc::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbCurve::tdocInFields(filer); status != Quorl::eOk) return status;
  Shape read = shape_;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 10) read.center = item.point;
    if (item.code == 11) read.normal = item.point.asVector();
    if (item.code == 40) read.radius = item.real;
    if (item.code == 50) read.startAngle = item.real;
    if (item.code == 51) read.endAngle = item.real;
  });
  return zndbTakeOver(filer, shape_, std::move(read));
}
