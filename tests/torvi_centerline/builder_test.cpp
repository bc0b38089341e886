// Making center lines and binding them to other edges: what the picks choose, from which edges, and what is
// refused.
#include "quorl/db/entity/polyline.h"
#include "torvi_centerline/line_fixture.h"

namespace {

class CenterLineBuilderTest : public CenterLineTest {};

TEST_F(CenterLineBuilderTest, ThePicksChooseTheBisector) {
  struct {
    const char *name, *first, *second, *picks;
    int endings[2];
    const char* raw; // the line between the edges
  } const rows[] = {
      {"parallel, alike", "0,0 9,0", "0,2 9,2", "0,0 0,0", {1, 1}, "0,1 9,1"},
      {"parallel, opposite", "0,0 9,0", "9,2 0,2", "0,0 0,0", {0, 1}, "0,1 9,1"},
      {"colinear", "0,0 2,0", "5,0 9,0", "0,0 0,0", {1, 1}, "1,0 7,0"},
      {"crossed, right", "-4,-3 4,3", "-4,3 4,-3", "4,3 4,-3", {1, 1}, "-4,0 4,0"},
      {"crossed, left", "-4,-3 4,3", "-4,3 4,-3", "-4,-3 -4,3", {0, 0}, "4,0 -4,0"},
      {"crossed, up", "-4,-3 4,3", "-4,3 4,-3", "4,3 -4,3", {1, 0}, "0,-3 0,3"},
      {"crossed, down", "-4,-3 4,3", "4,-3 -4,3", "-4,-3 4,-3", {0, 0}, "0,3 0,-3"},
      {"picked beyond", "-4,-3 4,3", "-4,3 4,-3", "40,35 50,-35,9", {1, 1}, "-4,0 4,0"},
      {"picked there", "-4,-3 4,3", "-4,3 4,-3", "0,0 0,0", {0, 0}, "4,0 -4,0"},
      {"corner at starts", "0,0 4,3", "0,0 4,-3", "0,0 -4,-3", {1, 1}, "0,0 4,0"},
      {"corner at ends", "4,3 0,0", "4,-3 0,0", "-4,-3 0,0", {0, 0}, "0,0 4,0"},
      {"wedge", "4,3 8,6", "8,-6 4,-3", "-4,-3 -4,3", {1, 0}, "4,0 8,0"},
      {"short half", "-24,-18 8e-7,6e-7", "-24,18 4,-3", "8e-7,6e-7 4,-3", {1, 1}, "-24,0 1.6e-6,0"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::vector<P3> picks = pointsOf(row.picks);
    const ZnDbObjectId id =
        addCenterLine(edgeOf(addLineOf(row.first)), edgeOf(addLineOf(row.second)), picks[0], picks[1]);
    for (const int i : {0, 1}) EXPECT_EQ(Line(id).edgeRefDirEnding(i), row.endings[i]);
    const ZnGeLineSeg3d raw = segmentOf(row.raw);
    const ZnGeVector3d past = raw.direction() * 0.5;
    EXPECT_TRUE(runs(drawn(id), raw.startPoint() - past, raw.endPoint() + past));
    EXPECT_NEAR(Line(id).cachedCenterLineLength(), raw.length(), 1e-9);
    EXPECT_TRUE(near(ZnDbHolder<ZnDbBlockReference>(id)->position(), raw.midPoint()));
    EXPECT_EQ(liveEntities(blockOf(id)).size(), 1u);
  }
}

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

TEST_F(CenterLineBuilderTest, ReassociationChoosesAnewAndKeepsLengths) {
  const ZnDbObjectId id = addUsual();
  Line line(id);
  line.setEndExtension(9.0);
  line.setStartOvershoot(1.5);
  evaluate(id);
  const P3 picks[] = {{8, -6, 0}, {8, 6, 0}};
  const ZnDbObjectId down = addLineOf("-4,3 8,-6"), up = addLineOf("8,6 -4,-3");
  EXPECT_EQ(ZnTorviLyxUtils::reAssociateCenterLine(id, {edgeOf(down), edgeOf(up)}, picks), Quorl::eOk);
  EXPECT_EQ(line.edgeRefDirEnding(0), 1);
  EXPECT_EQ(line.edgeRefDirEnding(1), 0);
  moveLine(lower_, "0,50 1,50");
  EXPECT_TRUE(runs(id, "-5.5,0 11.5,0")) << "from -4 to 8: the start follows, the end is 9 from the middle";
  ZnArray<ZnDbObjectId> lines;
  ZnTorviLyxUtils::getCenterLinesDependOnEnt(lower_, lines);
  EXPECT_TRUE(lines.isEmpty()) << "the old edge means nothing any more";
  ZnTorviLyxUtils::getCenterLinesDependOnEnt(down, lines);
  ASSERT_EQ(lines.length(), 1);
  EXPECT_EQ(lines[0], id);
}

} // namespace
