// A parameter that holds a reference to one vertex, or a fixed point.
#pragma once

#include <optional>

#include "quorl/assoc/geom_action_param.h"
#include "quorl/db/entity/edge_ref.h"

class ZnDbAssocVertexActionParam : public ZnDbAssocGeomActionParam {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocVertexActionParam)

public:
  // Replaces vertices: one element, or none for an emptied parameter.
  virtual Quorl::ErrorStatus vertexRefs(ZnArray<ZnDbVertexRef>& vertices) const;
  // A reference without entity stands for a fixed point, on which nothing depends.
  virtual Quorl::ErrorStatus setVertexRef(const ZnDbVertexRef& vertex, bool isReadDependency = true,
                                          bool isWriteDependency = false, int order = 0);
  // The parameter stays in the action and depends on nothing; with releaseOwned its dependency is erased.
  virtual Quorl::ErrorStatus emptyVertex(bool releaseOwned);

  ZNDB_DECLARE_FIELDS

private:
  std::optional<ZnGePoint3d> fixedPoint_;
};
