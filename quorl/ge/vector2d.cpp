#include "quorl/ge/vector2d.h"

#include "quorl/ge/angles.h"
#include "quorl/ge/matrix2d.h"

double ZnGeVector2d::angle() const { return ZnGe::normalizeAngle(std::atan2(y, x)); }

double ZnGeVector2d::angleTo(const ZnGeVector2d& v) const {
  return std::atan2(std::fabs(crossProduct(v)), dotProduct(v));
}

ZnGeVector2d& ZnGeVector2d::normalize(const ZnGeTol& tol) {
  const double size = length();
  if (size > tol.equalVector()) *this = *this / size;
  return *this;
}

ZnGeVector2d& ZnGeVector2d::rotateBy(double angle) {
  const auto [s, c] = ZnGe::sinCos(angle);
  return *this = {c * x - s * y, s * x + c * y};
}

ZnGeVector2d& ZnGeVector2d::transformBy(const ZnGeMatrix2d& matrix) { return *this = matrix * *this; }

bool ZnGeVector2d::isEqualTo(const ZnGeVector2d& v, const ZnGeTol& tol) const {
  return (*this - v).length() <= tol.equalVector();
}

bool ZnGeVector2d::isParallelTo(const ZnGeVector2d& v, const ZnGeTol& tol) const {
  if (isZeroLength(tol) || v.isZeroLength(tol)) return false;
  return std::fabs(crossProduct(v)) <= tol.equalVector() * length() * v.length();
}

bool ZnGeVector2d::isCodirectionalTo(const ZnGeVector2d& v, const ZnGeTol& tol) const {
  return dotProduct(v) > 0.0 && isParallelTo(v, tol);
}
