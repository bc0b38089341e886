// Making edge extensions and binding them to other edges: what they remember, and what is refused.
#include "quorl/db/core/transaction.h"
#include "quorl/db/entity/polyline.h"
#include "torvi/core/action_body_utils.h"
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
  static testing::AssertionResult isAnchored(ZnDbObjectId id, const P3& first, const P3& second) {
    return ask<Body>(id, [&](const Body& body) {
      for (const int i : {0, 1}) {
        ZnDbVertexRef anchor;
        P3 point(99, 99, 99);
        body.getAnchorVertex(i, anchor);
        anchor.evaluatePoint(point);
        if (const auto same = near(point, i == 0 ? first : second); !same) return same;
      }
      return testing::AssertionSuccess();
    });
  }
};

TEST_F(EdgeExtensionBuilderTest, ANewOneHoldsAnchorsEdgesAndStyle) {
  const ZnDbObjectId id = addUsual();
  EXPECT_TRUE(shows(id, kUsual));
  EXPECT_TRUE(ZnTorviLyxUtils::isCenterObjectOfType(id, kEdgeExtension));
  EXPECT_EQ(ZnDbTorviObjectPointer<Extension>(id).openStatus(), Quorl::eOk);
  EXPECT_TRUE(near(ZnDbHolder<ZnDbBlockReference>(id)->position(), {}));
  EXPECT_TRUE(isAnchored(id, {4, 0, 0}, {0, 3, 0}));
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
  EXPECT_EQ(ZnTorviLyxUtils::createEdgeExtension(edges, id, db_.get()), Quorl::eNoDatabase);
  EXPECT_EQ(ZnTorviLyxUtils::createEdgeExtension(edges, id, nullptr), Quorl::eNoDatabase);
  zndbHostApplicationServices()->setWorkingDatabase(db_.get());
  EXPECT_TRUE(id.isNull());
  EXPECT_EQ(liveEntities(db_->modelSpaceId()).size(), 2u);
  EXPECT_EQ(OpenedBuilder(db_.get()).initValuesInBody(ZnDbObjectId()), Quorl::eNotOpenedYet);
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

TEST_F(EdgeExtensionBuilderTest, ReassociationSetsAnchorsAnew) {
  const ZnDbObjectId id = addUsual(), left = addLineOf("90,50 96,50"), down = addLineOf("100,44 100,40");
  EXPECT_EQ(ZnTorviLyxUtils::reAssociateEdgeExtension(id, {edgeOf(down), edgeOf(left)}), Quorl::eOk);
  EXPECT_TRUE(shows(id, "100,44.5 100,51 96.5,50 101,50"));
  EXPECT_TRUE(isAnchored(id, {100, 44, 0}, {96, 50, 0}));
  EXPECT_EQ(ask<Body>(id, [](const Body& body) { return body.paramCountAtName(L"AnchorVertex"); }), 2);
  moveLine(left, "90,60 96,60");
  EXPECT_TRUE(shows(id, "100,44.5 100,61 96.5,60 101,60"));
  EXPECT_EQ(ZnTorviLyxUtils::reAssociateEdgeExtension(left, {edgeOf(down)}), Quorl::eInvalidInput);
}

TEST_F(EdgeExtensionBuilderTest, SidesOfPolylinesInReferencesAndThroughViewports) {
  auto* chain = new ZnDbPolyline; // a corner cut off at the origin
  for (const P3& corner : pointsOf("10,0 4,0 0,3 0,9"))
    chain->addVertexAt(chain->vertexCount(), {corner.x, corner.y});
  const ZnDbObjectId block = addEmptyBlock(), nested = add(chain, block), reference = addReference(block);
  const ZnDbObjectId id = addExtension(edgeAlong({reference, nested}, 0), edgeAlong({reference, nested}, 2));
  EXPECT_TRUE(shows(id, kUsual));
  for (const ZnGeMatrix3d& by : {ZnGeMatrix3d::translation({7, 8, 0}), ZnGeMatrix3d::rotation(2.0, {0, 0, 1}),
                                 ZnGeMatrix3d::mirroring(ZnGePlane({1, 0, 0}, {1, 0.5, 0}))}) {
    change<ZnDbBlockReference>(reference, [&](ZnDbBlockReference& held) { held.setBlockTransform(by); });
    evaluateChanges();
    std::vector<P3> expected;
    for (const P3& point : pointsOf(kUsual)) expected.push_back(by * point);
    EXPECT_TRUE(shows(id, expected));
    EXPECT_TRUE(isAnchored(id, by * P3(4, 0, 0), by * P3(0, 3, 0)));
  }
  auto* window = new ZnDbViewport;
  window->setCenterPoint({100, 50, 0});
  window->setCustomScale(0.5);
  const ZnDbObjectId viewport = add(window, db_->paperSpaceId());
  const ZnDbObjectId right = addLineOf("8,0 20,0"), up = addLineOf("0,6 0,18");
  ASSERT_EQ(db_->setCurrentSpaceId(db_->paperSpaceId()), Quorl::eOk);
  const ZnDbObjectId onPaper = addExtension(edgeAlong({viewport, right}), edgeAlong({viewport, up}));
  EXPECT_TRUE(shows(onPaper, "103.5,50 99,50 100,52.5 100,49"));
  moveLine(up, "0,8 0,20");
  EXPECT_TRUE(shows(onPaper, "103.5,50 99,50 100,53.5 100,49")) << "the anchor is found on paper";
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
