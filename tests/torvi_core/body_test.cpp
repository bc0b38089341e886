// A center object's block and the values of its body: making, grouping, asking and erasing.
#include <map>
#include <numbers>

#include "torvi/core/action_body_utils.h"
#include "torvi/style/style.h"
#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;

class CenterBody : public ScriptedTest {
protected:
  void SetUp() override {
    ScriptedTest::SetUp();
    circle_ = addCircle({0.0, 0.0, 0.0}, 5.0);
  }
  int blockCount() const {
    return static_cast<int>(ZnDbHolder<ZnDbBlockTable>(db_->blockTableId())->recordIds().size());
  }
  ZnDbObjectId circle_;
};

TEST_F(CenterBody, NeighboursOfOneKeyShareASubBlock) {
  struct {
    const char* entities;
    std::vector<std::wstring> keys;
    std::vector<int> placed;           // in block order: 0 an entity, n a nested block of n
    std::map<std::wstring, int> named; // key to place
  } const rows[] = {
      {"lll", {}, {0, 0, 0}, {}},
      {"l0a", {}, {0, 0}, {}},
      {"la", {L"1", L"2"}, {0, 0}, {{L"1", 0}, {L"2", 1}}},
      {"ll", {L"1", L"1"}, {2}, {{L"1", 0}}},
      {"lal", {L"1", L"1", L"2"}, {1, 0}, {{L"1", 0}, {L"2", 1}}},
      {"lll", {L"1", L"2", L"2"}, {0, 2}, {{L"1", 0}, {L"2", 1}}},
      {"llll", {L"1", L"1", L"1", L"2"}, {2, 0}, {{L"1", 0}, {L"2", 1}}},
      {"llll", {L"1", L"1", L"2", L"2"}, {1, 2}, {{L"1", 0}, {L"2", 1}}},
      {"lll", {L"1", L"1", L"1"}, {3}, {{L"1", 0}}},
      {"lll", {L"1", L"2", L"1"}, {0, 0, 0}, {{L"1", 2}, {L"2", 1}}},
      {"0ll", {L"1", L"1", L"2"}, {0, 0}, {{L"1", 0}, {L"2", 1}}},
      {"l0l", {L"1", L"1", L"2"}, {2}, {{L"2", 0}}},
      {"ll", {L"a", L"A"}, {0, 0}, {{L"a", 0}, {L"A", 1}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.entities) + " " + std::to_string(&row - rows));
    script.entities = row.entities;
    script.keys = row.keys;
    script.evaluateStatus = Quorl::eInvalidInput; // the block stays as creation left it
    const ZnDbObjectId center = make({circle_});
    const std::vector<ZnDbObjectId> held = liveEntities(blockOf(center));
    ASSERT_EQ(held.size(), row.placed.size());
    for (size_t i = 0; i < held.size(); ++i) {
      const bool nested = held[i].isDerivedFrom(ZnDbBlockReference::desc());
      EXPECT_EQ(nested ? liveEntities(blockOf(held[i])).size() : 0u, static_cast<size_t>(row.placed[i])) << i;
    }
    ask(center, [&](const Body& body) {
      ZnArray<ZnString> names;
      body.ownedValueParamNames(names);
      int outputs = 0;
      for (const ZnString& name : names) outputs += name.find(Body::outputEdgeParamName()) == 0;
      EXPECT_EQ(outputs, static_cast<int>(row.named.size()));
      for (const auto& [key, place] : row.named)
        EXPECT_EQ(body.getOutputEdge(key), held[static_cast<size_t>(place)]);
      return 0;
    });
  }
}

TEST_F(CenterBody, AnErasedFirstEntityMakesNoBlock) {
  ScriptedBuilder builder(db_.get());
  builder.addInputEdge(edgeOf(circle_));
  ZnDbObjectId body, center;
  ASSERT_EQ(builder.createActionAndActionBody(body), Quorl::eOk);
  erase(circle_);
  const int before = blockCount();
  EXPECT_EQ(builder.createEntitiesInBTR(body, center, db_.get()), Quorl::eNullObjectId);
  EXPECT_TRUE(center.isNull());
  EXPECT_EQ(blockCount(), before);
  // Nor can a network make anything of it.
  EXPECT_EQ(ZnTorviLyxUtils::explicitlyEvaluateActionBody(body), Quorl::eOk);
  EXPECT_EQ(ZnDbHolder<ZnDbAssocActionBody>(body)->status(), kErasedAssocStatus);
}

TEST_F(CenterBody, ErasingTakesReferenceBlockAndDependency) {
  for (const bool locked : {false, true}) {
    const ZnDbObjectId center = make({circle_});
    const ZnDbObjectId block = blockOf(center), body = bodyOf(center);
    const ZnDbObjectId dependency = ask(center, [](const Body& held) { return held.centerDepId(); });
    const ZnDbObjectId layer = ZnDbHolder<ZnDbEntity>(center)->layerId();
    change<ZnDbLayerTableRecord>(layer, [&](ZnDbLayerTableRecord& record) { record.setIsLocked(locked); });
    for (int again = 0; again < 2; ++again) {
      change<Body>(body, [](Body& held) { EXPECT_EQ(held.eraseCenterEntity(), Quorl::eOk); });
      EXPECT_TRUE(center.isErased() && block.isErased() && dependency.isErased());
    }
    change<ZnDbLayerTableRecord>(layer, [](ZnDbLayerTableRecord& record) { record.setIsLocked(false); });
    ZnDbHolder<Body> left(body);
    ASSERT_TRUE(left.isOpen());
    EXPECT_EQ(left->centerDepId(), dependency) << "the value stays";
    EXPECT_TRUE(left->centerObjectId().isNull());
    ZnArray<ZnDbObjectId> ids;
    EXPECT_NE(left->getCenterEntitesIds(ids), Quorl::eOk);
  }
}

TEST_F(CenterBody, CurvesOfTheBlockStayInLineWithItsEntities) {
  const ZnDbObjectId line = addLine({1.0, 2.0, 0.0}, {4.0, 2.0, 0.0}),
                     point = addLine({1.0, 1.0, 0.0}, {1.0, 1.0, 0.0}),
                     arc = addArc({0.0, 0.0, 0.0}, 3.0, 0.5, 1.5),
                     empty = addArc({0.0, 0.0, 0.0}, 0.0, 0.0, 1.0);
  const ZnDbObjectId center = make({circle_});
  const ZnArray<ZnDbObjectId> ids{line, center, point, ZnDbObjectId(), arc, empty};
  const ZnGe::EntityId kKinds[] = {ZnGe::kLineSeg3d, ZnGe::kLine3d, ZnGe::kCircArc3d, ZnGe::kLine3d};
  OwnedCurves owned;
  EXPECT_EQ(ask(center, [&](const Body& body) { return body.getCenterObjGeometry(ids, owned.curves); }),
            Quorl::eOk);
  ASSERT_EQ(owned.curves.length(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(owned.curves[i]->type(), kKinds[i]) << i;
  EXPECT_TRUE(near(static_cast<ZnGeLineSeg3d*>(owned.curves[0])->endPoint(), {4.0, 2.0, 0.0}));
  ZnDbTorviActionBodyUtils::deleteCurves(owned.curves);
  EXPECT_TRUE(owned.curves.isEmpty());
}

TEST_F(CenterBody, ValuesOfTheClassAndTheirDefaults) {
  const ZnDbObjectId center = make({circle_});
  changeBody(center, [&](Body& body) {
    ZnArray<ZnString> names;
    body.ownedValueParamNames(names);
    for (const ZnString& name : names)
      if (name.find(L"CenterDepId") < 0) body.removeValueParam(name);
    EXPECT_EQ(body.subentLineType(), ZnTorviStyle::getCenterLineTypeName());
    EXPECT_FALSE(body.subentLineType().isEmpty());
    EXPECT_EQ(body.subentLineWeight(), 0);
    EXPECT_EQ(body.subentLinetypeScale(), 0.0);
    EXPECT_EQ(body.cachedViewportScale(), 0.0);
    EXPECT_FALSE(body.isExplicitlyDeassociatived() || body.associationToBeBroken() ||
                 body.getCachedAssociateStatus());
    EXPECT_TRUE(body.styleDepId().isNull() && body.dimStyleDepId().isNull());

    body.setSubentLineType(L"HIDDEN");
    EXPECT_EQ(body.subentLineType().utf8(), "HIDDEN");
    body.setValueParam(L"SubentLineType", ZnDbEvalVariant(3));
    EXPECT_EQ(body.subentLineType(), ZnTorviStyle::getCenterLineTypeName());
    body.setDimStyleDepId(circle_);
    EXPECT_EQ(body.getObjectIdParam(L"DimStyleDepId"), circle_);
    body.setIsExplicitlyDeassociatived(true);
    EXPECT_EQ(body.getDoubleParam(L"IsExplicitlyDeassociatived", -1.0), 1.0);
    body.setAssociationToBeBroken(true);
    EXPECT_EQ(body.getDoubleParam(L"AssociationToBeBroken", -1.0), 1.0);
    body.setAssociationToBeBroken(false);
    EXPECT_EQ(body.getDoubleParam(L"AssociationToBeBroken", -1.0), 0.0);

    const std::pair<ZnDbEvalVariant, int> kWeights[] = {
        {25.0, 25}, {25.9, 25}, {-3.9, -3}, {1e300, 0}, {-1e300, 0}, {ZnDbEvalVariant(40), 0}, {L"30", 0}};
    for (const auto& [stored, read] : kWeights) {
      body.setValueParam(L"SubentLineWeight", stored);
      EXPECT_EQ(body.subentLineWeight(), read);
    }
  });
  const std::pair<double, bool> kExtensions[] = {
      {1e60, true}, {9.9e59, false}, {2e60, true}, {0.0, false}, {-1e60, false}};
  for (const auto& [value, follows] : kExtensions)
    EXPECT_EQ(Body::isAutoMatchExtension(value), follows) << value;
}

TEST_F(CenterBody, TheStyleIsADependencyThatIsReplacedButNotRemoved) {
  const ZnDbObjectId center = make({circle_});
  const auto readers = [&](ZnDbObjectId id) {
    ZnArray<ZnDbObjectId> actions;
    ZnDbAssocAction::getActionsDependentOnObject(id, true, false, actions);
    return actions.length();
  };
  changeBody(center, [&](Body& body) {
    EXPECT_EQ(body.addDependencyToStyle(db_->dimstyle()), Quorl::eOk);
    EXPECT_EQ(body.getStyleId(), db_->dimstyle());
    EXPECT_EQ(readers(db_->dimstyle()), 1);
    EXPECT_EQ(body.addDependencyToStyle(ZnDbObjectId()), Quorl::eOk);
    EXPECT_TRUE(body.getStyleId().isNull() && body.styleDepId().isNull());
    EXPECT_EQ(readers(db_->dimstyle()), 1) << "the old dependency stays";
  });
}

TEST_F(CenterBody, EntitiesThatItFollows) {
  ZnArray<ZnDbObjectId> ids;
  ScriptedBuilder builder(db_.get());
  ZnDbObjectId body;
  ASSERT_EQ(builder.createActionAndActionBody(body), Quorl::eOk);
  EXPECT_EQ(ZnDbHolder<Body>(body)->getAssociatedEntitiesIds(ids), Quorl::eNoInputEdges);
  EXPECT_EQ(ZnDbHolder<Body>(body)->edgeRefCount(), 0);
  const ZnDbObjectId other = addCircle({1.0, 0.0, 0.0}, 1.0);
  const ZnDbObjectId center = make({circle_, other});
  erase(circle_);
  EXPECT_EQ(ask(center, [&](const Body& held) { return held.getAssociatedEntitiesIds(ids); }), Quorl::eOk);
  ASSERT_EQ(ids.length(), 1);
  EXPECT_EQ(ids[0], other);
}

// The reference takes the user's coordinate system, and is turned for a circle that faces the other way.
TEST_F(CenterBody, TheReferenceLiesInTheUsersCoordinateSystem) {
  const ZnGeVector3d x(1, 0, 0), z(0, 0, 1);
  const ZnGeMatrix3d turned = ZnGeMatrix3d::rotation(0.5, z);
  struct {
    const char* what;
    ZnGeMatrix3d ucs;
    ZnGePoint3d center;
    ZnGeVector3d normal;
    double rotation; // below zero: that of the coordinate system as it is
  } const rows[] = {
      {"same side", turned, {3, 4, 0}, z, -1.0},
      {"other side", turned, {3, 4, 0}, -z, 2.0 * std::numbers::pi - 0.5},
      {"other side, untilted", {}, {3, 4, 0}, -z, 0.0},
      {"other plane", turned, {3, 4, 1}, -z, -1.0},
      {"tilted", turned, {0, 0, 0}, x, -1.0},
      {"shifted system", ZnGeMatrix3d::translation(z) * turned, {3, 4, 1}, -z, 2.0 * std::numbers::pi - 0.5}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    db_->setUcsMatrix(row.ucs);
    const ZnDbCircle circle(row.center, row.normal, 2.0);
    ZnDbBlockReference reference, expected;
    ASSERT_EQ(expected.setBlockTransform(row.ucs), Quorl::eOk);
    if (row.rotation >= 0.0) expected.setRotation(row.rotation);
    ZnDbTorviActionBodyUtils::setCenterRotation(&reference, &circle);
    EXPECT_TRUE(reference.blockTransform().isEqualTo(expected.blockTransform()));
    ZnDbBlockReference plain;
    ZnDbTorviActionBodyUtils::setCenterRotation(&plain, nullptr);
    EXPECT_TRUE(plain.blockTransform().isEqualTo(row.ucs));
  }
}

} // namespace
