#include "torvi/centerline/two_point_handler.h"

using Quorl::ErrorStatus;

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
  if (from.isEqualTo(to, ZnGeContext::gTol)) return Quorl::eInvalidInput;
  ZnGeVector3d across = (to - from).perpVector();
  across.normalize(ZnGeContext::gTol);
  const ZnGePoint3d middle = midway(from, to);
  out = new ZnGeLineSeg3d(middle, middle + across * (kLengthInTolerances * ZnGeTol().equalPoint()));
  return Quorl::eOk;
}
