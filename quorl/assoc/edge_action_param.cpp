#include "quorl/assoc/edge_action_param.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbAssocEdgeActionParam, ZnDbAssocGeomActionParam, L"ASSOCEDGEACTIONPARAM")

ErrorStatus ZnDbAssocEdgeActionParam::edgeRefs(ZnArray<ZnDbEdgeRef>& edges) const {
  edges.removeAll();
  const ZnDbAssocGeomDependency* dependency = geomDependency();
  if (dependency && dependency->isAttached())
    edges.append(ZnDbEdgeRef(dependency->compoundObject(), dependency->subentId()));
  return Quorl::eOk;
}

ErrorStatus ZnDbAssocEdgeActionParam::setEdgeRef(const ZnDbEdgeRef& edge, bool isReadDependency,
                                                 bool isWriteDependency, int order) {
  if (edge.isEmpty()) return emptyEdge(true);
  return dependOn(edge.entity(), edge.subentId(), isReadDependency, isWriteDependency, order);
}

ErrorStatus ZnDbAssocEdgeActionParam::emptyEdge(bool releaseOwned) { return release(releaseOwned); }
