#include "quorl/db/diametric_dimension.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbDiametricDimension, ZnDbRoundDimension, L"DIMDIAMETRIC")

ZnDbDiametricDimension::ZnDbDiametricDimension(const ZnGePoint3d& chordPoint,
                                               const ZnGePoint3d& farChordPoint, double leaderLength) {
  setChordPoint(chordPoint);
  setFarChordPoint(farChordPoint);
  setLeaderLength(leaderLength);
}
