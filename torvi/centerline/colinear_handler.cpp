#include "torvi/centerline/colinear_handler.h"

#include "torvi/core/tolerance.h"

using Quorl::ErrorStatus;

bool ZnDbCenterLineColinearHandler::canHandle(const Edges& edges, const Endings&,
                                              const ZnGeLineSeg3d*) const {
  return !hasPoint(edges) && edges[0]->isColinearTo(*edges[1], centerLineTolerance());
}

ErrorStatus ZnDbCenterLineColinearHandler::calculate(const Edges& edges, const Endings&,
                                                     ZnGeLineSeg3d*& out) const {
  out = new ZnGeLineSeg3d(edges[0]->midPoint(), edges[1]->midPoint());
  return Quorl::eOk;
}
