#include <cmath>

#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

ErrorStatus ZnTorviLyxUtils::extendLine(ZnGeLineSeg3d& line, double startBy, double endBy) {
  ZnGeVector3d along = line.endPoint() - line.startPoint();
  if (line.startPoint().isEqualTo(line.endPoint(), ZnGeContext::gTol)) return Quorl::eInvalidInput;
  along.normalize(ZnGeContext::gTol);
  line.set(line.startPoint() - along * startBy, line.endPoint() + along * endBy);
  return Quorl::eOk;
}

ZnGeLineSeg3d ZnTorviLyxUtils::getExtendedLine(const ZnGeLineSeg3d& line, double startBy, double endBy) {
  ZnGeLineSeg3d extended(line);
  extendLine(extended, startBy, endBy);
  return extended;
}

bool ZnTorviLyxUtils::fuzzyEqual(double a, double b, double tolerance) {
  return std::fabs(a - b) <= tolerance;
}

namespace {

// Point i of four that divide the arc's own interval, the last quarter left open.
ZnGePoint3d quadrantPoint(const ZnGeCircArc3d& arc, int i) {
  constexpr int kQuarters = 4;
  const double span = arc.endAng() - arc.startAng();
  return arc.evalPoint(arc.startAng() + span * i / kQuarters);
}

} // namespace

ErrorStatus ZnTorviLyxUtils::getCircleQuadrantPoints(const ZnGeCircArc3d& arc, ZnArray<ZnGePoint3d>& points) {
  points.removeAll();
  for (int i = 0; i < 4; ++i) points.append(quadrantPoint(arc, i));
  return Quorl::eOk;
}

ErrorStatus ZnTorviLyxUtils::calcCircleEcs(const ZnGeCircArc3d& arc, ZnGeMatrix3d& ecs) {
  const ZnGeTol& tol = ZnGeContext::gTol;
  ZnGeVector3d x = quadrantPoint(arc, 0) - arc.center();
  ZnGeVector3d y = quadrantPoint(arc, 1) - arc.center();
  x.normalize(tol);
  y.normalize(tol);
  ZnGeVector3d z = x.crossProduct(y);
  z.normalize(tol);
  ecs.setCoordSystem(arc.center(), x, y, z);
  return Quorl::eOk;
}

bool ZnTorviLyxUtils::checkForArc() {
  return ZnRxVariablesDictionary::get()->getInt16(L"CENTERMARKCHECKARC", 0) == 1;
}
