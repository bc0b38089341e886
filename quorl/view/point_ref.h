// A point by reference: a vertex of an entity, seen through viewports and block references, or a fixed place.
#pragma once

#include "quorl/db/entity/edge_ref.h"
#include "quorl/ge/matrix3d.h"

class ZnDbViewport;

class ZnDbPointRef {
public:
  ZnDbPointRef() = default;
  explicit ZnDbPointRef(const ZnDbVertexRef& vertex)
      : vertex_(vertex) {}

  const ZnDbVertexRef& vertex() const { return vertex_; }
  // In the coordinates of the space where the reference stands: paper space for what is seen through a
  // viewport. Statuses are those of the vertex.
  Quorl::ErrorStatus evaluatePoint(ZnGePoint3d& point) const;

  // From model space world to paper space world for what the viewport shows; eNullObjectPointer for null.
  static Quorl::ErrorStatus mswcsToPswcs(const ZnDbViewport* viewport, ZnGeMatrix3d& transform);

private:
  ZnDbVertexRef vertex_;
};
