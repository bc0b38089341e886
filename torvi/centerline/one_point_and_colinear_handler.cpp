#include "torvi/centerline/one_point_and_colinear_handler.h"

using Quorl::ErrorStatus;

bool ZnDbCenterLineOnePointAndColinearHandler::canHandle(const Edges& edges, const Endings&,
                                                         const ZnGeLineSeg3d*) const {
  const int point = indexOfOnlyPoint(edges);
  if (point < 0) return false;
  ZnGeLine3d line;
  edges[1 - point]->getLine(line);
  return line.isOn(edges[point]->startPoint(), ZnGeContext::gTol);
}

ErrorStatus ZnDbCenterLineOnePointAndColinearHandler::calculate(const Edges& edges, const Endings&,
                                                                ZnGeLineSeg3d*& out) const {
  const int point = isPoint(*edges[0]) ? 0 : 1;
  out = new ZnGeLineSeg3d(edges[point]->startPoint(), edges[1 - point]->midPoint());
  return Quorl::eOk;
}
