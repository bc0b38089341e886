#include "quorl/assoc/vertex_action_param.h"

#include "quorl/db/core/field_io.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocVertexActionParam, ZnDbAssocGeomActionParam, L"ASSOCVERTEXACTIONPARAM")

namespace {
constexpr std::int16_t kVersion = 1;
constexpr int kFixedPointCode = 10;
} // namespace

ErrorStatus ZnDbAssocVertexActionParam::vertexRefs(ZnArray<ZnDbVertexRef>& vertices) const {
  vertices.removeAll();
  if (hasFixedPoint_) {
    vertices.append(ZnDbVertexRef(fixedPoint_));
    return Quorl::eOk;
  }
  const ZnDbAssocGeomDependency* dependency = geomDependency();
  if (!dependency || !dependency->isAttached()) return Quorl::eOk;
  vertices.append(ZnDbVertexRef(dependency->compoundObject(), dependency->subentId()));
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocVertexActionParam::setVertexRef(const ZnDbVertexRef& vertex, bool isReadDependency,
                                                     bool isWriteDependency, int order) {
  assertWriteEnabled();
  if (!vertex.isEmpty()) {
    hasFixedPoint_ = false;
    return dependOn(vertex.entity(), vertex.subentId(), isReadDependency, isWriteDependency, order);
  }
  if (const ErrorStatus status = release(true); status != Quorl::eOk) return status;
  hasFixedPoint_ = vertex.evaluatePoint(fixedPoint_) == Quorl::eOk;
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocVertexActionParam::emptyVertex(bool releaseOwned) {
  assertWriteEnabled();
  hasFixedPoint_ = false;
  return release(releaseOwned);
}

ErrorStatus ZnDbAssocVertexActionParam::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbAssocGeomActionParam::bdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeInt16(kVersion);
  filer.writeBool(hasFixedPoint_);
  filer.writePoint3d(fixedPoint_);
  return filer.status();
}

ErrorStatus ZnDbAssocVertexActionParam::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbAssocGeomActionParam::bdocInFields(filer); status != Quorl::eOk)
    return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  hasFixedPoint_ = filer.readBool();
  fixedPoint_ = filer.readPoint3d();
  return filer.status();
}

ErrorStatus ZnDbAssocVertexActionParam::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbAssocGeomActionParam::tdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeSubclassMarker(className());
  if (hasFixedPoint_) filer.writePoint3d(kFixedPointCode, fixedPoint_);
  return filer.status();
}

ErrorStatus ZnDbAssocVertexActionParam::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbAssocGeomActionParam::tdocInFields(filer); status != Quorl::eOk)
    return status;
  return zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code != kFixedPointCode) return;
    hasFixedPoint_ = true;
    fixedPoint_ = item.point;
  });
}
