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

// Directions are taken about the origin: differences of points of a small circle far out have few digits.
ZnGeMatrix3d circleCoordinates(const ZnGeCircArc3d& arc) {
  const double quarter = (arc.endAng() - arc.startAng()) / 4.0;
  const ZnGeCircArc3d atOrigin(ZnGePoint3d::kOrigin, arc.normal(), arc.referenceVector(), 1.0, arc.startAng(),
                               arc.endAng());
  const ZnGeVector3d x = atOrigin.evalPoint(arc.startAng()).asVector().normal();
  const ZnGeVector3d y = atOrigin.evalPoint(arc.startAng() + quarter).asVector().normal();
  const ZnGeVector3d z = x.crossProduct(y).normal();
  ZnGeMatrix3d coordinates;
  coordinates.setCoordSystem(arc.center(), x, y, z);
  return coordinates;
}

} // namespace torvi
