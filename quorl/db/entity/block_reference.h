// A reference shows a block under a transform.
#pragma once

#include "quorl/db/entity/entity.h"

class ZnDbBlockReference : public ZnDbEntity {
  ZNRX_DECLARE_MEMBERS(ZnDbBlockReference)

public:
  ZnDbBlockReference() = default;
  ZnDbBlockReference(const ZnGePoint3d& position, ZnDbObjectId blockRecord);
  ~ZnDbBlockReference() override;

  ZnDbObjectId blockTableRecord() const { return blockRecord_; }
  // eWrongObjectClass for an id that is no block, eInvalidInput for null and another drawing's, eInvalidOwner
  // where a block would come to contain itself.
  Quorl::ErrorStatus setBlockTableRecord(ZnDbObjectId blockRecord);

  // The transform from the block's coordinates to those of the block that the reference stands in. It is
  // kept as given, so that mirroring and skew survive; the rest is read from it.
  const ZnGeMatrix3d& blockTransform() const { return transform_; }
  Quorl::ErrorStatus setBlockTransform(const ZnGeMatrix3d& transform); // eDegenerateGeometry when singular
  ZnGePoint3d position() const;
  Quorl::ErrorStatus setPosition(const ZnGePoint3d& position);
  ZnGeVector3d normal() const; // unit z axis
  // Angle of the x axis from the entity plane's x axis, about the normal, in 0 to two pi.
  double rotation() const;
  Quorl::ErrorStatus setRotation(double angle);
  ZnGeVector3d scaleFactors() const; // lengths of the axes; y is negative for a mirrored transform

  Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform) override;
  Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const override;
  Quorl::ErrorStatus getPlane(ZnGePlane& plane) const override;
  // Copies of the block's entities under the transform, with by-block traits replaced by the reference's.
  Quorl::ErrorStatus explode(std::vector<std::unique_ptr<ZnDbEntity>>& pieces) const override;
  // What an entity of the block leaves to its reference becomes that of the reference.
  void resolveByBlock(ZnDbEntity& piece) const;

  ZNDB_DECLARE_FIELDS
  // eInvalidInput for a block of another drawing, eInvalidOwner where the block may not be shown.
  Quorl::ErrorStatus judgePlace(const ZnDbDatabase& drawing) const override;
  void attachLinks() override;
  void detachLinks() override;
  void audit(std::vector<ZnString>& faults, bool fix) override;

protected:
  bool subWorldDraw(ZnGiWorldDraw& draw) const override;
  Quorl::ErrorStatus subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                       const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                       const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                       ZnArray<std::int64_t>& geomIds,
                                       const ZnGeMatrix3d& insertion) const override;

private:
  friend class ZnDbBlockTableRecord;
  ZnDbObjectId blockRecord_;
  ZnGeMatrix3d transform_;
  class ZnDbBlockTableRecord* linkedRecord_ = nullptr; // whose list of references holds this one
  int linkedAt_ = -1;
};

// Appends the image of the entity under the transform: one entity of its class where that can show it, else
// one for each of its pieces, such as elliptic arcs.
Quorl::ErrorStatus zndbAppendImages(const ZnDbEntity& entity, const ZnGeMatrix3d& transform,
                                    std::vector<std::unique_ptr<ZnDbEntity>>& images);
