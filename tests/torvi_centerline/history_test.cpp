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

TEST_F(CenterLineHistory, CopiesFollowTheirOwnEdges) {
  const ZnDbObjectId id = addUsual();
  struct {
    const char* what;
    bool lower, upper, otherDrawing, follows; // follows: when its upper edge, or the original one, moves
  } const rows[] = {{"line alone", false, false, false, true},
                    {"with its edges", true, true, false, true},
                    {"with one edge", true, false, false, true},
                    {"to another drawing", true, true, true, true},
                    {"alone to another drawing", false, false, true, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    ZnDbDatabase other;
    ZnDbDatabase& target = row.otherDrawing ? other : *db_;
    ZnDbIdMapping mapping(row.otherDrawing ? ZnDb::kCopyInContext : ZnDb::kCopyContext, db_.get(), &target);
    ZnArray<ZnDbObjectId> objects{id};
    if (row.lower) objects.append(lower_);
    if (row.upper) objects.append(upper_);
    ASSERT_EQ(db_->deepCloneObjects(objects, target.modelSpaceId(), mapping), Quorl::eOk);
    const ZnDbObjectId copy = ZnDbTorviActionBodyUtils::mapId(mapping, id);
    ASSERT_EQ(ZnDbTorviObjectWrapper::getCenterType(copy), kCenterLine);
    EXPECT_NE(blockOf(copy), blockOf(id));
    EXPECT_EQ(liveEntities(blockOf(copy)).size(), 1u);
    moveLine(row.upper ? ZnDbTorviActionBodyUtils::mapId(mapping, upper_) : upper_, "0,8 10,8");
    ZnDbAssocManager::evaluateTopLevelNetwork(&target);
    EXPECT_EQ(Line(copy).isFullyAssociative(), row.follows);
    EXPECT_TRUE(runs(copy, row.follows ? "-0.5,4 10.5,4" : "-0.5,2 10.5,2"));
    EXPECT_TRUE(runs(id, row.upper ? "-0.5,2 10.5,2" : "-0.5,4 10.5,4"));
    moveLine(upper_, "0,4 10,4");
    EXPECT_TRUE(linkFaults(target).empty());
    EXPECT_TRUE(target.audit(false).empty());
  }
}

} // namespace
