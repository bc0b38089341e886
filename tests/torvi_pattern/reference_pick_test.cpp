// Where a pattern begins when its reference arc was picked.
#include "torvi_pattern/pattern_fixture.h"

namespace {

class ReferencePick : public PatternTest {};

// The same arc from the other side: what was picked is a place, whichever way the arc runs through it.
TEST_F(ReferencePick, AnArcThatFacesTheOtherWayIsPickedAtTheSamePlace) {
  const ZnArray<ZnDbEdgeRef> holes = edgesOf(ring(5, 8));
  std::set<std::string> outcomes;
  for (const double degrees : {-130.0, -60.0, 20.0, 70.0, 110.0}) {
    SCOPED_TRACE(degrees);
    Drawing drawings[2];
    for (const bool flipped : {false, true}) {
      const ZnDbObjectId arc = addArc({}, 10.0, -140 * kDegree, 140 * kDegree);
      if (flipped) transform(arc, ZnGeMatrix3d::rotation(ZnGe::kPi, ZnGeVector3d::kXAxis));
      ZnCenterMarkPatternBuilder builder(db_.get());
      builder.setInputEdges(holes);
      EXPECT_TRUE(builder.isAutoFullPCD());
      builder.setAutoFullPCD(false);
      EXPECT_FALSE(builder.isAutoFullPCD());
      ASSERT_TRUE(builder.setReferenceEdge(edgeOf(arc), at(10.0, degrees)));
      const ZnDbObjectId pattern = create(builder);
      drawings[flipped] = drawing(pattern);
      outcomes.insert(centerLine(pattern));
      ZnDbCenterMarkPatternLayout layout(pattern);
      ZnArray<ZnGeCurve3d*> curves;
      ZnArray<ZnString> keys;
      EXPECT_EQ(layout.compareGeometry(curves, keys), Quorl::eOk);
      ZnDbTorviActionBodyUtils::deleteCurves(curves);
      ASSERT_EQ(layout.centerLineKeys().length(), 1);
      EXPECT_EQ(layout.centerLineKeys().first().utf8(), centerLine(pattern));
      erase(pattern);
    }
    EXPECT_FALSE(drawings[0].empty());
    EXPECT_EQ(drawings[0], drawings[1]);
  }
  EXPECT_GT(outcomes.size(), 1u) << "the pick decides";
}

} // namespace
