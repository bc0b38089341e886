#include "quorl/ge/line2d.h"

ZnGeLine2d& ZnGeLine2d::transformBy(const ZnGeMatrix2d& matrix) {
  base_.transformBy(matrix);
  vector_.transformBy(matrix);
  return *this;
}

bool ZnGeLine2d::isEqualTo(const ZnGeEntity2d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  const auto& line = static_cast<const ZnGeLine2d&>(other);
  return direction().isCodirectionalTo(line.direction(), tol) && isOn(line.base_, tol) &&
         line.isOn(base_, tol);
}

bool ZnGeLine2d::isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol) const {
  const bool isPoint = vector_.length() <= tol.equalPoint();
  kind = isPoint ? ZnGe::kPointEntity3d : ZnGe::kLine2d;
  return isPoint;
}

double ZnGeLine2d::nearestParam(const ZnGePoint2d& point) const {
  return (point - base_).dotProduct(direction());
}
