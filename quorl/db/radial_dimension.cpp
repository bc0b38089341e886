#include "quorl/db/radial_dimension.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbRadialDimension, ZnDbRoundDimension, L"DIMRADIAL")

ZnDbRadialDimension::ZnDbRadialDimension(const ZnGePoint3d& center, const ZnGePoint3d& chordPoint,
                                         double leaderLength) {
  setCenter(center);
  setChordPoint(chordPoint);
  setLeaderLength(leaderLength);
}
