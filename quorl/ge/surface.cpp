#include "quorl/ge/surface.h"

bool ZnGeSurface::isOn(const ZnGePoint3d& point, const ZnGeTol& tol) const {
  return closestPointTo(point).isEqualTo(point, tol);
}
