#include "torvi/centerline/one_point_handler.h"

using Quorl::ErrorStatus;

bool ZnDbCenterLineOnePointHandler::canHandle(const Edges& edges, const Endings&,
                                              const ZnGeLineSeg3d*) const {
  const int point = indexOfOnlyPoint(edges);
  if (point < 0) return false;
  ZnGeLine3d line;
  edges[1 - point]->getLine(line);
  return !line.isOn(edges[point]->startPoint(), ZnGeContext::gTol);
}

// One edge gives the same point twice, which halves the other.
ErrorStatus ZnDbCenterLineOnePointHandler::calculate(const Edges& edges, const Endings&,
                                                     ZnGeLineSeg3d*& out) const {
  if (!out)
    out = new ZnGeLineSeg3d(midway(edges[0]->startPoint(), edges[1]->startPoint()),
                            midway(edges[0]->endPoint(), edges[1]->endPoint()));
  return Quorl::eOk;
}
