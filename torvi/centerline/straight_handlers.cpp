#include "torvi/centerline/handlers.h"

#include <algorithm>

#include "torvi/core/tolerance.h"

using Quorl::ErrorStatus;

namespace {

// A place on the line of the first edge that lies behind everything of interest on it: further back than any
// two of the points are apart.
ZnGePoint3d placeBehind(const ZnGeLineSeg3d& edge, const ZnGePoint3d& p, const ZnGePoint3d& q) {
  const ZnGePoint3d s = edge.startPoint(), e = edge.endPoint();
  const double farthest = std::max(
      {s.distanceTo(e), s.distanceTo(p), s.distanceTo(q), e.distanceTo(p), e.distanceTo(q), p.distanceTo(q)});
  return s - edge.direction() * (farthest + 1.0);
}

} // namespace

bool ZnDbCenterLineParallelHandler::canHandle(const Edges& edges, const Endings&,
                                              const ZnGeLineSeg3d*) const {
  return !hasPoint(edges) && edges[0]->isParallelTo(*edges[1], centerLineTolerance()) &&
         !edges[0]->isColinearTo(*edges[1], centerLineTolerance());
}

ErrorStatus ZnDbCenterLineParallelHandler::calculate(const Edges& edges, const Endings&,
                                                     ZnGeLineSeg3d*& out) const {
  if (out) return Quorl::eOk;
  const ZnGeLineSeg3d& first = *edges[0];
  ZnGeLine3d line;
  first.getLine(line);
  ZnGePoint3d start = edges[1]->startPoint(), end = edges[1]->endPoint();
  ZnGePointOnCurve3d footOfStart, footOfEnd;
  line.getClosestPointTo(start, footOfStart, ZnGeContext::gTol);
  line.getClosestPointTo(end, footOfEnd, ZnGeContext::gTol);
  const ZnGePoint3d behind = placeBehind(first, footOfStart.point3d(), footOfEnd.point3d());
  if (behind.distanceTo(footOfStart.point3d()) > behind.distanceTo(footOfEnd.point3d()))
    std::swap(start, end);
  out = new ZnGeLineSeg3d(midway(first.startPoint(), start), midway(first.endPoint(), end));
  return Quorl::eOk;
}

bool ZnDbCenterLineColinearHandler::canHandle(const Edges& edges, const Endings&,
                                              const ZnGeLineSeg3d*) const {
  return !hasPoint(edges) && edges[0]->isColinearTo(*edges[1], centerLineTolerance());
}

ErrorStatus ZnDbCenterLineColinearHandler::calculate(const Edges& edges, const Endings&,
                                                     ZnGeLineSeg3d*& out) const {
  out = new ZnGeLineSeg3d(edges[0]->midPoint(), edges[1]->midPoint());
  return Quorl::eOk;
}

bool ZnDbCenterLineGeometryErrorHandler::canHandle(const Edges&, const Endings&, const ZnGeLineSeg3d*) const {
  return true;
}

ErrorStatus ZnDbCenterLineGeometryErrorHandler::calculate(const Edges&, const Endings&,
                                                          ZnGeLineSeg3d*& out) const {
  return out && !isPoint(*out) ? Quorl::eOk : Quorl::eInvalidInput;
}
