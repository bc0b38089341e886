#include "quorl/db/entity/viewport.h"

#include <algorithm>

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/entity/curve_snap.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/ge/line_seg3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbViewport, ZnDbEntity, L"VIEWPORT")

namespace {

constexpr auto kSize = ZnDbRule::positive(100.0);

} // namespace

ErrorStatus ZnDbViewport::setCenterPoint(const ZnGePoint3d& center) {
  assertWriteEnabled();
  return ZnDbRule::take(center_, center);
}

ErrorStatus ZnDbViewport::setWidth(double width) {
  assertWriteEnabled();
  return ZnDbRule::take(width_, width, kSize);
}

ErrorStatus ZnDbViewport::setHeight(double height) {
  assertWriteEnabled();
  return ZnDbRule::take(height_, height, kSize);
}

ErrorStatus ZnDbViewport::setViewCenter(const ZnGePoint2d& center) {
  assertWriteEnabled();
  return ZnDbRule::take(viewCenter_, center);
}

ErrorStatus ZnDbViewport::setViewHeight(double height) {
  assertWriteEnabled();
  return ZnDbRule::take(viewHeight_, height, kSize);
}

ErrorStatus ZnDbViewport::setTwistAngle(double angle) {
  assertWriteEnabled();
  return ZnDbRule::take(twist_, angle);
}

ErrorStatus ZnDbViewport::setCustomScale(double scale) {
  assertWriteEnabled();
  const ErrorStatus status = kSize(scale);
  return status == Quorl::eOk ? ZnDbRule::take(viewHeight_, height_ / scale, kSize) : status;
}

ZnGeMatrix3d ZnDbViewport::modelToPaperTransform() const {
  const ZnGePoint3d seen(viewCenter_.x, viewCenter_.y, 0.0);
  return ZnGeMatrix3d::translation(center_.asVector()) * ZnGeMatrix3d::scaling(customScale()) *
         ZnGeMatrix3d::rotation(twist_, ZnGeVector3d::kZAxis) * ZnGeMatrix3d::translation(-seen.asVector());
}

void ZnDbViewport::setOn(bool on) {
  assertWriteEnabled();
  on_ = on;
}

bool ZnDbViewport::isLayerFrozen(ZnDbObjectId layer) const {
  return std::find(frozenLayers_.begin(), frozenLayers_.end(), layer) != frozenLayers_.end();
}

ErrorStatus ZnDbViewport::setLayerFrozen(ZnDbObjectId layer, bool frozen) {
  assertWriteEnabled();
  if (layer.isErased() || !layer.isDerivedFrom(ZnDbLayerTableRecord::desc())) return Quorl::eInvalidInput;
  if (database() && layer.database() != database()) return Quorl::eInvalidInput;
  if (isLayerFrozen(layer) == frozen) return Quorl::eOk;
  if (frozen)
    frozenLayers_.push_back(layer);
  else
    frozenLayers_.erase(std::find(frozenLayers_.begin(), frozenLayers_.end(), layer));
  return Quorl::eOk;
}

ErrorStatus ZnDbViewport::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  if (!Quorl::isFinite(transform)) return Quorl::eInvalidInput;
  const double scale = transform.scale();
  if (scale <= 0.0) return Quorl::eDegenerateGeometry;
  ZnGeMatrix3d direction = transform;
  direction.setTranslation(ZnGeVector3d());
  if (!direction.isEqualTo(ZnGeMatrix3d::scaling(scale),
                           ZnGeTol(ZnGeContext::gTol.equalPoint(), ZnGeContext::gTol.equalVector() * scale)))
    return Quorl::eNonUniformScale;
  center_ = transform * center_;
  width_ *= scale;
  height_ *= scale;
  return Quorl::eOk;
}

std::array<ZnGePoint3d, 4> ZnDbViewport::corners() const {
  const ZnGeVector3d across(0.5 * width_, 0.0, 0.0), up(0.0, 0.5 * height_, 0.0);
  const ZnGePoint3d& center = center_;
  return {center - across - up, center + across - up, center + across + up, center - across + up};
}

ErrorStatus ZnDbViewport::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  extents = ZnGeBoundBlock3d(corners()[0], corners()[2]);
  return Quorl::eOk;
}

ErrorStatus ZnDbViewport::getPlane(ZnGePlane& plane) const {
  plane.set(center_, ZnGeVector3d::kZAxis);
  return Quorl::eOk;
}

bool ZnDbViewport::subWorldDraw(ZnGiWorldDraw& draw) const {
  if (visibility() != ZnDb::kVisible) return false;
  const std::array<ZnGePoint3d, 4> frame = corners();
  draw.setTraits(ownTraits());
  draw.polyline({frame.begin(), frame.end()}, true);
  return true;
}

// Of the frame; its middle counts as center.
ErrorStatus ZnDbViewport::subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t,
                                            const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                            const ZnGeMatrix3d&, ZnArray<ZnGePoint3d>& snapPoints,
                                            ZnArray<std::int64_t>&, const ZnGeMatrix3d& insertion) const {
  std::vector<std::unique_ptr<ZnGeCurve3d>> sides;
  const std::array<ZnGePoint3d, 4> frame = corners();
  for (size_t i = 0; i < frame.size(); ++i)
    sides.push_back(
        std::make_unique<ZnGeLineSeg3d>(insertion * frame[i], insertion * frame[(i + 1) % frame.size()]));
  zndbAppendSnapPoints(mode, sides, pickPoint, lastPoint, snapPoints);
  if (mode == ZnDb::kSnapCenter) snapPoints.append(insertion * center_);
  return Quorl::eOk;
}

template<class Walk> void ZnDbViewport::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(10, L"center", center_);
  walk.field(40, L"width", width_, kSize);
  walk.field(41, L"height", height_, kSize);
  walk.field(11, L"view center", viewCenter_);
  walk.field(42, L"view height", viewHeight_, kSize);
  walk.field(50, L"twist angle", twist_);
  walk.field(290, L"on", on_);
  // A layer that did not come along into another drawing is a null id, and left out.
  walk.ids(ZnReferenceKind::kSoftPointer, 330, L"frozen layer", frozenLayers_,
           {ZnDbLayerTableRecord::desc()});
}

ZNDB_DEFINE_FIELDS(ZnDbViewport, ZnDbEntity)
