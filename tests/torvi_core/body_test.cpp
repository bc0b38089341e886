// A center object's block and the values of its body: making, grouping, asking and erasing.
#include <map>
#include <numbers>

#include "torvi/core/action_body_utils.h"
#include "torvi/style/style.h"
#include "torvi_core/scripted_body.h"

namespace {

using Body = ScriptedMarkBody;
using CenterBody = ScriptedTest;

TEST_F(CenterBody, NeighboursOfOneKeyShareASubBlock) {
  struct {
    const char* entities;
    std::vector<std::wstring> keys;
    std::vector<size_t> placed;           // in block order: 0 an entity, n a nested block of n
    std::map<std::wstring, size_t> named; // key to place
  } const rows[] = {
      {"l0a", {}, {0, 0}, {}},
      {"lal", {L"1", L"1", L"2"}, {1, 0}, {{L"1", 0}, {L"2", 1}}},
      {"llll", {L"1", L"1", L"2", L"2"}, {1, 2}, {{L"1", 0}, {L"2", 1}}},
      {"lll", {L"1", L"2", L"1"}, {0, 0, 0}, {{L"1", 2}, {L"2", 1}}},
      {"0ll", {L"1", L"1", L"2"}, {0, 0}, {{L"1", 0}, {L"2", 1}}},
      {"l0l", {L"1", L"1", L"2"}, {2}, {{L"2", 0}}},
      {"ll", {L"a", L"A"}, {0, 0}, {{L"a", 0}, {L"A", 1}}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    script.entities = row.entities;
    script.keys = row.keys;
    script.evaluateStatus = Quorl::eInvalidInput; // the block stays as creation left it
    const ZnDbObjectId center = make({circle_});
    const std::vector<ZnDbObjectId> held = liveEntities(blockOf(center));
    std::vector<size_t> placed;
    for (const ZnDbObjectId id : held)
      placed.push_back(id.isDerivedFrom(ZnDbBlockReference::desc()) ? liveEntities(blockOf(id)).size() : 0);
    ASSERT_EQ(placed, row.placed);
    Keys outputs;
    wrap(center).getOutputEdgeKeys(outputs);
    EXPECT_EQ(static_cast<size_t>(outputs.length()), row.named.size());
    for (const auto& [key, place] : row.named) EXPECT_EQ(wrap(center).getOutputEdge(key), held[place]);
  }
}

TEST_F(CenterBody, ErasingTakesReferenceBlockAndDependency) {
  for (const bool locked : {false, true}) {
    const ZnDbObjectId center = make({circle_}), layer = layerOf(center);
    const ZnDbObjectId block = blockOf(center), body = bodyOf(center);
    const ZnDbObjectId dependency = ask(center, [](const Body& held) { return held.centerDepId(); });
    setLocked(layer, locked);
    for (int again = 0; again < 2; ++again) {
      change<Body>(body, [](Body& held) { EXPECT_EQ(held.eraseCenterEntity(), Quorl::eOk); });
      EXPECT_TRUE(center.isErased() && block.isErased() && dependency.isErased());
    }
    setLocked(layer, false);
    EXPECT_EQ(ZnDbHolder<Body>(body)->centerDepId(), dependency) << "the value stays";
  }
}

TEST_F(CenterBody, CurvesOfTheBlockStayInLineWithItsEntities) {
  const ZnArray<ZnDbObjectId> ids{addLineOf("1,2 4,2"),     circle_,        addReference(addEmptyBlock()),
                                  addLineOf("1,1 1,1"),     ZnDbObjectId(), addArc({}, 3.0, 0.5, 1.5),
                                  addArc({}, 0.0, 0.0, 1.0)};
  const ZnGe::EntityId kKinds[] = {ZnGe::kLineSeg3d, ZnGe::kCircularArc3d, ZnGe::kLine3d,
                                   ZnGe::kCircularArc3d, ZnGe::kLine3d};
  OwnedCurves owned;
  EXPECT_EQ(
      ask(make({circle_}), [&](const Body& body) { return body.getCenterObjGeometry(ids, owned.curves); }),
      Quorl::eOk);
  ASSERT_EQ(owned.curves.length(), 5);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(owned.curves[i]->type(), kKinds[i]) << i;
}

TEST_F(CenterBody, ValuesThatAreMissingOrOfAnotherType) {
  changeBody(make({circle_}), [&](Body& body) {
    Keys names;
    body.ownedValueParamNames(names);
    for (const ZnString& name : names)
      if (name.find(L"CenterDepId") < 0) body.removeValueParam(name);
    EXPECT_TRUE(body.subentLineWeight() == 0 && body.subentLinetypeScale() == 0.0);
    EXPECT_FALSE(body.isExplicitlyDeassociatived() || body.associationToBeBroken() ||
                 body.getCachedAssociateStatus());
    EXPECT_TRUE(body.styleDepId().isNull() && body.dimStyleDepId().isNull());
    body.setValueParam(L"SubentLineType", ZnDbEvalVariant(3));
    EXPECT_EQ(body.subentLineType(), ZnTorviStyle::getCenterLineTypeName());
    body.setIsExplicitlyDeassociatived(true);
    EXPECT_EQ(body.getDoubleParam(L"IsExplicitlyDeassociatived", -1.0), 1.0);
    const std::pair<ZnDbEvalVariant, int> kWeights[] = {
        {25.9, 25}, {-3.9, -3}, {1e300, 0}, {-1e300, 0}, {ZnDbEvalVariant(40), 0}, {L"30", 0}};
    for (const auto& [stored, read] : kWeights) {
      body.setValueParam(L"SubentLineWeight", stored);
      EXPECT_EQ(body.subentLineWeight(), read);
    }
    // The style is a dependency that is replaced but not removed.
    for (const ZnDbObjectId style : {db_->dimstyle(), ZnDbObjectId()}) {
      EXPECT_EQ(body.addDependencyToStyle(style), Quorl::eOk);
      EXPECT_EQ(body.getStyleId(), style);
      ZnArray<ZnDbObjectId> actions;
      ZnDbAssocAction::getActionsDependentOnObject(db_->dimstyle(), true, false, actions);
      EXPECT_EQ(actions.length(), 1);
    }
  });
  EXPECT_TRUE(Body::isAutoMatchExtension(1e60) && Body::isAutoMatchExtension(2e60));
  EXPECT_FALSE(Body::isAutoMatchExtension(9.9e59) || Body::isAutoMatchExtension(-1e60));
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
      {"other plane", turned, {3, 4, 1}, -z, -1.0},
      {"tilted", turned, {0, 0, 0}, x, -1.0},
      {"shifted system", ZnGeMatrix3d::translation(z) * turned, {3, 4, 1}, -z, 2.0 * std::numbers::pi - 0.5}};
  for (const auto& row : rows) {
    db_->setUcsMatrix(row.ucs);
    const ZnDbCircle circle(row.center, row.normal, 2.0);
    ZnDbBlockReference reference, expected;
    ASSERT_EQ(expected.setBlockTransform(row.ucs), Quorl::eOk);
    if (row.rotation >= 0.0) expected.setRotation(row.rotation);
    ZnDbTorviActionBodyUtils::setCenterRotation(&reference, &circle);
    EXPECT_TRUE(reference.blockTransform().isEqualTo(expected.blockTransform())) << row.what;
    ZnDbTorviActionBodyUtils::setCenterRotation(&expected, nullptr);
    EXPECT_TRUE(expected.blockTransform().isEqualTo(row.ucs));
  }
}

} // namespace
