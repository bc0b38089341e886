// The chain of all handlers, in the order in which they are asked.
#pragma once

#include "torvi/centerline/geometry_handler.h"

class TORVI_EXPORT ZnDbCenterLineGeometryHandlerManager {
public:
  // The line between the two edges, new and the caller's. eInvalidInput, and out null, when there is none:
  // equal points, skew edges, a line that would have no length. Allocates nothing but the line.
  static Quorl::ErrorStatus generateCenterLine(const ZnDbCenterLineGeometryHandler::Edges& edges,
                                               const ZnDbCenterLineGeometryHandler::Endings& endings,
                                               ZnGeLineSeg3d*& out);
  // Made on first use, deleted with the module.
  static const ZnDbCenterLineNextHandler::Handlers& handlers();
};
