// A point on the line of a real edge: the center line runs from the point to the middle of the edge.
#pragma once

#include "torvi/centerline/geometry_handler.h"

class TORVI_EXPORT ZnDbCenterLineOnePointAndColinearHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // Replaces what out holds without looking.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};
