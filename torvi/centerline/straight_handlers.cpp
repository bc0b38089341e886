#include "torvi/centerline/handlers.h"

#include <utility>

#include "torvi/core/edge_relations.h"

using Quorl::ErrorStatus;

bool ZnDbCenterLineParallelHandler::canHandle(const Edges& edges, const Endings&,
                                              const ZnGeLineSeg3d*) const {
  return !hasPoint(edges) && torvi::areParallel(*edges[0], *edges[1]) &&
         !torvi::areColinear(*edges[0], *edges[1]);
}

ErrorStatus ZnDbCenterLineParallelHandler::calculate(const Edges& edges, const Endings&,
                                                     ZnGeLineSeg3d*& out) const {
  if (out) return Quorl::eOk;
  const ZnGeLineSeg3d& first = *edges[0];
  ZnGePoint3d start = edges[1]->startPoint(), end = edges[1]->endPoint();
  if (first.span().dotProduct(edges[1]->span()) < 0.0) std::swap(start, end);
  out = new ZnGeLineSeg3d(midway(first.startPoint(), start), midway(first.endPoint(), end));
  return Quorl::eOk;
}

bool ZnDbCenterLineColinearHandler::canHandle(const Edges& edges, const Endings&,
                                              const ZnGeLineSeg3d*) const {
  return !hasPoint(edges) && torvi::areColinear(*edges[0], *edges[1]);
}

ErrorStatus ZnDbCenterLineColinearHandler::calculate(const Edges& edges, const Endings&,
                                                     ZnGeLineSeg3d*& out) const {
  out = new ZnGeLineSeg3d(betweenMiddles(*edges[0], *edges[1]));
  return Quorl::eOk;
}

bool ZnDbCenterLineGeometryErrorHandler::canHandle(const Edges&, const Endings&, const ZnGeLineSeg3d*) const {
  return true;
}

ErrorStatus ZnDbCenterLineGeometryErrorHandler::calculate(const Edges&, const Endings&,
                                                          ZnGeLineSeg3d*& out) const {
  return out && !isPoint(*out) ? Quorl::eOk : Quorl::eInvalidInput;
}
