// Center lines through undo and copying.
#include "quorl/db/core/undo.h"
#include "torvi/core/action_body_utils.h"
#include "torvi_centerline/line_fixture.h"

namespace {

class CenterLineHistory : public CenterLineTest {};

TEST_F(CenterLineHistory, StepsAreTakenBackAndDoneAgain) {
  ZnDbUndoRecorder& undo = db_->undoRecorder();
  undo.startStep();
  const ZnDbObjectId id = addUsual();
  undo.startStep();
  moveLine(upper_, "0,8 10,8");
  undo.startStep();
  const P3 picks[2];
  const ZnDbEdgeRef left = edgeOf(addLineOf("0,0 0,5"));
  EXPECT_EQ(ZnTorviLyxUtils::reAssociateCenterLine(id, {edgeOf(upper_), left}, picks), Quorl::eOk);
  EXPECT_EQ(Line(id).edgeRefDirEnding(1), 0) << "away from the corner at 0,8";
  ASSERT_EQ(undo.undo(), Quorl::eOk);
  EXPECT_EQ(Line(id).edgeRefDirEnding(1), 1);
  EXPECT_TRUE(runs(id, "-0.5,4 10.5,4"));
  ASSERT_EQ(undo.undo(), Quorl::eOk);
  EXPECT_TRUE(runs(id, "-0.5,2 10.5,2"));
  ASSERT_EQ(undo.undo(), Quorl::eOk);
  EXPECT_TRUE(id.isErased() && bodyOf(id).isErased());
  ASSERT_EQ(undo.redo(), Quorl::eOk);
  undo.startStep();
  erase(upper_);
  evaluateChanges();
  EXPECT_FALSE(Line(id).isFullyAssociative());
  ASSERT_EQ(undo.undo(), Quorl::eOk);
  EXPECT_TRUE(Line(id).isFullyAssociative());
  moveLine(upper_, "0,2 10,2");
  EXPECT_TRUE(runs(id, "-0.5,1 10.5,1"));
}

} // namespace
