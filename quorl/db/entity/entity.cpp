#include "quorl/db/entity/entity.h"

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/entity/osnap_overrule.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_ABSTRACT(ZnDbEntity, ZnDbObject)

namespace {

ZnDbDatabase* databaseOf(const ZnDbEntity& entity) {
  return entity.database() ? entity.database() : zndbHostApplicationServices()->workingDatabase();
}

// Whether the entity may refer to the record: it exists, is of that class and of the entity's drawing. An
// entity in no drawing takes records of any.
bool isUsable(const ZnDbEntity& entity, ZnDbObjectId record, const ZnRxClass* cls) {
  return !record.isErased() && record.isDerivedFrom(cls) &&
         (!entity.database() || entity.database() == record.database());
}

ErrorStatus recordNamed(ZnDbObjectId tableId, const ZnString& name, ZnDbObjectId& record) {
  const ZnDbHolder<ZnDbSymbolTable> table(tableId);
  return table.isOpen() ? table->getIdAt(name, record) : table.status();
}

ZnString nameOf(ZnDbObjectId recordId) {
  const ZnDbHolder<ZnDbSymbolTableRecord> record(recordId, true);
  return record.isOpen() ? record->name() : ZnString();
}

bool isLineWeight(std::int64_t weight) {
  if (weight < ZnDb::kLineWeightByDefault || weight > ZnDb::kLineWeight211) return false;
  return weight < 0 || ZnDbDatabase::getNearestLineWeight(static_cast<int>(weight)) == weight;
}

constexpr auto kLineWeights = ZnDbRule::passing(isLineWeight, ZnDb::kLineWeightByLayer);
constexpr auto kVisibilities = ZnDbRule::between(ZnDb::kVisible, ZnDb::kInvisible);

} // namespace

ZnString ZnDbEntity::layer() const { return nameOf(layerId_); }

ZnString ZnDbEntity::linetype() const { return nameOf(linetypeId_); }

ErrorStatus ZnDbEntity::setLayer(ZnDbObjectId layer, bool, bool) {
  assertWriteEnabled();
  if (!isUsable(*this, layer, ZnDbLayerTableRecord::desc())) return Quorl::eInvalidInput;
  uses_.exchange(layerId_, layer);
  return Quorl::eOk;
}

ErrorStatus ZnDbEntity::setLayer(const ZnString& name, bool doSubents, bool allowHiddenLayer) {
  const ZnDbDatabase* drawing = databaseOf(*this);
  if (!drawing) return Quorl::eNoDatabase;
  ZnDbObjectId layer;
  const ErrorStatus status = recordNamed(drawing->layerTableId(), name, layer);
  return status == Quorl::eOk ? setLayer(layer, doSubents, allowHiddenLayer) : status;
}

ErrorStatus ZnDbEntity::setColor(const ZnCmColor& color, bool) {
  assertWriteEnabled();
  color_ = color;
  return Quorl::eOk;
}

ErrorStatus ZnDbEntity::setColorIndex(int index, bool doSubents) {
  constexpr int byLayer = 256;
  if (index < 0 || index > byLayer) return Quorl::eOutOfRange;
  return setColor(ZnCmColor::fromIndex(index), doSubents);
}

ErrorStatus ZnDbEntity::setLinetype(ZnDbObjectId linetype, bool) {
  assertWriteEnabled();
  if (!isUsable(*this, linetype, ZnDbLinetypeTableRecord::desc())) return Quorl::eInvalidInput;
  uses_.exchange(linetypeId_, linetype);
  return Quorl::eOk;
}

ErrorStatus ZnDbEntity::setLinetype(const ZnString& name, bool doSubents) {
  const ZnDbDatabase* drawing = databaseOf(*this);
  if (!drawing) return Quorl::eNoDatabase;
  ZnDbObjectId linetype;
  const ErrorStatus status = recordNamed(drawing->linetypeTableId(), name, linetype);
  return status == Quorl::eOk ? setLinetype(linetype, doSubents) : status;
}

ErrorStatus ZnDbEntity::setLinetypeScale(double scale, bool) {
  assertWriteEnabled();
  if (!Quorl::isFinite(scale) || scale <= 0.0) return Quorl::eOutOfRange;
  linetypeScale_ = scale;
  return Quorl::eOk;
}

ErrorStatus ZnDbEntity::setLineWeight(ZnDb::LineWeight weight, bool) {
  assertWriteEnabled();
  return ZnDbRule::take(lineWeight_, weight, kLineWeights);
}

ErrorStatus ZnDbEntity::setTransparency(const ZnCmTransparency& transparency, bool) {
  assertWriteEnabled();
  transparency_ = transparency;
  return Quorl::eOk;
}

ErrorStatus ZnDbEntity::setVisibility(ZnDb::Visibility visibility, bool) {
  assertWriteEnabled();
  return ZnDbRule::take(visibility_, visibility, kVisibilities);
}

void ZnDbEntity::setDatabaseDefaults(ZnDbDatabase* database) {
  assertWriteEnabled();
  const ZnDbDatabase* drawing = database ? database : databaseOf(*this);
  if (drawing) {
    uses_.exchange(layerId_, drawing->clayer());
    uses_.exchange(linetypeId_, drawing->celtype());
  }
  linetypeScale_ = 1.0;
  color_ = ZnCmColor();
  transparency_ = ZnCmTransparency();
  lineWeight_ = ZnDb::kLineWeightByLayer;
}

void ZnDbEntity::completeFor(const ZnDbDatabase& drawing) {
  assertWriteEnabled();
  if (layerId_.isNull()) uses_.exchange(layerId_, drawing.clayer());
  if (linetypeId_.isNull()) uses_.exchange(linetypeId_, drawing.celtype());
}

void ZnDbEntity::setPropertiesFrom(const ZnDbEntity* other) {
  assertWriteEnabled();
  if (!other || other == this) return;
  uses_.exchange(layerId_, other->layerId_);
  uses_.exchange(linetypeId_, other->linetypeId_);
  color_ = other->color_;
  transparency_ = other->transparency_;
  linetypeScale_ = other->linetypeScale_;
  lineWeight_ = other->lineWeight_;
  visibility_ = other->visibility_;
}

ErrorStatus ZnDbEntity::judgePlace(const ZnDbDatabase& drawing) const {
  for (const ZnDbObjectId id : {layerId_, linetypeId_})
    if (!id.isNull() && (id.isErased() || id.database() != &drawing)) return Quorl::eInvalidInput;
  return Quorl::eOk;
}

void ZnDbEntity::attachLinks() {
  if (database() && !isErased()) uses_.attach(layerId_, linetypeId_);
}

void ZnDbEntity::detachLinks() { uses_.detach(layerId_, linetypeId_); }

ErrorStatus ZnDbEntity::transformBy(const ZnGeMatrix3d&) { return Quorl::eNotProvided; }

ErrorStatus ZnDbEntity::getGeomExtents(ZnGeBoundBlock3d&) const { return Quorl::eNothingToDo; }

ErrorStatus ZnDbEntity::getPlane(ZnGePlane&) const { return Quorl::eNothingToDo; }

ErrorStatus ZnDbEntity::explode(std::vector<std::unique_ptr<ZnDbEntity>>&) const {
  return Quorl::eNotProvided;
}

ErrorStatus ZnDbEntity::getOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                       const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                       const ZnGeMatrix3d& viewTransform, ZnArray<ZnGePoint3d>& snapPoints,
                                       ZnArray<std::int64_t>& geomIds, const ZnGeMatrix3d& insertion) const {
  const auto* first = ZnRxOverrule::firstApplicable<ZnDbOsnapOverrule>(this);
  if (!first)
    return subGetOsnapPoints(mode, gsMarker, pickPoint, lastPoint, viewTransform, snapPoints, geomIds,
                             insertion);
  if (insertion == ZnGeMatrix3d::kIdentity)
    return first->getOsnapPoints(this, mode, gsMarker, pickPoint, lastPoint, viewTransform, snapPoints,
                                 geomIds);
  return first->getOsnapPoints(this, mode, gsMarker, pickPoint, lastPoint, viewTransform, snapPoints, geomIds,
                               insertion);
}

ErrorStatus ZnDbEntity::subGetOsnapPoints(ZnDb::ObjectSnapMode, std::int64_t, const ZnGePoint3d&,
                                          const ZnGePoint3d&, const ZnGeMatrix3d&, ZnArray<ZnGePoint3d>&,
                                          ZnArray<std::int64_t>&, const ZnGeMatrix3d&) const {
  return Quorl::eOk;
}

void ZnDbEntity::getSubentIds(ZnDb::SubentType, ZnArray<ZnDbSubentId>&) const {}

std::unique_ptr<ZnGeCurve3d> ZnDbEntity::subentCurve(const ZnDbSubentId&) const { return nullptr; }

bool ZnDbEntity::subentPoint(const ZnDbSubentId&, ZnGePoint3d&) const { return false; }

std::unique_ptr<ZnDbEntity> ZnDbEntity::subentEntity(const ZnDbSubentId&) const { return nullptr; }

ErrorStatus ZnDbEntity::subErase(bool erasing) { return ZnDbObject::subErase(erasing); }

ZnGiSubEntityTraits ZnDbEntity::ownTraits() const {
  ZnGiSubEntityTraits traits;
  traits.layerId = layerId_;
  traits.color = color_;
  traits.linetypeId = linetypeId_;
  traits.linetypeScale = linetypeScale_;
  traits.lineWeight = lineWeight_;
  traits.transparency = transparency_;
  return traits;
}

// Ids are read as they are: what they name may not have been read yet.
template<class Walk> void ZnDbEntity::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.id(ZnReferenceKind::kHardPointer, 340, L"layer", layerId_,
          {ZnDbLayerTableRecord::desc(), &ZnDbDatabase::layerZero});
  walk.id(ZnReferenceKind::kHardPointer, 341, L"linetype", linetypeId_,
          {ZnDbLinetypeTableRecord::desc(), &ZnDbDatabase::byLayerLinetype});
  walk.field(90, L"color", color_);
  walk.field(91, L"transparency", transparency_);
  walk.field(40, L"linetype scale", linetypeScale_, ZnDbRule::positive());
  walk.field(60, L"line weight", zndbAs<std::int16_t>(lineWeight_), kLineWeights);
  walk.field(61, L"visibility", zndbAs<std::int8_t>(visibility_), kVisibilities);
}

ZNDB_DEFINE_FIELDS(ZnDbEntity, ZnDbObject)
