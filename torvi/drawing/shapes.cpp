#include "torvi/drawing/shapes.h"

namespace torvi {

bool extendLine(ZnGeLineSeg3d& line, double startBy, double endBy) {
  ZnGeVector3d along = line.endPoint() - line.startPoint();
  if (line.startPoint().isEqualTo(line.endPoint(), ZnGeContext::gTol)) return false;
  along.normalize(ZnGeContext::gTol);
  line.set(line.startPoint() - along * startBy, line.endPoint() + along * endBy);
  return true;
}

std::array<ZnGePoint3d, 4> quarterPoints(const ZnGeCircArc3d& arc) {
  const double quarter = (arc.endAng() - arc.startAng()) / 4.0;
  std::array<ZnGePoint3d, 4> points;
  for (int i = 0; i < 4; ++i) points[static_cast<size_t>(i)] = arc.evalPoint(arc.startAng() + quarter * i);
  return points;
}

ZnGeMatrix3d circleCoordinates(const ZnGeCircArc3d& arc) {
  const ZnGeTol& tol = ZnGeContext::gTol;
  const auto points = quarterPoints(arc);
  ZnGeVector3d x = points[0] - arc.center();
  ZnGeVector3d y = points[1] - arc.center();
  x.normalize(tol);
  y.normalize(tol);
  ZnGeVector3d z = x.crossProduct(y);
  z.normalize(tol);
  ZnGeMatrix3d coordinates;
  coordinates.setCoordSystem(arc.center(), x, y, z);
  return coordinates;
}

} // namespace torvi
