// Overrules of object snap on entities.
#pragma once

#include "quorl/base/array.h"
#include "quorl/db/core/line_weight.h"
#include "quorl/ge/matrix3d.h"
#include "quorl/rx/overrule.h"

class ZnDbEntity;

class ZnDbOsnapOverrule : public ZnRxOverrule {
  ZNRX_DECLARE_MEMBERS(ZnDbOsnapOverrule)

public:
  // See ZnDbEntity::getOsnapPoints; the second form is for an entity seen through block references, whose
  // transforms make up the insertion. The base goes on to the next overrule or the entity's own answer.
  virtual Quorl::ErrorStatus getOsnapPoints(const ZnDbEntity* entity, ZnDb::ObjectSnapMode mode,
                                            std::int64_t gsMarker, const ZnGePoint3d& pickPoint,
                                            const ZnGePoint3d& lastPoint, const ZnGeMatrix3d& viewTransform,
                                            ZnArray<ZnGePoint3d>& snapPoints,
                                            ZnArray<std::int64_t>& geomIds) const;
  virtual Quorl::ErrorStatus getOsnapPoints(const ZnDbEntity* entity, ZnDb::ObjectSnapMode mode,
                                            std::int64_t gsMarker, const ZnGePoint3d& pickPoint,
                                            const ZnGePoint3d& lastPoint, const ZnGeMatrix3d& viewTransform,
                                            ZnArray<ZnGePoint3d>& snapPoints, ZnArray<std::int64_t>& geomIds,
                                            const ZnGeMatrix3d& insertion) const;
};
