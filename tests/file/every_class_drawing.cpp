#include "file/every_class_drawing.h"

#include "quorl/assoc/action_body.h"
#include "quorl/assoc/diametric_dim_action_body.h"
#include "quorl/assoc/dim_assoc.h"
#include "quorl/assoc/edge_action_param.h"
#include "quorl/assoc/radial_dim_action_body.h"
#include "quorl/assoc/vertex_action_param.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/entity/viewport.h"

namespace fileTest {

namespace {

void addAction(ZnDbDatabase& drawing, const ZnRxClass* bodyClass, ZnDbObjectId circle) {
  ZnDbObjectId actionId, bodyId, id;
  ASSERT_EQ(ZnDbAssocActionBody::createActionAndActionBodyAndPostToDatabase(bodyClass, drawing.modelSpaceId(),
                                                                            actionId, bodyId),
            Quorl::eOk);
  ZnDbHolder<ZnDbAssocActionBody> body;
  ASSERT_EQ(body.openForWrite(bodyId), Quorl::eOk);
  ASSERT_EQ(body->addDependency(nullptr, nullptr, true, false, 3, id), Quorl::eOk);
  change<ZnDbAssocDependency>(id, [&](ZnDbAssocDependency& dependency) {
    ASSERT_EQ(dependency.attachToObject(ZnDbCompoundObjectId(circle)), Quorl::eOk);
  });
  int index = 0;
  ASSERT_EQ(body->addParam(L"E", ZnDbAssocEdgeActionParam::desc(), id, index), Quorl::eOk);
  change<ZnDbAssocEdgeActionParam>(id, [&](ZnDbAssocEdgeActionParam& edge) {
    const ZnDbEdgeRef reference(ZnDbFullSubentPath(circle, ZnDb::kEdgeSubentType, 0));
    ASSERT_EQ(edge.setEdgeRef(reference, true, false, 3), Quorl::eOk);
  });
  ASSERT_EQ(body->addParam(L"V", ZnDbAssocVertexActionParam::desc(), id, index), Quorl::eOk);
  change<ZnDbAssocVertexActionParam>(id, [](ZnDbAssocVertexActionParam& vertex) {
    ASSERT_EQ(vertex.setVertexRef(ZnDbVertexRef(ZnGePoint3d(1, 2, 3))), Quorl::eOk);
  });
  ZnArray<ZnString> texts, errors;
  ZnArray<ZnDbEvalVariant> values;
  for (const ZnDbEvalVariant& value :
       {ZnDbEvalVariant(), ZnDbEvalVariant(7), ZnDbEvalVariant(0.1), ZnDbEvalVariant(L"x"),
        ZnDbEvalVariant(circle), ZnDbEvalVariant(ZnGePoint3d(4, 5, 6))}) {
    values.append(value);
    texts.append(values.length() == 2 ? ZnString(L"1+6") : ZnString());
  }
  ASSERT_EQ(body->setValueParamArray(L"array", values, texts, ZnArray<ZnString>(), errors, true), Quorl::eOk);
  ASSERT_EQ(body->setValueParam(L"single", ZnDbEvalVariant(2.5)), Quorl::eOk);
}

} // namespace

std::unique_ptr<ZnDbDatabase> everyClassDrawing() {
  auto drawing = sampleDrawing();
  const ZnDbObjectId circle =
      append(drawing->modelSpaceId(), new ZnDbCircle({1, 2, 0}, ZnGeVector3d::kZAxis, 3));
  for (const ZnRxClass* cls : {ZnDbAssocDiametricDimActionBody::desc(), ZnDbAssocRadialDimActionBody::desc()})
    addAction(*drawing, cls, circle);
  const ZnDbObjectId dimension =
      append(drawing->modelSpaceId(), new ZnDbRadialDimension({0, 0, 0}, {1, 0, 0}));
  ZnDbObjectId id;
  EXPECT_EQ(ZnDbDimAssoc::post(
                dimension, {{0, ZnDbCompoundObjectId(circle), ZnDbSubentId(ZnDb::kEdgeSubentType, 0)}}, id),
            Quorl::eOk);
  change<ZnDbViewport>(append(drawing->paperSpaceId(), new ZnDbViewport), [&](ZnDbViewport& viewport) {
    EXPECT_EQ(viewport.setLayerFrozen(drawing->layerZero(), true), Quorl::eOk);
  });
  return drawing;
}

} // namespace fileTest
