// Transforms, extents, planes and explosion of every kind of entity, against dense samples of what it draws.
#include <gtest/gtest.h>

#include <cmath>

#include "db/entity_samples.h"
#include "quorl/db/entity/curve.h"
#include "quorl/db/entity/text.h"

using namespace dbTest;

namespace {

struct Case {
  EntitySample sample;
  NamedTransform transform;
};
std::ostream& operator<<(std::ostream& out, const Case& c) {
  return out << c.sample.name << ", " << c.transform.name;
}

std::vector<Case> cases() {
  std::vector<Case> all;
  for (const EntitySample& sample : entitySamples())
    for (const NamedTransform& transform : transforms()) all.push_back({sample, transform});
  return all;
}

bool isExpectedToRefuse(const Case& c) {
  return (c.transform.stretches && c.sample.refusesStretch) ||
         ((c.transform.turns || c.transform.stretches) && c.sample.refusesTurn);
}

class EntityShape : public testing::TestWithParam<Case> {
protected:
  std::unique_ptr<ZnDbEntity> entity = GetParam().sample.make();
  const ZnGeMatrix3d& matrix = GetParam().transform.matrix;
};

using Pieces = std::vector<std::unique_ptr<ZnGeCurve3d>>;

Pieces piecesOf(const ZnDbEntity& entity) {
  Pieces pieces;
  if (const ZnDbCurve* curve = ZnDbCurve::cast(&entity)) curve->appendPieces(pieces);
  return pieces;
}

constexpr double kShares[] = {0.0, 0.1, 0.35, 0.5, 0.77, 0.9, 1.0};

ZnGePoint3d at(const ZnGeCurve3d& curve, double share) {
  const ZnGeInterval range = curve.interval();
  return curve.evalPoint(range.lowerBound() + share * range.length());
}

// Curves: each point of each piece lands on the image's piece, ends on ends, so that order and sense stay.
TEST_P(EntityShape, TransformMovesEveryPoint) {
  const Pieces before = piecesOf(*entity);
  const std::string fields = fieldsOf(*entity);
  const Quorl::ErrorStatus status = entity->transformBy(matrix);
  if (isExpectedToRefuse(GetParam())) {
    EXPECT_EQ(status, Quorl::eNonUniformScale);
    EXPECT_EQ(fieldsOf(*entity), fields);
    return;
  }
  ASSERT_EQ(status, Quorl::eOk);
  const Pieces after = piecesOf(*entity);
  ASSERT_EQ(after.size(), before.size());
  for (size_t i = 0; i < before.size(); ++i) {
    for (const double share : kShares) {
      const ZnGePoint3d expected = matrix * at(*before[i], share);
      EXPECT_LE(after[i]->distanceTo(expected), kRounding) << "piece " << i << " at " << share;
    }
    if (before[i]->isClosed()) continue;
    EXPECT_LE(at(*after[i], 0.0).distanceTo(matrix * at(*before[i], 0.0)), kRounding);
    EXPECT_LE(at(*after[i], 1.0).distanceTo(matrix * at(*before[i], 1.0)), kRounding);
  }
}

// There and back again is where it was: whatever is drawn, text and dimensions included.
TEST_P(EntityShape, InverseTransformRestoresTheDrawing) {
  const std::vector<ZnGePoint3d> before = drawnPoints(*entity, 0.01);
  if (entity->transformBy(matrix) != Quorl::eOk || GetParam().transform.stretches) return;
  ASSERT_EQ(entity->transformBy(matrix.inverse()), Quorl::eOk);
  const std::vector<ZnGePoint3d> after = drawnPoints(*entity, 0.01);
  ASSERT_EQ(after.size(), before.size());
  EXPECT_LE(farthest(before, after), kRounding);
}

TEST_P(EntityShape, ExtentsAreThoseOfDenseSamples) {
  if (entity->transformBy(matrix) != Quorl::eOk) return;
  constexpr double chordHeight = 1e-5;
  const std::vector<ZnGePoint3d> points = drawnPoints(*entity, chordHeight);
  ZnGeBoundBlock3d box;
  if (points.empty()) {
    EXPECT_NE(entity->getGeomExtents(box), Quorl::eOk);
    return;
  }
  ASSERT_EQ(entity->getGeomExtents(box), Quorl::eOk);
  ZnGeBoundBlock3d sampled;
  for (const ZnGePoint3d& point : points) sampled.addPoint(point);
  EXPECT_LE(box.min().distanceTo(sampled.min()), 2.0 * chordHeight);
  EXPECT_LE(box.max().distanceTo(sampled.max()), 2.0 * chordHeight);
  EXPECT_TRUE(box.contains(sampled, ZnGeTol(kRounding, kRounding)));
}

TEST_P(EntityShape, PlaneHoldsTheCurve) {
  if (entity->transformBy(matrix) != Quorl::eOk) return;
  ZnGePlane plane;
  ASSERT_EQ(entity->getPlane(plane), GetParam().sample.isFlat ? Quorl::eOk : Quorl::eNothingToDo);
  if (!GetParam().sample.isFlat) return;
  for (const auto& piece : piecesOf(*entity))
    for (const double share : kShares)
      EXPECT_LE(std::abs(plane.signedDistanceTo(at(*piece, share))), kRounding);
}

TEST_P(EntityShape, ExplodedPiecesDrawTheSame) {
  if (entity->transformBy(matrix) != Quorl::eOk) return;
  std::vector<std::unique_ptr<ZnDbEntity>> pieces;
  if (entity->explode(pieces) != Quorl::eOk) {
    EXPECT_TRUE(pieces.empty());
    return;
  }
  ASSERT_FALSE(pieces.empty());
  const std::vector<ZnGePoint3d> whole = drawnPoints(*entity, 0.01);
  std::vector<ZnGePoint3d> parts;
  for (const auto& piece : pieces) {
    EXPECT_EQ(piece->color(), entity->color());
    const std::vector<ZnGePoint3d> points = drawnPoints(*piece, 0.01);
    parts.insert(parts.end(), points.begin(), points.end());
  }
  EXPECT_LE(farthest(whole, parts), kRounding);
  EXPECT_LE(farthest(parts, whole), kRounding);
}

TEST_P(EntityShape, SubEntitiesShowWholeEntity) {
  if (!ZnDbCurve::cast(entity.get()) || entity->transformBy(matrix) != Quorl::eOk) return;
  ZnArray<ZnDbSubentId> edges, vertices;
  entity->getSubentIds(ZnDb::kEdgeSubentType, edges);
  entity->getSubentIds(ZnDb::kVertexSubentType, vertices);
  const Pieces pieces = piecesOf(*entity);
  ASSERT_EQ(edges.length(), static_cast<int>(pieces.size()));
  for (int i = 0; i < edges.length(); ++i) {
    const std::unique_ptr<ZnGeCurve3d> edge = entity->subentCurve(edges[i]);
    const std::unique_ptr<ZnDbEntity> shown = entity->subentEntity(edges[i]);
    ASSERT_TRUE(edge && shown);
    EXPECT_EQ(shown->lineWeight(), entity->lineWeight());
    const Pieces shownPieces = piecesOf(*shown);
    ASSERT_EQ(shownPieces.size(), 1u);
    for (const double share : kShares) {
      EXPECT_LE(pieces[static_cast<size_t>(i)]->distanceTo(at(*edge, share)), kRounding);
      EXPECT_LE(shownPieces[0]->distanceTo(at(*edge, share)), kRounding);
    }
  }
  for (const ZnDbSubentId& vertex : vertices) {
    ZnGePoint3d point;
    ASSERT_TRUE(entity->subentPoint(vertex, point));
    double nearest = std::numeric_limits<double>::infinity();
    for (const auto& piece : pieces)
      for (const double share : {0.0, 1.0}) nearest = std::min(nearest, at(*piece, share).distanceTo(point));
    EXPECT_LE(nearest, kRounding);
  }
  EXPECT_EQ(entity->subentCurve(ZnDbSubentId(ZnDb::kEdgeSubentType, 1000)), nullptr);
  EXPECT_EQ(entity->subentEntity(ZnDbSubentId(ZnDb::kVertexSubentType, 0)), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Every, EntityShape, testing::ValuesIn(cases()));

TEST(EntityDraw, InvisibleEntitiesDrawNothing) {
  size_t drawn = 0;
  for (const EntitySample& sample : entitySamples()) {
    const std::unique_ptr<ZnDbEntity> entity = sample.make();
    drawn += !drawnPoints(*entity, 0.1).empty();
    entity->setVisibility(ZnDb::kInvisible);
    EXPECT_TRUE(drawnPoints(*entity, 0.1).empty()) << sample.name;
  }
  EXPECT_EQ(drawn, entitySamples().size() - 1) << "all but the reference to no block";
}

// A skew keeps baseline and height of a text: the image's corners lie on the base line of the skewed box.
TEST(TextTransform, SkewKeepsBaselineAndHeight) {
  ZnDbText text(ZnGePoint3d(), L"abc", 2.0);
  const ZnGeMatrix3d skew({}, {1, 0, 0}, {0.5, 1, 0}, {0, 0, 1});
  ASSERT_EQ(text.transformBy(skew), Quorl::eOk);
  EXPECT_DOUBLE_EQ(text.height(), 2.0);
  EXPECT_DOUBLE_EQ(text.widthFactor(), 1.0);
  EXPECT_DOUBLE_EQ(text.rotation(), 0.0);
  ASSERT_EQ(text.transformBy(ZnGeMatrix3d::scaling(ZnGeVector3d(3.0, 0.5, 1.0))), Quorl::eOk);
  EXPECT_DOUBLE_EQ(text.height(), 1.0);
  EXPECT_DOUBLE_EQ(text.widthFactor(), 6.0);
}

} // namespace
