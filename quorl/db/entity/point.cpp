#include "quorl/db/entity/point.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbPoint, ZnDbEntity, L"POINT")

namespace {

constexpr std::int16_t kVersion = 1;

struct Place {
  ZnGePoint3d position;
  bool isUsable() const { return Quorl::isFinite(position); }
};

} // namespace

ErrorStatus ZnDbPoint::setPosition(const ZnGePoint3d& position) {
  assertWriteEnabled();
  if (!Quorl::isFinite(position)) return Quorl::eInvalidInput;
  position_ = position;
  return Quorl::eOk;
}

ErrorStatus ZnDbPoint::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  if (!Quorl::isFinite(transform)) return Quorl::eInvalidInput;
  position_ = transform * position_;
  return Quorl::eOk;
}

ErrorStatus ZnDbPoint::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  extents = ZnGeBoundBlock3d(position_, position_);
  return Quorl::eOk;
}

void ZnDbPoint::getSubentIds(ZnDb::SubentType type, ZnArray<ZnDbSubentId>& ids) const {
  if (type == ZnDb::kVertexSubentType) ids.append(ZnDbSubentId(type, 0));
}

bool ZnDbPoint::subentPoint(const ZnDbSubentId& id, ZnGePoint3d& point) const {
  if (id != ZnDbSubentId(ZnDb::kVertexSubentType, 0)) return false;
  point = position_;
  return true;
}

bool ZnDbPoint::subWorldDraw(ZnGiWorldDraw& draw) const {
  if (visibility() != ZnDb::kVisible) return false;
  draw.setTraits(ownTraits());
  draw.point(position_);
  return true;
}

ErrorStatus ZnDbPoint::subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t, const ZnGePoint3d&,
                                         const ZnGePoint3d&, const ZnGeMatrix3d&,
                                         ZnArray<ZnGePoint3d>& snapPoints, ZnArray<std::int64_t>&,
                                         const ZnGeMatrix3d& insertion) const {
  if (mode == ZnDb::kSnapNode || mode == ZnDb::kSnapNearest) snapPoints.append(insertion * position_);
  return Quorl::eOk;
}

ErrorStatus ZnDbPoint::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbEntity::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writePoint3d(position_);
  return filer.status();
}

ErrorStatus ZnDbPoint::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbEntity::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Place place{position_};
  zndbTakeOver(filer, place, Place{filer.readPoint3d()});
  position_ = place.position;
  return filer.status();
}

ErrorStatus ZnDbPoint::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbEntity::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writePoint3d(10, position_);
  return filer.status();
}

ErrorStatus ZnDbPoint::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbEntity::tdocInFields(filer); status != Quorl::eOk) return status;
  Place place{position_}, read = place;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 10) read.position = item.point;
  });
  zndbTakeOver(filer, place, std::move(read));
  position_ = place.position;
  return filer.status();
}
