// Two points: the center line stands at their middle, square to the way between them. It has next to no
// length of its own; extensions and overshoots give it one.
#pragma once

#include "torvi/centerline/geometry_handler.h"

class TORVI_EXPORT ZnDbCenterLineTwoPointHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // Leaves a line that is there already. eInvalidInput for equal points.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;
};
