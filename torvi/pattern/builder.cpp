#include "torvi/pattern/builder.h"

#include "torvi/core/object_pointer.h"
#include "torvi/drawing/edge_curves.h"
#include "torvi/pattern/object_wrapper.h"
#include "torvi/pattern/transient_layout.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

ZnRxClass* ZnCenterMarkPatternBuilder::gpDesc = nullptr;
bool ZnCenterMarkPatternBuilder::autoFillMode_ = false;
ZnArray<ZnCenterMarkPatternBuilder*> ZnCenterMarkPatternBuilder::instances_;

namespace {

// Up to here circles alone say nothing: any two lie on one line.
constexpr int kMostUndecidedCircles = 2;
constexpr double kNoPick = -1.0;

// Kinds of reference edge have the numbers of the types that they decide.
bool isDecidedByReference(const ZnDbCenterMarkPatternLayout& layout) {
  return layout.referenceKind() == static_cast<int>(layout.patternType());
}

// Where on the arc the pick is, as an offset from its start; false for a pick beyond its ends.
bool pickOnArc(const ZnGeCircArc3d& arc, const ZnGePoint3d& pick, double& param) {
  const ZnGeCircArc3d whole(arc.center(), arc.normal(), arc.radius());
  double onArc = 0.0;
  if (!arc.isOn(whole.closestPointTo(pick), onArc)) return false;
  param = onArc - arc.startAng();
  return true;
}

} // namespace

ZnCenterMarkPatternBuilder::ZnCenterMarkPatternBuilder(ZnDbDatabase* database)
    : ZnTorviBuilder(bodyClassNamed(L"ZnDbCenterMarkPatternActionBody", gpDesc), database) {
  instances_.append(this);
  ZnCenterMarkPatternBuilder::clearInput();
}

ZnCenterMarkPatternBuilder::~ZnCenterMarkPatternBuilder() { instances_.remove(this); }

void ZnCenterMarkPatternBuilder::setInputEdges(const ZnArray<ZnDbEdgeRef>& edges) {
  ZnTorviBuilder::setInputEdges(edges);
  userEdgeCount_ = edges.length();
  updateBuilderFromLayout();
}

void ZnCenterMarkPatternBuilder::addInputEdge(const ZnDbEdgeRef& edge) {
  if (autoFillMode()) undoAutoFillPattern();
  ZnTorviBuilder::addInputEdge(edge);
  ++userEdgeCount_;
  // Without anything to add, the user's own edges say what the pattern is.
  if (!autoFillPattern()) updateBuilderFromLayout();
}

bool ZnCenterMarkPatternBuilder::removeInputEdge(const ZnDbEdgeRef& edge) {
  if (autoFillMode()) undoAutoFillPattern();
  const bool removed = ZnTorviBuilder::removeInputEdge(edge);
  if (removed) --userEdgeCount_;
  if (removed || autoFillMode()) updateBuilderFromLayout();
  // An edge that only auto fill had put in is none of the user's, and comes back with the others.
  autoFillPattern();
  return removed;
}

void ZnCenterMarkPatternBuilder::clearInput() {
  // What was filled is no edge of the object and must not count as one taken away from it.
  if (autoFillMode()) undoAutoFillPattern();
  ZnTorviBuilder::clearInput();
  if (!objectLoaded()) patternType_ = kCenterPatternNone;
  referenceEdge_ = ZnDbEdgeRef();
  referencePickParam_ = kNoPick;
  showCenterMark_ = isFullPitchCircle_ = false;
  isAutoFullPitchCircle_ = true;
  considerEqualDiametersOnly_ = filterOpenArcs_ = false;
  autoFillTypeBefore_ = kCenterPatternNone;
  userEdgeCount_ = 0;
}

bool ZnCenterMarkPatternBuilder::getReferenceEdge(ZnDbEdgeRef& edge, double& param) const {
  edge = referenceEdge_;
  param = referencePickParam_;
  return hasReferenceEdge();
}

void ZnCenterMarkPatternBuilder::setReferenceEdge(const ZnDbEdgeRef& edge, double param) {
  if (autoFillMode()) undoAutoFillPattern();
  referenceEdge_ = edge;
  referencePickParam_ = param;
  updateBuilderFromLayout();
  autoFillPattern();
}

bool ZnCenterMarkPatternBuilder::setReferenceEdge(const ZnDbEdgeRef& edge, const ZnGePoint3d& pick) {
  const std::unique_ptr<ZnGeCurve3d> curve(torvi::evaluatedEdgeCurve(edge, false));
  if (!curve) return false;
  double param = kNoPick;
  if (curve->isKindOf(ZnGe::kCircularArc3d) &&
      !pickOnArc(static_cast<const ZnGeCircArc3d&>(*curve), pick, param))
    return false;
  setReferenceEdge(edge, param);
  return true;
}

void ZnCenterMarkPatternBuilder::clearReferenceEdge() { setReferenceEdge(ZnDbEdgeRef(), kNoPick); }

ZnArray<ZnDbEdgeRef> ZnCenterMarkPatternBuilder::userEdges() const {
  ZnArray<ZnDbEdgeRef> edges = inputEdges();
  if (autoFillMode() && userEdgeCount_ < edges.length()) edges.setLogicalLength(userEdgeCount_);
  return edges;
}

// What auto fill made of the edges so far must not decide on the next one, so both questions are asked of the
// pattern as it was before.
bool ZnCenterMarkPatternBuilder::isValidInputEdge(const ZnDbEdgeRef& edge) const {
  ZnArray<ZnDbEdgeRef> edges = userEdges();
  if (edges.contains(edge)) return false;
  edges.append(edge);
  const bool asBefore = autoFillMode() && !hasReferenceEdge();
  return makeLayout(asBefore ? autoFillTypeBefore_ : patternType_, referenceEdge_)->allCirclesOnChains(edges);
}

bool ZnCenterMarkPatternBuilder::isValidRefEdge(const ZnDbEdgeRef& edge) const {
  const auto layout = makeLayout(autoFillMode() ? autoFillTypeBefore_ : patternType_, edge);
  if (!layout->allCirclesOnChains(userEdges())) return false;
  if (layout->patternType() == kCenterPatternNone) return false;
  const bool undecided = !objectLoaded() && layout->circleCount() <= kMostUndecidedCircles;
  return !undecided || isDecidedByReference(*layout);
}

bool ZnCenterMarkPatternBuilder::hasEditChanges(const ZnCenterMarkPatternBuilder& other) const {
  if (!objectLoaded()) return false;
  return hasInputEdgeChangesInEdit() || inputEdges().length() != userEdgeCount_ ||
         patternType_ != other.patternType_ || !(referenceEdge_ == other.referenceEdge_) ||
         referencePickParam_ != other.referencePickParam_ || showCenterMark_ != other.showCenterMark_ ||
         isFullPCD() != other.isFullPCD();
}

std::unique_ptr<ZnDbCenterMarkPatternTransientLayout>
ZnCenterMarkPatternBuilder::makeLayout(CenterMarkPatternType type, const ZnDbEdgeRef& referenceEdge) const {
  auto layout = std::make_unique<ZnDbCenterMarkPatternTransientLayout>(
      type, referenceEdge, referencePickParam_, isFullPitchCircle_ && type != kCenterPatternLinear,
      showCenterMark_, isAutoFullPitchCircle_);
  layout->setCenterObject(centerObjId());
  return layout;
}

ZnDbTorviLayout* ZnCenterMarkPatternBuilder::getLayout() const {
  return makeLayout(patternType_, referenceEdge_).release();
}

void ZnCenterMarkPatternBuilder::updateBuilderFromLayout() {
  const auto layout = makeLayout(patternType_, referenceEdge_);
  const bool isPattern = layout->loadCircles(inputEdges()) && layout->analysePattern();
  // A loaded object keeps its type.
  if (!objectLoaded()) {
    const bool decided =
        isPattern && (layout->circleCount() > kMostUndecidedCircles || isDecidedByReference(*layout));
    patternType_ = decided ? layout->patternType() : kCenterPatternNone;
  }
  if (isPattern && isAutoFullPitchCircle_) isFullPitchCircle_ = layout->fullPcd();
  if (patternType_ == kCenterPatternNone) {
    referenceEdge_ = ZnDbEdgeRef();
    referencePickParam_ = kNoPick;
  }
  if (patternType_ != kCenterPatternPolar) showCenterMark_ = isFullPitchCircle_ = false;
}

ErrorStatus ZnCenterMarkPatternBuilder::initValuesInBody(ZnDbObjectId bodyId) const {
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  ErrorStatus status = body->resetExtensions();
  if (status == Quorl::eOk) status = body->resetOvershoots();
  if (status == Quorl::eOk)
    status = body->setCrossHairLengthExpression(ZnTorviStyle::getCrossHairLengthExpression());
  if (status == Quorl::eOk)
    status = body->setCrossHairGapExpression(ZnTorviStyle::getCrossHairGapExpression());
  // One or two circles that nothing decided lie on a line.
  if (status == Quorl::eOk)
    status =
        body->setCenterPatternType(patternType_ == kCenterPatternNone ? kCenterPatternLinear : patternType_);
  if (status == Quorl::eOk && hasReferenceEdge())
    status = body->setReferenceEdge(referenceEdge_, referencePickParam_);
  if (status == Quorl::eOk) status = body->setShowCenterMark(showCenterMark_);
  return status == Quorl::eOk ? body->setIsFullPCD(isFullPCD()) : status;
}

ErrorStatus ZnCenterMarkPatternBuilder::subLoadTorvi(ZnDbTorviObjectWrapper* wrapper) {
  const auto* pattern = dynamic_cast<const ZnDbCenterMarkPatternObjectWrapper*>(wrapper);
  if (!pattern) return Quorl::eInvalidInput;
  patternType_ = pattern->getCenterPatternType();
  referenceEdge_ = ZnDbEdgeRef();
  referencePickParam_ = kNoPick;
  if (pattern->getReferenceEdge(referenceEdge_, referencePickParam_))
    convertEdgeRefToOriginalForm(referenceEdge_);
  isFullPitchCircle_ = pattern->isFullPCD();
  showCenterMark_ = pattern->showCenterMark();
  isAutoFullPitchCircle_ = false;
  userEdgeCount_ = inputEdges().length();
  autoFillTypeBefore_ = patternType_;
  return Quorl::eOk;
}

ErrorStatus ZnCenterMarkPatternBuilder::subModifyTorvi(ZnDbObjectId bodyId) const {
  // The base has written the user's edges; those that auto fill added are known here alone.
  ZnArray<ZnDbEdgeRef> filled;
  for (int i = userEdgeCount_; i < inputEdges().length(); ++i) filled.append(inputEdges()[i]);
  if (!filled.isEmpty())
    if (const ErrorStatus status = addInputEdgesToBody(bodyId, filled); status != Quorl::eOk) return status;
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body;
  if (const ErrorStatus status = body.openForWrite(bodyId); status != Quorl::eOk) return status;
  ZnDbEdgeRef present;
  double presentParam = kNoPick;
  if (body->getReferenceEdge(present, presentParam)) body->clearReferenceEdge();
  body->forgetReferencePick(); // it was on another edge
  ErrorStatus status = Quorl::eOk;
  if (hasReferenceEdge()) status = body->setReferenceEdge(referenceEdge_, referencePickParam_);
  if (status == Quorl::eOk) status = body->setShowCenterMark(showCenterMark_);
  return status == Quorl::eOk ? body->setIsFullPCD(isFullPCD()) : status;
}
