// Two parallel edges: the center line joins the middles of the ends that belong together and runs as the
// first edge does.
#pragma once

#include "torvi/centerline/geometry_handler.h"

class TORVI_EXPORT ZnDbCenterLineParallelHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // Leaves a line that is there already.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};
