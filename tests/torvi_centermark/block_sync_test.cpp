// What happens to a mark's values when the user changes its block reference.
#include "torvi/centermark/block_sync.h"

#include "torvi_centermark/mark_fixture.h"

namespace {

class BlockSync : public MarkTest {
protected:
  void setExtensions(double left, double right, double bottom, double top) {
    auto mark = wrap(mark_);
    mark.setHorizontalStartExtension(left);
    mark.setHorizontalEndExtension(right);
    mark.setVerticalStartExtension(bottom);
    mark.setVerticalEndExtension(top);
  }
  void expectExtensions(double left, double right, double bottom, double top) {
    const auto mark = wrap(mark_);
    EXPECT_NEAR(mark.horizontalStartExtension(), left, 1e-9);
    EXPECT_NEAR(mark.horizontalEndExtension(), right, 1e-9);
    EXPECT_NEAR(mark.verticalStartExtension(), bottom, 1e-9);
    EXPECT_NEAR(mark.verticalEndExtension(), top, 1e-9);
  }
  void transform(const ZnGeMatrix3d& matrix) {
    change<ZnDbBlockReference>(
        mark_, [&](ZnDbBlockReference& reference) { EXPECT_EQ(reference.transformBy(matrix), Quorl::eOk); });
    evaluate(mark_);
  }
  void loseCircle() {
    erase(circle_);
    evaluateChanges();
    ASSERT_FALSE(wrap(mark_).isAssociative());
  }
};

TEST_F(BlockSync, AFreeMarkTakesItsScaleIntoTheExtensions) {
  setExtensions(3.0, 4.0, 5.0, 1e60);
  loseCircle();
  transform(ZnGeMatrix3d::scaling(2.0, center_));
  for (int again = 0; again < 2; ++again) {
    expectExtensions(6.0, 8.0, 10.0, 20.0);
    evaluate(mark_);
  }
  EXPECT_EQ(stored(L"VerticalEndExtension"), 20.0);
  EXPECT_NEAR(wrap(mark_).blockTransform().scale(), 1.0, 1e-12);
  EXPECT_TRUE(near(wrap(mark_).horizontalEndOvershootPoint(), center_ + ZnGeVector3d(8.5, 0.0, 0.0)));
}

TEST_F(BlockSync, AMirroredMarkChangesSidesInstead) {
  struct {
    ZnGeVector3d normal; // of the mirror plane
    double left, right, bottom, top;
  } const rows[] = {{ZnGeVector3d::kXAxis, 5.0, 3.0, 6.0, 7.0}, {ZnGeVector3d::kYAxis, 3.0, 5.0, 7.0, 6.0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.normal.x);
    setExtensions(3.0, 5.0, 6.0, 7.0);
    auto mark = wrap(mark_);
    mark.setAllOvershoots(0.5);
    mark.setHorizontalStartOvershoot(1.0);
    mark.setVerticalStartOvershoot(2.0);
    evaluate(mark_);
    transform(ZnGeMatrix3d::mirroring(ZnGePlane(center_, row.normal)));
    EXPECT_GT(mark.blockTransform().det(), 0.0);
    expectExtensions(row.left, row.right, row.bottom, row.top);
    const bool horizontal = row.normal.x != 0.0;
    EXPECT_EQ(mark.horizontalStartOvershoot(), horizontal ? 0.5 : 1.0);
    EXPECT_EQ(mark.horizontalEndOvershoot(), horizontal ? 1.0 : 0.5);
    EXPECT_EQ(mark.verticalStartOvershoot(), horizontal ? 2.0 : 0.5);
    EXPECT_EQ(mark.verticalEndOvershoot(), horizontal ? 0.5 : 2.0);
  }
  // Mirroring fixes what followed the circle.
  EXPECT_EQ(wrap(mark_).resetExtensions(), Quorl::eOk);
  transform(ZnGeMatrix3d::mirroring(ZnGePlane(center_, ZnGeVector3d::kXAxis)));
  EXPECT_EQ(stored(L"HorizontalStartExtension"), 10.0);
  EXPECT_EQ(stored(L"VerticalStartExtension"), 1e60);
}

TEST_F(BlockSync, TheRotationIsRememberedAndSurvives) {
  transform(ZnGeMatrix3d::rotation(0.6, ZnGeVector3d::kZAxis, center_));
  EXPECT_NEAR(stored(L"CachedRotation"), 0.6, 1e-12);
  // In a document of drawing views the mark keeps a turn to itself: it is not remembered.
  setHostDocumentKind(true);
  transform(ZnGeMatrix3d::rotation(0.3, ZnGeVector3d::kZAxis, center_));
  setHostDocumentKind(false);
  EXPECT_NEAR(wrap(mark_).rotation(), 0.9, 1e-12);
  EXPECT_NEAR(stored(L"CachedRotation"), 0.6, 1e-12);
  change<ZnDbBlockReference>(mark_, [](ZnDbBlockReference& reference) { reference.setRotation(0.6); });
  change<ZnDbCircle>(circle_, [](ZnDbCircle& circle) { circle.setRadius(20.0); });
  evaluateChanges();
  EXPECT_NEAR(wrap(mark_).rotation(), 0.6, 1e-12);
  loseCircle();
  evaluate(mark_);
  EXPECT_NEAR(wrap(mark_).rotation(), 0.6, 1e-12);
  EXPECT_EQ(wrap(mark_).getRefCircleRadius(), 20.0);
}

TEST_F(BlockSync, ATransformNeedsAMark) {
  ZnGeMatrix3d transform = ZnGeMatrix3d::scaling(3.0);
  EXPECT_EQ(computeCenterMarkTransform(circle_, transform), Quorl::eNullObjectId);
  EXPECT_NEAR(transform.scale(), 3.0, 0.0);
  EXPECT_EQ(computeCenterMarkTransform(mark_, transform), Quorl::eOk);
  EXPECT_TRUE(transform.isEqualTo(wrap(mark_).blockTransform()));
  setHostDocumentKind(true);
  EXPECT_EQ(computeCenterMarkTransform(mark_, transform), Quorl::eOk);
  setHostDocumentKind(false);
  EXPECT_TRUE(transform.isEqualTo(ZnGeMatrix3d::translation(center_.asVector())));
  // None of the others minds what is no mark.
  applyBlockScaleToExtensions(circle_);
  undoCenterMarkMirror(circle_);
  updateCachedRotationFromBlock(circle_);
}

// A mark in paper space on a circle that is seen through a viewport.
TEST_F(BlockSync, WhileTheUserWorksInAViewportTheRotationStays) {
  const ZnDbObjectId viewport = addViewport(0.5, {100.0, 100.0, 0.0});
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  ASSERT_EQ(ZnTorviLyxUtils::createCenterMark(edgeAlong({viewport, circle_}), mark_, db_.get()), Quorl::eOk);
  ASSERT_EQ(wrap(mark_).getDependentViewportId(), viewport);
  for (const double angle : {0.4, 1.0}) {
    change<ZnDbBlockReference>(mark_, [&](ZnDbBlockReference& reference) { reference.setRotation(angle); });
    evaluate(mark_);
    EXPECT_NEAR(stored(L"CachedRotation"), 0.4, 1e-12);
    zndbHostApplicationServices()->setActiveViewportId(viewport);
  }
  zndbHostApplicationServices()->setActiveViewportId(ZnDbObjectId());
}

} // namespace
