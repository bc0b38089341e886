#include "torvi/centerline/handlers.h"
#include "torvi/core/edge_relations.h"

using Quorl::ErrorStatus;

bool ZnDbCenterLineOnePointAndColinearHandler::canHandle(const Edges& edges, const Endings&,
                                                         const ZnGeLineSeg3d*) const {
  const int point = indexOfOnlyPoint(edges);
  return point >= 0 && torvi::isOnLineOf(*edges[1 - point], edges[point]->startPoint(), ZnGeContext::gTol);
}

ErrorStatus ZnDbCenterLineOnePointAndColinearHandler::calculate(const Edges& edges, const Endings&,
                                                                ZnGeLineSeg3d*& out) const {
  const int point = isPoint(*edges[0]) ? 0 : 1;
  out = new ZnGeLineSeg3d(betweenMiddles(*edges[point], *edges[1 - point]));
  return Quorl::eOk;
}

bool ZnDbCenterLineOnePointHandler::canHandle(const Edges& edges, const Endings&,
                                              const ZnGeLineSeg3d*) const {
  const int point = indexOfOnlyPoint(edges);
  return point >= 0 && !torvi::isOnLineOf(*edges[1 - point], edges[point]->startPoint(), ZnGeContext::gTol);
}

// One edge gives the same point twice, which halves the other.
ErrorStatus ZnDbCenterLineOnePointHandler::calculate(const Edges& edges, const Endings&,
                                                     ZnGeLineSeg3d*& out) const {
  if (!out)
    out = new ZnGeLineSeg3d(midway(edges[0]->startPoint(), edges[1]->startPoint()),
                            midway(edges[0]->endPoint(), edges[1]->endPoint()));
  return Quorl::eOk;
}

bool ZnDbCenterLineTwoPointHandler::canHandle(const Edges& edges, const Endings&,
                                              const ZnGeLineSeg3d*) const {
  return isPoint(*edges[0]) && isPoint(*edges[1]);
}

// Just long enough to pass for a line and so to carry a place and a direction.
ErrorStatus ZnDbCenterLineTwoPointHandler::calculate(const Edges& edges, const Endings&,
                                                     ZnGeLineSeg3d*& out) const {
  constexpr double kLengthInTolerances = 10.0;
  if (out) return Quorl::eOk;
  const ZnGePoint3d from = edges[0]->startPoint(), to = edges[1]->startPoint();
  if (torvi::isSamePoint(from, to)) return Quorl::eInvalidInput;
  ZnGeVector3d across = (to - from).perpVector();
  across.normalize(ZnGeContext::gTol);
  const ZnGePoint3d middle = midway(from, to);
  out = new ZnGeLineSeg3d(middle, middle + across * (kLengthInTolerances * ZnGeTol().equalPoint()));
  return Quorl::eOk;
}
