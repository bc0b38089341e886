#include "quorl/db/entity/block_reference.h"

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/entity/curve.h"
#include "quorl/db/entity/curve_transform.h"
#include "quorl/db/entity/extents_draw.h"
#include "quorl/db/entity/shown_content.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/external_link.h"
#include "quorl/ge/angles.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbBlockReference, ZnDbEntity, L"BLOCKREFERENCE")

namespace {

using Axes = ZnDbFieldCodec<ZnGeMatrix3d>::Axes;

bool isInvertible(const ZnGeMatrix3d& m) { return Quorl::isFinite(m) && !m.isSingular(); }
constexpr auto kTransform = ZnDbRule::passing(isInvertible, ZnGeMatrix3d());

// Calls for each entity of the block that is not erased, opened for read. The ids are those of the record: an
// entity that is erased meanwhile is skipped.
template<class Call> ErrorStatus forEachEntity(ZnDbObjectId block, Call&& call) {
  const ZnDbHolder<ZnDbBlockTableRecord> record(block);
  if (!record.isOpen()) return record.status();
  for (const ZnDbObjectId id : record->entityIds()) {
    const ZnDbHolder<ZnDbEntity> entity(id);
    if (entity.isOpen()) call(*entity);
  }
  return Quorl::eOk;
}

// The image of an entity that its class can't show under that transform, piece by piece: arcs become
// elliptic.
void appendCurveImages(const ZnDbCurve& curve, const ZnGeMatrix3d& transform,
                       std::vector<std::unique_ptr<ZnDbEntity>>& images) {
  std::vector<std::unique_ptr<ZnGeCurve3d>> pieces;
  curve.appendPieces(pieces);
  for (const auto& piece : pieces) {
    ZnDbCurve* image = nullptr;
    if (zndbConvertGelibCurveToZnDbCurve(*zndbTransformedCurve(*piece, transform), image, nullptr,
                                         ZnGeContext::gTol) != Quorl::eOk)
      continue;
    image->setPropertiesFrom(&curve);
    images.emplace_back(image);
  }
}

ZnDbBlockTableRecord* standsIn(const ZnDbBlockReference& reference) {
  const ZnDbObjectId owner = reference.ownerId();
  return owner.isValid() ? ZnDbBlockTableRecord::cast(owner.slot()->object) : nullptr;
}

bool isUnloaded(ZnDbObjectId blockId) {
  const ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
  if (!block.isOpen() || !block->isFromExternalReference()) return false;
  const ZnDbHolder<ZnDbExternalLink> link(ZnDbExternalLink::of(*block));
  return link.isOpen() && link->isUnloaded();
}

} // namespace

ErrorStatus zndbAppendImages(const ZnDbEntity& entity, const ZnGeMatrix3d& transform,
                             std::vector<std::unique_ptr<ZnDbEntity>>& images) {
  std::unique_ptr<ZnDbEntity> copy(static_cast<ZnDbEntity*>(entity.clone()));
  if (!copy) return Quorl::eNotProvided;
  const ErrorStatus status = copy->transformBy(transform);
  const ZnDbCurve* curve = ZnDbCurve::cast(&entity);
  if (status == Quorl::eOk)
    images.push_back(std::move(copy));
  else if (curve)
    appendCurveImages(*curve, transform, images);
  else
    return status;
  return Quorl::eOk;
}

ZnDbBlockReference::ZnDbBlockReference(const ZnGePoint3d& position, ZnDbObjectId blockRecord) {
  setPosition(position);
  setBlockTableRecord(blockRecord);
}

ZnDbBlockReference::~ZnDbBlockReference() { ZnDbBlockReference::detachLinks(); }

ErrorStatus ZnDbBlockReference::setBlockTableRecord(ZnDbObjectId blockRecord) {
  assertWriteEnabled();
  if (blockRecord.isNull()) return Quorl::eInvalidInput;
  if (!blockRecord.isDerivedFrom(ZnDbBlockTableRecord::desc())) return Quorl::eWrongObjectClass;
  if (database() && blockRecord.database() != database()) return Quorl::eInvalidInput;
  if (const ZnDbBlockTableRecord* owner = standsIn(*this);
      owner && !isErased() && !owner->mayShow(blockRecord))
    return Quorl::eInvalidOwner;
  detachLinks();
  blockRecord_ = blockRecord;
  attachLinks();
  return Quorl::eOk;
}

ErrorStatus ZnDbBlockReference::judgePlace(const ZnDbDatabase& drawing) const {
  if (!blockRecord_.isNull() && (blockRecord_.isErased() || blockRecord_.database() != &drawing))
    return Quorl::eInvalidInput;
  const ZnDbBlockTableRecord* owner = standsIn(*this);
  if (owner && !owner->mayShow(blockRecord_)) return Quorl::eInvalidOwner;
  return ZnDbEntity::judgePlace(drawing);
}

// The record's list and this reference know each other's place, so that both ends come apart at once. A
// reference in no drawing, or an erased one, shows nothing and stands in no list.
void ZnDbBlockReference::attachLinks() {
  ZnDbEntity::attachLinks();
  if (linkedRecord_ || !database() || isErased() || !blockRecord_.isValid()) return;
  auto* record = ZnDbBlockTableRecord::cast(blockRecord_.slot()->object);
  if (!record) return;
  linkedRecord_ = record;
  linkedAt_ = static_cast<int>(record->references_.size());
  record->references_.push_back(this);
  if (ZnDbBlockTableRecord* owner = standsIn(*this)) owner->raiseNesting(record->nesting_ + 1);
}

void ZnDbBlockReference::detachLinks() {
  ZnDbEntity::detachLinks();
  if (!linkedRecord_) return;
  std::vector<ZnDbBlockReference*>& references = linkedRecord_->references_;
  ZnDbBlockReference* last = references.back();
  references[static_cast<size_t>(linkedAt_)] = last;
  last->linkedAt_ = linkedAt_;
  references.pop_back();
  linkedRecord_ = nullptr;
  linkedAt_ = -1;
}

ErrorStatus ZnDbBlockReference::setBlockTransform(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  if (!Quorl::isFinite(transform)) return Quorl::eInvalidInput;
  if (transform.isSingular()) return Quorl::eDegenerateGeometry;
  transform_ = transform;
  return Quorl::eOk;
}

ZnGePoint3d ZnDbBlockReference::position() const { return Axes(transform_).origin; }

ErrorStatus ZnDbBlockReference::setPosition(const ZnGePoint3d& position) {
  assertWriteEnabled();
  if (!Quorl::isFinite(position)) return Quorl::eInvalidInput;
  transform_.setTranslation(position.asVector());
  return Quorl::eOk;
}

ZnGeVector3d ZnDbBlockReference::normal() const {
  const ZnGeVector3d z = Axes(transform_).z;
  return z / z.length();
}

double ZnDbBlockReference::rotation() const {
  const ZnGeVector3d axis = normal();
  return axis.perpVector().angleTo(Axes(transform_).x, axis);
}

ErrorStatus ZnDbBlockReference::setRotation(double angle) {
  assertWriteEnabled();
  if (!Quorl::isFinite(angle)) return Quorl::eInvalidInput;
  transform_.preMultBy(ZnGeMatrix3d::rotation(angle - rotation(), normal(), position()));
  return Quorl::eOk;
}

ZnGeVector3d ZnDbBlockReference::scaleFactors() const {
  const Axes axes(transform_);
  const double y = axes.y.length();
  return {axes.x.length(), transform_.det() < 0.0 ? -y : y, axes.z.length()};
}

ErrorStatus ZnDbBlockReference::transformBy(const ZnGeMatrix3d& transform) {
  return setBlockTransform(transform * transform_);
}

ErrorStatus ZnDbBlockReference::getGeomExtents(ZnGeBoundBlock3d& extents) const {
  if (isUnloaded(blockRecord_)) return Quorl::eNothingToDo;
  if (blockRecord_.isValid() && zndbShownCount(blockRecord_) > kMostShownExactly) {
    ZnGeBoundBlock3d box = zndbShownBox(blockRecord_);
    if (box.isEmpty()) return Quorl::eNothingToDo;
    extents = box.transformBy(transform_);
    return Quorl::eOk;
  }
  ZnDbExtentsDraw draw;
  draw.pushReference(transform_, ownTraits());
  const ErrorStatus status =
      forEachEntity(blockRecord_, [&](const ZnDbEntity& entity) { entity.worldDraw(draw); });
  if (status != Quorl::eOk) return status;
  if (draw.extents().isEmpty()) return Quorl::eNothingToDo;
  extents = draw.extents();
  return Quorl::eOk;
}

ErrorStatus ZnDbBlockReference::getPlane(ZnGePlane& plane) const {
  plane.set(position(), normal());
  return Quorl::eOk;
}

ErrorStatus ZnDbBlockReference::explode(std::vector<std::unique_ptr<ZnDbEntity>>& pieces) const {
  std::vector<std::unique_ptr<ZnDbEntity>> images;
  ErrorStatus failure = Quorl::eOk;
  const ErrorStatus status = forEachEntity(blockRecord_, [&](const ZnDbEntity& entity) {
    const ErrorStatus one = zndbAppendImages(entity, transform_, images);
    if (one != Quorl::eOk && failure == Quorl::eOk) failure = one;
  });
  if (status != Quorl::eOk) return status;
  if (failure != Quorl::eOk) return failure;
  for (auto& image : images) {
    resolveByBlock(*image);
    pieces.push_back(std::move(image));
  }
  return Quorl::eOk;
}

void ZnDbBlockReference::resolveByBlock(ZnDbEntity& piece) const {
  if (piece.color().method() == ZnCmColor::kByBlock) piece.setColor(color());
  if (database() && piece.linetypeId() == database()->byBlockLinetype()) piece.setLinetype(linetypeId());
  if (piece.lineWeight() == ZnDb::kLineWeightByBlock) piece.setLineWeight(lineWeight());
  if (piece.transparency().method() == ZnCmTransparency::kByBlock) piece.setTransparency(transparency());
}

bool ZnDbBlockReference::subWorldDraw(ZnGiWorldDraw& draw) const {
  if (visibility() != ZnDb::kVisible || isUnloaded(blockRecord_)) return false;
  bool drawn = false;
  draw.pushReference(transform_, ownTraits());
  forEachEntity(blockRecord_, [&](const ZnDbEntity& entity) {
    if (draw.isLayerShown(entity.layerId()) && entity.worldDraw(draw)) drawn = true;
  });
  draw.popReference();
  return drawn;
}

// The reference itself offers its insertion point, everything else comes from its visible content.
ErrorStatus ZnDbBlockReference::subGetOsnapPoints(ZnDb::ObjectSnapMode mode, std::int64_t gsMarker,
                                                  const ZnGePoint3d& pickPoint, const ZnGePoint3d& lastPoint,
                                                  const ZnGeMatrix3d& viewTransform,
                                                  ZnArray<ZnGePoint3d>& snapPoints,
                                                  ZnArray<std::int64_t>& geomIds,
                                                  const ZnGeMatrix3d& insertion) const {
  if (mode == ZnDb::kSnapInsertion) {
    snapPoints.append(insertion * position());
    return Quorl::eOk;
  }
  const ZnGeMatrix3d inner = insertion * transform_;
  return forEachEntity(blockRecord_, [&](const ZnDbEntity& entity) {
    if (entity.visibility() == ZnDb::kVisible)
      entity.getOsnapPoints(mode, gsMarker, pickPoint, lastPoint, viewTransform, snapPoints, geomIds, inner);
  });
}

template<class Walk> void ZnDbBlockReference::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.id(ZnReferenceKind::kHardPointer, 340, L"block", blockRecord_);
  walk.field(10, L"transform", transform_, kTransform);
}

ZNDB_DEFINE_FIELDS(ZnDbBlockReference, ZnDbEntity)

void ZnDbBlockReference::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbEntity::audit(faults, fix);
  if (!database()) return;
  const auto report = [&](const wchar_t* what) {
    faults.push_back(L"block reference " + handleText(handle()) + L": " + what);
  };
  if (blockRecord_.isErased() || !blockRecord_.isDerivedFrom(ZnDbBlockTableRecord::desc())) {
    report(L"its block is missing");
    if (fix && !isErased()) erase();
    return;
  }
  if (isErased() || linkedRecord_ == blockRecord_.slot()->object) return;
  report(L"its block does not know of it");
  if (!fix) return;
  detachLinks();
  attachLinks();
}
