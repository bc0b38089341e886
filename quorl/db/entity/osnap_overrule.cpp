#include "quorl/db/entity/osnap_overrule.h"

#include "quorl/db/entity/entity.h"

ZNRX_DEFINE_ABSTRACT(ZnDbOsnapOverrule, ZnRxOverrule)

Quorl::ErrorStatus ZnDbOsnapOverrule::getOsnapPoints(const ZnDbEntity* entity, ZnDb::ObjectSnapMode mode,
                                                     std::int64_t gsMarker, const ZnGePoint3d& pickPoint,
                                                     const ZnGePoint3d& lastPoint,
                                                     const ZnGeMatrix3d& viewTransform,
                                                     ZnArray<ZnGePoint3d>& snapPoints,
                                                     ZnArray<std::int64_t>& geomIds) const {
  if (!entity) return Quorl::eInvalidInput;
  if (const auto* next = ZnRxOverrule::firstApplicable<ZnDbOsnapOverrule>(entity, this))
    return next->getOsnapPoints(entity, mode, gsMarker, pickPoint, lastPoint, viewTransform, snapPoints,
                                geomIds);
  return entity->subGetOsnapPoints(mode, gsMarker, pickPoint, lastPoint, viewTransform, snapPoints, geomIds,
                                   ZnGeMatrix3d::kIdentity);
}

Quorl::ErrorStatus
ZnDbOsnapOverrule::getOsnapPoints(const ZnDbEntity* entity, ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                  const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                  const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                  ZnArray<std::int64_t>& geomIds, const ZnGeMatrix3d& insertion) const {
  if (!entity) return Quorl::eInvalidInput;
  if (const auto* next = ZnRxOverrule::firstApplicable<ZnDbOsnapOverrule>(entity, this))
    return next->getOsnapPoints(entity, mode, gsMarker, pickPoint, lastPoint, viewTransform, snapPoints,
                                geomIds, insertion);
  return entity->subGetOsnapPoints(mode, gsMarker, pickPoint, lastPoint, viewTransform, snapPoints, geomIds,
                                   insertion);
}
