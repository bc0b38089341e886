// The values of a center line, and its handle on a line that is gone.
#include "quorl/db/core/transaction.h"
#include "torvi_centerline/line_fixture.h"

namespace {

using Body = ZnDbCenterLineActionBody;

class CenterLineBody : public CenterLineTest {};

TEST_F(CenterLineBody, EndingsAndWhatAWrongIndexGives) {
  Line line(addUsual());
  EXPECT_EQ(line.setEdgeRefDirEndingArray({-7, 0}), Quorl::eOk);
  const int values[] = {3, -7, 0, 3}; // of -1, 0, 1 and 2
  for (int i = -1; i <= 2; ++i) {
    EXPECT_EQ(line.edgeRefDirEnding(i), values[i + 1]) << i;
    EXPECT_EQ(line.setEdgeRefDirEnding(i, values[i + 1]),
              i == 0 || i == 1 ? Quorl::eOk : Quorl::eInvalidInput);
  }
  ZnArray<int> endings{5, 5, 5};
  EXPECT_EQ(line.edgeRefDirEndingArray(endings), Quorl::eOk);
  EXPECT_TRUE(endings == (ZnArray<int>{-7, 0}));
  // Something other than a number stands for the usual ending; so does what is missing.
  change<Body>(line.actionBody(), [](Body& body) {
    ZnArray<ZnString> messages;
    EXPECT_EQ(body.setValueParamArray(L"EdgeRefDirectionEnding", {L"x"}, {}, {}, messages, true), Quorl::eOk);
    EXPECT_TRUE(body.edgeRefDirEnding(0) == 1 && body.edgeRefDirEnding(1) == 1);
  });
}

TEST_F(CenterLineBody, TheDrawnLineWithAndWithoutItsOvershoots) {
  const ZnDbObjectId id = addUsual();
  Line line(id);
  line.setStartOvershoot(1.0);
  line.setEndExtension(7.0);
  evaluate(id);
  ZnGeLineSeg3d shown;
  EXPECT_EQ(line.getCenterLineGeometry(shown, false), Quorl::eOk);
  EXPECT_TRUE(runs(shown, {0, 2, 0}, {12, 2, 0})) << "extensions stay, overshoots go";
  EXPECT_TRUE(runs(id, "-1,2 12.5,2"));
  P3 middle;
  EXPECT_EQ(line.getCenterPoint(middle), Quorl::eOk);
  EXPECT_TRUE(near(middle, {5.75, 2, 0}));
  line.setStartExtension(-1.0);
  line.setEndExtension(-0.5);
  evaluate(id);
  EXPECT_EQ(line.getCenterLineGeometry(shown, true), Quorl::eOk);
  EXPECT_TRUE(runs(shown, {5, 2, 0}, {5, 2, 0})) << "nothing is left of what the caller held";
}

TEST_F(CenterLineBody, ADeadLineGivesNeutralValues) {
  Line line(addUsual());
  ZnDbTransaction attempt(*db_);
  erase(line.actionBody());
  EXPECT_EQ(line.startExtension() + line.endExtension() + line.startOvershoot() + line.endOvershoot() +
                line.cachedCenterLineLength(),
            0.0);
  EXPECT_EQ(line.cachedCenterLineDirection(), ZnGeVector3d::kXAxis);
  EXPECT_EQ(line.edgeRefDirEnding(0), int(Quorl::eWasErased));
  ZnGeLineSeg3d shown;
  EXPECT_EQ(line.getCenterLineGeometry(shown, true), Quorl::eWasErased);
  P3 middle(7, 7, 7);
  EXPECT_EQ(line.getCenterPoint(middle), Quorl::eInvalidInput);
  EXPECT_EQ(middle.x, 7.0);
}

} // namespace
