// What a pattern's layout does as a layout: reading the object, evaluation, keys and entities.
#include "torvi/pattern/layout.h"

#include "torvi/core/action_body_utils.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/linetypes.h"
#include "torvi/pattern/drawing.h"
#include "torvi/pattern/object_wrapper.h"
#include "torvi/pattern/remains.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;
using Body = ZnDbCenterMarkPatternActionBody;

namespace {

// Whether members follow each other as the key says: above 0 when most neighbours do, below 0 when they go
// the other way round, 0 where nothing tells.
int senseOf(const ZnArray<int>& chain, const ZnString& key) {
  ZnArray<int> before;
  Body::getEdgeIndicesOnCenterLine(key, before);
  int sense = 0, last = -1;
  for (const int index : before) {
    const int place = chain.find(index);
    if (place < 0) continue;
    if (last >= 0) sense += place > last ? 1 : -1;
    last = place;
  }
  return sense;
}

} // namespace

ZnDbCenterMarkPatternLayout::ZnDbCenterMarkPatternLayout(ZnDbObjectId centerObject)
    : ZnDbTorviLayout(centerObject) {
  const WrapperPointer& pattern = wrapper();
  if (pattern.openStatus() != Quorl::eOk) return;
  settings_.patternType = pattern->getCenterPatternType();
  pattern->getReferenceEdge(settings_.referenceEdge, settings_.referencePickParam);
  settings_.fullPcd = pattern->isFullPCD();
  settings_.showPitchCenterMark = pattern->showCenterMark();
}

ZnDbCenterMarkPatternLayout::ZnDbCenterMarkPatternLayout(CenterMarkPatternType type,
                                                         const ZnDbEdgeRef& referenceEdge, double pickParam,
                                                         bool fullPcd, bool showCenterMark, bool autoFullPcd)
    : ZnDbTorviLayout(ZnDbObjectId())
    , settings_{type, referenceEdge, pickParam, fullPcd, showCenterMark, autoFullPcd} {}

ZnDbCenterMarkPatternLayout::~ZnDbCenterMarkPatternLayout() = default;

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
    transform_ = pattern->blockTransform();
    ZnPatternRemains(*pattern).appendChanges(curves, keys);
    return Quorl::eOk;
  }
  if (const ErrorStatus status = loadPattern(); status != Quorl::eOk) return status;
  if (const ErrorStatus status = syncStoredCenterLineKey(); status != Quorl::eOk) return status;
  if (settings_.patternType == kCenterPatternPolar) cacheAxisMembers();
  const ZnPatternDrawing drawing = drawingInBlock(curves, keys);
  drawing.generate(curves, keys);
  drawing.appendMajorCurves(centerLineKeys_.isEmpty() ? ZnString() : centerLineKeys_.first(), curves, keys);
  return Quorl::eOk;
}

// The curves through all members are left out: nobody sees them, and they follow from what is compared.
ErrorStatus ZnDbCenterMarkPatternLayout::compareGeometry(ZnArray<ZnGeCurve3d*>& curves,
                                                         ZnArray<ZnString>& keys) {
  const WrapperPointer& pattern = wrapper();
  if (pattern.openStatus() != Quorl::eOk) return pattern.openStatus();
  if (!pattern->isAssociative()) {
    transform_ = pattern->blockTransform();
    ZnPatternRemains(*pattern).appendAll(curves, keys);
    return Quorl::eOk;
  }
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
// overshoots, on whichever side members come and go, and however they are turned. Where no two members are
// left to tell it, the line that was drawn does.
ErrorStatus ZnDbCenterMarkPatternLayout::keepLinearDirection() {
  centerLineKeys_.removeAll();
  const WrapperPointer& pattern = wrapper();
  if (pattern.openStatus() != Quorl::eOk) return pattern.openStatus();
  if (const ErrorStatus status = pattern->getCenterLineDependencyKeys(centerLineKeys_); status != Quorl::eOk)
    return status;
  const ZnGeLineSeg3d* line = pattern_.line();
  if (settings_.patternType != kCenterPatternLinear || centerLineKeys_.isEmpty() || !line) return Quorl::eOk;
  if (const int sense = senseOf(pattern_.memberChain, centerLineKeys_.first()); sense != 0) {
    if (sense < 0) pattern_.reverse();
    return Quorl::eOk;
  }
  ZnDbHolder<ZnDbLine> stored(pattern->getOutputEdge(centerLineKeys_.first()));
  if (!stored.isOpen()) return stored.status();
  const ZnGeVector3d before = (stored->endPoint() - stored->startPoint()).normal();
  if (before.dotProduct(line->direction()) < 0.0) pattern_.reverse();
  return Quorl::eOk;
}

void ZnDbCenterMarkPatternLayout::rebuildCenterLineKeys() {
  centerLineKeys_.removeAll();
  if (!pattern_.memberChain.isEmpty())
    centerLineKeys_.append(Body::centerLineDependencyKey(pattern_.memberChain));
}

// The key tells the members, so it changes with them; entity and overshoots move on to the new one. A ring
// runs the other way once its holes were mirrored: then start and end are exchanged. A line that is new gets
// the overshoots of the pattern's making, and keeps them whatever the style becomes.
ErrorStatus ZnDbCenterMarkPatternLayout::syncStoredCenterLineKey() {
  ZnArray<ZnString> stored;
  wrapper()->getCenterLineDependencyKeys(stored);
  const ZnString current = centerLineKeys_.isEmpty() ? ZnString() : centerLineKeys_.first();
  if (stored.isEmpty()) return current.isEmpty() ? Quorl::eOk : wrapper()->startCenterLine(current);
  if (stored.first() == current) return Quorl::eOk;
  return senseOf(pattern_.memberChain, stored.first()) < 0
             ? wrapper()->reverseCenterLineKey(stored.first(), current)
             : wrapper()->renameCenterLineKey(stored.first(), current);
}

// Lets the pattern redraw its pitch center mark once it has lost its edges. The arms are told apart by where
// they point in the drawing, whatever way the plane's own axis runs.
ErrorStatus ZnDbCenterMarkPatternLayout::cacheAxisMembers() {
  if (const ZnGeCircArc3d* circle = pattern_.pitchCircle())
    if (const ErrorStatus status = wrapper()->setCachedCircleRadius(circle->radius()); status != Quorl::eOk)
      return status;
  int indices[4];
  double radii[4];
  for (int arm = 0; arm < 4; ++arm) {
    indices[arm] = pattern_.axisMembers[static_cast<size_t>(pattern_.axisOfArm(arm))];
    radii[arm] = indices[arm] < 0 ? 0.0 : pattern_.circles[indices[arm]].radius();
  }
  return wrapper()->cacheInputEdgesOnMajorAxis(indices, radii);
}

bool ZnDbCenterMarkPatternLayout::computeBlockTransform(const ZnArray<ZnGeCurve3d*>&,
                                                        const ZnArray<ZnString>&) {
  ZnGePoint3d origin;
  if (const ZnGeLineSeg3d* line = pattern_.line()) {
    origin = line->midPoint();
  } else if (const ZnGeCircArc3d* pitchCircle = pattern_.pitchCircle()) {
    origin = pitchCircle->center();
  } else {
    ZnGeBoundBlock3d extents;
    for (const ZnGeCircArc3d& circle : pattern_.circles)
      if (circle.radius() > 0.0) extents.addPoint(circle.center());
    origin = extents.center();
  }
  transform_.setToTranslation(origin.asVector());
  return true;
}

// A new object has no overshoots of its own yet.
ZnPatternDrawing ZnDbCenterMarkPatternLayout::drawingInBlock(const ZnArray<ZnGeCurve3d*>& curves,
                                                             const ZnArray<ZnString>& keys) {
  ZnPatternAnalysis inBlock = pattern_;
  if (computeBlockTransform(curves, keys)) inBlock.transformBy(transform_.inverse());
  const double standard = ZnTorviStyle::getCenterOvershoot();
  ZnPatternOvershoots overshoots{standard, standard, standard};
  if (const WrapperPointer& pattern = wrapper(); pattern.openStatus() == Quorl::eOk) {
    const ZnString key = centerLineKeys_.isEmpty() ? ZnString() : centerLineKeys_.first();
    overshoots = {pattern->startOvershoot(key), pattern->endOvershoot(key), pattern->memberOvershoot()};
  }
  return ZnPatternDrawing(std::move(inBlock), centerObject_, settings_.showPitchCenterMark, overshoots);
}

ErrorStatus ZnDbCenterMarkPatternLayout::generatePattern(ZnArray<ZnGeCurve3d*>& curves,
                                                         ZnArray<ZnString>& keys) {
  drawingInBlock(curves, keys).generate(curves, keys);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkPatternLayout::createEntities(ZnArray<ZnDbEntity*>&, ZnArray<ZnString>&) {
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkPatternLayout::createEntitiesForKey(ZnArray<ZnDbEntity*>& entities,
                                                              const ZnString& key) {
  const bool polar = settings_.patternType == kCenterPatternPolar;
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
