#include "quorl/db/entity/diametric_dimension.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbDiametricDimension, ZnDbRoundDimension, L"DIMDIAMETRIC")

ZnDbDiametricDimension::ZnDbDiametricDimension(const ZnGePoint3d& pointOnCircle,
                                               const ZnGePoint3d& oppositePointOnCircle,
                                               double leaderLength) {
  setPointOnCircle(pointOnCircle);
  setOppositePointOnCircle(oppositePointOnCircle);
  setLeaderLength(leaderLength);
}
