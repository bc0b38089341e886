// Two edges whose lines meet: the center line is a piece of the bisector of two rays, one along each edge,
// from the chord through the near ends of the edges to the chord through their far ends.
#pragma once

#include "torvi/centerline/geometry_handler.h"

class TORVI_EXPORT ZnDbCenterLineIntersectHandler : public ZnDbCenterLineGeometryHandler {
public:
  bool canHandle(const Edges& edges, const Endings& endings, const ZnGeLineSeg3d* out) const override;
  // Leaves a line that is there already.
  Quorl::ErrorStatus calculate(const Edges& edges, const Endings& endings,
                               ZnGeLineSeg3d*& out) const override;

  // From the meeting point along each edge, to the end that its ending chooses; where that end is the meeting
  // point itself, to the farther end. Not normalised. The meeting point is the origin for skew edges.
  static void rayDirections(const Edges& edges, const Endings& endings, ZnGeVector3d (&rays)[2]);
};
