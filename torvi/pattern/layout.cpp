// What a pattern's layout does as a layout: reading the object, evaluation, keys and entities.
#include "torvi/pattern/layout.h"

#include "torvi/centermark/block_sync.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/drawing/linetypes.h"
#include "torvi/pattern/object_wrapper.h"

using Quorl::ErrorStatus;
using Body = ZnDbCenterMarkPatternActionBody;

ZnDbCenterMarkPatternLayout::ZnDbCenterMarkPatternLayout(ZnDbObjectId centerObject)
    : ZnDbTorviLayout(centerObject) {
  const WrapperPointer& pattern = wrapper();
  if (pattern.openStatus() != Quorl::eOk) return;
  patternType_ = pattern->getCenterPatternType();
  pattern->getReferenceEdge(referenceEdge_, referencePickParam_);
  fullPitchCircle_ = pattern->isFullPCD();
  showPitchCenterMark_ = pattern->showCenterMark();
}

ZnDbCenterMarkPatternLayout::ZnDbCenterMarkPatternLayout(CenterMarkPatternType type,
                                                         const ZnDbEdgeRef& referenceEdge, double pickParam,
                                                         bool fullPcd, bool showCenterMark, bool autoFullPcd)
    : ZnDbTorviLayout(ZnDbObjectId())
    , patternType_(type)
    , referenceEdge_(referenceEdge)
    , referencePickParam_(pickParam)
    , fullPitchCircle_(fullPcd)
    , showPitchCenterMark_(showCenterMark)
    , autoFullPitchCircle_(autoFullPcd) {}

ZnDbCenterMarkPatternLayout::~ZnDbCenterMarkPatternLayout() {
  ZnDbTorviActionBodyUtils::deleteCurves(majorCurves_);
}

void ZnDbCenterMarkPatternLayout::setCenterObject(ZnDbObjectId id) {
  centerObject_ = id;
  wrapper_.reset();
}

// Made once: an evaluation asks it for one value after another.
const ZnDbCenterMarkPatternLayout::WrapperPointer& ZnDbCenterMarkPatternLayout::wrapper() const {
  if (!wrapper_) wrapper_ = std::make_unique<WrapperPointer>(centerObject_);
  return *wrapper_;
}

ErrorStatus ZnDbCenterMarkPatternLayout::evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves,
                                                          ZnArray<ZnString>& keys) {
  const WrapperPointer& pattern = wrapper();
  if (pattern.openStatus() != Quorl::eOk) return pattern.openStatus();
  if (!pattern->isAssociative()) {
    applyBlockScaleToExtensions(centerObject_);
    undoCenterMarkMirror(centerObject_);
    transform_ = pattern->blockTransform();
    return generateUnassociated(curves, keys);
  }
  if (const ErrorStatus status = loadPattern(); status != Quorl::eOk) return status;
  if (const ErrorStatus status = syncStoredCenterLineKey(); status != Quorl::eOk) return status;
  if (patternType_ == kCenterPatternPolar) cacheAxisMembers();
  generatePattern(curves, keys);
  appendMajorCurves(curves, keys);
  return Quorl::eOk;
}

// The curves through all members are left out: nobody sees them, and they follow from what is compared.
ErrorStatus ZnDbCenterMarkPatternLayout::compareGeometry(ZnArray<ZnGeCurve3d*>& curves,
                                                         ZnArray<ZnString>& keys) {
  const WrapperPointer& pattern = wrapper();
  if (pattern.openStatus() != Quorl::eOk) return pattern.openStatus();
  if (!pattern->isAssociative()) return pattern->getCenterObjGeometry(curves);
  const ErrorStatus status = loadPattern();
  return status == Quorl::eOk ? generatePattern(curves, keys) : status;
}

ErrorStatus ZnDbCenterMarkPatternLayout::loadPattern() {
  const WrapperPointer& pattern = wrapper();
  if (pattern.openStatus() != Quorl::eOk) return Quorl::eInvalidInput;
  ZnArray<ZnDbEdgeRef> edges;
  if (const ErrorStatus status = pattern->getEdgeRefs(edges); status != Quorl::eOk) return status;
  if (!loadCircles(edges) || !analysePattern()) return Quorl::eInvalidInput;
  keepLinearDirection();
  rebuildCenterLineKeys();
  return Quorl::eOk;
}

// A line keeps its sense from one evaluation to the next, and with it what is start and what is end of the
// overshoots, on whichever side members come and go.
ErrorStatus ZnDbCenterMarkPatternLayout::keepLinearDirection() {
  centerLineKeys_.removeAll();
  const WrapperPointer& pattern = wrapper();
  if (pattern.openStatus() != Quorl::eOk) return pattern.openStatus();
  if (const ErrorStatus status = pattern->getCenterLineDependencyKeys(centerLineKeys_); status != Quorl::eOk)
    return status;
  if (patternType_ != kCenterPatternLinear || centerLineKeys_.isEmpty() || majorCurves_.isEmpty())
    return Quorl::eOk;
  ZnDbHolder<ZnDbLine> stored(pattern->getOutputEdge(centerLineKeys_.first()));
  if (!stored.isOpen()) return stored.status();
  const ZnGeVector3d before = (stored->endPoint() - stored->startPoint()).normal();
  auto* curve = static_cast<ZnGeLineSeg3d*>(majorCurves_.first());
  if (before.dotProduct(curve->direction()) < 0.0) {
    curve->reverseParam();
    memberChains_.first().reverse();
  }
  return Quorl::eOk;
}

void ZnDbCenterMarkPatternLayout::rebuildCenterLineKeys() {
  centerLineKeys_.removeAll();
  for (const ZnArray<int>& chain : memberChains_)
    centerLineKeys_.append(Body::centerLineDependencyKey(chain));
}

// The key tells the members, so it changes with them; entity and overshoots move on to the new one.
ErrorStatus ZnDbCenterMarkPatternLayout::syncStoredCenterLineKey() {
  ZnArray<ZnString> stored;
  wrapper()->getCenterLineDependencyKeys(stored);
  if (stored.isEmpty()) return Quorl::eOk;
  const ZnString current = centerLineKeys_.isEmpty() ? ZnString() : centerLineKeys_.first();
  return stored.first() == current ? Quorl::eOk : wrapper()->renameCenterLineKey(stored.first(), current);
}

// Lets the pattern redraw its pitch center mark once it has lost its edges. The arms are told apart by where
// they point in the drawing, whatever way the plane's own axis runs.
ErrorStatus ZnDbCenterMarkPatternLayout::cacheAxisMembers() {
  if (!majorCurves_.isEmpty()) {
    const auto* circle = static_cast<const ZnGeCircArc3d*>(majorCurves_.first());
    if (const ErrorStatus status = wrapper()->setCachedCircleRadius(circle->radius()); status != Quorl::eOk)
      return status;
  }
  int indices[4];
  double radii[4];
  for (int arm = 0; arm < 4; ++arm) {
    indices[arm] = axisMembers_[static_cast<size_t>(axisOfArm(arm))];
    radii[arm] = indices[arm] < 0 ? 0.0 : circles_[indices[arm]].radius();
  }
  return wrapper()->cacheInputEdgesOnMajorAxis(indices, radii);
}

ErrorStatus ZnDbCenterMarkPatternLayout::createEntities(ZnArray<ZnDbEntity*>&, ZnArray<ZnString>&) {
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkPatternLayout::createEntitiesForKey(ZnArray<ZnDbEntity*>& entities,
                                                              const ZnString& key) {
  const bool polar = patternType_ == kCenterPatternPolar;
  const auto append = [&entities](std::initializer_list<bool> areArcs) {
    for (const bool isArc : areArcs)
      entities.append(isArc ? static_cast<ZnDbEntity*>(new ZnDbArc) : new ZnDbLine);
  };
  // Each center line, whole or in pieces, has a dash in its key.
  const bool isCenterLine =
      key.view().starts_with(Body::centerLineDependencyKey().view()) || key.find(L"-") >= 0;
  if (key.isEmpty() || isCenterLine)
    append({polar});
  else if (polar && !(key == Body::majorAxisKey()))
    append({true, false, true, true, false, false});
  else
    append({false, false, false, false, false, false});
  return Quorl::eOk;
}

// The two lines of each cross stay continuous whatever linetype the object has; the curve through all members
// is there for dependencies and overshoots alone.
ErrorStatus ZnDbCenterMarkPatternLayout::adjustEntities(const ZnArray<ZnDbEntity*>& entities,
                                                        const ZnArray<ZnString>& keys) {
  constexpr int kCrossLines = 2;
  ZnDbDatabase* database =
      centerObject_.isNull() ? zndbHostApplicationServices()->workingDatabase() : centerObject_.database();
  const ZnDbObjectId continuous = torvi::crossHairLinetypeId(database);
  const ZnString* previous = nullptr;
  int run = 0, first = 0;
  for (int i = 0; i < keys.length() && i < entities.length(); ++i) {
    if (keys[i].view().starts_with(Body::centerLineDependencyKey().view())) {
      if (entities[i]) entities[i]->setVisibility(ZnDb::kInvisible, true);
      continue;
    }
    const bool continues = previous && keys[i] == *previous;
    run = continues ? run + 1 : 1;
    if (!continues) first = i;
    previous = &keys[i];
    if (run != kCrossLines) continue;
    for (const int line : {first, i})
      if (entities[line]) entities[line]->setLinetype(continuous, true);
  }
  return Quorl::eOk;
}
