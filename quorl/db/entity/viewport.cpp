#include "quorl/db/entity/viewport.h"

#include <algorithm>

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/entity/curve_snap.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/ge/line_seg3d.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbViewport, ZnDbEntity, L"VIEWPORT")

namespace {

constexpr std::int16_t kVersion = 1;

// For sizes, which are above zero and finite.
ErrorStatus takeSize(double value, double& target) {
  if (!Quorl::isFinite(value)) return Quorl::eInvalidInput;
  if (value <= 0.0) return Quorl::eOutOfRange;
  target = value;
  return Quorl::eOk;
}

bool isSize(double value) { return Quorl::isFinite(value) && value > 0.0; }

} // namespace

bool ZnDbViewport::Shape::isUsable() const {
  return Quorl::isFinite(center) && isSize(width) && isSize(height) && Quorl::isFinite(viewCenter) &&
         isSize(viewHeight) && Quorl::isFinite(twist);
}

ErrorStatus ZnDbViewport::setCenterPoint(const ZnGePoint3d& center) {
  assertWriteEnabled();
  if (!Quorl::isFinite(center)) return Quorl::eInvalidInput;
  shape_.center = center;
  return Quorl::eOk;
}

ErrorStatus ZnDbViewport::setWidth(double width) {
  assertWriteEnabled();
  return takeSize(width, shape_.width);
}

ErrorStatus ZnDbViewport::setHeight(double height) {
  assertWriteEnabled();
  return takeSize(height, shape_.height);
}

ErrorStatus ZnDbViewport::setViewCenter(const ZnGePoint2d& center) {
  assertWriteEnabled();
  if (!Quorl::isFinite(center)) return Quorl::eInvalidInput;
  shape_.viewCenter = center;
  return Quorl::eOk;
}

ErrorStatus ZnDbViewport::setViewHeight(double height) {
  assertWriteEnabled();
  return takeSize(height, shape_.viewHeight);
}

ErrorStatus ZnDbViewport::setTwistAngle(double angle) {
  assertWriteEnabled();
  if (!Quorl::isFinite(angle)) return Quorl::eInvalidInput;
  shape_.twist = angle;
  return Quorl::eOk;
}

ErrorStatus ZnDbViewport::setCustomScale(double scale) {
  assertWriteEnabled();
  double given = 0.0;
  const ErrorStatus status = takeSize(scale, given);
  return status == Quorl::eOk ? takeSize(shape_.height / given, shape_.viewHeight) : status;
}

ZnGeMatrix3d ZnDbViewport::modelToPaperTransform() const {
  const ZnGePoint3d seen(shape_.viewCenter.x, shape_.viewCenter.y, 0.0);
  return ZnGeMatrix3d::translation(shape_.center.asVector()) * ZnGeMatrix3d::scaling(customScale()) *
         ZnGeMatrix3d::rotation(shape_.twist, ZnGeVector3d::kZAxis) *
         ZnGeMatrix3d::translation(-seen.asVector());
}

void ZnDbViewport::setOn(bool on) {
  assertWriteEnabled();
  shape_.on = on;
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
  shape_.center = transform * shape_.center;
  shape_.width *= scale;
  shape_.height *= scale;
  return Quorl::eOk;
}

std::array<ZnGePoint3d, 4> ZnDbViewport::corners() const {
  const ZnGeVector3d across(0.5 * shape_.width, 0.0, 0.0), up(0.0, 0.5 * shape_.height, 0.0);
  const ZnGePoint3d& center = shape_.center;
  return {center - across - up, center + across - up, center + across + up, center - across + up};
}

ErrorStatus ZnDbViewport::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  extents = ZnGeBoundBlock3d(corners()[0], corners()[2]);
  return Quorl::eOk;
}

ErrorStatus ZnDbViewport::getPlane(ZnGePlane& plane) const {
  plane.set(shape_.center, ZnGeVector3d::kZAxis);
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
  if (mode == ZnDb::kSnapCenter) snapPoints.append(insertion * shape_.center);
  return Quorl::eOk;
}

ErrorStatus ZnDbViewport::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbEntity::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writePoint3d(shape_.center);
  filer.writeDouble(shape_.width);
  filer.writeDouble(shape_.height);
  filer.writeDouble(shape_.viewCenter.x);
  filer.writeDouble(shape_.viewCenter.y);
  filer.writeDouble(shape_.viewHeight);
  filer.writeDouble(shape_.twist);
  filer.writeBool(shape_.on);
  filer.writeInt32(static_cast<std::int32_t>(frozenLayers_.size()));
  for (const ZnDbObjectId layer : frozenLayers_) filer.writeSoftPointerId(layer);
  return filer.status();
}

ErrorStatus ZnDbViewport::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbEntity::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Shape read;
  read.center = filer.readPoint3d();
  read.width = filer.readDouble();
  read.height = filer.readDouble();
  read.viewCenter.x = filer.readDouble();
  read.viewCenter.y = filer.readDouble();
  read.viewHeight = filer.readDouble();
  read.twist = filer.readDouble();
  read.on = filer.readBool();
  std::vector<ZnDbObjectId> layers;
  // A layer that did not come along into another drawing is a null id.
  for (int left = filer.readCount(); left > 0; --left)
    if (const ZnDbObjectId layer = filer.readSoftPointerId(); !layer.isNull()) layers.push_back(layer);
  if (zndbTakeOver(filer, shape_, std::move(read)) == Quorl::eOk) frozenLayers_ = std::move(layers);
  return filer.status();
}

ErrorStatus ZnDbViewport::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbEntity::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writePoint3d(10, shape_.center);
  filer.writeDouble(40, shape_.width);
  filer.writeDouble(41, shape_.height);
  filer.writePoint3d(11, ZnGePoint3d(shape_.viewCenter.x, shape_.viewCenter.y, 0.0));
  filer.writeDouble(42, shape_.viewHeight);
  filer.writeDouble(50, shape_.twist);
  filer.writeBool(290, shape_.on);
  for (const ZnDbObjectId layer : frozenLayers_) filer.writeId(330, layer);
  return filer.status();
}

ErrorStatus ZnDbViewport::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbEntity::tdocInFields(filer); status != Quorl::eOk) return status;
  Shape read = shape_;
  std::vector<ZnDbObjectId> layers;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 10) read.center = item.point;
    if (item.code == 40) read.width = item.real;
    if (item.code == 41) read.height = item.real;
    if (item.code == 11) read.viewCenter = ZnGePoint2d(item.point.x, item.point.y);
    if (item.code == 42) read.viewHeight = item.real;
    if (item.code == 50) read.twist = item.real;
    if (item.code == 290) read.on = item.integer != 0;
    if (item.code == 330) layers.push_back(item.id);
  });
  if (zndbTakeOver(filer, shape_, std::move(read)) == Quorl::eOk) frozenLayers_ = std::move(layers);
  return filer.status();
}

void ZnDbViewport::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbEntity::audit(faults, fix);
  const auto gone = [](ZnDbObjectId layer) { return !layer.isDerivedFrom(ZnDbLayerTableRecord::desc()); };
  if (std::none_of(frozenLayers_.begin(), frozenLayers_.end(), gone)) return;
  faults.push_back(L"viewport " + handleText(handle()) + L": a frozen layer is missing");
  if (fix)
    frozenLayers_.erase(std::remove_if(frozenLayers_.begin(), frozenLayers_.end(), gone),
                        frozenLayers_.end());
}
