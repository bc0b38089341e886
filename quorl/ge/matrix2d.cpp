#include "quorl/ge/matrix2d.h"

#include "quorl/ge/angles.h"
#include "quorl/ge/linear_ent2d.h"

namespace {

// The map with these axes that leaves the center where it is.
ZnGeMatrix2d aboutCenter(const ZnGeVector2d& xAxis, const ZnGeVector2d& yAxis, const ZnGePoint2d& center) {
  const ZnGeMatrix2d linear(ZnGePoint2d::kOrigin, xAxis, yAxis);
  return {center - linear * center.asVector(), xAxis, yAxis};
}

} // namespace

ZnGeMatrix2d& ZnGeMatrix2d::setToTranslation(const ZnGeVector2d& v) {
  return *this = {ZnGePoint2d::kOrigin + v, ZnGeVector2d::kXAxis, ZnGeVector2d::kYAxis};
}

ZnGeMatrix2d& ZnGeMatrix2d::setToRotation(double angle, const ZnGePoint2d& center) {
  const auto [s, c] = ZnGe::sinCos(angle);
  return *this = aboutCenter({c, s}, {-s, c}, center);
}

ZnGeMatrix2d& ZnGeMatrix2d::setToScaling(double factor, const ZnGePoint2d& center) {
  return *this = aboutCenter({factor, 0.0}, {0.0, factor}, center);
}

ZnGeMatrix2d& ZnGeMatrix2d::setToMirroring(const ZnGeLinearEnt2d& line) {
  // For a unit direction d the mirror image of v is 2 (v.d) d - v; a line without direction has no image.
  const ZnGeVector2d d = line.direction();
  if (line.isDegenerate()) return *this = ZnGeMatrix2d();
  return *this = aboutCenter(2.0 * d.x * d - ZnGeVector2d::kXAxis, 2.0 * d.y * d - ZnGeVector2d::kYAxis,
                             line.pointOnLine());
}
