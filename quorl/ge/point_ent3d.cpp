#include "quorl/ge/point_ent3d.h"

ZnGePointEnt3d& ZnGePointEnt3d::transformBy(const ZnGeMatrix3d& matrix) {
  point_.transformBy(matrix);
  return *this;
}

bool ZnGePointEnt3d::isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol) const {
  if (other.type() != type()) return false;
  return point_.isEqualTo(static_cast<const ZnGePointEnt3d&>(other).point_, tol);
}
