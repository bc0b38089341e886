// Block references: what they show, are taken apart into, offer to snap and paths, and the links to their
// block.
#include "db/entity_samples.h"
#include "db/sampling_draw.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/entity/arc.h"
#include "quorl/db/entity/edge_ref.h"
#include "quorl/db/entity/ellipse.h"
#include "quorl/db/entity/polyline.h"
#include "quorl/db/entity/viewport.h"
#include "quorl/ge/angles.h"
#include "support/host_drawing.h"

using namespace dbTest;

namespace {

class BlockReference : public HostDrawingTest {};

TEST_F(BlockReference, ReadsPositionRotationAndScaleFromTheTransform) {
  const ZnGeVector3d up = ZnGeVector3d::kZAxis;
  const struct {
    const char* what;
    ZnGeMatrix3d transform;
    double rotation;
    ZnGeVector3d scale;
  } cases[] = {
      {"plain", ZnGeMatrix3d(), 0.0, {1, 1, 1}},
      {"turned", ZnGeMatrix3d::rotation(4.0, up), 4.0, {1, 1, 1}},
      {"scaled and turned",
       ZnGeMatrix3d::rotation(1.0, up) * ZnGeMatrix3d::scaling(ZnGeVector3d(2, 3, 4)),
       1.0,
       {2, 3, 4}},
      {"mirrored",
       ZnGeMatrix3d::rotation(1.0, up) * ZnGeMatrix3d::scaling(ZnGeVector3d(2, -3, 4)),
       1.0,
       {2, -3, 4}},
  };
  for (const auto& c : cases) {
    ZnDbBlockReference reference;
    ASSERT_EQ(reference.setBlockTransform(ZnGeMatrix3d::translation({5, 6, 7}) * c.transform), Quorl::eOk);
    EXPECT_TRUE(reference.position().isEqualTo({5, 6, 7})) << c.what;
    EXPECT_NEAR(reference.rotation(), c.rotation, kRounding) << c.what;
    EXPECT_TRUE(reference.scaleFactors().isEqualTo(c.scale)) << c.what;
    EXPECT_TRUE(reference.normal().isEqualTo(up)) << c.what;
    ASSERT_EQ(reference.setRotation(2.5), Quorl::eOk);
    EXPECT_NEAR(reference.rotation(), 2.5, kRounding) << c.what;
    EXPECT_TRUE(reference.position().isEqualTo({5, 6, 7})) << c.what;
    EXPECT_TRUE(reference.scaleFactors().isEqualTo(c.scale)) << c.what;
  }
}

// Every kind of entity in a block, and that block in another, under every transform: what the reference draws
// is the content's drawing under the transform, it is as large as that, and its pieces draw the same.
TEST_F(BlockReference, DrawsExplodesAndMeasuresItsContent) {
  constexpr double chordHeight = 1e-4;
  size_t compared = 0;
  for (const NamedTransform& transform : transforms()) {
    for (const EntitySample& sample : entitySamples()) {
      if (!ZnDbCurve::cast(sample.make().get())) continue;
      SCOPED_TRACE(sample.name + ", " + transform.name);
      const ZnDbObjectId inner = addBlock(L"*U"), outer = addBlock(L"*U");
      append(inner, sample.make().release());
      addReference(inner, outer, ZnGeMatrix3d::translation({3, 0, 0}));
      const ZnDbHolder<ZnDbBlockReference> reference(addReference(outer, {}, transform.matrix));
      const std::vector<ZnGePoint3d> drawn = drawnPoints(*reference, chordHeight);

      std::vector<ZnGePoint3d> expected = drawnPoints(*sample.make(), chordHeight);
      for (ZnGePoint3d& point : expected) point = transform.matrix * (point + ZnGeVector3d(3, 0, 0));
      // Both sample their own way: points lie within one sampling step of each other.
      ZnGeBoundBlock3d box, sampled;
      ASSERT_EQ(reference->getGeomExtents(box), Quorl::eOk);
      for (const ZnGePoint3d& point : drawn) sampled.addPoint(point);
      EXPECT_LE(box.min().distanceTo(sampled.min()), 3.0 * chordHeight);
      EXPECT_LE(box.max().distanceTo(sampled.max()), 3.0 * chordHeight);
      ZnGeBoundBlock3d image;
      for (const ZnGePoint3d& point : expected) image.addPoint(point);
      EXPECT_LE(box.min().distanceTo(image.min()), 6.0 * chordHeight);
      EXPECT_LE(box.max().distanceTo(image.max()), 6.0 * chordHeight);

      std::vector<std::unique_ptr<ZnDbEntity>> once, twice;
      ASSERT_EQ(reference->explode(once), Quorl::eOk);
      ASSERT_EQ(once.size(), 1u);
      ASSERT_EQ(once[0]->explode(twice), Quorl::eOk);
      ASSERT_FALSE(twice.empty());
      std::vector<std::unique_ptr<ZnGeCurve3d>> pieces;
      for (const auto& piece : twice) dynamic_cast<ZnDbCurve&>(*piece).appendPieces(pieces);
      for (const ZnGePoint3d& point : expected) {
        double nearest = std::numeric_limits<double>::infinity();
        for (const auto& piece : pieces) nearest = std::min(nearest, piece->distanceTo(point));
        ASSERT_LE(nearest, kRounding);
      }
      ++compared;
    }
  }
  EXPECT_GT(compared, transforms().size() * 5);
}

TEST_F(BlockReference, ExplodedPiecesTakeWhatTheBlockLeftToTheReference) {
  const ZnDbObjectId block = addBlock(L"part");
  auto* plain = new ZnDbLine({0, 0, 0}, {1, 0, 0});
  plain->setColorIndex(3);
  auto* loose = new ZnDbLine({0, 0, 0}, {0, 1, 0});
  append(block, plain);
  const ZnDbObjectId looseId = append(block, loose);
  change(looseId, [](ZnDbEntity& line) {
    line.setColorIndex(0);
    EXPECT_EQ(line.setLinetype(L"byblock"), Quorl::eOk);
    line.setLineWeight(ZnDb::kLineWeightByBlock);
  });
  const ZnDbObjectId id = addReference(block);
  change(id, [](ZnDbEntity& entity) {
    entity.setColorIndex(5);
    EXPECT_EQ(entity.setLinetype(L"CONTINUOUS"), Quorl::eOk);
    entity.setLineWeight(ZnDb::kLineWeight070);
  });
  const ZnDbHolder<ZnDbBlockReference> reference(id);
  std::vector<std::unique_ptr<ZnDbEntity>> pieces;
  ASSERT_EQ(reference->explode(pieces), Quorl::eOk);
  ASSERT_EQ(pieces.size(), 2u);
  EXPECT_EQ(pieces[0]->colorIndex(), 3);
  EXPECT_EQ(pieces[0]->linetypeId(), db.byLayerLinetype());
  EXPECT_EQ(pieces[1]->colorIndex(), 5);
  EXPECT_EQ(pieces[1]->linetypeId(), db.continuousLinetype());
  EXPECT_EQ(pieces[1]->lineWeight(), ZnDb::kLineWeight070);
}

TEST_F(BlockReference, HiddenLayersAndErasedEntitiesStayAway) {
  const ZnDbObjectId block = addBlock(L"part");
  const ZnDbObjectId layer = addRecord<ZnDbLayerTableRecord>(db.layerTableId(), L"other");
  const ZnDbObjectId first = append(block, new ZnDbLine({0, 0, 0}, {1, 0, 0}));
  const ZnDbObjectId second = append(block, new ZnDbLine({0, 0, 0}, {0, 7, 0}));
  change(second, [](ZnDbEntity& line) { EXPECT_EQ(line.setLayer(L"OTHER"), Quorl::eOk); });
  const ZnDbHolder<ZnDbBlockReference> reference(addReference(block));
  SamplingDraw draw(0.1);
  EXPECT_TRUE(reference->worldDraw(draw));
  EXPECT_EQ(draw.calls.size(), 2u);
  draw.calls.clear();
  draw.hiddenLayer = layer;
  EXPECT_TRUE(reference->worldDraw(draw));
  EXPECT_EQ(draw.calls.size(), 1u);
  erase(first);
  EXPECT_FALSE(reference->worldDraw(draw)) << "nothing is left to draw";
}

class EdgeRefs : public HostDrawingTest {
protected:
  ZnDbObjectId inner = addBlock(L"inner"), outer = addBlock(L"outer");
  ZnDbObjectId circle = append(inner, new ZnDbCircle({1, 0, 0}, ZnGeVector3d::kZAxis, 2.0));
  ZnDbObjectId line = append(inner, new ZnDbLine({0, 0, 0}, {4, 0, 0}));
  ZnDbObjectId nested = addReference(inner, outer, ZnGeMatrix3d::translation({10, 0, 0}));
  ZnGeMatrix3d stretch = ZnGeMatrix3d::scaling(ZnGeVector3d(3, 1, 1));
  ZnDbObjectId top = addReference(outer, {}, stretch);
  static ZnDbSubentId edge() { return ZnDbSubentId(ZnDb::kEdgeSubentType, 0); }
};

TEST_F(EdgeRefs, EvaluateThroughNestedReferences) {
  const ZnDbFullSubentPath path(ZnArray<ZnDbObjectId>{top, nested, line}, edge());
  const ZnDbEdgeRef ref(path);
  EXPECT_EQ(ref.entity().topId(), top);
  EXPECT_EQ(ref.entity().leafId(), line);
  std::unique_ptr<ZnGeCurve3d> curve;
  ASSERT_EQ(ref.evaluateCurve(curve), Quorl::eOk);
  EXPECT_TRUE(curve->evalPoint(0.0).isEqualTo({30, 0, 0}));
  EXPECT_TRUE(curve->evalPoint(1.0).isEqualTo({42, 0, 0}));
  const std::unique_ptr<ZnDbEntity> shown(ref.createEntity());
  ASSERT_NE(ZnDbLine::cast(shown.get()), nullptr);
  EXPECT_TRUE(dynamic_cast<ZnDbLine&>(*shown).startPoint().isEqualTo({30, 0, 0}));
  EXPECT_EQ(shown->layerId(), db.layerZero());

  const ZnDbVertexRef vertex(ref.entity(), ZnDbSubentId(ZnDb::kVertexSubentType, 1));
  ZnGePoint3d point;
  ASSERT_EQ(vertex.evaluatePoint(point), Quorl::eOk);
  EXPECT_TRUE(point.isEqualTo({42, 0, 0}));

  const ZnDbEdgeRef round(ZnDbFullSubentPath(ZnArray<ZnDbObjectId>{top, nested, circle}, edge()));
  const std::unique_ptr<ZnDbEntity> stretched(round.createEntity());
  ASSERT_NE(ZnDbEllipse::cast(stretched.get()), nullptr) << "a stretched circle";
  EXPECT_TRUE(dynamic_cast<ZnDbEllipse&>(*stretched).center().isEqualTo({33, 0, 0}));
  const ZnDbEdgeRef unstretched(ZnDbFullSubentPath(ZnArray<ZnDbObjectId>{nested, circle}, edge()));
  const std::unique_ptr<ZnDbEntity> plain(unstretched.createEntity());
  ASSERT_NE(ZnDbCircle::cast(plain.get()), nullptr);
}

TEST_F(EdgeRefs, TellWhenTheEdgeIsGone) {
  std::unique_ptr<ZnGeCurve3d> curve;
  ZnGePoint3d point;
  EXPECT_EQ(ZnDbEdgeRef().evaluateCurve(curve), Quorl::eKeyNotFound);
  EXPECT_EQ(ZnDbEdgeRef().createEntity(), nullptr);
  EXPECT_EQ(ZnDbVertexRef().evaluatePoint(point), Quorl::eKeyNotFound);
  ASSERT_EQ(ZnDbVertexRef(ZnGePoint3d(1, 2, 3)).evaluatePoint(point), Quorl::eOk);
  EXPECT_TRUE(point.isEqualTo({1, 2, 3}));
  const ZnDbEdgeRef missing(ZnDbFullSubentPath(line, ZnDb::kEdgeSubentType, 7));
  EXPECT_EQ(missing.evaluateCurve(curve), Quorl::eKeyNotFound);
  const ZnDbEdgeRef ref(ZnDbFullSubentPath(line, edge()));
  const ZnDbEdgeRef copy = ref;
  EXPECT_TRUE(copy == ref);
  ASSERT_EQ(ref.evaluateCurve(curve), Quorl::eOk);
  const ZnDbEdgeRef holding(ref.entity(), edge(), ZnDbSubentId(), curve.get());
  erase(line);
  EXPECT_EQ(ref.evaluateCurve(curve), Quorl::eWasErased);
  EXPECT_EQ(curve, nullptr);
  EXPECT_EQ(ZnDbEdgeRef(holding).evaluateCurve(curve), Quorl::eOk) << "a held curve outlives its entity";
}

TEST_F(EdgeRefs, CompoundIdsKeepTheirPath) {
  ZnDbCompoundObjectId id;
  ZnArray<ZnDbObjectId> ids;
  EXPECT_EQ(id.getPath(ids), Quorl::eInvalidInput);
  EXPECT_EQ(id.setFullPath(ZnArray<ZnDbObjectId>()), Quorl::eInvalidInput);
  EXPECT_EQ(id.setFullPath(ZnArray<ZnDbObjectId>{top, ZnDbObjectId(), line}), Quorl::eNullObjectId);
  EXPECT_TRUE(id.isEmpty());
  ASSERT_EQ(id.set(line, ZnArray<ZnDbObjectId>{top, nested}), Quorl::eOk);
  ASSERT_EQ(id.getFullPath(ids), Quorl::eOk);
  EXPECT_EQ(ids, (ZnArray<ZnDbObjectId>{top, nested, line}));
  EXPECT_EQ(id, ZnDbCompoundObjectId(ZnDbFullSubentPath(ids, edge())));

  ZnGeMatrix3d transform;
  ASSERT_EQ(id.getTransform(transform), Quorl::eOk);
  EXPECT_TRUE(transform.isEqualTo(stretch * ZnGeMatrix3d::translation({10, 0, 0})));
  // A viewport in front counts for nothing, anything but a reference further on is an error.
  const ZnDbObjectId window = append(db.paperSpaceId(), new ZnDbViewport);
  ASSERT_EQ(id.set(line, ZnArray<ZnDbObjectId>{window, nested}), Quorl::eOk);
  ASSERT_EQ(id.getTransform(transform), Quorl::eOk);
  EXPECT_TRUE(transform.isEqualTo(ZnGeMatrix3d::translation({10, 0, 0})));
  ASSERT_EQ(id.set(line, ZnArray<ZnDbObjectId>{nested, window}), Quorl::eOk);
  EXPECT_EQ(id.getTransform(transform), Quorl::eWrongObjectClass);

  ZnDbIdMapping mapping(ZnDb::kCopyContext, &db, &db);
  mapping.assign(ZnDbIdPair(line, circle, true));
  mapping.assign(ZnDbIdPair(nested, top, false));
  ASSERT_EQ(id.set(line, ZnArray<ZnDbObjectId>{nested}), Quorl::eOk);
  ASSERT_EQ(id.remap(mapping), Quorl::eOk);
  EXPECT_EQ(id.leafId(), circle);
  EXPECT_EQ(id.topId(), nested) << "not cloned";
}

} // namespace
