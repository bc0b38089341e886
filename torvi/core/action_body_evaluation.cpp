#include <memory>

#include "torvi/core/action_body.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/core/evaluation.h"
#include "torvi/core/kind.h"
#include "torvi/core/layout.h"
#include "torvi/core/reference_transform.h"
#include "torvi/drawing/blocks.h"

using Quorl::ErrorStatus;

namespace {

// Generated curves of one evaluation or comparison.
struct GeneratedCurves {
  ~GeneratedCurves() { ZnDbTorviActionBodyUtils::deleteCurves(curves); }
  void setEmpty(int index) {
    delete curves[index];
    curves[index] = new ZnGeLine3d;
  }
  ZnArray<ZnGeCurve3d*> curves;
  ZnArray<ZnString> keys;
};

// What is read back from the block: a curve without extent has no shape there.
void forgetDegenerate(GeneratedCurves& generated) {
  for (int i = 0; i < generated.curves.length(); ++i) {
    const ZnGeCurve3d& curve = *generated.curves[i];
    if (!curve.isKindOf(ZnGe::kLine3d) && curve.isDegenerate(ZnGeContext::gTol)) generated.setEmpty(i);
  }
}

// An object without edges leaves alone what it has no curve for.
void forgetWhatIsLeftAlone(const GeneratedCurves& generated, GeneratedCurves& present) {
  for (int i = 0; i < generated.curves.length() && i < present.curves.length(); ++i)
    if (generated.curves[i]->isKindOf(ZnGe::kLine3d)) present.setEmpty(i);
}

} // namespace

void ZnDbTorviActionBody::evaluateOverride() {
  assertReadEnabled();
  evaluateDependencies();
  if (handleBreakingAssociation()) return;
  if (isCenterObjectErased()) {
    setStatus(kErasedAssocStatus, true, false);
    return;
  }
  const std::unique_ptr<ZnDbTorviLayout> layout(getLayout());
  if (layout) regenerate(*layout);
}

// An object whose shape can't be generated lets go of its edges and stays as it is, rather than showing
// something that was true once.
void ZnDbTorviActionBody::regenerate(ZnDbTorviLayout& layout) {
  GeneratedCurves generated;
  if (layout.evaluateGeometry(generated.curves, generated.keys) != Quorl::eOk) {
    breakAssociativity();
    setStatus(kFailedToEvaluateAssocStatus, true, false);
    return;
  }
  // During a drag this is a substitute without a database.
  ZnDbEvalPointer<ZnDbBlockReference> reference(centerObjectId(), true, true);
  if (!reference.isOpen()) {
    reportFailedOpen(reference.status());
    return;
  }
  // A substitute of an object without edges stays where the drag put it.
  if (reference->database() || isAssociative(false)) writeTransform(*reference, layout.transform());
  // What the user set on the reference flows on into the generated entities.
  setSubentLineType(reference->linetype());
  setSubentLineWeight(reference->lineWeight());
  setSubentLinetypeScale(reference->linetypeScale());
  layout.updateEntities(generated.curves, generated.keys, isAssociative(false));
  cacheViewportScale();
  if (cacheAssociateStatus() && !isAssociative(false) && !isDragging()) torvi::printDisassociated(objectId());
  setStatus(kIsUpToDateAssocStatus, true, false);
}

void ZnDbTorviActionBody::reportFailedOpen(ErrorStatus status) {
  ZnDbHolder<ZnDbAssocAction> parent(ownerId());
  if (ZnDbAssocEvaluationCallback* callback = currentEvaluationCallback())
    callback->reportFailure(parent.object(), status, ZnDbObjectId(), nullptr, nullptr);
  setStatus(kFailedToEvaluateAssocStatus, true, false);
}

void ZnDbTorviActionBody::writeTransform(ZnDbBlockReference& reference, const ZnGeMatrix3d& transform) const {
  const torvi::Kind* kind = torvi::kindOfClass(isA());
  const bool keepsRotation = kind && kind->keepsRotationAmongViews && hostDocumentKindQuery();
  // A scale has gone into what is drawn.
  ZnGeMatrix3d wanted = keepsRotation ? torvi::rigidPartOf(reference.blockTransform()) : transform;
  wanted.setTranslation(transform.translation());
  if (!torvi::areExactlyEqual(wanted, reference.blockTransform())) reference.setBlockTransform(wanted);
}

bool ZnDbTorviActionBody::handleBreakingAssociation() {
  if (!associationToBeBroken()) return false;
  // The dependencies have just been noted, so the comparison does not mind erased ones any more.
  if (hasAnyErasedOrBrokenDependencies() || !doesActionMatchCurrentGeometry()) breakAssociativity();
  setStatus(kIsUpToDateAssocStatus, true, false);
  return true;
}

bool ZnDbTorviActionBody::isCenterObjectErased() const {
  const ZnDbObjectId id = centerObjectId();
  return id.isNull() || id.isErased() || !id.isValid();
}

bool ZnDbTorviActionBody::doesActionMatchCurrentGeometry() const {
  // What was erased before the last evaluation has had its effect.
  if (hasAnyNewlyErasedDependencies()) return false;
  const std::unique_ptr<ZnDbTorviLayout> layout(getLayout());
  if (!layout) return false;
  GeneratedCurves generated;
  if (layout->compareGeometry(generated.curves, generated.keys) != Quorl::eOk) return false;
  ZnDbEvalPointer<ZnDbBlockReference> reference(centerObjectId());
  if (!reference.isOpen()) return false;
  ZnGeMatrix3d expected = layout->transform();
  const ZnGeMatrix3d actual = reference->blockTransform();
  // A center mark turned by the user is no mismatch.
  if (!rotationToBeChecked()) ZnDbTorviActionBodyUtils::rotateMatrixToAlignRefMatrix(expected, actual);
  if (!ZnDbTorviActionBodyUtils::areTwoCoordinatesEqual(expected, actual)) return false;
  GeneratedCurves present;
  if (getPresentGeometry(generated.keys, present.curves) != Quorl::eOk) return false;
  forgetDegenerate(generated);
  if (!isAssociative(false)) forgetWhatIsLeftAlone(generated, present);
  const torvi::Kind* kind = torvi::kindOfClass(isA());
  return ZnDbTorviActionBodyUtils::geCurvesAreEqual(generated.curves, present.curves,
                                                    kind && kind->keepsSpareOutputs);
}

// What stands in the block in the order in which it would be generated. Keyed outputs come and go one by one,
// so their order in the block is that of their history; without keys it is that of the generation.
ErrorStatus ZnDbTorviActionBody::getPresentGeometry(const ZnArray<ZnString>& keys,
                                                    ZnArray<ZnGeCurve3d*>& curves) const {
  if (keys.isEmpty()) return getCenterObjGeometry(curves);
  ZnArray<ZnDbObjectId> ids;
  for (int i = 0; i < keys.length(); ++i) {
    if (i > 0 && keys[i] == keys[i - 1]) continue;
    const ZnDbObjectId id = getOutputEdge(keys[i]);
    if (id.isNull() || id.isErased()) return Quorl::eInvalidInput;
    if (!id.isDerivedFrom(ZnDbBlockReference::desc()))
      ids.append(id);
    else if (const ErrorStatus status = torvi::curvesOfReference(id, ids, false); status != Quorl::eOk)
      return status;
  }
  return getCenterObjGeometry(ids, curves);
}

bool ZnDbTorviActionBody::doesActionMatchCurrentSubEntLinetype() const {
  ZnDbHolder<ZnDbEntity> reference(centerObjectId());
  return !reference.isOpen() || subentLineType().equalsNoCase(reference->linetype());
}

bool ZnDbTorviActionBody::doesActionMatchCurrentSubEntLineWeight() const {
  ZnDbHolder<ZnDbEntity> reference(centerObjectId());
  return !reference.isOpen() || subentLineWeight() == reference->lineWeight();
}

bool ZnDbTorviActionBody::doesActionMatchCurrentSubEntLinetypeScale() const {
  ZnDbHolder<ZnDbEntity> reference(centerObjectId());
  return !reference.isOpen() || subentLinetypeScale() == reference->linetypeScale();
}

// The linetype is left out on purpose: the database-wide updates ask for it by itself.
bool ZnDbTorviActionBody::doesActionNeedUpdate() const {
  return !doesActionMatchCurrentGeometry() || !doesActionMatchCurrentSubEntLineWeight() ||
         !doesActionMatchCurrentSubEntLinetypeScale();
}

// Asked several times in each evaluation: it walks the parameters as they stand and makes no references.
bool ZnDbTorviActionBody::isAssociative(bool all) const {
  const ZnDbAssocAction* parent = action();
  if (!parent) return false;
  bool associative = false;
  for (const ZnDbObjectId paramId : parent->paramIdsAtName(inputEdgeParamName())) {
    ZnDbHolder<ZnDbAssocEdgeActionParam> param(paramId);
    if (param.isOpen() && param->hasLiveEdge())
      associative = true;
    else if (all)
      return false;
  }
  return associative;
}

ErrorStatus ZnDbTorviActionBody::breakAssociativity() {
  for (const ZnDbObjectId id : paramsAtName(inputEdgeParamName())) {
    ZnDbHolder<ZnDbAssocEdgeActionParam> param;
    if (param.openForWrite(id) == Quorl::eOk) param->emptyEdge(true);
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbTorviActionBody::breakAssociativity(int index) {
  ZnDbHolder<ZnDbAssocEdgeActionParam> param;
  const ErrorStatus status = param.openForWrite(paramAtName(inputEdgeParamName(), index));
  return status == Quorl::eOk ? param->emptyEdge(true) : status;
}

void ZnDbTorviActionBody::cacheViewportScale() {
  if (edgeRefCount() == 0) return;
  const ZnDbObjectId viewportId = getDependentViewportId();
  if (!viewportId.isValid()) return;
  double scale = 0.0;
  ZnDimUtil::calcDimLFac(viewportId, scale);
  setCachedViewportScale(scale);
}

bool ZnDbTorviActionBody::cacheAssociateStatus() {
  const bool associative = isAssociative(false);
  if (getCachedAssociateStatus() == associative) return false;
  setCachedAssociateStatus(associative);
  return true;
}

// The last sample of a drag counts as a real evaluation.
bool ZnDbTorviActionBody::isDragging() const {
  constexpr int kFirstSample = 1, kFurtherSample = 2;
  const ZnDbAssocEvaluationCallback* callback = currentEvaluationCallback();
  if (!callback) return false;
  const int state = callback->draggingState();
  return state == kFirstSample || state == kFurtherSample;
}
