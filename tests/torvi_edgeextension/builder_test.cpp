// Making edge extensions and binding them to other edges: what they remember, and what is refused.
#include "quorl/db/core/transaction.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/core/object_pointer.h"
#include "torvi_edgeextension/extension_fixture.h"

namespace {

class EdgeExtensionBuilderTest : public EdgeExtensionTest {
protected:
  class OpenedBuilder : public ZnEdgeExtensionBuilder {
  public:
    using ZnEdgeExtensionBuilder::initValuesInBody;
    using ZnEdgeExtensionBuilder::subClearInputEdgesFromBody;
    using ZnEdgeExtensionBuilder::ZnEdgeExtensionBuilder;
  };
};

TEST_F(EdgeExtensionBuilderTest, ANewOneHoldsAnchorsEdgesAndStyle) {
  const ZnDbObjectId id = addUsual();
  EXPECT_TRUE(shows(id, kUsual));
  EXPECT_TRUE(ZnTorviLyxUtils::isCenterObjectOfType(id, kEdgeExtension));
  EXPECT_EQ(ZnDbTorviObjectPointer<Extension>(id).openStatus(), Quorl::eOk);
  EXPECT_TRUE(near(ZnDbHolder<ZnDbBlockReference>(id)->position(), {}));
  for (const int i : {0, 1}) {
    ZnDbVertexRef anchor;
    P3 point;
    ask<Body>(id, [&](const Body& body) { return body.getAnchorVertex(i, anchor); });
    EXPECT_EQ(anchor.evaluatePoint(point), Quorl::eOk);
    EXPECT_TRUE(near(point, i == 0 ? P3(4, 0, 0) : P3(0, 3, 0)));
  }
  ZnArray<P3> points;
  EXPECT_EQ(Extension(id).getCachedRefEdgePoints(1, points), Quorl::eOk);
  EXPECT_TRUE(near(points[0], {0, 9, 0}) && near(points[1], {0, 3, 0}));
  EXPECT_EQ(Extension(id).getCachedRefEdgePoints(2, points), Quorl::eKeyNotFound);
  EXPECT_EQ(Extension(id).setCachedRefEdgePoints(0, {{1, 1, 1}}), Quorl::eInvalidInput);
  EXPECT_EQ(ask<Body>(id, [](const Body& body) { return body.dimStyleDepId(); }), db_->dimstyle());
  EXPECT_EQ(Extension(right_).getCachedRefEdgePoints(0, points), Quorl::eNullObjectId);
  EXPECT_EQ(Extension(right_).setCachedRefEdgePoints(0, points), Quorl::eNullObjectId);
}

TEST_F(EdgeExtensionBuilderTest, WithoutAWorkingDatabaseNothingIsDrawn) {
  const ZnArray<ZnDbEdgeRef> edges{edgeOf(addLineOf("4,0 9,0")), edgeOf(addLineOf("0,3 0,9"))};
  ZnDbTransaction attempt(*db_);
  zndbHostApplicationServices()->setWorkingDatabase(nullptr);
  ZnDbObjectId id;
  for (ZnDbDatabase* database : {db_.get(), static_cast<ZnDbDatabase*>(nullptr)})
    EXPECT_EQ(ZnTorviLyxUtils::createEdgeExtension(edges, id, database), Quorl::eNoDatabase);
  zndbHostApplicationServices()->setWorkingDatabase(db_.get());
  EXPECT_EQ(liveEntities(db_->modelSpaceId()).size(), 2u);
  EXPECT_EQ(OpenedBuilder(db_.get()).initValuesInBody(ZnDbObjectId()), Quorl::eNotOpenedYet);
  EXPECT_EQ(ZnTorviLyxUtils::reAssociateEdgeExtension(edges[0].entity().leafId(), edges),
            Quorl::eInvalidInput);
}

TEST_F(EdgeExtensionBuilderTest, ClearingForgetsTheEdges) {
  const ZnDbObjectId id = addUsual(), mark = addMark(addCircle({}, 3));
  const OpenedBuilder builder(db_.get());
  EXPECT_EQ(builder.subClearInputEdgesFromBody(nullptr), Quorl::eInvalidInput);
  change<ZnDbTorviActionBody>(bodyOf(mark), [&](ZnDbTorviActionBody& body) {
    EXPECT_EQ(builder.subClearInputEdgesFromBody(&body), Quorl::eInvalidInput);
  });
  change<Body>(bodyOf(id), [&](Body& body) {
    EXPECT_EQ(builder.subClearInputEdgesFromBody(&body), Quorl::eOk);
    EXPECT_EQ(body.paramCountAtName(L"AnchorVertex"), 0);
    ZnArray<ZnString> names;
    body.ownedValueParamNames(names);
    for (const ZnString& name : names) EXPECT_LT(name.find(L"Point"), 0) << name.utf8();
    EXPECT_EQ(builder.subClearInputEdgesFromBody(&body), Quorl::eOk) << "nothing left to clear";
  });
}

TEST_F(EdgeExtensionBuilderTest, ACopyInAnotherDrawingTakesTheLengthsOfTheStyleThere) {
  const ZnDbObjectId id = addUsual();
  ZnDbDatabase other;
  ZnDbIdMapping mapping(ZnDb::kCopyInContext, db_.get(), &other);
  ASSERT_EQ(db_->deepCloneObjects({id, right_, up_}, other.modelSpaceId(), mapping), Quorl::eOk);
  const ZnDbObjectId copy = ZnDbTorviActionBodyUtils::mapId(mapping, id);
  moveLine(ZnDbTorviActionBodyUtils::mapId(mapping, up_), "0,11 0,5");
  ZnDbAssocManager::evaluateTopLevelNetwork(&other);
  EXPECT_TRUE(shows(copy, "3.375,0 -1.25,0 0,4.375 0,-1.25"));
  EXPECT_TRUE(shows(id, kUsual));
}

} // namespace
