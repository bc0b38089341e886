// A parameter that holds a reference to one edge and depends on it.
#pragma once

#include "quorl/assoc/geom_action_param.h"
#include "quorl/db/entity/edge_ref.h"

class ZnDbAssocEdgeActionParam : public ZnDbAssocGeomActionParam {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocEdgeActionParam)

public:
  // Replaces edges: one element, or none for an emptied parameter or one whose dependency was taken away. An
  // edge of an erased entity is still given: who asks decides what that means.
  virtual Quorl::ErrorStatus edgeRefs(ZnArray<ZnDbEdgeRef>& edges) const;
  // An empty reference empties the parameter. Statuses are those of attaching a dependency.
  virtual Quorl::ErrorStatus setEdgeRef(const ZnDbEdgeRef& edge, bool isReadDependency = true,
                                        bool isWriteDependency = false, int order = 0);
  // The parameter stays in the action and depends on nothing; with releaseOwned its dependency is erased.
  virtual Quorl::ErrorStatus emptyEdge(bool releaseOwned);

  // Whether there is an edge and nothing on the path to it is erased; without allocation.
  bool hasLiveEdge() const {
    const ZnDbAssocGeomDependency* dependency = geomDependency();
    return dependency && dependency->isAttached() && !dependency->isErasedOrBroken();
  }
};
