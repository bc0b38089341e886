// The body of an edge extension. Besides its two edges it holds for each an anchor, the vertex at which the
// extension starts, and the edge as it last was: together they tell whether the crossing is still the one
// that was meant.
#pragma once

#include "torvi/core/action_body.h"

class TORVI_EXPORT ZnDbEdgeExtensionActionBody : public ZnDbTorviActionBody {
  ZNRX_DECLARE_MEMBERS(ZnDbEdgeExtensionActionBody)

public:
  ZnDbEdgeExtensionActionBody() = default;

  using ZnDbTorviActionBody::breakAssociativity;
  // Empties the anchors too.
  Quorl::ErrorStatus breakAssociativity() override;

  // Start and end of an edge at the last evaluation, in the coordinates of the object's space. Reading gives
  // two points and the status of the first that fails; setting takes two, eInvalidInput for fewer.
  Quorl::ErrorStatus getCachedRefEdgePoints(int index, ZnArray<ZnGePoint3d>& points) const;
  Quorl::ErrorStatus setCachedRefEdgePoints(int index, const ZnArray<ZnGePoint3d>& points);
  void removeCachedRefEdgePoints(); // those of two edges; absent ones are no fault

  // The anchor of an edge. eNothingToDo, with an empty reference, for one that was never set or whose entity
  // is gone; else the status of opening the parameter.
  Quorl::ErrorStatus getAnchorVertex(int index, ZnDbVertexRef& vertex) const;
  Quorl::ErrorStatus setAnchorVertex(int index, const ZnDbVertexRef& vertex);
  static const ZnString& anchorVertexParamName(); // all anchors stand under this one name

  // Into another drawing the dimension style travels along: without it nothing can be drawn.
  Quorl::ErrorStatus addMoreObjectsToDeepCloneOverride(ZnDbIdMapping& idMap,
                                                       ZnArray<ZnDbObjectId>& ids) const override;

protected:
  ZnDbTorviLayout* getLayout() const override;
};
