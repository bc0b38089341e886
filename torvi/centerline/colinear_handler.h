// Two edges on one line: the center line runs from the middle of the first to the middle of the second.
#pragma once

#include "torvi/centerline/geometry_handler.h"

class TORVI_EXPORT ZnDbCenterLineColinearHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // Replaces what out holds without looking.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};
