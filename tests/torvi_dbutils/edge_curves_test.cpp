#include "support/drawing_fixture.h"

namespace {

class EdgeCurves : public DrawingTest {
protected:
  using Curve = std::unique_ptr<ZnGeCurve3d>;

  static Curve curveOf(const ZnDbEdgeRef& edge, bool fullCircle) {
    return Curve(ZnTorviLyxUtils::evaluatedZnDbEdgeCurve(edge, fullCircle));
  }
  // The same entity in a block that is shown where it was drawn.
  ZnDbEdgeRef edgeInBlock(ZnDbEntity* entity) {
    ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
    record->setName(L"*U");
    ZnDbHolder<ZnDbBlockTable> table;
    EXPECT_EQ(table.openForWrite(db_->blockTableId()), Quorl::eOk);
    ZnDbObjectId block;
    EXPECT_EQ(table->add(block, record.object()), Quorl::eOk);
    record.close();
    table.close();
    ZnArray<ZnDbObjectId> path{add(new ZnDbBlockReference(ZnGePoint3d(), block))};
    path.append(add(entity, block));
    return ZnDbEdgeRef(ZnDbFullSubentPath(path, ZnDbSubentId(ZnDb::kEdgeSubentType, 0)));
  }
};

// What stands in the space itself is read directly, what stands in a block through a stand-in entity. Both
// are one curve, point for point, whichever way the plane looks.
TEST_F(EdgeCurves, TheShortWayGivesWhatTheLongOneGives) {
  const ZnGeVector3d normals[] = {ZnGeVector3d::kZAxis, -ZnGeVector3d::kZAxis, {0.6, 0.0, 0.8}, {1, -2, 3}};
  std::vector<std::unique_ptr<ZnDbCurve>> shapes;
  shapes.emplace_back(new ZnDbLine({1, 2, 3}, {-4, 5, 6}));
  shapes.emplace_back(new ZnDbLine({1, 2, 3}, {1, 2, 3}));
  for (const ZnGeVector3d& normal : normals) {
    shapes.emplace_back(new ZnDbCircle({3, -2, 1}, normal, 5));
    for (const auto& [start, end] : {std::pair{0.3, 2.0}, {5.0, 1.0}, {0.0, 6.2}})
      shapes.emplace_back(new ZnDbArc({3, -2, 1}, normal, 5, start, end));
  }
  for (const std::unique_ptr<ZnDbCurve>& shape : shapes)
    for (const bool full : {false, true}) {
      SCOPED_TRACE(shape->isA()->name().utf8());
      const ZnDbObjectId own = add(static_cast<ZnDbCurve*>(shape->clone()));
      const Curve direct = curveOf(ZnDbEdgeRef(ZnDbFullSubentPath(own, ZnDb::kEdgeSubentType, 0)), full);
      const Curve inBlock = curveOf(edgeInBlock(static_cast<ZnDbCurve*>(shape->clone())), full);
      ASSERT_TRUE(direct && inBlock);
      ASSERT_EQ(direct->type(), inBlock->type());
      const ZnGeInterval a = direct->interval(), b = inBlock->interval();
      for (const double part : {0.0, 0.25, 0.5, 1.0})
        EXPECT_TRUE(near(direct->evalPoint(a.lowerBound() + part * (a.upperBound() - a.lowerBound())),
                         inBlock->evalPoint(b.lowerBound() + part * (b.upperBound() - b.lowerBound()))));
    }
}

} // namespace
