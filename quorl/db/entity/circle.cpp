#include "quorl/db/entity/circle.h"

#include "quorl/db/core/fields.h"
#include "quorl/ge/circ_arc3d.h"

ZNRX_DEFINE_DRAWING_CLASS(ZnDbCircle, ZnDbCurve, L"CIRCLE")

void ZnDbCircle::appendPieces(std::vector<std::unique_ptr<ZnGeCurve3d>>& pieces) const {
  pieces.push_back(std::make_unique<ZnGeCircArc3d>(center(), normal(), radius()));
}

template<class Walk> void ZnDbCircle::describe(Walk& walk) {
  walk.section(className(), 1);
  describeCircle(walk);
}

ZNDB_DEFINE_FIELDS(ZnDbCircle, ZnDbCurve)
