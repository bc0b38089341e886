#include "quorl/assoc/vertex_action_param.h"

#include "quorl/db/core/fields.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocVertexActionParam, ZnDbAssocGeomActionParam, L"ASSOCVERTEXACTIONPARAM")

ErrorStatus ZnDbAssocVertexActionParam::vertexRefs(ZnArray<ZnDbVertexRef>& vertices) const {
  vertices.removeAll();
  if (fixedPoint_) {
    vertices.append(ZnDbVertexRef(*fixedPoint_));
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
    fixedPoint_.reset();
    return dependOn(vertex.entity(), vertex.subentId(), isReadDependency, isWriteDependency, order);
  }
  if (const ErrorStatus status = release(true); status != Quorl::eOk) return status;
  ZnGePoint3d point;
  fixedPoint_.reset();
  if (vertex.evaluatePoint(point) == Quorl::eOk) fixedPoint_ = point;
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocVertexActionParam::emptyVertex(bool releaseOwned) {
  if (fixedPoint_) assertWriteEnabled();
  fixedPoint_.reset();
  return release(releaseOwned);
}

template<class Walk> void ZnDbAssocVertexActionParam::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(10, L"fixed point", fixedPoint_);
}

ZNDB_DEFINE_FIELDS(ZnDbAssocVertexActionParam, ZnDbAssocGeomActionParam)
