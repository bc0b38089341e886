#include "assoc/assoc_fixture.h"
#include "quorl/assoc/diametric_dim_action_body.h"
#include "quorl/assoc/dim_assoc.h"
#include "quorl/assoc/radial_dim_action_body.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/db/entity/diametric_dimension.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/entity/viewport.h"

namespace {

class DimTest : public AssocTest {
protected:
  template<class Dimension> double measured(ZnDbObjectId id) const {
    const ZnDbHolder<Dimension> dimension(id);
    return dimension->measurement();
  }
  void moveCircle(ZnDbObjectId id, const ZnGePoint3d& center, double radius) {
    change<ZnDbCircle>(id, [&](ZnDbCircle& circle) { circle.setCenter(center), circle.setRadius(radius); });
  }
  static ZnDbEdgeRef edgeOf(ZnDbObjectId id) {
    return ZnDbEdgeRef(ZnDbFullSubentPath(id, ZnDb::kEdgeSubentType, 0));
  }
};

} // namespace

TEST_F(DimTest, radius_and_diameter_follow_their_circle) {
  const ZnDbObjectId circle = addCircle(2.0);
  const ZnDbObjectId radial = add(new ZnDbRadialDimension(ZnGePoint3d(), ZnGePoint3d(0, 7, 0)));
  const ZnDbObjectId diametric = add(new ZnDbDiametricDimension(ZnGePoint3d(-1, 0, 0), ZnGePoint3d(1, 0, 0)));
  ZnDbObjectId radialBody, diametricBody, wrong;
  EXPECT_EQ(ZnDbAssocRadialDimActionBody::createAndPostToDatabase(edgeOf(circle), diametric, wrong),
            Quorl::eWrongObjectClass);
  ASSERT_EQ(ZnDbAssocRadialDimActionBody::createAndPostToDatabase(edgeOf(circle), radial, radialBody),
            Quorl::eOk);
  ASSERT_EQ(
      ZnDbAssocDiametricDimActionBody::createAndPostToDatabase(edgeOf(circle), diametric, diametricBody),
      Quorl::eOk);
  EXPECT_EQ(measured<ZnDbRadialDimension>(radial), 2.0);
  EXPECT_EQ(measured<ZnDbDiametricDimension>(diametric), 4.0);

  moveCircle(circle, ZnGePoint3d(10, 20, 0), 5.0);
  evaluate();
  const ZnDbHolder<ZnDbRadialDimension> r(radial);
  EXPECT_EQ(r->center(), ZnGePoint3d(10, 20, 0));
  EXPECT_EQ(r->pointOnCircle(), ZnGePoint3d(10, 25, 0)) << "the direction stays";
  const ZnDbHolder<ZnDbDiametricDimension> d(diametric);
  EXPECT_EQ(d->pointOnCircle(), ZnGePoint3d(5, 20, 0));
  EXPECT_EQ(d->oppositePointOnCircle(), ZnGePoint3d(15, 20, 0));

  erase(circle);
  evaluate();
  EXPECT_EQ(r->measurement(), 5.0) << "without its circle it stays where it is";
  EXPECT_EQ(statusOf(radialBody), kIsUpToDateAssocStatus);
}

TEST_F(DimTest, a_copied_radius_follows_the_copied_circle) {
  const ZnDbObjectId circle = addCircle(2.0);
  const ZnDbObjectId radial = add(new ZnDbRadialDimension(ZnGePoint3d(), ZnGePoint3d(1, 0, 0)));
  ZnDbObjectId body;
  ASSERT_EQ(ZnDbAssocRadialDimActionBody::createAndPostToDatabase(edgeOf(circle), radial, body), Quorl::eOk);
  for (const bool withCircle : {true, false}) {
    ZnArray<ZnDbObjectId> objects{radial};
    if (withCircle) objects.append(circle);
    ZnDbIdMapping mapping(0, &db, &db);
    ASSERT_EQ(db.deepCloneObjects(objects, db.modelSpaceId(), mapping), Quorl::eOk);
    ZnDbIdPair copy(radial), copiedCircle(circle);
    ASSERT_TRUE(mapping.compute(copy));
    setRadius(mapping.compute(copiedCircle) ? copiedCircle.value() : circle, 9.0);
    evaluate();
    EXPECT_EQ(measured<ZnDbRadialDimension>(copy.value()), withCircle ? 9.0 : 2.0);
    setRadius(circle, 2.0);
    evaluate();
  }
}

TEST_F(DimTest, an_association_moves_the_points_of_a_dimension) {
  const ZnDbObjectId line = addLine({0, 0, 0}, {10, 0, 0});
  const ZnDbObjectId dimension =
      add(new ZnDbAlignedDimension(ZnGePoint3d(0, 0, 0), ZnGePoint3d(8, 0, 0), ZnGePoint3d(4, 3, 0)));
  ZnArray<ZnDbSubentId> ends;
  ZnDbHolder<ZnDbLine>(line)->getSubentIds(ZnDb::kVertexSubentType, ends);
  ASSERT_EQ(ends.length(), 2);
  ZnDbObjectId id;
  const ZnDbCompoundObjectId path(line);
  ASSERT_EQ(ZnDbDimAssoc::post(dimension, {{0, path, ends[0]}, {1, path, ends[1]}}, id), Quorl::eOk);
  EXPECT_EQ(measured<ZnDbAlignedDimension>(dimension), 10.0);
  EXPECT_EQ(ZnDbDimAssoc::of(*ZnDbHolder<ZnDbDimension>(dimension)), id);
  ZnArray<ZnDbObjectId> geometry;
  const ZnDbHolder<ZnDbDimAssoc> association(id);
  EXPECT_EQ(association->getDimAssocGeomIds(geometry), Quorl::eOk);
  EXPECT_TRUE(geometry == ZnArray<ZnDbObjectId>{line});
  EXPECT_FALSE(association->isTransSpatial());
  change<ZnDbLine>(line, [](ZnDbLine& moved) { moved.setEndPoint({30, 0, 0}); });
  EXPECT_EQ(measured<ZnDbAlignedDimension>(dimension), 30.0);
  EXPECT_EQ(ZnDbHolder<ZnDbAlignedDimension>(dimension)->dimensionLinePoint().y, 3.0);
  erase(line);
  EXPECT_EQ(association->updateDimension(false, true), Quorl::eWasErased);
  EXPECT_EQ(association->updateDimension(true, true), Quorl::eOk);
}

TEST_F(DimTest, through_a_viewport_a_dimension_stands_on_the_sheet) {
  auto* viewport = new ZnDbViewport;
  viewport->setCenterPoint(ZnGePoint3d(100, 50, 0));
  viewport->setCustomScale(2.0);
  const ZnDbObjectId viewportId = add(viewport, db.paperSpaceId());
  const ZnDbObjectId circle = addCircle(3.0);
  const ZnDbObjectId dimension =
      add(new ZnDbRadialDimension(ZnGePoint3d(), ZnGePoint3d(1, 0, 0)), db.paperSpaceId());
  ZnDbObjectId id;
  const ZnDbFullSubentPath path(ZnArray<ZnDbObjectId>{viewportId, circle},
                                ZnDbSubentId(ZnDb::kEdgeSubentType, 0));
  ASSERT_EQ(ZnDbDimAssoc::post(dimension, {{0, ZnDbCompoundObjectId(path), path.subentId()}}, id),
            Quorl::eOk);
  EXPECT_DOUBLE_EQ(measured<ZnDbRadialDimension>(dimension), 6.0);
  change<ZnDbViewport>(viewportId, [](ZnDbViewport& zoomed) { zoomed.setCustomScale(4.0); });
  EXPECT_DOUBLE_EQ(measured<ZnDbRadialDimension>(dimension), 12.0);
  ZnDbHolder<ZnDbDimAssoc> association;
  ASSERT_EQ(association.openForWrite(id), Quorl::eOk);
  EXPECT_TRUE(association->isTransSpatial());
  EXPECT_EQ(association->updateXrefSubentPath(), Quorl::eNothingToDo);
  erase(viewportId);
  EXPECT_EQ(association->updateXrefSubentPath(), Quorl::eOk);
  EXPECT_FALSE(association->isTransSpatial());
  EXPECT_EQ(association->updateDimension(false, false), Quorl::eOk);
  EXPECT_DOUBLE_EQ(measured<ZnDbRadialDimension>(dimension), 3.0);
}
