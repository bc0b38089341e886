// The base of entities that are one curve.
#pragma once

#include <memory>

#include "quorl/db/entity/entity.h"
#include "quorl/ge/curve3d.h"

class ZnDbCurve : public ZnDbEntity {
  ZNRX_DECLARE_MEMBERS(ZnDbCurve)

public:
  // The whole curve as a new geometry curve, owned by the caller; eDegenerateGeometry or eNotProvided (a
  // chain of pieces that is no single curve) leave null. A degenerate line or a circle of radius 0 still
  // gives its curve.
  virtual Quorl::ErrorStatus getZnGeCurve(ZnGeCurve3d*& curve, const ZnGeTol& tol) const;
  // The curve's pieces in order: one for a simple curve, one a segment for a polyline.
  virtual void appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const = 0;
  virtual bool isClosed() const { return false; }

  Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const override;
  void getSubentIds(ZnDb::SubentType type, ZnArray<ZnDbSubentId>& ids) const override;
  std::unique_ptr<ZnGeCurve3d> subentCurve(const ZnDbSubentId& id) const override;
  bool subentPoint(const ZnDbSubentId& id, ZnGePoint3d& point) const override;
  std::unique_ptr<ZnDbEntity> subentEntity(const ZnDbSubentId& id) const override;

protected:
  bool subWorldDraw(ZnGiWorldDraw& draw) const override;
  Quorl::ErrorStatus subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                       const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                       const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                       ZnArray<std::int64_t>& geomIds,
                                       const ZnGeMatrix3d& insertion) const override;
};

// A new curve entity in no database from a geometry curve, owned by the caller. normal gives the plane where
// the curve leaves it open. eNotProvided for a curve that no entity can show (an unbounded line).
Quorl::ErrorStatus zndbConvertGelibCurveToZnDbCurve(const ZnGeCurve3d& curve, ZnDbCurve*& entity,
                                                    const ZnGeVector3d* normal, const ZnGeTol& tol);
