#include "torvi/drawing/edge_curves.h"

#include "torvi/drawing/views.h"

using Quorl::ErrorStatus;
using CurvePtr = std::unique_ptr<ZnGeCurve3d>;

namespace torvi {

namespace {

CurvePtr wholeCircle(const ZnGeCircArc3d& arc) {
  return std::make_unique<ZnGeCircArc3d>(arc.center(), arc.normal(), arc.radius());
}

bool isCircular(const CurvePtr& curve) { return curve && curve->isKindOf(ZnGe::kCircularArc3d); }

// The shape as drawn in a plain space: segments of lines, circular arcs of arcs and circles, and nothing
// else.
CurvePtr curveOfEntity(const ZnDbEdgeRef& edge, const ZnDbEntity& entity, bool fullCircle) {
  if (const auto* line = ZnDbLine::cast(&entity)) {
    // A line without length still stands for a point.
    if (line->startPoint().isEqualTo(line->endPoint(), ZnGeContext::gTol))
      return std::make_unique<ZnGeLineSeg3d>(line->startPoint(), line->endPoint());
    CurvePtr curve;
    if (edge.evaluateCurve(curve) != Quorl::eOk || !curve) return nullptr;
    ZnGeInterval interval;
    curve->getInterval(interval);
    return std::make_unique<ZnGeLineSeg3d>(curve->evalPoint(interval.lowerBound()),
                                           curve->evalPoint(interval.upperBound()));
  }
  if (!ZnDbArc::cast(&entity) && !ZnDbCircle::cast(&entity)) return nullptr;
  CurvePtr curve;
  if (edge.evaluateCurve(curve) != Quorl::eOk || !isCircular(curve)) return nullptr;
  return fullCircle ? wholeCircle(static_cast<const ZnGeCircArc3d&>(*curve)) : std::move(curve);
}

// A line, circle or arc that stands in the space itself shows its own edge: no stand-in need be made of it.
bool isOwnEdge(const ZnDbEdgeRef& edge) {
  if (!edge.entity().pathIds().empty() || edge.heldCurve()) return false;
  if (edge.subentId() != ZnDbSubentId(ZnDb::kEdgeSubentType, 0)) return false;
  const ZnRxClass* cls = edge.entity().leafId().objectClass();
  return cls && (cls == ZnDbLine::desc() || cls == ZnDbCircle::desc() || cls == ZnDbArc::desc());
}

CurvePtr curveOfOwnEdge(const ZnDbEdgeRef& edge, bool fullCircle) {
  ZnDbHolder<ZnDbCurve> entity(edge.entity().leafId());
  if (!entity.isOpen()) return nullptr;
  if (const auto* line = ZnDbLine::cast(entity.object()))
    return std::make_unique<ZnGeLineSeg3d>(line->startPoint(), line->endPoint());
  if (const auto* circle = ZnDbCircle::cast(entity.object()))
    return std::make_unique<ZnGeCircArc3d>(circle->center(), circle->normal(), circle->radius());
  ZnGeCurve3d* whole = nullptr;
  entity->getZnGeCurve(whole, ZnGeContext::gTol);
  CurvePtr curve(whole);
  if (!isCircular(curve)) return nullptr;
  return fullCircle ? wholeCircle(static_cast<const ZnGeCircArc3d&>(*curve)) : std::move(curve);
}

// Takes back the shift with which objects on the way show the curve.
void undoLogicalShift(const ZnDbEdgeRef& edge, ZnGeCurve3d& curve) {
  ZnArray<ZnDbObjectId> path;
  edge.entity().getFullPath(path);
  for (const ZnDbObjectId id : path) {
    const ZnRxClass* cls = id.objectClass();
    auto* shift = cls ? ZnDbLogicalTransformPE::cast(cls->queryX(ZnDbLogicalTransformPE::desc())) : nullptr;
    if (!shift) continue;
    shift->noteSource(id, &curve);
    ZnGeMatrix3d matrix;
    if (shift->getTransform(matrix) == Quorl::eOk) curve.transformBy(matrix.inverse());
  }
}

CurvePtr curveInDrawingView(const ZnDbEdgeRef& edge, bool fullCircle) {
  CurvePtr curve(projectedCurve(edge));
  if (!curve) return nullptr;
  if (fullCircle && isCircular(curve)) curve = wholeCircle(static_cast<const ZnGeCircArc3d&>(*curve));
  ZnGeMatrix3d transform;
  if (edge.entity().getTransform(transform) == Quorl::eOk) curve->transformBy(transform);
  if (hostLogicalTransformDocument() && curve->isKindOf(ZnGe::kLineSeg3d)) undoLogicalShift(edge, *curve);
  return curve;
}

} // namespace

CurvePtr evaluatedEdgeCurve(const ZnDbEdgeRef& edge, bool fullCircle) {
  if (isOwnEdge(edge)) return curveOfOwnEdge(edge, fullCircle);
  CurvePtr curve;
  if (isInDrawingView(edge)) {
    curve = curveInDrawingView(edge, fullCircle);
  } else {
    const std::unique_ptr<ZnDbEntity> entity(edge.createEntity());
    if (entity) curve = curveOfEntity(edge, *entity, fullCircle);
  }
  // What is seen through a viewport is turned into paper space.
  const ZnDbObjectId top = edge.entity().topId();
  if (curve && top.isDerivedFrom(ZnDbViewport::desc())) curve->transformBy(modelToPaper(top));
  return curve;
}

ErrorStatus createEdgeRef(const ZnDbFullSubentPath& path, ZnDbEdgeRef& edge) {
  const ZnArray<ZnDbObjectId>& ids = path.objectIds();
  const ZnDbObjectId leaf = ids.isEmpty() ? ZnDbObjectId() : ids.last();
  if (!isInDrawingView(path)) {
    ZnDbHolder<ZnDbLine> line(leaf);
    const bool isPoint = line.isOpen() && line->startPoint().isEqualTo(line->endPoint(), ZnGeContext::gTol);
    edge = isPoint ? ZnDbEdgeRef() : ZnDbEdgeRef(path);
    return Quorl::eOk;
  }
  ZnDbHolder<ZnDbEntity> entity;
  if (const ErrorStatus status = entity.open(leaf); status != Quorl::eOk) return status;
  const auto* naming = ZnDbAssocPersSubentIdPE::cast(entity->queryX(ZnDbAssocPersSubentIdPE::desc()));
  ZnArray<ZnDbSubentId> edges;
  if (naming) naming->getAllSubentities(entity.object(), ZnDb::kEdgeSubentType, edges);
  if (edges.isEmpty()) return Quorl::eInvalidInput;
  ZnDbCompoundObjectId compound;
  compound.setFullPath(path, nullptr);
  edge = ZnDbEdgeRef(compound, edges.first(), ZnDbSubentId(), nullptr);
  return Quorl::eOk;
}

} // namespace torvi
