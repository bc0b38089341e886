#include "quorl/db/entity/text.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/entity/plane_image.h"
#include "quorl/db/entity/text_metrics.h"
#include "quorl/ge/angles.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbText, ZnDbEntity, L"TEXT")

namespace {
constexpr std::int16_t kVersion = 1;
}

bool ZnDbText::Shape::isUsable() const {
  return Quorl::isFinite(position) && Quorl::isUnit(normal) && Quorl::isFinite(height) && height > 0.0 &&
         Quorl::isFinite(rotation) && Quorl::isFinite(widthFactor) && widthFactor > 0.0 &&
         align <= ZnDb::kTextRight;
}

ZnDbText::ZnDbText(const ZnGePoint3d& position, const ZnString& text, double height, double rotation) {
  setPosition(position);
  setTextString(text);
  setHeight(height);
  setRotation(rotation);
}

ZnGeVector3d ZnDbText::direction() const {
  const ZnGe::SinCos turn = ZnGe::sinCos(shape_.rotation);
  return ZnGeMatrix3d::planeToWorld(shape_.normal) * ZnGeVector3d(turn.cos, turn.sin, 0.0);
}

ErrorStatus ZnDbText::setPosition(const ZnGePoint3d& position) {
  assertWriteEnabled();
  if (!Quorl::isFinite(position)) return Quorl::eInvalidInput;
  shape_.position = position;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::setTextString(const ZnString& text) {
  assertWriteEnabled();
  shape_.text = text;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::setHeight(double height) {
  assertWriteEnabled();
  if (!Quorl::isFinite(height)) return Quorl::eInvalidInput;
  if (height <= 0.0) return Quorl::eOutOfRange;
  shape_.height = height;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::setRotation(double rotation) {
  assertWriteEnabled();
  if (!Quorl::isFinite(rotation)) return Quorl::eInvalidInput;
  shape_.rotation = rotation;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::setWidthFactor(double factor) {
  assertWriteEnabled();
  if (!Quorl::isFinite(factor)) return Quorl::eInvalidInput;
  if (factor <= 0.0) return Quorl::eOutOfRange;
  shape_.widthFactor = factor;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::setNormal(const ZnGeVector3d& normal) {
  assertWriteEnabled();
  return Quorl::takeNormal(normal, shape_.normal);
}

ErrorStatus ZnDbText::setHorizontalAlign(ZnDb::TextAlign align) {
  assertWriteEnabled();
  if (align > ZnDb::kTextRight) return Quorl::eOutOfRange;
  shape_.align = align;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  ZnDbPlaneImage image;
  const ErrorStatus status = zndbPlaneImage(shape_.normal, transform, image);
  if (status != Quorl::eOk) return status;
  const ZnGeVector3d along = transform * direction();
  const ZnGeVector3d up = transform * shape_.normal.crossProduct(direction());
  const double stretch = along.length();
  const double rise = up.dotProduct(image.normal.crossProduct(along)) / stretch;
  shape_.position = transform * shape_.position;
  shape_.height *= rise;
  shape_.widthFactor *= stretch / rise;
  shape_.rotation = image.isUniform ? (image.turn == 0.0 ? shape_.rotation
                                                         : ZnGe::normalizeAngle(shape_.rotation + image.turn))
                                    : image.normal.perpVector().angleTo(along, image.normal);
  shape_.normal = image.normal;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  extents = ZnGeBoundBlock3d();
  for (const ZnGePoint3d& corner : zndbTextCorners(shape_.position, shape_.normal, direction(), shape_.height,
                                                   shape_.widthFactor, shape_.text.view(), shape_.align))
    extents.addPoint(corner);
  return Quorl::eOk;
}

ErrorStatus ZnDbText::getPlane(ZnGePlane& plane) const {
  plane.set(shape_.position, shape_.normal);
  return Quorl::eOk;
}

bool ZnDbText::subWorldDraw(ZnGiWorldDraw& draw) const {
  if (visibility() != ZnDb::kVisible || shape_.text.isEmpty()) return false;
  draw.setTraits(ownTraits());
  draw.text(shape_.position, shape_.normal, direction(), shape_.height, shape_.widthFactor, shape_.text,
            shape_.align);
  return true;
}

ErrorStatus ZnDbText::subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t, const ZnGePoint3d&,
                                        const ZnGePoint3d&, const ZnGeMatrix3d&,
                                        ZnArray<ZnGePoint3d>& snapPoints, ZnArray<std::int64_t>&,
                                        const ZnGeMatrix3d& insertion) const {
  if (mode == ZnDb::kSnapInsertion || mode == ZnDb::kSnapNode) snapPoints.append(insertion * shape_.position);
  return Quorl::eOk;
}

ErrorStatus ZnDbText::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbEntity::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writePoint3d(shape_.position);
  filer.writeVector3d(shape_.normal);
  filer.writeString(shape_.text);
  filer.writeDouble(shape_.height);
  filer.writeDouble(shape_.rotation);
  filer.writeDouble(shape_.widthFactor);
  filer.writeInt8(static_cast<std::int8_t>(shape_.align));
  return filer.status();
}

ErrorStatus ZnDbText::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbEntity::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Shape read;
  read.position = filer.readPoint3d();
  read.normal = filer.readVector3d();
  read.text = filer.readString();
  read.height = filer.readDouble();
  read.rotation = filer.readDouble();
  read.widthFactor = filer.readDouble();
  read.align = static_cast<ZnDb::TextAlign>(filer.readInt8());
  return zndbTakeOver(filer, shape_, std::move(read));
}

ErrorStatus ZnDbText::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbEntity::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writePoint3d(10, shape_.position);
  filer.writeVector3d(11, shape_.normal);
  filer.writeString(1, shape_.text);
  filer.writeDouble(40, shape_.height);
  filer.writeDouble(50, shape_.rotation);
  filer.writeDouble(41, shape_.widthFactor);
  filer.writeInteger(60, shape_.align);
  return filer.status();
}

ErrorStatus ZnDbText::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbEntity::tdocInFields(filer); status != Quorl::eOk) return status;
  constexpr std::int64_t unknownAlign = ZnDb::kTextRight + 1;
  Shape read = shape_;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 10) read.position = item.point;
    if (item.code == 11) read.normal = item.point.asVector();
    if (item.code == 1) read.text = item.text;
    if (item.code == 40) read.height = item.real;
    if (item.code == 50) read.rotation = item.real;
    if (item.code == 41) read.widthFactor = item.real;
    if (item.code == 60)
      read.align = static_cast<ZnDb::TextAlign>(
          item.integer >= 0 && item.integer < unknownAlign ? item.integer : unknownAlign);
  });
  return zndbTakeOver(filer, shape_, std::move(read));
}
