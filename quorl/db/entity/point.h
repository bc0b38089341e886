// A point.
#pragma once

#include "quorl/db/entity/entity.h"

class ZnDbPoint : public ZnDbEntity {
  ZNRX_DECLARE_MEMBERS(ZnDbPoint)

public:
  ZnDbPoint() = default;
  explicit ZnDbPoint(const ZnGePoint3d& position)
      : position_(position) {}

  const ZnGePoint3d& position() const { return position_; }
  Quorl::ErrorStatus setPosition(const ZnGePoint3d& position); // eInvalidInput for what is not finite

  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const override;
  // Its one vertex has the index 0; it has no edge.
  void getSubentIds(ZnDb::SubentType type, ZnArray<ZnDbSubentId>& ids) const override;
  bool subentPoint(const ZnDbSubentId& id, ZnGePoint3d& point) const override;

  ZNDB_DECLARE_FIELDS

protected:
  bool subWorldDraw(ZnGiWorldDraw& draw) const override;
  Quorl::ErrorStatus subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                       const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                       const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                       ZnArray<std::int64_t>& geomIds,
                                       const ZnGeMatrix3d& insertion) const override;

private:
  ZnGePoint3d position_;
};
