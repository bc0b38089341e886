#include "quorl/ge/linear_ent2d.h"

ZnGeVector2d ZnGeLinearEnt2d::direction() const {
  const ZnGeVector2d along = span();
  const double size = along.length();
  return size > ZnGeContext::gTol.equalPoint() ? along / size : ZnGeVector2d();
}

bool ZnGeLinearEnt2d::intersectWith(const ZnGeLinearEnt2d& other, ZnGePoint2d& point,
                                    const ZnGeTol& tol) const {
  const ZnGeVector2d d = direction();
  const ZnGeVector2d e = other.direction();
  const double sine = d.crossProduct(e);
  // Also true of a degenerate line, whose direction is zero.
  if (std::fabs(sine) <= tol.equalVector()) return false;
  point = pointOnLine() + d * ((other.pointOnLine() - pointOnLine()).crossProduct(e) / sine);
  return true;
}

bool ZnGeLinearEnt2d::isParallelTo(const ZnGeLinearEnt2d& other, const ZnGeTol& tol) const {
  return direction().isParallelTo(other.direction(), tol);
}
