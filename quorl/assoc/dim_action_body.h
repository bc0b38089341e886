// What the bodies of dimensions on one circular edge share.
#pragma once

#include "quorl/assoc/action_body.h"
#include "quorl/db/entity/dimension.h"
#include "quorl/db/entity/edge_ref.h"
#include "quorl/ge/circ_arc3d.h"

// The action depends on the edge and writes the dimension; without an edge the dimension stays as it is.
class ZnDbAssocDimActionBody : public ZnDbAssocActionBody {
  ZNRX_DECLARE_MEMBERS(ZnDbAssocDimActionBody)

public:
  // Null id while the body has no dimension.
  ZnDbObjectId dimensionId() const;
  Quorl::ErrorStatus setDimension(ZnDbObjectId dimension);
  ZnDbEdgeRef edge() const;
  Quorl::ErrorStatus setEdge(const ZnDbEdgeRef& edge);

  void evaluateOverride() override;
  Quorl::ErrorStatus addMoreObjectsToDeepCloneOverride(ZnDbIdMapping& mapping,
                                                       ZnArray<ZnDbObjectId>& more) const override;

protected:
  // Makes an action with a body of the class for a dimension that stands in a space, and evaluates it.
  static Quorl::ErrorStatus post(const ZnRxClass* bodyClass, const ZnDbEdgeRef& edge, ZnDbObjectId dimension,
                                 ZnDbObjectId& bodyId);
  // Writes the circle to the dimension, whose direction and leader stay. eWrongObjectClass for another kind.
  virtual Quorl::ErrorStatus follow(ZnDbDimension& dimension, const ZnGeCircArc3d& circle) const = 0;
};
