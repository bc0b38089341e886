#include "torvi/core/layout.h"

#include <memory>

#include "torvi/core/entity_drafts.h"
#include "torvi/core/object_pointer.h"
#include "torvi/drawing/edge_curves.h"
#include "torvi/drawing/linetypes.h"

using Quorl::ErrorStatus;

ErrorStatus ZnDbTorviLayout::adjustEntities(const ZnArray<ZnDbEntity*>&, const ZnArray<ZnString>&) {
  return Quorl::eOk;
}

ErrorStatus ZnDbTorviLayout::createTransients(const ZnArray<ZnDbEdgeRef>&, const ZnGePoint3d*,
                                              ZnArray<ZnGeCurve3d*>&, ZnArray<ZnString>&) {
  return Quorl::eNotProvided;
}

ErrorStatus ZnDbTorviLayout::createEntitiesForKey(ZnArray<ZnDbEntity*>&, const ZnString&) {
  return Quorl::eNothingToDo;
}

namespace {

// Whether a curve says anything of its entity: the empty marker leaves that of an object without edges alone.
bool saysAShape(const ZnGeCurve3d* curve, bool associative) {
  return associative ||
         (curve && (curve->isKindOf(ZnGe::kLineSeg3d) || curve->isKindOf(ZnGe::kCircularArc3d)));
}

} // namespace

ErrorStatus ZnDbTorviLayout::updateEntities(const ZnArray<ZnGeCurve3d*>& curves,
                                            const ZnArray<ZnString>& keys, bool associative) {
  ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(centerObject_);
  if (wrapper.openStatus() != Quorl::eOk) return Quorl::eInvalidInput;
  ZnArray<ZnDbObjectId> ids;
  const ErrorStatus found = keys.isEmpty() ? wrapper->getCenterEntitesIds(ids)
                                           : reconcileOutputEntities(ids, keys, *wrapper, associative);
  if (found != Quorl::eOk) return found;
  if (curves.length() > ids.length()) return Quorl::eInvalidInput;
  torvi::EntityDrafts block;
  if (const ErrorStatus status = block.open(ids); status != Quorl::eOk) return status;
  for (int i = 0; i < curves.length(); ++i) applyCurveToEntity(block.drafts()[i], curves[i], associative);
  applyTraits(*wrapper, block.drafts());
  const ErrorStatus adjusted = adjustEntities(block.drafts(), keys);
  // A shape is set as it was set on the draft: setters may round, and rounding twice is not rounding once.
  for (int i = 0; i < curves.length(); ++i)
    if (saysAShape(curves[i], associative) && !block.hasShapeOfDraft(i))
      applyCurveToEntity(block.entity(i), curves[i], associative);
  block.writeTraits();
  return adjusted;
}

// Color and transparency follow the reference by block; linetype, weight and scale are copied, since dashes
// depend on them and a member may have its own.
void ZnDbTorviLayout::applyTraits(ZnDbTorviObjectWrapper& wrapper,
                                  const ZnArray<ZnDbEntity*>& entities) const {
  constexpr int kByBlockColor = 0;
  ZnDbObjectId layerId;
  ZnDbHolder<ZnDbEntity> reference(centerObject_);
  if (reference.isOpen()) layerId = reference->layerId();
  // One look-up for all: a name that the drawing has not leaves each linetype as it is.
  const ZnDbObjectId linetypeId = torvi::linetypeByName(centerObject_.database(), wrapper.subentLineType());
  const auto lineWeight = static_cast<ZnDb::LineWeight>(wrapper.subentLineWeight());
  const double linetypeScale = wrapper.subentLinetypeScale();
  for (ZnDbEntity* entity : entities) {
    if (!linetypeId.isNull()) entity->setLinetype(linetypeId, true);
    entity->setColorIndex(kByBlockColor, true);
    entity->setTransparency(torvi::byBlockTransparency(), true);
    entity->setLineWeight(lineWeight, true);
    entity->setLinetypeScale(linetypeScale, true);
    entity->setLayer(layerId, true, true);
  }
}

ErrorStatus ZnDbTorviLayout::applyCurveToEntity(ZnDbEntity* entity, const ZnGeCurve3d* curve,
                                                bool associative) {
  if (!entity || !curve) return Quorl::eInvalidInput;
  auto* line = ZnDbLine::cast(entity);
  auto* arc = ZnDbArc::cast(entity);
  if (curve->isKindOf(ZnGe::kLineSeg3d)) {
    const auto* segment = static_cast<const ZnGeLineSeg3d*>(curve);
    entity->setVisibility(ZnDb::kVisible, true);
    if (line) {
      line->setStartPoint(segment->startPoint());
      line->setEndPoint(segment->endPoint());
    }
  } else if (curve->isKindOf(ZnGe::kCircularArc3d)) {
    const auto* circular = static_cast<const ZnGeCircArc3d*>(curve);
    entity->setVisibility(ZnDb::kVisible, true);
    if (arc) {
      arc->setCenter(circular->center());
      arc->setRadius(circular->radius());
      arc->setNormal(circular->normal());
      arc->setStartAngle(circular->startAng());
      arc->setEndAngle(circular->endAng());
    }
  } else if (associative) {
    entity->setVisibility(ZnDb::kInvisible, true);
    if (line) line->setEndPoint(line->startPoint());
    if (arc) arc->setRadius(0.0);
  }
  return Quorl::eOk;
}

namespace {

// Evaluates each edge and takes its curve where it is of the kind, else the placeholder.
template<class Shape, class Make>
int shapesOf(const ZnArray<ZnDbEdgeRef>& edges, ZnGe::EntityId kind, const Shape& placeholder,
             ZnArray<Shape>& shapes, Make&& make) {
  int count = 0;
  shapes.removeAll();
  for (const ZnDbEdgeRef& edge : edges) {
    const std::unique_ptr<ZnGeCurve3d> curve(torvi::evaluatedEdgeCurve(edge, false));
    if (curve && curve->isKindOf(kind)) {
      shapes.append(make(static_cast<const Shape&>(*curve)));
      ++count;
    } else {
      shapes.append(placeholder);
    }
  }
  return count;
}

} // namespace

int ZnDbTorviLayout::getInputLineSegments(ZnArray<ZnGeLineSeg3d>& segments) const {
  return getInputLineSegments(ZnDbTorviObjectWrapper(centerObject_), segments);
}

int ZnDbTorviLayout::getInputLineSegments(const ZnDbTorviObjectWrapper& wrapper,
                                          ZnArray<ZnGeLineSeg3d>& segments) const {
  static const ZnGeLineSeg3d placeholder(ZnGePoint3d::kOrigin, ZnGePoint3d::kOrigin);
  ZnArray<ZnDbEdgeRef> edges;
  wrapper.getEdgeRefs(edges);
  return shapesOf(edges, ZnGe::kLineSeg3d, placeholder, segments, [](const ZnGeLineSeg3d& segment) {
    return ZnGeLineSeg3d(segment.startPoint(), segment.endPoint());
  });
}

int ZnDbTorviLayout::getInputCircles(const ZnArray<ZnDbEdgeRef>& edges,
                                     ZnArray<ZnGeCircArc3d>& circles) const {
  static const ZnGeCircArc3d placeholder(ZnGePoint3d::kOrigin, ZnGeVector3d::kZAxis, 0.0);
  return shapesOf(edges, ZnGe::kCircularArc3d, placeholder, circles,
                  [](const ZnGeCircArc3d& circle) { return circle; });
}
