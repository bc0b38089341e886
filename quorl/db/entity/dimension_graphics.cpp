#include "quorl/db/entity/dimension_graphics.h"

#include "quorl/ge/matrix3d.h"

void ZnDbDimensionGraphics::addArrowHead(const ZnGePoint3d& tip, const ZnGeVector3d& direction,
                                         const ZnGeVector3d& normal, double length) {
  constexpr double halfWidth = 1.0 / 6.0; // as a share of the length
  if (length <= 0.0) return;
  const ZnGeVector3d aside = normal.crossProduct(direction) * (length * halfWidth);
  const ZnGePoint3d back = tip - direction * length;
  arrowHeads.push_back({tip, back + aside, back - aside});
}

ZnGeVector3d zndbReadableDirection(const ZnGeVector3d& direction, const ZnGeVector3d& normal) {
  const ZnGeVector3d inPlane = ZnGeMatrix3d::worldToPlane(normal) * direction;
  const double limit = ZnGeContext::gTol.equalVector();
  const bool isVertical = inPlane.x >= -limit && inPlane.x <= limit;
  return (isVertical ? inPlane.y < 0.0 : inPlane.x < 0.0) ? -direction : direction;
}
