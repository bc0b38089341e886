// Where dimensions once stayed behind, or went where they did not belong.
#include "assoc/assoc_fixture.h"
#include "quorl/assoc/diametric_dim_action_body.h"
#include "quorl/assoc/dim_assoc.h"
#include "quorl/assoc/radial_dim_action_body.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/entity/viewport.h"

namespace {

class DimFollowing : public AssocTest {
protected:
  void SetUp() override {
    outline_ = new ZnDbPolyline;
    for (int i = 0; i < 3; ++i) outline_->addVertexAt(i, ZnGePoint2d(10.0 * i, 0.0));
    outlineId_ = add(outline_);
    dimension_ =
        add(new ZnDbAlignedDimension(ZnGePoint3d(0, 0, 0), ZnGePoint3d(20, 0, 0), ZnGePoint3d(4, 3, 0)));
    ZnArray<ZnDbSubentId> vertices;
    outline_->getSubentIds(ZnDb::kVertexSubentType, vertices);
    const ZnDbCompoundObjectId path(outlineId_);
    ASSERT_EQ(ZnDbDimAssoc::post(dimension_, {{0, path, vertices.first()}, {1, path, vertices.last()}}, id_),
              Quorl::eOk);
  }
  void moveAll(ZnDbObjectId id, double x) {
    change<ZnDbEntity>(id, [=](ZnDbEntity& e) { e.transformBy(ZnGeMatrix3d::translation({x, 0, 0})); });
  }
  static double firstX(ZnDbObjectId id) {
    return ZnDbHolder<ZnDbAlignedDimension>(id)->firstExtensionPoint().x;
  }

  ZnDbPolyline* outline_ = nullptr;
  ZnDbObjectId outlineId_, dimension_, id_;
};

TEST_F(DimFollowing, ACopyFollowsWhatWasCopiedWithIt) {
  for (const bool withOutline : {false, true}) {
    ZnArray<ZnDbObjectId> objects{dimension_};
    if (withOutline) objects.append(outlineId_);
    ZnDbIdMapping mapping(0, &db, &db);
    ASSERT_EQ(db.deepCloneObjects(objects, db.modelSpaceId(), mapping), Quorl::eOk);
    ZnDbIdPair copy(dimension_), outline(outlineId_);
    ASSERT_TRUE(mapping.compute(copy));
    EXPECT_EQ(ZnDbDimAssoc::of(*ZnDbHolder<ZnDbDimension>(copy.value())).isErased(), !withOutline);
    moveAll(outlineId_, 1.0);
    if (mapping.compute(outline)) moveAll(outline.value(), 5.0);
    EXPECT_EQ(firstX(copy.value()), withOutline ? 6.0 : 0.0);
  }
}

TEST_F(DimFollowing, OneThatIsReadFollowsAtTheNextEvaluation) {
  {
    const ZnDbHolder<ZnDbDimension> reading(dimension_);
    moveAll(outlineId_, 3.0);
  }
  EXPECT_EQ(firstX(dimension_), 0.0);
  evaluate();
  EXPECT_EQ(firstX(dimension_), 3.0);
}

TEST_F(DimFollowing, AVertexThatIsGoneLeavesTheOtherEnd) {
  change<ZnDbPolyline>(outlineId_, [](ZnDbPolyline& outline) { outline.removeVertexAt(2); });
  moveAll(outlineId_, 2.0);
  EXPECT_EQ(firstX(dimension_), 2.0);
  EXPECT_EQ(ZnDbHolder<ZnDbAlignedDimension>(dimension_)->secondExtensionPoint().x, 20.0);
}

TEST_F(DimFollowing, ARadiusThroughAViewportStandsOnTheSheet) {
  auto* viewport = new ZnDbViewport;
  viewport->setCustomScale(2.0);
  const ZnDbObjectId window = add(viewport, db.paperSpaceId()), circle = addCircle(3.0);
  const ZnDbObjectId radius =
      add(new ZnDbRadialDimension(ZnGePoint3d(), ZnGePoint3d(1, 0, 0)), db.paperSpaceId());
  const ZnDbFullSubentPath path(ZnArray<ZnDbObjectId>{window, circle},
                                ZnDbSubentId(ZnDb::kEdgeSubentType, 0));
  ZnDbObjectId body;
  ASSERT_EQ(ZnDbAssocRadialDimActionBody::createAndPostToDatabase(ZnDbEdgeRef(path), radius, body),
            Quorl::eOk);
  EXPECT_DOUBLE_EQ(ZnDbHolder<ZnDbRadialDimension>(radius)->measurement(), 6.0);
}

} // namespace
