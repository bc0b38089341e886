#include "quorl/db/entity/text.h"

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/entity/plane_image.h"
#include "quorl/db/entity/text_metrics.h"
#include "quorl/ge/angles.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbText, ZnDbEntity, L"TEXT")

namespace {

constexpr auto kHeight = ZnDbRule::positive(2.5);
constexpr auto kAligns = ZnDbRule::between(ZnDb::kTextLeft, ZnDb::kTextRight);

} // namespace

ZnDbText::ZnDbText(const ZnGePoint3d& position, const ZnString& text, double height, double rotation) {
  setPosition(position);
  setTextString(text);
  setHeight(height);
  setRotation(rotation);
}

ZnGeVector3d ZnDbText::direction() const {
  const ZnGe::SinCos turn = ZnGe::sinCos(rotation_);
  return ZnGeMatrix3d::planeToWorld(normal_) * ZnGeVector3d(turn.cos, turn.sin, 0.0);
}

ErrorStatus ZnDbText::setPosition(const ZnGePoint3d& position) {
  assertWriteEnabled();
  return ZnDbRule::take(position_, position);
}

ErrorStatus ZnDbText::setTextString(const ZnString& text) {
  assertWriteEnabled();
  text_ = text;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::setHeight(double height) {
  assertWriteEnabled();
  return ZnDbRule::take(height_, height, kHeight);
}

ErrorStatus ZnDbText::setRotation(double rotation) {
  assertWriteEnabled();
  return ZnDbRule::take(rotation_, rotation);
}

ErrorStatus ZnDbText::setWidthFactor(double factor) {
  assertWriteEnabled();
  return ZnDbRule::take(widthFactor_, factor, ZnDbRule::positive());
}

ErrorStatus ZnDbText::setNormal(const ZnGeVector3d& normal) {
  assertWriteEnabled();
  return Quorl::takeNormal(normal, normal_);
}

ErrorStatus ZnDbText::setHorizontalAlign(ZnDb::TextAlign align) {
  assertWriteEnabled();
  return ZnDbRule::take(align_, align, kAligns);
}

ErrorStatus ZnDbText::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  ZnDbPlaneImage image;
  const ErrorStatus status = zndbPlaneImage(normal_, transform, image);
  if (status != Quorl::eOk) return status;
  const ZnGeVector3d along = transform * direction();
  const ZnGeVector3d up = transform * normal_.crossProduct(direction());
  const double stretch = along.length();
  const double rise = up.dotProduct(image.normal.crossProduct(along)) / stretch;
  position_ = transform * position_;
  height_ *= rise;
  widthFactor_ *= stretch / rise;
  rotation_ = image.isUniform ? (image.turn == 0.0 ? rotation_ : ZnGe::normalizeAngle(rotation_ + image.turn))
                              : image.normal.perpVector().angleTo(along, image.normal);
  normal_ = image.normal;
  return Quorl::eOk;
}

ErrorStatus ZnDbText::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  extents = ZnGeBoundBlock3d();
  for (const ZnGePoint3d& corner :
       zndbTextCorners(position_, normal_, direction(), height_, widthFactor_, text_.view(), align_))
    extents.addPoint(corner);
  return Quorl::eOk;
}

ErrorStatus ZnDbText::getPlane(ZnGePlane& plane) const {
  plane.set(position_, normal_);
  return Quorl::eOk;
}

bool ZnDbText::subWorldDraw(ZnGiWorldDraw& draw) const {
  if (visibility() != ZnDb::kVisible || text_.isEmpty()) return false;
  draw.setTraits(ownTraits());
  draw.text(position_, normal_, direction(), height_, widthFactor_, text_, align_);
  return true;
}

ErrorStatus ZnDbText::subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t, const ZnGePoint3d&,
                                        const ZnGePoint3d&, const ZnGeMatrix3d&,
                                        ZnArray<ZnGePoint3d>& snapPoints, ZnArray<std::int64_t>&,
                                        const ZnGeMatrix3d& insertion) const {
  if (mode == ZnDb::kSnapInsertion || mode == ZnDb::kSnapNode) snapPoints.append(insertion * position_);
  return Quorl::eOk;
}

template<class Walk> void ZnDbText::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(10, L"position", position_);
  walk.field(11, L"normal", normal_, ZnDbRule::unit());
  walk.field(1, L"text", text_);
  walk.field(40, L"height", height_, kHeight);
  walk.field(50, L"rotation", rotation_);
  walk.field(41, L"width factor", widthFactor_, ZnDbRule::positive());
  walk.field(60, L"alignment", zndbAs<std::int8_t>(align_), kAligns);
}

ZNDB_DEFINE_FIELDS(ZnDbText, ZnDbEntity)
