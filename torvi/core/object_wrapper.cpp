#include "torvi/core/object_wrapper.h"

#include "torvi/core/action_body.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

namespace {

// Opens the body for read and calls; the answer of a body that does not open is given by the caller.
template<class Answer, class Call> Answer readBody(ZnDbObjectId bodyId, Answer absent, Call&& call) {
  ZnDbHolder<ZnDbTorviActionBody> body(bodyId);
  return body.isOpen() ? call(*body) : absent;
}

// Opens the body for write and calls; a failed opening is the answer.
template<class Call> ErrorStatus writeBody(ZnDbObjectId bodyId, Call&& call) {
  ZnDbHolder<ZnDbTorviActionBody> body;
  const ErrorStatus status = body.openForWrite(bodyId);
  return status == Quorl::eOk ? call(*body) : status;
}

template<class Answer, class Call> Answer readReference(ZnDbObjectId id, Answer absent, Call&& call) {
  ZnDbHolder<ZnDbBlockReference> reference(id);
  return reference.isOpen() ? call(*reference) : absent;
}

template<class Call> ErrorStatus writeReference(ZnDbObjectId id, Call&& call) {
  ZnDbHolder<ZnDbBlockReference> reference;
  const ErrorStatus status = reference.openForWrite(id);
  return status == Quorl::eOk ? call(*reference) : status;
}

// The classes by which kinds are told apart, most derived first: a pattern's body is also a center mark's.
struct KindOfClass {
  const wchar_t* className;
  ZnDbTorviType kind;
};

constexpr KindOfClass kKindsOfClasses[] = {
    {L"ZnDbCenterMarkPatternActionBody", kCenterMarkPattern},
    {L"ZnDbCenterLineActionBody", kCenterLine},
    {L"ZnDbCenterMarkActionBody", kCenterMark},
    {L"ZnDbEdgeExtensionActionBody", kEdgeExtension},
};

ZnDbTorviType kindOfClass(const ZnRxClass* cls) {
  for (const KindOfClass& row : kKindsOfClasses)
    if (ZnRxClass::isDerivedFrom(cls, znrxFindZnRxClass(row.className))) return row.kind;
  return kTorviNone;
}

// Kinds of the body classes met so far, good for one generation of classes: the question is asked dozens of
// times in one evaluation, and finding classes by name would be most of its cost.
struct KnownKinds {
  static constexpr int kMost = 8;
  struct Entry {
    const ZnRxClass* cls = nullptr;
    ZnDbTorviType kind = kTorviNone;
  };
  Entry entries[kMost];
  int count = 0;
  unsigned generation = 0;

  ZnDbTorviType of(const ZnRxClass* cls) {
    if (generation != znrxClassGeneration()) {
      generation = znrxClassGeneration();
      count = 0;
    }
    for (int i = 0; i < count; ++i)
      if (entries[i].cls == cls) return entries[i].kind;
    const ZnDbTorviType kind = kindOfClass(cls);
    if (count < kMost) entries[count++] = {cls, kind};
    return kind;
  }
};

KnownKinds knownKinds;

} // namespace

ZnDbTorviType ZnDbTorviObjectWrapper::getCenterTypeFromActionBody(ZnDbObjectId bodyId) {
  return bodyId.isValid() ? knownKinds.of(bodyId.objectClass()) : kTorviNone;
}

ZnDbTorviType ZnDbTorviObjectWrapper::getCenterType(ZnDbObjectId centerObject) {
  return getCenterTypeFromActionBody(ZnTorviLyxUtils::getTorviActionBodyId(centerObject));
}

bool ZnDbTorviObjectWrapper::isCenterObject(ZnDbObjectId centerObject) {
  ZnArray<ZnDbObjectId> bodies;
  ZnTorviLyxUtils::getCenterActionBodiesOfBlockRef(centerObject, bodies);
  for (const ZnDbObjectId id : bodies)
    if (ZnDbHolder<ZnDbTorviActionBody>(id, true).isOpen()) return true;
  return false;
}

const ZnDbTorviObjectWrapper::Found* ZnDbTorviObjectWrapper::found_ = nullptr;

ZnDbTorviObjectWrapper::ZnDbTorviObjectWrapper(ZnDbObjectId centerObject)
    : centerObject_(centerObject) {
  if (found_) {
    bodyId_ = found_->bodyId;
    centerKind_ = found_->kind;
    return;
  }
  bodyId_ = ZnTorviLyxUtils::getTorviActionBodyId(centerObject);
  if (bodyId_.isValid()) centerKind_ = getCenterTypeFromActionBody(bodyId_);
}

bool ZnDbTorviObjectWrapper::isAssociative() const {
  return readBody(bodyId_, false, [](const ZnDbTorviActionBody& body) { return body.isAssociative(false); });
}

bool ZnDbTorviObjectWrapper::isFullyAssociative() const {
  return readBody(bodyId_, false, [](const ZnDbTorviActionBody& body) { return body.isAssociative(true); });
}

ErrorStatus ZnDbTorviObjectWrapper::breakAssociativity() {
  return writeBody(bodyId_, [](ZnDbTorviActionBody& body) { return body.breakAssociativity(); });
}

bool ZnDbTorviObjectWrapper::isExplicitlyDeassociatived() const {
  return readBody(bodyId_, false,
                  [](const ZnDbTorviActionBody& body) { return body.isExplicitlyDeassociatived(); });
}

ErrorStatus ZnDbTorviObjectWrapper::setIsExplicitlyDeassociatived(bool value) {
  return writeBody(bodyId_,
                   [=](ZnDbTorviActionBody& body) { return body.setIsExplicitlyDeassociatived(value); });
}

bool ZnDbTorviObjectWrapper::associationToBeBroken() const {
  bool answer = false;
  writeBody(bodyId_, [&](ZnDbTorviActionBody& body) {
    answer = body.associationToBeBroken();
    return Quorl::eOk;
  });
  return answer;
}

ErrorStatus ZnDbTorviObjectWrapper::setAssociationToBeBroken(bool value) {
  return writeBody(bodyId_, [=](ZnDbTorviActionBody& body) {
    body.setAssociationToBeBroken(value);
    return Quorl::eOk;
  });
}

ErrorStatus ZnDbTorviObjectWrapper::setCachedAssociateStatus(bool associative) {
  return writeBody(bodyId_,
                   [=](ZnDbTorviActionBody& body) { return body.setCachedAssociateStatus(associative); });
}

int ZnDbTorviObjectWrapper::edgeRefCount() const {
  return readBody(bodyId_, 0, [](const ZnDbTorviActionBody& body) { return body.edgeRefCount(); });
}

ErrorStatus ZnDbTorviObjectWrapper::getEdgeRefs(ZnArray<ZnDbEdgeRef>& edges) const {
  return readBody(bodyId_, Quorl::eOk,
                  [&](const ZnDbTorviActionBody& body) { return body.getEdgeRefs(edges); });
}

ErrorStatus ZnDbTorviObjectWrapper::getAssociatedEntitiesIds(ZnArray<ZnDbObjectId>& ids) const {
  return readBody(bodyId_, Quorl::eOk,
                  [&](const ZnDbTorviActionBody& body) { return body.getAssociatedEntitiesIds(ids); });
}

ZnDbObjectId ZnDbTorviObjectWrapper::getDependentViewportId() const {
  return readBody(bodyId_, ZnDbObjectId(),
                  [](const ZnDbTorviActionBody& body) { return body.getDependentViewportId(); });
}

double ZnDbTorviObjectWrapper::cachedViewportScale() const {
  return readBody(bodyId_, 0.0, [](const ZnDbTorviActionBody& body) { return body.cachedViewportScale(); });
}

bool ZnDbTorviObjectWrapper::doesActionMatchCurrentGeometry() const {
  return readBody(bodyId_, true,
                  [](const ZnDbTorviActionBody& body) { return body.doesActionMatchCurrentGeometry(); });
}

void ZnDbTorviObjectWrapper::explicitlyEvaluateCenterObject() {
  ZnTorviLyxUtils::evaluateAction(ZnDbAssocActionBody::parentAction(bodyId_));
}

ErrorStatus ZnDbTorviObjectWrapper::supressCenterEvaluation() {
  return writeBody(
      bodyId_, [](ZnDbTorviActionBody& body) { return body.setStatus(kSuppressedAssocStatus, true, false); });
}

ErrorStatus ZnDbTorviObjectWrapper::unSupressCenterEvaluation() {
  return writeBody(bodyId_, [](ZnDbTorviActionBody& body) {
    const ErrorStatus status = body.setStatus(kIsUpToDateAssocStatus, true, false);
    return status == Quorl::eOk ? body.setStatus(kChangedDirectlyAssocStatus, true, false) : status;
  });
}

bool ZnDbTorviObjectWrapper::isCenterEvaluationSupressed() const {
  return readBody(bodyId_, false,
                  [](const ZnDbTorviActionBody& body) { return body.status() == kSuppressedAssocStatus; });
}

ZnDbObjectId ZnDbTorviObjectWrapper::styleDepId() const {
  return readBody(bodyId_, ZnDbObjectId(), [](const ZnDbTorviActionBody& body) { return body.styleDepId(); });
}

ErrorStatus ZnDbTorviObjectWrapper::setStyleDepId(ZnDbObjectId id) {
  return writeBody(bodyId_, [=](ZnDbTorviActionBody& body) { return body.setStyleDepId(id); });
}

ErrorStatus ZnDbTorviObjectWrapper::addDependencyToStyle(ZnDbObjectId styleId) {
  return writeBody(bodyId_, [=](ZnDbTorviActionBody& body) { return body.addDependencyToStyle(styleId); });
}

ErrorStatus ZnDbTorviObjectWrapper::resetExtensions() {
  return writeBody(bodyId_, [](ZnDbTorviActionBody& body) { return body.resetExtensions(); });
}

ErrorStatus ZnDbTorviObjectWrapper::resetOvershoots() {
  return writeBody(bodyId_, [](ZnDbTorviActionBody& body) { return body.resetOvershoots(); });
}

double ZnDbTorviObjectWrapper::autoMatchExtension() const {
  return readBody(bodyId_, 0.0,
                  [](const ZnDbTorviActionBody&) { return ZnDbTorviActionBody::autoMatchExtension(); });
}

bool ZnDbTorviObjectWrapper::isAutoMatchExtension(double value) const {
  return readBody(bodyId_, false, [=](const ZnDbTorviActionBody&) {
    return ZnDbTorviActionBody::isAutoMatchExtension(value);
  });
}

ErrorStatus ZnDbTorviObjectWrapper::getCenterEntitesIds(ZnArray<ZnDbObjectId>& ids) const {
  return readBody(bodyId_, Quorl::eOk, [&](const ZnDbTorviActionBody& body) {
    return ZnTorviLyxUtils::getEntitesIdsFromBlkRef(body.centerObjectId(), ids, false);
  });
}

ErrorStatus ZnDbTorviObjectWrapper::getCenterObjGeometry(ZnArray<ZnGeCurve3d*>& curves) const {
  return readBody(bodyId_, Quorl::eOk,
                  [&](const ZnDbTorviActionBody& body) { return body.getCenterObjGeometry(curves); });
}

ZnDbObjectId ZnDbTorviObjectWrapper::getOutputEdge(const ZnString& key) const {
  return readBody(bodyId_, ZnDbObjectId(),
                  [&](const ZnDbTorviActionBody& body) { return body.getOutputEdge(key); });
}

ErrorStatus ZnDbTorviObjectWrapper::setOutputEdge(const ZnString& key, ZnDbObjectId id) {
  return writeBody(bodyId_, [&](ZnDbTorviActionBody& body) { return body.setOutputEdge(key, id); });
}

ErrorStatus ZnDbTorviObjectWrapper::renameOutputEdgeKey(const ZnString& oldKey, const ZnString& newKey) {
  return writeBody(bodyId_,
                   [&](ZnDbTorviActionBody& body) { return body.renameOutputEdgeKey(oldKey, newKey); });
}

ErrorStatus ZnDbTorviObjectWrapper::getOutputEdgeKeys(ZnArray<ZnString>& keys) const {
  return readBody(bodyId_, Quorl::eOk, [&](const ZnDbTorviActionBody& body) {
    body.getOutputEdgeKeys(keys);
    return Quorl::eOk;
  });
}

ZnString ZnDbTorviObjectWrapper::subentLineType() const {
  ZnDbHolder<ZnDbTorviActionBody> body(bodyId_);
  return body.isOpen() ? body->subentLineType() : ZnTorviStyle::getCenterLineTypeName();
}

int ZnDbTorviObjectWrapper::subentLineWeight() const {
  return readBody(bodyId_, static_cast<int>(ZnDb::kLineWeightByLayer),
                  [](const ZnDbTorviActionBody& body) { return body.subentLineWeight(); });
}

double ZnDbTorviObjectWrapper::subentLinetypeScale() const {
  ZnDbHolder<ZnDbTorviActionBody> body(bodyId_);
  return body.isOpen() ? body->subentLinetypeScale() : ZnTorviStyle::getCenterLinetypeScale();
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentLineType(const ZnString& name) {
  return writeBody(bodyId_, [&](ZnDbTorviActionBody& body) { return body.setSubentLineType(name); });
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentLineWeight(int weight) {
  return writeBody(bodyId_, [=](ZnDbTorviActionBody& body) { return body.setSubentLineWeight(weight); });
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentLinetypeScale(double scale) {
  return writeBody(bodyId_, [=](ZnDbTorviActionBody& body) { return body.setSubentLinetypeScale(scale); });
}

int ZnDbTorviObjectWrapper::colorIndex() const {
  constexpr int kByLayerColor = 256;
  return readReference(centerObject_, kByLayerColor,
                       [](const ZnDbBlockReference& reference) { return reference.colorIndex(); });
}

ZnString ZnDbTorviObjectWrapper::linetype() const {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject_);
  return reference.isOpen() ? reference->linetype() : ZnTorviStyle::getCenterLineTypeName();
}

int ZnDbTorviObjectWrapper::lineWeight() const {
  return readReference(
      centerObject_, static_cast<int>(ZnDb::kLineWeightByLayer),
      [](const ZnDbBlockReference& reference) { return static_cast<int>(reference.lineWeight()); });
}

double ZnDbTorviObjectWrapper::linetypeScale() const {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject_);
  return reference.isOpen() ? reference->linetypeScale() : ZnTorviStyle::getCenterLinetypeScale();
}

ZnCmColor ZnDbTorviObjectWrapper::subentColor() const {
  return readReference(centerObject_, ZnCmColor(),
                       [](const ZnDbBlockReference& reference) { return reference.color(); });
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentColor(const ZnCmColor& color) {
  return writeReference(centerObject_,
                        [&](ZnDbBlockReference& reference) { return reference.setColor(color, true); });
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentColorIndex(int index) {
  return writeReference(centerObject_,
                        [=](ZnDbBlockReference& reference) { return reference.setColorIndex(index, true); });
}

ZnGeMatrix3d ZnDbTorviObjectWrapper::blockTransform() const {
  return readReference(centerObject_, ZnGeMatrix3d(),
                       [](const ZnDbBlockReference& reference) { return reference.blockTransform(); });
}
