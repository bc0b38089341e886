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

  // The first id of the edge's path, without allocation; false when there is no edge.
  bool edgeTopId(ZnDbObjectId& id) const { return dependentTopId(id); }
};
