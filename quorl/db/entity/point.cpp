#include "quorl/db/entity/point.h"

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbPoint, ZnDbEntity, L"POINT")

ErrorStatus ZnDbPoint::setPosition(const ZnGePoint3d& position) {
  assertWriteEnabled();
  return ZnDbRule::take(position_, position);
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

template<class Walk> void ZnDbPoint::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(10, L"position", position_);
}

ZNDB_DEFINE_FIELDS(ZnDbPoint, ZnDbEntity)
