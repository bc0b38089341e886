// Making center lines and binding them to other edges: what the picks choose, from which edges, and what is
// refused.
#include "quorl/db/entity/polyline.h"
#include "torvi_centerline/line_fixture.h"

namespace {

class CenterLineBuilderTest : public CenterLineTest {};

TEST_F(CenterLineBuilderTest, OnlyStraightEdgesInOnePlaneAreTaken) {
  auto* bulged = new ZnDbPolyline;
  bulged->addVertexAt(0, {0, 0}, 1.0);
  bulged->addVertexAt(1, {4, 0});
  const ZnDbEdgeRef line = edgeOf(addLineOf("0,0 9,0")), arc = edgeOf(addArc({0, 0, 0}, 4, 0, 1)),
                    circle = edgeOf(addCircle({}, 3)), side = edgeOf(add(bulged)),
                    skew = edgeOf(addLineOf("0,1,5 0,9,5")), point = edgeAlong({addLineOf("1,5 1,5")}), none;
  const size_t before = liveEntities(db_->modelSpaceId()).size();
  const P3 picks[2];
  ZnDbObjectId id;
  for (const ZnDbEdgeRef& edge : {arc, circle, side, skew, point, none})
    for (const auto& edges :
         {ZnArray<ZnDbEdgeRef>{line, edge}, ZnArray<ZnDbEdgeRef>{edge, line}, ZnArray<ZnDbEdgeRef>{edge}})
      EXPECT_EQ(ZnTorviLyxUtils::createCenterLine(edges, picks, id, db_.get()), Quorl::eInvalidInput);
  const ZnDbEdgeRef other = edgeOf(addLineOf("0,3 9,3"));
  EXPECT_EQ(ZnTorviLyxUtils::createCenterLine({line, other}, nullptr, id, db_.get()), Quorl::eInvalidInput);
  EXPECT_TRUE(id.isNull());
  EXPECT_EQ(liveEntities(db_->modelSpaceId()).size(), before + 1);
  EXPECT_EQ(ZnTorviLyxUtils::reAssociateCenterLine(line.entity().leafId(), {line, line}, picks),
            Quorl::eInvalidInput)
      << "no center object";
}

} // namespace
