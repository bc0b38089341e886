#include "quorl/ge/line3d.h"

#include <limits>

ZnGeLine3d& ZnGeLine3d::set(const ZnGePoint3d& first, const ZnGePoint3d& second) {
  return set(first, second - first);
}

ZnGeLine3d& ZnGeLine3d::set(const ZnGePoint3d& base, const ZnGeVector3d& vector) {
  base_ = base;
  vector_ = vector;
  return *this;
}

ZnGeLine3d& ZnGeLine3d::transformBy(const ZnGeMatrix3d& matrix) {
  return set(matrix * base_, matrix * vector_);
}

bool ZnGeLine3d::isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  const auto& line = static_cast<const ZnGeLine3d&>(other);
  return isColinearTo(line, tol) && direction().dotProduct(line.direction()) > 0.0;
}

ZnGePoint3d ZnGeLine3d::evalPoint(double param) const { return base_ + direction() * param; }

ZnGeVector3d ZnGeLine3d::evaluateDerivative(double) const { return direction(); }

ZnGeLine3d& ZnGeLine3d::reverseParam() {
  vector_.negate();
  return *this;
}

bool ZnGeLine3d::isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol) const {
  const bool isPoint = vector_.length() <= tol.equalPoint();
  kind = isPoint ? ZnGe::kPointEntity3d : ZnGe::kLine3d;
  return isPoint;
}

double ZnGeLine3d::length() const { return std::numeric_limits<double>::infinity(); }

double ZnGeLine3d::nearestParam(const ZnGePoint3d& point) const {
  return (point - base_).dotProduct(direction());
}
