// A parameter that holds a reference to one vertex, or a fixed point.
#pragma once

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

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;

private:
  bool hasFixedPoint_ = false;
  ZnGePoint3d fixedPoint_;
};
