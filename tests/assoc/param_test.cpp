#include "assoc/assoc_fixture.h"
#include "quorl/assoc/dependency_pe.h"
#include "quorl/assoc/edge_action_param.h"
#include "quorl/assoc/pers_subent_id_pe.h"
#include "quorl/assoc/vertex_action_param.h"

namespace {

class ParamTest : public AssocTest {
protected:
  ParamTest()
      : bodyId(addSum({}, addCircle(1.0))) {}

  ZnDbObjectId addParam(const ZnString& name, const ZnRxClass* cls) {
    ZnDbHolder<ZnDbAssocActionBody> body;
    EXPECT_EQ(body.openForWrite(bodyId), Quorl::eOk);
    ZnDbObjectId id;
    int index = -1;
    EXPECT_EQ(body->addParam(name, cls, id, index), Quorl::eOk);
    EXPECT_EQ(body->paramAtIndex(index), id);
    return id;
  }
  ZnDbObjectId addEdge(const ZnString& name, ZnDbObjectId entity) {
    const ZnDbObjectId id = addParam(name, ZnDbAssocEdgeActionParam::desc());
    setEdge(id, entity);
    return id;
  }
  void setEdge(ZnDbObjectId id, ZnDbObjectId entity) {
    ZnDbHolder<ZnDbAssocEdgeActionParam> param;
    ASSERT_EQ(param.openForWrite(id, true), Quorl::eOk);
    EXPECT_EQ(param->setEdgeRef(ZnDbEdgeRef(ZnDbFullSubentPath(entity, ZnDb::kEdgeSubentType, 0))),
              Quorl::eOk);
  }
  void empty(ZnDbObjectId id, bool release) {
    ZnDbHolder<ZnDbAssocEdgeActionParam> param;
    ASSERT_EQ(param.openForWrite(id), Quorl::eOk);
    EXPECT_EQ(param->emptyEdge(release), Quorl::eOk);
  }
  // The top id of the only edge; null for an emptied parameter.
  ZnDbObjectId edgeOf(ZnDbObjectId id) const {
    const ZnDbHolder<ZnDbAssocEdgeActionParam> param(id, true);
    ZnArray<ZnDbEdgeRef> edges;
    EXPECT_EQ(param->edgeRefs(edges), Quorl::eOk);
    ZnDbObjectId top;
    EXPECT_EQ(param->dependentTopId(top), !edges.isEmpty());
    ZnDbCompoundObjectId path;
    EXPECT_EQ(param->getDependentOnCompoundObject(path), edges.isEmpty() ? Quorl::eNothingToDo : Quorl::eOk);
    EXPECT_EQ(path.topId(), top);
    return edges.isEmpty() ? ZnDbObjectId() : edges[0].entity().topId();
  }
  int readers(ZnDbObjectId object) const {
    ZnArray<ZnDbObjectId> actions;
    ZnDbAssocAction::getActionsDependentOnObject(object, true, false, actions);
    return actions.length();
  }

  ZnDbObjectId bodyId;
};

} // namespace

TEST_F(ParamTest, parameters_are_found_by_name_and_index) {
  const ZnDbObjectId source = addCircle(1.0);
  const ZnDbObjectId a0 = addEdge(L"A", source), b0 = addEdge(L"B", source), a1 = addEdge(L"A", source);
  ZnDbHolder<ZnDbAssocActionBody> body;
  ASSERT_EQ(body.openForWrite(bodyId), Quorl::eOk);
  EXPECT_EQ(body->paramCount(), 3);
  EXPECT_EQ(body->paramCountAtName(L"A"), 2);
  EXPECT_TRUE(body->paramsAtName(L"A") == (ZnArray<ZnDbObjectId>{a0, a1}));
  EXPECT_EQ(body->paramAtName(L"A", 1), a1);
  EXPECT_EQ(body->paramAtIndex(1), b0);
  for (const int index : {-1, 2}) EXPECT_TRUE(body->paramAtName(L"A", index).isNull());
  for (const int index : {-1, 3}) EXPECT_TRUE(body->paramAtIndex(index).isNull());
  EXPECT_TRUE(body->paramsAtName(L"C").isEmpty());
  EXPECT_EQ(readers(source), 1) << "an action counts once, however often it depends on the object";

  EXPECT_EQ(body->removeParam(a0, true), Quorl::eOk);
  EXPECT_TRUE(a0.isErased());
  EXPECT_EQ(body->removeParam(a0, true), Quorl::eKeyNotFound);
  EXPECT_EQ(body->paramAtName(L"A"), a1);
  EXPECT_EQ(body->paramAtIndex(0), b0);
  EXPECT_EQ(body->removeParam(a1, true), Quorl::eOk);
  EXPECT_EQ(body->removeParam(b0, true), Quorl::eOk);
  EXPECT_EQ(readers(source), 0);
  ZnDbObjectId id;
  int index = 0;
  EXPECT_EQ(body->addParam(L"X", ZnDbCircle::desc(), id, index), Quorl::eInvalidInput);
}

TEST_F(ParamTest, an_emptied_edge_leaves_the_parameter_and_can_be_set_again) {
  const ZnDbObjectId first = addCircle(1.0), second = addCircle(2.0);
  for (const bool release : {true, false}) {
    const ZnDbObjectId id = addEdge(L"E", first);
    EXPECT_EQ(edgeOf(id), first);
    empty(id, release);
    EXPECT_TRUE(edgeOf(id).isNull());
    EXPECT_EQ(readers(first), 0);
    empty(id, release);
    setEdge(id, second);
    EXPECT_EQ(edgeOf(id), second);
    EXPECT_EQ(readers(second), 1);
    setEdge(id, first);
    EXPECT_EQ(readers(second), 0);
    const ZnDbHolder<ZnDbAssocActionBody> body(bodyId);
    EXPECT_FALSE(body->hasAnyErasedOrBrokenDependencies());
    body.object()->action()->removeParam(id, true);
  }
}

TEST_F(ParamTest, an_erased_parameter_takes_its_dependency_along_and_brings_it_back) {
  const ZnDbObjectId source = addCircle(1.0);
  const ZnDbObjectId id = addEdge(L"E", source);
  erase(id);
  EXPECT_EQ(readers(source), 0);
  EXPECT_TRUE(ZnDbHolder<ZnDbAssocActionBody>(bodyId)->paramAtName(L"E").isNull());
  erase(id, false);
  EXPECT_EQ(readers(source), 1);
  EXPECT_EQ(ZnDbHolder<ZnDbAssocActionBody>(bodyId)->paramAtName(L"E"), id);
  EXPECT_EQ(edgeOf(id), source);

  // Rewritten while erased, as an explode does.
  const ZnDbObjectId other = addCircle(2.0);
  erase(id);
  setEdge(id, other);
  erase(id, false);
  EXPECT_EQ(edgeOf(id), other);
  EXPECT_EQ(readers(source), 0);
}

TEST_F(ParamTest, vertices_by_reference_and_fixed) {
  const ZnDbObjectId line = addLine({1, 0, 0}, {4, 0, 0});
  const ZnDbObjectId id = addParam(L"V", ZnDbAssocVertexActionParam::desc());
  ZnDbHolder<ZnDbAssocVertexActionParam> param;
  ASSERT_EQ(param.openForWrite(id), Quorl::eOk);
  ZnArray<ZnDbVertexRef> vertices;
  ZnArray<ZnDbSubentId> ends;
  const ZnDbHolder<ZnDbEntity> entity(line);
  const auto* extension = ZnDbAssocPersSubentIdPE::cast(entity->queryX(ZnDbAssocPersSubentIdPE::desc()));
  ASSERT_TRUE(extension && extension->isKindOf(ZnDbAssocPersSubentIdPE2::desc()));
  ASSERT_EQ(extension->getAllSubentities(entity.object(), ZnDb::kVertexSubentType, ends), Quorl::eOk);
  ASSERT_EQ(ends.length(), 2);

  param->vertexRefs(vertices);
  EXPECT_TRUE(vertices.isEmpty());
  ASSERT_EQ(param->setVertexRef(ZnDbVertexRef(ZnDbFullSubentPath(line, ends[1]))), Quorl::eOk);
  param->vertexRefs(vertices);
  ASSERT_EQ(vertices.length(), 1);
  ZnGePoint3d point;
  EXPECT_EQ(vertices[0].evaluatePoint(point), Quorl::eOk);
  EXPECT_EQ(point.x, 4.0);
  EXPECT_EQ(readers(line), 1);

  ASSERT_EQ(param->setVertexRef(ZnDbVertexRef(ZnGePoint3d(7, 8, 9))), Quorl::eOk);
  param->vertexRefs(vertices);
  ASSERT_EQ(vertices.length(), 1);
  EXPECT_EQ(vertices[0].evaluatePoint(point), Quorl::eOk);
  EXPECT_EQ(point.z, 9.0);
  EXPECT_EQ(readers(line), 0);
  EXPECT_EQ(param->emptyVertex(true), Quorl::eOk);
  param->vertexRefs(vertices);
  EXPECT_TRUE(vertices.isEmpty());
}

TEST_F(ParamTest, an_entitys_own_sub_entities_are_their_own_source) {
  const ZnDbObjectId circle = addCircle(3.0);
  const ZnDbHolder<ZnDbEntity> entity(circle);
  const auto* extension = ZnDbAssocPersSubentIdPE2::cast(entity->queryX(ZnDbAssocPersSubentIdPE2::desc()));
  ASSERT_TRUE(extension);
  ZnArray<ZnDbSubentId> edges;
  ASSERT_EQ(extension->getAllSubentities(entity.object(), ZnDb::kEdgeSubentType, edges), Quorl::eOk);
  ASSERT_EQ(edges.length(), 1);
  ZnGeCurve3d* curve = nullptr;
  ASSERT_EQ(extension->getSubentGeometry(entity.object(), edges[0], curve), Quorl::eOk);
  EXPECT_EQ(curve->type(), ZnGe::kCircularArc3d);
  delete curve;
  EXPECT_EQ(extension->getSubentGeometry(entity.object(), ZnDbSubentId(ZnDb::kEdgeSubentType, 5), curve),
            Quorl::eKeyNotFound);
  EXPECT_EQ(curve, nullptr);
  ZnDbCompoundObjectId source;
  EXPECT_EQ(extension->getSourceOfSubentity(entity.object(), edges[0], ZnDbCompoundObjectId(circle), source),
            Quorl::eOk);
  EXPECT_TRUE(source == ZnDbCompoundObjectId(circle));
  EXPECT_EQ(extension->getAllSubentities(entity.object(), ZnDb::kFaceSubentType, edges), Quorl::eNothingToDo);
}

namespace {

// Sends every dependency on a circle to another circle, or refuses it.
class Redirection : public ZnDbAssocDependencyPE {
public:
  ZnDbObjectId to;
  bool allowed = true;
  bool allowsDirectDependency() const override { return allowed; }
  Quorl::ErrorStatus redirectToAnotherObject(const ZnDbObject* object, const ZnDbCompoundObjectId& wanted,
                                             ZnDbAssocDependency* dependency,
                                             ZnDbCompoundObjectId& redirected) const override {
    EXPECT_EQ(object->objectId(), wanted.leafId());
    EXPECT_TRUE(dependency->owningAction());
    if (to.isNull())
      return ZnDbAssocDependencyPE::redirectToAnotherObject(object, wanted, dependency, redirected);
    redirected = ZnDbCompoundObjectId(to);
    return Quorl::eOk;
  }
};

} // namespace

TEST_F(ParamTest, a_dependency_goes_where_the_object_sends_it) {
  const ZnDbObjectId piece = addCircle(1.0), whole = addCircle(2.0);
  const ZnDbObjectId id = addParam(L"E", ZnDbAssocEdgeActionParam::desc());
  Redirection redirection;
  ZnDbCircle::desc()->addX(ZnDbAssocDependencyPE::desc(), &redirection);
  setEdge(id, piece);
  EXPECT_EQ(edgeOf(id), piece);
  empty(id, true);
  redirection.to = whole;
  setEdge(id, piece);
  EXPECT_EQ(edgeOf(id), whole);
  empty(id, true);
  redirection.allowed = false;
  {
    ZnDbHolder<ZnDbAssocEdgeActionParam> param;
    ASSERT_EQ(param.openForWrite(id), Quorl::eOk);
    EXPECT_EQ(param->setEdgeRef(ZnDbEdgeRef(ZnDbFullSubentPath(piece, ZnDb::kEdgeSubentType, 0))),
              Quorl::eInvalidInput);
  }
  ZnDbCircle::desc()->delX(ZnDbAssocDependencyPE::desc());
  EXPECT_TRUE(edgeOf(id).isNull());
}

TEST_F(ParamTest, dependents_are_given_once_in_order_of_attachment) {
  const ZnDbObjectId source = addCircle(1.0);
  std::vector<ZnDbObjectId> bodies;
  for (int i = 0; i < 4; ++i) bodies.push_back(addSum({source, source}, addCircle(1.0)));
  addDependency(bodies[2], ZnDbCompoundObjectId(source), false, true);
  ZnDbHolder<ZnDbObject> object(source);
  struct Case {
    bool read, write;
    std::vector<size_t> expected;
  };
  for (const Case& c : {Case{true, false, {0, 1, 2, 3}}, Case{false, true, {2}},
                        Case{true, true, {0, 1, 2, 3}}, Case{false, false, {}}}) {
    ZnArray<ZnDbObjectId> actions;
    EXPECT_EQ(ZnDbAssocAction::getActionsDependentOnObject(object.object(), c.read, c.write, actions),
              Quorl::eOk);
    ASSERT_EQ(actions.length(), static_cast<int>(c.expected.size()));
    for (int i = 0; i < actions.length(); ++i)
      EXPECT_EQ(actions[i], ZnDbAssocActionBody::parentAction(bodies[c.expected[static_cast<size_t>(i)]]));
  }
  erase(ZnDbAssocActionBody::parentAction(bodies[1]));
  ZnArray<ZnDbObjectId> actions;
  ZnDbAssocAction::getActionsDependentOnObject(source, true, true, actions);
  EXPECT_EQ(actions.length(), 3);
}
