#include <memory>

#include "torvi/core/object_pointer.h"
#include "torvi/dbutils/lyx_utils.h"

ZnDbObjectId ZnTorviLyxUtils::getViewportIdFromEdgeRef(const ZnDbEdgeRef& edge) {
  ZnDbObjectId viewportId;
  // An edge that nothing encloses is in no viewport; most are such, and no path need be made for them.
  if (edge.entity().pathIds().empty()) return viewportId;
  ZnArray<ZnDbObjectId> path;
  edge.entity().getFullPath(path);
  ShareDB::getViewportIdFromIdPath(path, viewportId);
  return viewportId;
}

bool ZnTorviLyxUtils::isTranSpatialPath(const ZnDbFullSubentPath& path) {
  const ZnArray<ZnDbObjectId>& ids = path.objectIds();
  return ids.length() >= 2 && ids.first().isDerivedFrom(ZnDbViewport::desc());
}

bool ZnTorviLyxUtils::isSubEntityPath(const ZnDbFullSubentPath& path) {
  return !path.objectIds().isEmpty() && path.subentId().index() == 0;
}

ZnGeMatrix3d ZnTorviLyxUtils::msWcsToPsWcs(const ZnDbObjectId& viewportId) {
  ZnGeMatrix3d transform;
  if (!viewportId.isDerivedFrom(ZnDbViewport::desc())) return transform;
  ZnDbHolder<ZnDbViewport> viewport(viewportId);
  if (viewport.isOpen()) ZnDbPointRef::mswcsToPswcs(viewport.object(), transform);
  return transform;
}

double ZnTorviLyxUtils::viewScale(const ZnDbObjectId& viewportId) {
  ZnDbHolder<ZnDbViewport> viewport(viewportId);
  return viewport.isOpen() ? viewport->customScale() : 1.0;
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

bool ZnTorviLyxUtils::isInBrevixView(const ZnDbObjectId& id) {
  return !id.isNull() && id.isDerivedFrom(viewReferenceClass());
}

bool ZnTorviLyxUtils::isInBrevixView(const ZnDbFullSubentPath& path) {
  if (path.objectIds().isEmpty()) return false;
  const ZnDbObjectId first = path.objectIds().first();
  if (first.isDerivedFrom(ZnDbViewport::desc()))
    return DbBrevixUtil::checkBrevixViewport(first, nullptr, nullptr);
  return isInBrevixView(first);
}

bool ZnTorviLyxUtils::isInBrevixView(const ZnDbEdgeRef& edge) {
  const ZnDbObjectId top = edge.entity().topId();
  if (top.isNull()) return false;
  if (top.isDerivedFrom(ZnDbViewport::desc()))
    return DbBrevixUtil::checkBrevixViewport(top, nullptr, nullptr);
  return isInBrevixView(top);
}

bool ZnTorviLyxUtils::getBrevixView(const ZnDbEdgeRef& edge, ZnDbObjectId& viewportId,
                                    ZnDbObjectId* viewRepId, ZnDbObjectId* viewId) {
  const ZnDbObjectId top = edge.entity().topId();
  if (top.isNull()) return false;
  if (!top.isDerivedFrom(ZnDbViewport::desc())) return isInBrevixView(top);
  if (!DbBrevixUtil::checkBrevixViewport(top, viewRepId, viewId)) return false;
  viewportId = top;
  return true;
}

bool ZnTorviLyxUtils::isCenterReferenceToBrevixView(const ZnDbObjectId& centerId) {
  ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(centerId);
  if (wrapper.openStatus() != Quorl::eOk) return false;
  ZnArray<ZnDbEdgeRef> edges;
  wrapper->getEdgeRefs(edges);
  for (const ZnDbEdgeRef& edge : edges)
    if (isInBrevixView(edge)) return true;
  return false;
}

ZnGeCurve3d* ZnTorviLyxUtils::getBrevixProjectedCurve(const ZnDbEdgeRef& edge) {
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
