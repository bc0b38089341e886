#include "quorl/assoc/diametric_dim_action_body.h"
#include "quorl/assoc/radial_dim_action_body.h"
#include "quorl/db/entity/diametric_dimension.h"
#include "quorl/db/entity/radial_dimension.h"
#include "torvi/pattern/dependency_extension.h"
#include "torvi_pattern/pattern_fixture.h"

namespace {

class PatternDependency : public PatternTest {
protected:
  ZnDbObjectId make(const Holes& holes) { return addPattern(addHoles(holes)); }
  static ZnDbObjectId output(ZnDbObjectId id, const wchar_t* key) { return Wrapper(id).getOutputEdge(key); }
  // A radial dimension on the edge; the id of its body.
  ZnDbObjectId radialOn(const ZnDbEdgeRef& edge) {
    dimension_ = add(new ZnDbRadialDimension(ZnGePoint3d::kOrigin, ZnGePoint3d(0.0, 7.0, 0.0)));
    ZnDbObjectId body;
    EXPECT_EQ(ZnDbAssocRadialDimActionBody::createAndPostToDatabase(edge, dimension_, body), Quorl::eOk);
    return body;
  }
  static ZnDbObjectId standsOn(ZnDbObjectId dimensionBody) {
    return ZnDbHolder<ZnDbAssocDimActionBody>(dimensionBody)->edge().entity().leafId();
  }

  ZnDbObjectId dimension_;
};

TEST_F(PatternDependency, ARadiusOnAPieceOutlivesThePiece) {
  const ZnDbObjectId id = make(ring(5, 8));
  const ZnDbObjectId whole = output(id, L"CenterLine-0-1-2-3-4");
  const ZnDbObjectId body = radialOn(edgeAlong({id, output(id, L"1-2")}));
  const auto check = [&](const char* after, double radius, const char* members) {
    SCOPED_TRACE(after);
    evaluateChanges();
    EXPECT_EQ(statusOf(id), kIsUpToDateAssocStatus);
    EXPECT_EQ(centerLine(id), members);
    EXPECT_EQ(ZnDbHolder<ZnDbAssocActionBody>(body)->status(), kIsUpToDateAssocStatus);
    EXPECT_TRUE(standsOn(body) == whole && !whole.isErased());
    EXPECT_NEAR(ZnDbHolder<ZnDbRadialDimension>(dimension_)->measurement(), radius, 1e-4);
  };
  check("attaching", 10.0, "CenterLine-0-1-2-3-4");
  ZnArray<ZnDbEdgeRef> edges;
  Wrapper(id).getEdgeRefs(edges);
  erase(edges[1].entity().leafId());
  check("the loss of a member of the piece", 10.0, "CenterLine-0-2-3-4");
  ZnCenterMarkPatternBuilder builder(db_.get());
  ASSERT_EQ(builder.loadTorvi(id), Quorl::eOk);
  builder.addInputEdge(edgeOf(add(ring(6, 8)[5])));
  ASSERT_EQ(builder.modifyTorvi(), Quorl::eOk);
  check("the gain of a member", 10.0, "CenterLine-0-2-3-4-5");
  for (const int i : {0, 2, 3, 4})
    change<ZnDbCircle>(edges[i].entity().leafId(), [](ZnDbCircle& hole) {
      hole.setCenter(ZnGePoint3d::kOrigin + hole.center().asVector() * 1.5);
    });
  check("a wider ring, which one member leaves", 15.0, "CenterLine-0-2-3-4");
}

TEST_F(PatternDependency, WhatIsLedAndWhatStays) {
  const ZnDbObjectId polar = make(ring(3, 8)), linear = make(row(3));
  const ZnDbObjectId arcPiece = output(polar, L"1-2"), wholeArc = output(polar, L"CenterLine-0-1-2");
  const ZnDbObjectId linePiece = output(linear, L"0-1"), wholeLine = output(linear, L"CenterLine-0-1-2");
  const ZnDbObjectId freeArc = addArc({50.0, 0.0, 0.0}, 3.0, 0.0, 2.0);
  const ZnDbObjectId across = add(new ZnDbDiametricDimension(ZnGePoint3d(-1, 0, 0), ZnGePoint3d(1, 0, 0)));
  ZnDbObjectId diametric;
  ASSERT_EQ(ZnDbAssocDiametricDimActionBody::createAndPostToDatabase(edgeOf(freeArc), across, diametric),
            Quorl::eOk);
  const ZnDbObjectId radial = radialOn(edgeOf(freeArc)), mark = bodyOf(addMark(freeArc));
  EXPECT_TRUE(standsOn(radial) == freeArc);
  struct {
    ZnDbObjectId owner; // body of the action that depends; null for none
    ZnDbObjectId center, piece, standsOn;
  } const rows[] = {{radial, polar, arcPiece, wholeArc},        {diametric, polar, arcPiece, wholeArc},
                    {radial, linear, linePiece, linePiece},     {mark, linear, linePiece, wholeLine},
                    {mark, polar, arcPiece, wholeArc},          {mark, {}, freeArc, freeArc},
                    {ZnDbObjectId(), polar, arcPiece, arcPiece}};
  const ZnDbCenterMarkPatternAssocDependencyPE extension;
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    ZnArray<ZnDbObjectId> ids, path{row.center, row.piece};
    if (row.center.isNull()) path.removeFirst();
    ZnDbHolder<ZnDbAssocActionBody> owner(row.owner);
    if (owner.isOpen()) owner->getDependencies(true, true, ids);
    ZnDbHolder<ZnDbAssocDependency> dependency(ids.isEmpty() ? ZnDbObjectId() : ids.first());
    ZnDbHolder<ZnDbEntity> piece(row.piece);
    ZnDbCompoundObjectId given;
    EXPECT_EQ(extension.redirectToAnotherObject(piece.object(), edgeAlong(path).entity(), dependency.object(),
                                                given),
              Quorl::eOk);
    const ZnDbCompoundObjectId none;
    ZnDbCompoundObjectId kept = edgeAlong(path).entity();
    EXPECT_EQ(extension.redirectToAnotherObject(piece.object(), none, dependency.object(), kept), Quorl::eOk);
    EXPECT_TRUE(kept == none) << "a way to nothing leads nowhere else";
    path.last() = row.standsOn;
    EXPECT_TRUE(given == edgeAlong(path).entity());
  }
  // A piece that the whole curve does not reach any more.
  change<ZnDbArc>(wholeArc, [](ZnDbArc& arc) { arc.setEndAngle(1.0); });
  EXPECT_TRUE(standsOn(radialOn(edgeAlong({polar, arcPiece}))) == arcPiece);
}

} // namespace
