// Center marks through undo, copying, suppression and locked layers; and that a mark's way to its place
// leaves no trace.
#include <rapidcheck.h>

#include "quorl/db/core/undo.h"
#include "torvi/core/action_body_utils.h"
#include "torvi_core/scripted_body.h"

namespace {

using Body = ZnDbCenterMarkActionBody;

class MarkHistory : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    circle_ = addCircle({0.0, 0.0, 0.0}, 10.0);
    db_->undoRecorder().startStep();
    mark_ = addMark(circle_);
    db_->undoRecorder().startStep();
  }
  void moveTo(ZnDbObjectId circle, const ZnGePoint3d& center, double radius) {
    change<ZnDbCircle>(circle, [&](ZnDbCircle& shape) {
      shape.setCenter(center);
      shape.setRadius(radius);
    });
    evaluateChanges();
  }
  // Right end of the horizontal line.
  ZnGePoint3d reach(ZnDbObjectId mark) { return wrap(mark).horizontalEndOvershootPoint(); }
  void expectStandsAt(ZnDbObjectId mark, const ZnGePoint3d& rightEnd) {
    EXPECT_TRUE(near(reach(mark), rightEnd));
    EXPECT_TRUE(wrap(mark).doesActionMatchCurrentGeometry());
  }
  void expectFollows(ZnDbObjectId mark, ZnDbObjectId circle) {
    EXPECT_TRUE(wrap(mark).isFullyAssociative());
    moveTo(circle, {40.0, 50.0, 0.0}, 3.0);
    expectStandsAt(mark, {43.5, 50.0, 0.0});
  }
  ZnDbUndoRecorder& undo() { return db_->undoRecorder(); }
  ZnDbObjectId circle_, mark_;
};

TEST_F(MarkHistory, CreationIsUndoneAndDoneAgain) {
  const ZnDbObjectId block = blockOf(mark_), body = bodyOf(mark_);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_TRUE(mark_.isErased() && block.isErased() && body.isErased());
  EXPECT_FALSE(wrap(mark_).isAssociative());
  evaluateChanges();
  ASSERT_EQ(undo().redo(), Quorl::eOk);
  EXPECT_EQ(bodyOf(mark_), body);
  undo().startStep();
  moveTo(circle_, {7.0, 8.0, 0.0}, 20.0);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  expectStandsAt(mark_, {10.5, 0.0, 0.0});
  ASSERT_EQ(undo().redo(), Quorl::eOk);
  expectStandsAt(mark_, {27.5, 8.0, 0.0});
  expectFollows(mark_, circle_);
}

TEST_F(MarkHistory, AnErasedCircleBringsTheAssociationBack) {
  erase(circle_);
  evaluateChanges();
  EXPECT_FALSE(wrap(mark_).isAssociative());
  EXPECT_TRUE(near(reach(mark_), {10.5, 0.0, 0.0})) << "it stays as it was";
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_TRUE(wrap(mark_).doesActionMatchCurrentGeometry());
  printed_.clear();
  undo().startStep();
  expectFollows(mark_, circle_);
  EXPECT_TRUE(printed_.isEmpty()) << printed_.utf8();
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  erase(circle_);
  evaluateChanges();
  EXPECT_FALSE(printed_.isEmpty()) << "lost anew, told anew";
}

TEST_F(MarkHistory, CopiesGetTheirOwnBlockAndFollowTheirOwnCircle) {
  struct {
    const char* what;
    bool withCircle, otherDrawing, otherSpace;
  } const rows[] = {{"mark alone", false, false, false},
                    {"with its circle", true, false, false},
                    {"to paper, with circle", true, false, true},
                    {"to another drawing", true, true, false},
                    {"alone to another drawing", false, true, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    ZnDbDatabase other;
    ZnDbDatabase& target = row.otherDrawing ? other : *db_;
    ZnDbIdMapping mapping(row.otherDrawing ? ZnDb::kCopyInContext : ZnDb::kCopyContext, db_.get(), &target);
    ZnArray<ZnDbObjectId> objects{mark_};
    if (row.withCircle) objects.append(circle_);
    ASSERT_EQ(db_->deepCloneObjects(objects, row.otherSpace ? target.paperSpaceId() : target.modelSpaceId(),
                                    mapping),
              Quorl::eOk);
    const ZnDbObjectId copy = ZnDbTorviActionBodyUtils::mapId(mapping, mark_);
    const ZnDbObjectId copiedCircle = ZnDbTorviActionBodyUtils::mapId(mapping, circle_);
    ASSERT_EQ(copy.database(), &target);
    EXPECT_EQ(copiedCircle.isNull(), !row.withCircle);
    EXPECT_TRUE(bodyOf(copy) != bodyOf(mark_) && blockOf(copy) != blockOf(mark_));
    EXPECT_EQ(blockOf(copy).database(), &target);
    EXPECT_EQ(liveEntities(blockOf(copy)).size(), 6u);
    EXPECT_EQ(ZnTorviLyxUtils::getTorviFromActionBodyId(bodyOf(copy)), copy);
    if (row.withCircle) {
      EXPECT_EQ(ZnDbHolder<ZnDbEntity>(copy)->ownerId(), ZnDbHolder<ZnDbEntity>(copiedCircle)->ownerId());
      EXPECT_EQ(ZnDbHolder<Body>(bodyOf(copy))->getInputEdge(0).entity().leafId(), copiedCircle);
      change<ZnDbCircle>(copiedCircle, [](ZnDbCircle& circle) { circle.setCenter({0.0, 100.0, 0.0}); });
    } else {
      EXPECT_EQ(wrap(copy).isAssociative(), !row.otherDrawing);
    }
    ZnDbAssocManager::evaluateTopLevelNetwork(&target);
    EXPECT_TRUE(near(reach(copy), {10.5, row.withCircle ? 100.0 : 0.0, 0.0}));
    EXPECT_TRUE(near(reach(mark_), {10.5, 0.0, 0.0}));
    EXPECT_TRUE(linkFaults(target).empty());
    EXPECT_TRUE(target.audit(false).empty());
  }
  expectFollows(mark_, circle_);
}

TEST_F(MarkHistory, ACloneIsMovedToItsCirclesBlock) {
  using Utils = ZnDbTorviActionBodyUtils;
  const ZnDbObjectId onPaper = add(new ZnDbCircle, db_->paperSpaceId());
  for (const ZnDbObjectId circle : {circle_, ZnDbObjectId(), onPaper}) {
    Utils::ensureClonedCenterLineOwnedByDestBTR(circle, mark_);
    EXPECT_EQ(Utils::getBtrOfEntity(mark_), circle == onPaper ? db_->paperSpaceId() : db_->modelSpaceId());
  }
}

TEST_F(MarkHistory, ASuppressedMarkWaitsUntilTheSuppressionIsLifted) {
  auto mark = wrap(mark_);
  EXPECT_EQ(mark.supressCenterEvaluation(), Quorl::eOk);
  EXPECT_TRUE(mark.isCenterEvaluationSupressed());
  moveTo(circle_, {7.0, 8.0, 0.0}, 10.0);
  EXPECT_TRUE(near(reach(mark_), {10.5, 0.0, 0.0}));
  EXPECT_EQ(mark.unSupressCenterEvaluation(), Quorl::eOk);
  EXPECT_EQ(statusOf(mark_), kChangedDirectlyAssocStatus);
  EXPECT_FALSE(mark.isCenterEvaluationSupressed());
  evaluateChanges();
  expectStandsAt(mark_, {17.5, 8.0, 0.0});
}

TEST_F(MarkHistory, ALockedLayerDoesNotHoldAMarkBack) {
  ASSERT_NE(layerOf(circle_), layerOf(mark_));
  setLocked(layerOf(mark_), true);
  EXPECT_EQ(ZnDbHolder<ZnDbEntity>().openForWrite(mark_), Quorl::eOnLockedLayer);
  expectFollows(mark_, circle_);
  EXPECT_EQ(statusOf(mark_), kIsUpToDateAssocStatus);
}

TEST_F(MarkHistory, WhereverItsCircleWentAMarkIsAsIfMadeThere) {
  EXPECT_TRUE(rc::check([this] {
    const auto number = [](int from, int to) { return *rc::gen::inRange(from * 100, to * 100) / 100.0; };
    const ZnDbObjectId circle = addCircle({number(-50, 50), number(-50, 50), number(-5, 5)}, number(1, 30));
    const ZnDbObjectId mark = addMark(circle);
    const int moves = *rc::gen::inRange(1, 5);
    for (int i = 0; i < moves; ++i)
      moveTo(circle, {number(-50, 50), number(-50, 50), number(-5, 5)}, number(1, 30));
    const ZnDbObjectId made = addMark(circle);
    RC_ASSERT(wrap(mark).blockTransform().isEqualTo(wrap(made).blockTransform()));
    OwnedCurves walked, fresh;
    wrap(mark).getCenterObjGeometry(walked.curves);
    wrap(made).getCenterObjGeometry(fresh.curves);
    RC_ASSERT(walked.curves.length() == 6);
    RC_ASSERT(ZnDbTorviActionBodyUtils::geCurvesAreEqual(walked.curves, fresh.curves, false));
    RC_ASSERT(wrap(mark).doesActionMatchCurrentGeometry());
    RC_ASSERT(!HasFailure());
  }));
}

} // namespace
