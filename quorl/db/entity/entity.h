// The base of everything that is drawn: traits and what every shape can be asked.
#pragma once

#include <memory>
#include <vector>

#include "quorl/db/core/color.h"
#include "quorl/db/core/line_weight.h"
#include "quorl/db/core/object.h"
#include "quorl/db/core/use_count.h"
#include "quorl/db/entity/subent.h"
#include "quorl/db/entity/world_draw.h"
#include "quorl/ge/bound_block3d.h"
#include "quorl/ge/plane.h"

class ZnDbEntity : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbEntity)

public:
  // Traits as stated by the entity itself
  ZnDbObjectId layerId() const { return layerId_; }
  ZnString layer() const;
  const ZnCmColor& color() const { return color_; }
  int colorIndex() const { return color_.colorIndex(); }
  ZnDbObjectId linetypeId() const { return linetypeId_; }
  ZnString linetype() const; // the record's name; empty when there is none
  double linetypeScale() const { return linetypeScale_; }
  ZnDb::LineWeight lineWeight() const { return lineWeight_; }
  const ZnCmTransparency& transparency() const { return transparency_; }
  ZnDb::Visibility visibility() const { return visibility_; }
  ZnDbObjectId blockId() const { return ownerId(); } // the block record that it stands in

  // Setters. doSubents asks a class whose parts have traits of their own to pass the trait on to them, which
  // it does in its override; the host's classes have no such parts, since a block's entities belong to all
  // its references. Each setter hands the flag to the one that it ends in. Ids must be of this database's
  // tables (eInvalidInput), names must exist (eKeyNotFound), a scale must be above zero (eOutOfRange).
  virtual Quorl::ErrorStatus setLayer(ZnDbObjectId layer, bool doSubents = true,
                                      bool allowHiddenLayer = false);
  virtual Quorl::ErrorStatus setLayer(const ZnString& name, bool doSubents = true,
                                      bool allowHiddenLayer = false);
  virtual Quorl::ErrorStatus setColor(const ZnCmColor& color, bool doSubents = true);
  virtual Quorl::ErrorStatus setColorIndex(int index, bool doSubents = true);
  virtual Quorl::ErrorStatus setLinetype(ZnDbObjectId linetype, bool doSubents = true);
  virtual Quorl::ErrorStatus setLinetype(const ZnString& name, bool doSubents = true);
  virtual Quorl::ErrorStatus setLinetypeScale(double scale, bool doSubents = true);
  virtual Quorl::ErrorStatus setLineWeight(ZnDb::LineWeight weight, bool doSubents = true);
  virtual Quorl::ErrorStatus setTransparency(const ZnCmTransparency& transparency, bool doSubents = true);
  virtual Quorl::ErrorStatus setVisibility(ZnDb::Visibility visibility, bool doSubents = true);
  // The current layer, linetype, scale 1 and by-layer traits of the database, or of its own one when null.
  virtual void setDatabaseDefaults(ZnDbDatabase* database = nullptr);
  // Fills in what an entity that enters a drawing has left open: layer and linetype become the current ones.
  virtual void completeFor(const ZnDbDatabase& drawing);
  void setPropertiesFrom(const ZnDbEntity* other);

  // Shape, in the coordinates of the block that the entity stands in.
  virtual Quorl::ErrorStatus transformBy(const ZnGeMatrix3d& transform);
  // eNothingToDo for an entity without extent.
  virtual Quorl::ErrorStatus getGeomExtents(ZnGeBoundBlock3d& extents) const;
  // The plane in which the entity lies; eNothingToDo for one that lies in none.
  virtual Quorl::ErrorStatus getPlane(ZnGePlane& plane) const;
  // What the entity consists of, new entities in no database owned by the caller. eNotProvided.
  virtual Quorl::ErrorStatus explode(std::vector<std::unique_ptr<ZnDbEntity>>& pieces) const;
  // Snap points near pickPoint for one mode, appended; world coordinates after insertion. Overrules first.
  Quorl::ErrorStatus getOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                    const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                    const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                    ZnArray<std::int64_t>& geomIds,
                                    const ZnGeMatrix3d& insertion = ZnGeMatrix3d::kIdentity) const;

  // Edges and vertices by lasting index; types are kEdgeSubentType and kVertexSubentType.
  virtual void getSubentIds(ZnDb::SubentType type, ZnArray<ZnDbSubentId>& ids) const;
  // The curve of an edge in the entity's coordinates, new; null for an edge that it has not.
  virtual std::unique_ptr<ZnGeCurve3d> subentCurve(const ZnDbSubentId& id) const;
  virtual bool subentPoint(const ZnDbSubentId& id, ZnGePoint3d& point) const;
  // A new entity that shows just that edge; null for an edge that it has not.
  virtual std::unique_ptr<ZnDbEntity> subentEntity(const ZnDbSubentId& id) const;

  // Fields
  ZNDB_DECLARE_FIELDS
  // eInvalidInput for a layer or linetype of another drawing, or an erased one.
  Quorl::ErrorStatus judgePlace(const ZnDbDatabase& drawing) const override;
  void attachLinks() override;
  void detachLinks() override;

protected:
  ZnDbEntity() = default;
  friend class ZnDbOsnapOverrule;
  virtual Quorl::ErrorStatus subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                               const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                               const ZnGeMatrix3d& viewTransform,
                                               ZnArray<ZnGePoint3d>& snapPoints,
                                               ZnArray<std::int64_t>& geomIds,
                                               const ZnGeMatrix3d& insertion) const;
  Quorl::ErrorStatus subErase(bool erasing) override;
  ZnGiSubEntityTraits ownTraits() const;

private:
  ZnDbObjectId layerId_, linetypeId_;
  ZnDbUseCount uses_;
  ZnCmColor color_;
  ZnCmTransparency transparency_;
  double linetypeScale_ = 1.0;
  ZnDb::LineWeight lineWeight_ = ZnDb::kLineWeightByLayer;
  ZnDb::Visibility visibility_ = ZnDb::kVisible;
};
