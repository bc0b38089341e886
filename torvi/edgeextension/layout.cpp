#include "torvi/edgeextension/layout.h"

#include "torvi/core/edge_relations.h"
#include "torvi/drawing/views.h"
#include "torvi/edgeextension/action_body.h"

using Quorl::ErrorStatus;
using torvi::EdgeMeeting;

ZnDbEdgeExtensionLayout::ZnDbEdgeExtensionLayout(ZnDbObjectId centerObject)
    : ZnDbTorviLayout(centerObject) {}

ZnDbEdgeExtensionLayout::~ZnDbEdgeExtensionLayout() = default;

ZnDbEdgeExtensionObjectWrapper* ZnDbEdgeExtensionLayout::wrapper() const {
  if (!wrapper_) wrapper_.emplace(centerObject());
  return wrapper_->object();
}

ErrorStatus ZnDbEdgeExtensionLayout::createEntities(ZnArray<ZnDbEntity*>& entities, ZnArray<ZnString>&) {
  for (int i = 0; i < kEdges; ++i) entities.append(new ZnDbLine);
  return Quorl::eOk;
}

ErrorStatus ZnDbEdgeExtensionLayout::evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves,
                                                      ZnArray<ZnString>& keys) {
  if (const ErrorStatus status = compareGeometry(curves, keys); status != Quorl::eOk) return status;
  // What is remembered is for the day when an edge is gone: without edges it is not renewed.
  if (!wrapper()->isAssociative()) return Quorl::eOk;
  if (!anchored_) updateAnchors();
  ZnArray<ZnGePoint3d> ends;
  ends.setLogicalLength(2);
  for (int i = 0; i < edges_.length(); ++i) {
    ends[0] = edges_[i].startPoint();
    ends[1] = edges_[i].endPoint();
    if (wrapper()->setCachedRefEdgePoints(i, ends) != Quorl::eOk) break;
  }
  return Quorl::eOk;
}

ErrorStatus ZnDbEdgeExtensionLayout::compareGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>&) {
  if (!wrapper()) return Quorl::eInvalidInput;
  switch (getInputLineSegments(*wrapper(), edges_)) {
  case 0:
    return linesOfBlock(curves);
  case 1:
    replaceMissingEdge();
    break;
  case kEdges:
    break;
  default:
    return Quorl::eInvalidInput;
  }
  return calculateExtensionLines(curves);
}

ErrorStatus ZnDbEdgeExtensionLayout::linesOfBlock(ZnArray<ZnGeCurve3d*>& curves) {
  transform_ = wrapper()->blockTransform();
  return wrapper()->getCenterObjGeometry(curves);
}

void ZnDbEdgeExtensionLayout::replaceMissingEdge() {
  const int missing = edges_[0].length() != 0.0 ? 1 : 0;
  if (edges_.length() < kEdges) edges_.setLogicalLength(kEdges);
  edges_[missing] = cachedRefEdge(missing);
}

// An edge that is not remembered has no length, and so crosses nothing.
ZnGeLineSeg3d ZnDbEdgeExtensionLayout::cachedRefEdge(int index) const {
  ZnArray<ZnGePoint3d> points;
  if (wrapper()->getCachedRefEdgePoints(index, points) != Quorl::eOk) return {};
  return {points[0], points[1]};
}

ErrorStatus ZnDbEdgeExtensionLayout::calculateExtensionLines(ZnArray<ZnGeCurve3d*>& curves) {
  const std::optional<EdgeMeeting> crossing = EdgeMeeting::of(edges_[0], edges_[1]);
  if (!crossing) return Quorl::eNothingToDo;
  for (int i = 0; i < kEdges; ++i) {
    if (crossing->isOnEdge(i)) return Quorl::eNothingToDo;
    nearEnds_[i] = crossing->settledParam(i) < 0.0 ? edges_[i].startPoint() : edges_[i].endPoint();
  }
  const ErrorStatus anchors = checkAnchors();
  anchored_ = anchors == Quorl::eOk;
  if (anchors != Quorl::eOk && anchors != Quorl::eNothingToDo) return anchors;
  if (anchors == Quorl::eNothingToDo && !isSameSideAsCached(*crossing)) return Quorl::eNothingToDo;
  double extension = 0.0, gap = 0.0;
  if (const ErrorStatus status = getDimStyleDistances(extension, gap); status != Quorl::eOk) return status;
  // A gap that would leave little of a short way is left out.
  constexpr double kLeastWayInGaps = 1.5;
  transform_.setToTranslation(crossing->point().asVector());
  for (int i = 0; i < kEdges; ++i) {
    const ZnGeVector3d way = crossing->wayFrom(nearEnds_[i]);
    const ZnGeVector3d along = way.normal(ZnGeContext::gTol);
    const ZnGePoint3d start = ZnGePoint3d::kOrigin - way;
    curves.append(new ZnGeLineSeg3d(way.length() > kLeastWayInGaps * gap ? start + along * gap : start,
                                    ZnGePoint3d::kOrigin + along * extension));
  }
  return Quorl::eOk;
}

// eNothingToDo when there are no anchors to ask, or one that has lost its edge; eInvalidInput when the
// crossing has moved past the other end of an edge, so that the extension that was drawn no longer applies.
ErrorStatus ZnDbEdgeExtensionLayout::checkAnchors() const {
  ZnDbHolder<ZnDbEdgeExtensionActionBody> body(wrapper()->actionBody());
  if (!body.isOpen()) return body.status();
  for (int i = 0; i < kEdges; ++i) {
    ZnDbVertexRef anchor;
    ZnGePoint3d point;
    if (body->getAnchorVertex(i, anchor) != Quorl::eOk || anchor.evaluatePoint(point) != Quorl::eOk)
      return Quorl::eNothingToDo;
    const ZnDbObjectId top = anchor.entity().topId();
    if (top.isDerivedFrom(ZnDbViewport::desc())) point.transformBy(torvi::modelToPaper(top));
    if (!torvi::isSamePoint(point, edges_[i].startPoint()) &&
        !torvi::isSamePoint(point, edges_[i].endPoint()))
      return Quorl::eNothingToDo;
    if (!torvi::isSamePoint(point, nearEnds_[i])) return Quorl::eInvalidInput;
  }
  return Quorl::eOk;
}

// By the parameters of the crossing, now and then, along the lines of both edges. Edges that are not
// remembered contradict nothing; for those that did not cross the origin stands in.
bool ZnDbEdgeExtensionLayout::isSameSideAsCached(const EdgeMeeting& now) const {
  ZnGeLineSeg3d cached[kEdges];
  for (int i = 0; i < kEdges; ++i) {
    ZnArray<ZnGePoint3d> points;
    if (wrapper()->getCachedRefEdgePoints(i, points) != Quorl::eOk) return true;
    cached[i].set(points[0], points[1]);
  }
  const std::optional<EdgeMeeting> before = EdgeMeeting::of(cached[0], cached[1]);
  for (int i = 0; i < kEdges; ++i) {
    const double param =
        before ? before->settledParam(i) : -cached[i].startPoint().asVector().dotProduct(cached[i].span());
    if (param * now.settledParam(i) <= 0.0) return false;
  }
  return true;
}

ErrorStatus ZnDbEdgeExtensionLayout::getDimStyleDistances(double& extension, double& gap) const {
  ZnDbHolder<ZnDbEdgeExtensionActionBody> body(wrapper()->actionBody());
  if (!body.isOpen()) return body.status();
  ZnDbHolder<ZnDbDimStyleTableRecord> style(body->dimStyleDepId());
  if (!style.isOpen()) return style.status();
  extension = style->extensionBeyond();
  gap = style->extensionOffset();
  return Quorl::eOk;
}

// Anchors are set once and stay: they hold what was meant when the object was made.
void ZnDbEdgeExtensionLayout::updateAnchors() const {
  {
    ZnDbHolder<ZnDbEdgeExtensionActionBody> body(wrapper()->actionBody());
    ZnDbVertexRef present;
    if (!body.isOpen() || body->getAnchorVertex(0, present) == Quorl::eOk) return;
  }
  ZnDbHolder<ZnDbEdgeExtensionActionBody> body;
  if (body.openForWrite(wrapper()->actionBody()) != Quorl::eOk) return;
  ZnArray<ZnDbEdgeRef> edges;
  body->getEdgeRefs(edges);
  for (int i = 0; i < kEdges && i < edges.length(); ++i) {
    const ZnDbVertexRef vertex = vertexAtNearEnd(edges[i], i);
    if (vertex.isEmpty()) return;
    body->setAnchorVertex(i, vertex);
  }
}

// The vertex at the near end, else the last one there is; empty for an entity that can't name its vertices.
ZnDbVertexRef ZnDbEdgeExtensionLayout::vertexAtNearEnd(const ZnDbEdgeRef& edge, int index) const {
  ZnDbHolder<ZnDbEntity> entity(edge.entity().leafId());
  if (!entity.isOpen()) return {};
  const auto* naming = ZnDbAssocPersSubentIdPE::cast(entity->queryX(ZnDbAssocPersSubentIdPE::desc()));
  ZnArray<ZnDbSubentId> ids;
  if (!naming || naming->getAllSubentities(entity.object(), ZnDb::kVertexSubentType, ids) != Quorl::eOk)
    return {};
  const ZnGeMatrix3d toSpace = torvi::modelToPaper(edge.entity().topId());
  ZnDbVertexRef vertex;
  for (const ZnDbSubentId& id : ids) {
    vertex = ZnDbVertexRef(edge.entity(), id);
    ZnGePoint3d point;
    if (vertex.evaluatePoint(point) == Quorl::eOk &&
        torvi::isSamePoint(point.transformBy(toSpace), nearEnds_[index]))
      return vertex;
  }
  return vertex;
}
