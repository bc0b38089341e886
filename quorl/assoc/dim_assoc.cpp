#include "quorl/assoc/dim_assoc.h"

#include "quorl/assoc/dim_follow.h"
#include "quorl/assoc/subent_path_io.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/field_io.h"
#include "quorl/db/core/memory_filer.h"
#include "quorl/db/entity/edge_ref.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/dictionary.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbDimAssoc, ZnDbObject, L"DIMASSOC")

namespace {

constexpr std::int16_t kVersion = 1;
constexpr int kDimensionCode = 330, kPointIndexCode = 71, kSubentTypeCode = 72, kSubentIndexCode = 160;
constexpr int kPathCode = 331;

bool isAnyErased(const ZnDbCompoundObjectId& path) {
  for (const ZnDbObjectId id : path.pathIds())
    if (id.isErased()) return true;
  return path.leafId().isErased();
}

// Model space geometry seen through a viewport is measured where it shows on the sheet.
ZnGeMatrix3d toSheet(const ZnDbCompoundObjectId& path) {
  const ZnDbHolder<ZnDbViewport> viewport(path.topId());
  return viewport.isOpen() ? viewport->modelToPaperTransform() : ZnGeMatrix3d::kIdentity;
}

std::string fieldsOf(const ZnDbObject& object) {
  ZnDbMemoryFiler filer(ZnDbFiler::kClone, object.database());
  object.bdocOutFields(filer);
  return filer.takeBytes();
}

} // namespace

// Where one reference says that the dimension has to be.
struct ZnDbDimAssoc::Target {
  int pointIndex = 0;
  bool isCircle = false;
  ZnGePoint3d point;
  ZnGeCircArc3d circle;

  ErrorStatus apply(ZnDbDimension& dimension) const {
    return isCircle ? zndbFollowCircle(dimension, circle) : zndbFollowPoint(dimension, pointIndex, point);
  }
};

ZnDbDimAssoc::ZnDbDimAssoc() = default;
ZnDbDimAssoc::~ZnDbDimAssoc() = default;

ErrorStatus ZnDbDimAssoc::post(ZnDbObjectId dimensionId, const std::vector<Reference>& references,
                               ZnDbObjectId& id) {
  id.setNull();
  ZnDbHolder<ZnDbDimension> dimension;
  ErrorStatus status = dimension.openForWrite(dimensionId, false, true);
  if (status != Quorl::eOk) return status;
  if (dimension->extensionDictionary().isErased()) status = dimension->createExtensionDictionary();
  ZnDbHolder<ZnDbDictionary> dictionary;
  if (status == Quorl::eOk) status = dictionary.openForWrite(dimension->extensionDictionary());
  if (status != Quorl::eOk) return status;
  auto* association = new ZnDbDimAssoc;
  association->dimensionId_ = dimensionId;
  association->references_ = references;
  status = dictionary->setAt(dictionaryKey(), association, id);
  if (status != Quorl::eOk) {
    delete association;
    return status;
  }
  association->attachLinks();
  status = association->updateDimension(true, true);
  association->close();
  return status;
}

ZnDbObjectId ZnDbDimAssoc::of(const ZnDbDimension& dimension) {
  ZnDbObjectId id;
  const ZnDbHolder<ZnDbDictionary> dictionary(dimension.extensionDictionary());
  if (dictionary.isOpen()) dictionary->getAt(dictionaryKey(), id);
  return id.isDerivedFrom(desc()) ? id : ZnDbObjectId();
}

ErrorStatus ZnDbDimAssoc::setReferences(const std::vector<Reference>& references) {
  assertWriteEnabled();
  detachLinks();
  references_ = references;
  attachLinks();
  return Quorl::eOk;
}

ErrorStatus ZnDbDimAssoc::getDimAssocGeomIds(ZnArray<ZnDbObjectId>& ids) const {
  ids.removeAll();
  for (const Reference& reference : references_) {
    const ZnDbObjectId top = reference.path.topId();
    if (!top.isNull() && !ids.contains(top)) ids.append(top);
  }
  return ids.isEmpty() ? Quorl::eNothingToDo : Quorl::eOk;
}

bool ZnDbDimAssoc::isTransSpatial() const {
  for (const Reference& reference : references_)
    if (!reference.path.pathIds().empty() && reference.path.topId().isDerivedFrom(ZnDbViewport::desc()))
      return true;
  return false;
}

ErrorStatus ZnDbDimAssoc::collectTargets(bool skipErased, std::vector<Target>& targets) const {
  for (const Reference& reference : references_) {
    if (isAnyErased(reference.path)) {
      if (skipErased) continue;
      return Quorl::eWasErased;
    }
    const ZnGeMatrix3d sheet = toSheet(reference.path);
    Target target;
    target.pointIndex = reference.pointIndex;
    target.isCircle = reference.subent.type() == ZnDb::kEdgeSubentType;
    if (target.isCircle) {
      std::unique_ptr<ZnGeCurve3d> curve;
      const ErrorStatus status = ZnDbEdgeRef(reference.path, reference.subent).evaluateCurve(curve);
      if (status != Quorl::eOk) return status;
      if (curve->type() != ZnGe::kCircularArc3d) return Quorl::eWrongObjectClass;
      target.circle = static_cast<const ZnGeCircArc3d&>(*curve);
      target.circle.transformBy(sheet);
    } else {
      ZnArray<ZnDbObjectId> ids;
      reference.path.getFullPath(ids);
      const ErrorStatus status =
          ZnDbVertexRef(ZnDbFullSubentPath(ids, reference.subent)).evaluatePoint(target.point);
      if (status != Quorl::eOk) return status;
      target.point.transformBy(sheet);
    }
    targets.push_back(target);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbDimAssoc::updateDimension(bool skipErased, bool onlyIfChanged) {
  std::vector<Target> targets;
  if (const ErrorStatus status = collectTargets(skipErased, targets); status != Quorl::eOk) return status;
  if (onlyIfChanged) {
    // Tried on a copy: what would not differ is not written, so that nothing that hangs on it wakes up.
    const ZnDbHolder<ZnDbDimension> standing(dimensionId_);
    if (!standing.isOpen()) return standing.status();
    ZnDbHolder<ZnDbDimension> trial(static_cast<ZnDbDimension*>(standing->clone()));
    if (!trial.isOpen()) return trial.status();
    const std::string before = fieldsOf(*trial);
    for (const Target& target : targets)
      if (const ErrorStatus status = target.apply(*trial); status != Quorl::eOk) return status;
    if (fieldsOf(*trial) == before) return Quorl::eOk;
  }
  ZnDbHolder<ZnDbDimension> dimension;
  if (const ErrorStatus status = dimension.openForWrite(dimensionId_, false, true); status != Quorl::eOk)
    return status;
  for (const Target& target : targets)
    if (const ErrorStatus status = target.apply(*dimension); status != Quorl::eOk) return status;
  return Quorl::eOk;
}

ErrorStatus ZnDbDimAssoc::updateXrefSubentPath() {
  std::vector<Reference> renewed = references_;
  for (Reference& reference : renewed) {
    ZnArray<ZnDbObjectId> ids;
    reference.path.getFullPath(ids);
    while (ids.length() > 1 && ids.first().isErased()) ids.removeFirst();
    if (!ids.isEmpty() && !ids.last().isErased()) reference.path = zndbPathOf(ids);
  }
  return renewed == references_ ? Quorl::eNothingToDo : setReferences(renewed);
}

void ZnDbDimAssoc::attachLinks() {
  if (!links_.empty() || objectId().isNull() || isErased()) return;
  const auto hang = [this](ZnDbObjectId id) {
    if (!id.isNull()) links_.push_back(std::make_unique<ZnDbWatchLink>(objectId(), id));
  };
  for (const Reference& reference : references_) {
    for (const ZnDbObjectId id : reference.path.pathIds()) hang(id);
    hang(reference.path.leafId());
  }
}

void ZnDbDimAssoc::detachLinks() { links_.clear(); }

// The dimension follows at once; one that somebody holds just now follows at the next change.
void ZnDbDimAssoc::watchedModified(const ZnDbObject*) {
  if (updating_ || dimensionId_.isErased()) return;
  updating_ = true;
  updateDimension(true, false);
  updating_ = false;
}

ErrorStatus ZnDbDimAssoc::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writeSoftPointerId(dimensionId_);
  filer.writeInt32(static_cast<std::int32_t>(references_.size()));
  for (const Reference& reference : references_) {
    filer.writeInt32(reference.pointIndex);
    zndbWriteSubent(filer, reference.subent);
    zndbWritePath(filer, reference.path);
  }
  return filer.status();
}

ErrorStatus ZnDbDimAssoc::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  dimensionId_ = filer.readSoftPointerId();
  references_.clear();
  const int count = filer.readCount();
  for (int i = 0; i < count && filer.status() == Quorl::eOk; ++i) {
    Reference reference;
    reference.pointIndex = filer.readInt32();
    reference.subent = zndbReadSubent(filer);
    zndbReadPath(filer, reference.path);
    // What stayed behind in another drawing is followed no longer.
    if (filer.status() == Quorl::eOk && !reference.path.isEmpty()) references_.push_back(reference);
  }
  return filer.status();
}

ErrorStatus ZnDbDimAssoc::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writeId(kDimensionCode, dimensionId_);
  for (const Reference& reference : references_) {
    filer.writeInteger(kPointIndexCode, reference.pointIndex);
    filer.writeInteger(kSubentTypeCode, reference.subent.type());
    filer.writeInteger(kSubentIndexCode, reference.subent.index());
    zndbWritePath(filer, kPathCode, reference.path);
  }
  return filer.status();
}

ErrorStatus ZnDbDimAssoc::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::tdocInFields(filer); status != Quorl::eOk) return status;
  references_.clear();
  std::int64_t type = 0;
  ZnArray<ZnDbObjectId> ids;
  const ErrorStatus status = zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == kDimensionCode) dimensionId_ = item.id;
    if (item.code == kPointIndexCode) {
      references_.emplace_back().pointIndex = static_cast<int>(item.integer);
      ids.removeAll();
    }
    if (item.code == kSubentTypeCode) type = item.integer;
    if (references_.empty()) return;
    if (item.code == kSubentIndexCode)
      references_.back().subent = ZnDbSubentId(
          type == ZnDb::kEdgeSubentType ? ZnDb::kEdgeSubentType : ZnDb::kVertexSubentType, item.integer);
    if (item.code == kPathCode) {
      ids.append(item.id);
      references_.back().path = zndbPathOf(ids);
    }
  });
  return status;
}
