#include "torvi/drawing/views.h"

#include "torvi/drawing/ask.h"

namespace torvi {

ZnDbObjectId activeViewportId() {
  const ZnDbHostApplicationServices* services = zndbHostApplicationServices();
  return services ? services->activeViewportId() : ZnDbObjectId();
}

ZnDbObjectId viewportOfEdge(const ZnDbEdgeRef& edge) {
  ZnDbObjectId viewportId;
  // An edge that nothing encloses is in no viewport; most are such, and no path need be made for them.
  if (edge.entity().pathIds().empty()) return viewportId;
  ZnArray<ZnDbObjectId> path;
  edge.entity().getFullPath(path);
  ShareDB::getViewportIdFromIdPath(path, viewportId);
  return viewportId;
}

bool beginsWithViewport(const ZnDbFullSubentPath& path) {
  const ZnArray<ZnDbObjectId>& ids = path.objectIds();
  return ids.length() >= 2 && ids.first().isDerivedFrom(ZnDbViewport::desc());
}

ZnGeMatrix3d modelToPaper(ZnDbObjectId viewportId) {
  ZnGeMatrix3d transform;
  if (!viewportId.isDerivedFrom(ZnDbViewport::desc())) return transform;
  ZnDbHolder<ZnDbViewport> viewport(viewportId);
  if (viewport.isOpen()) ZnDbPointRef::mswcsToPswcs(viewport.object(), transform);
  return transform;
}

double viewScale(ZnDbObjectId viewportId) {
  return ask<ZnDbViewport>(viewportId, 1.0, &ZnDbViewport::customScale);
}

namespace {

// The class of drawing views belongs to the host; it is found by name once.
const ZnRxClass* viewReferenceClass() {
  static const ZnRxClass* cls = [] {
    const auto* classes = ZnRxDictionary::cast(znrxSysRegistry()->at(L"ClassDictionary"));
    return classes ? static_cast<const ZnRxClass*>(classes->at(L"ZnDbViewRepBlockReference")) : nullptr;
  }();
  return cls;
}

} // namespace

bool isInDrawingView(ZnDbObjectId id) { return !id.isNull() && id.isDerivedFrom(viewReferenceClass()); }

bool isInDrawingView(const ZnDbFullSubentPath& path) {
  if (path.objectIds().isEmpty()) return false;
  const ZnDbObjectId first = path.objectIds().first();
  if (first.isDerivedFrom(ZnDbViewport::desc()))
    return DbBrevixUtil::checkBrevixViewport(first, nullptr, nullptr);
  return isInDrawingView(first);
}

bool isInDrawingView(const ZnDbEdgeRef& edge) {
  const ZnDbObjectId top = edge.entity().topId();
  if (top.isNull()) return false;
  if (top.isDerivedFrom(ZnDbViewport::desc()))
    return DbBrevixUtil::checkBrevixViewport(top, nullptr, nullptr);
  return isInDrawingView(top);
}

bool findDrawingView(const ZnDbEdgeRef& edge, ZnDbObjectId& viewportId, ZnDbObjectId* viewRepId,
                     ZnDbObjectId* viewId) {
  const ZnDbObjectId top = edge.entity().topId();
  if (top.isNull()) return false;
  if (!top.isDerivedFrom(ZnDbViewport::desc())) return isInDrawingView(top);
  if (!DbBrevixUtil::checkBrevixViewport(top, viewRepId, viewId)) return false;
  viewportId = top;
  return true;
}

ZnGeCurve3d* projectedCurve(const ZnDbEdgeRef& edge) {
  ZnDbHolder<ZnDbEntity> entity(edge.entity().leafId());
  if (!entity.isOpen()) return nullptr;
  const auto* naming = ZnDbAssocPersSubentIdPE::cast(entity->queryX(ZnDbAssocPersSubentIdPE::desc()));
  ZnArray<ZnDbSubentId> ids;
  if (!naming || naming->getAllSubentities(entity.object(), ZnDb::kEdgeSubentType, ids) != Quorl::eOk ||
      ids.isEmpty())
    return nullptr;
  ZnGeCurve3d* curve = nullptr;
  naming->getSubentGeometry(entity.object(), edge.subentId(), curve);
  return curve;
}

} // namespace torvi
