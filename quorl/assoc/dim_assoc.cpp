#include "quorl/assoc/dim_assoc.h"

#include "quorl/assoc/dim_follow.h"
#include "quorl/assoc/path_fields.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/entity/edge_ref.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/db/table/dictionary.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbDimAssoc, ZnDbObject, L"DIMASSOC")

namespace {

bool isAnyErased(const ZnDbCompoundObjectId& path) {
  for (const ZnDbObjectId id : path.pathIds())
    if (id.isErased()) return true;
  return path.leafId().isErased();
}

// Those whose dimension somebody held when their geometry changed.
std::vector<ZnDbDimAssoc*>& waiting() {
  static std::vector<ZnDbDimAssoc*> all;
  return all;
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
ZnDbDimAssoc::~ZnDbDimAssoc() { std::erase(waiting(), this); }

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

ErrorStatus ZnDbDimAssoc::targetOf(const Reference& reference, Target& target) {
  if (isAnyErased(reference.path)) return Quorl::eWasErased;
  const ZnGeMatrix3d sheet = zndbToSheet(reference.path);
  target.pointIndex = reference.pointIndex;
  target.isCircle = reference.subent.type() == ZnDb::kEdgeSubentType;
  if (target.isCircle) {
    std::unique_ptr<ZnGeCurve3d> curve;
    const ErrorStatus status = ZnDbEdgeRef(reference.path, reference.subent).evaluateCurve(curve);
    if (status != Quorl::eOk) return status;
    if (curve->type() != ZnGe::kCircularArc3d) return Quorl::eWrongObjectClass;
    target.circle = static_cast<const ZnGeCircArc3d&>(*curve);
    target.circle.transformBy(sheet);
    return Quorl::eOk;
  }
  ZnArray<ZnDbObjectId> ids;
  reference.path.getFullPath(ids);
  const ErrorStatus status =
      ZnDbVertexRef(ZnDbFullSubentPath(ids, reference.subent)).evaluatePoint(target.point);
  if (status == Quorl::eOk) target.point.transformBy(sheet);
  return status;
}

// Each end follows what it has, whatever became of the other.
ErrorStatus ZnDbDimAssoc::collectTargets(bool skipErased, std::vector<Target>& targets) const {
  for (const Reference& reference : references_) {
    Target target;
    const ErrorStatus status = targetOf(reference, target);
    if (status == Quorl::eOk)
      targets.push_back(target);
    else if (!skipErased)
      return status;
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
    const std::unique_ptr<ZnDbDimension> before(static_cast<ZnDbDimension*>(standing->clone()));
    const std::unique_ptr<ZnDbDimension> trial(static_cast<ZnDbDimension*>(standing->clone()));
    for (const Target& target : targets)
      if (const ErrorStatus status = target.apply(*trial); status != Quorl::eOk) return status;
    if (trial->hasSameFields(*before)) return Quorl::eOk;
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
  const auto watch = [this](ZnDbObjectId id) {
    if (!id.isNull()) links_.push_back(std::make_unique<ZnDbWatchLink>(objectId(), id));
  };
  for (const Reference& reference : references_) {
    for (const ZnDbObjectId id : reference.path.pathIds()) watch(id);
    watch(reference.path.leafId());
  }
}

void ZnDbDimAssoc::detachLinks() { links_.clear(); }

// The dimension follows at once; one that somebody holds just now follows at the next evaluation.
void ZnDbDimAssoc::watchedModified(const ZnDbObject*) {
  std::erase(waiting(), this);
  if (updating_ || dimensionId_.isErased()) return;
  updating_ = true;
  if (updateDimension(true, false) != Quorl::eOk) waiting().push_back(this);
  updating_ = false;
}

void ZnDbDimAssoc::followWhatWaits(const ZnDbDatabase* drawing) {
  const std::vector<ZnDbDimAssoc*> now = waiting();
  for (ZnDbDimAssoc* association : now)
    if (association->database() == drawing) association->watchedModified(nullptr);
}

// A copy follows what was copied along, and nothing of what the original follows.
ErrorStatus ZnDbDimAssoc::postProcessAfterDeepClone(ZnDbIdMapping& mapping) {
  const auto isCopied = [&](ZnDbObjectId id) {
    ZnDbIdPair pair(id);
    return mapping.compute(pair) && pair.isCloned();
  };
  ZnDbIdPair pair(objectId());
  if (!mapping.compute(pair) || pair.value().database() != database()) return Quorl::eOk;
  ZnDbHolder<ZnDbDimAssoc> copy;
  if (const ErrorStatus status = copy.openForWrite(pair.value()); status != Quorl::eOk) return status;
  std::vector<Reference> followed;
  for (size_t i = 0; i < references_.size() && i < copy->references_.size(); ++i) {
    const ZnDbCompoundObjectId& path = references_[i].path;
    if (isCopied(path.leafId()) || isCopied(path.topId())) followed.push_back(copy->references_[i]);
  }
  return followed.empty() ? copy->erase() : copy->setReferences(followed);
}

template<class Walk> void ZnDbDimAssoc::describe(Walk& walk) {
  // What stayed behind in another drawing, or is erased, is followed no longer.
  struct Keep {
    bool isFiled(const Reference& reference) const { return zndbIsFiledPath(reference.path, false); }
    bool isKept(const Reference& reference) const { return !reference.path.isEmpty(); }
  };
  walk.section(className(), 1);
  walk.id(ZnReferenceKind::kSoftPointer, 330, L"dimension", dimensionId_);
  const auto fields = [](auto& inner, Reference& reference) {
    inner.field(71, L"point index", reference.pointIndex);
    zndbDescribeSubent(inner, 72, reference.subent);
    inner.field(331, L"object", reference.path);
  };
  walk.list(71, L"references", references_, fields, Keep());
}

ZNDB_DEFINE_FIELDS(ZnDbDimAssoc, ZnDbObject)
