#include "quorl/db/entity/radial_dimension.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbRadialDimension, ZnDbRoundDimension, L"DIMRADIAL")

ZnDbRadialDimension::ZnDbRadialDimension(const ZnGePoint3d& center, const ZnGePoint3d& pointOnCircle,
                                         double leaderLength) {
  setCenter(center);
  setPointOnCircle(pointOnCircle);
  setLeaderLength(leaderLength);
}
