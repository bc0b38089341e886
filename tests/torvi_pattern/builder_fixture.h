// Holes in rings and rows, in model space or in a block that a reference shows, and builders over them.
#pragma once

#include <cmath>
#include <functional>
#include <set>
#include <vector>

#include "support/drawing_fixture.h"
#include "torvi/pattern/builder.h"
#include "torvi/pattern/object_wrapper.h"

class PatternBuilderTest : public DrawingTest {
protected:
  struct Hole {
    double x = 0.0, y = 0.0, radius = 1.0;
    double span = 0.0; // radians, from 0 on; 0 for a closed circle
  };
  using Holes = std::vector<Hole>;

  static ZnGePoint3d at(double radius, double degrees) {
    const double angle = degrees * ZnGe::kPi / 180.0;
    return {radius * std::cos(angle), radius * std::sin(angle), 0.0};
  }
  // The first of so many that would close a ring.
  static Holes ring(int count, int ofAll, double ringRadius = 10.0, double radius = 1.0) {
    Holes holes;
    for (int i = 0; i < count; ++i) {
      const ZnGePoint3d center = at(ringRadius, 360.0 * i / ofAll);
      holes.push_back({center.x, center.y, radius});
    }
    return holes;
  }
  static Holes row(int count, double y = 0.0) {
    Holes holes;
    for (int i = 0; i < count; ++i) holes.push_back({5.0 * i, y});
    return holes;
  }

  using DrawingTest::add;
  ZnDbObjectId add(const Hole& hole, ZnDbObjectId space = {}) {
    const ZnGePoint3d center(hole.x, hole.y, 0.0);
    if (hole.span == 0.0) return add(new ZnDbCircle(center, ZnGeVector3d::kZAxis, hole.radius), space);
    return add(new ZnDbArc(center, hole.radius, 0.0, hole.span), space);
  }
  ZnArray<ZnDbEdgeRef> edgesOf(const Holes& holes) {
    ZnArray<ZnDbEdgeRef> edges;
    for (const Hole& hole : holes) edges.append(edgeOf(add(hole)));
    return edges;
  }
  static ZnDbEdgeRef edgeAlong(const ZnArray<ZnDbObjectId>& path) {
    return ZnDbEdgeRef(ZnDbFullSubentPath(path, ZnDbSubentId(ZnDb::kEdgeSubentType, 0)));
  }
  // The same holes in a block of their own, seen through a reference; the result is in the holes' order.
  ZnArray<ZnDbEdgeRef> nestedEdges(const Holes& holes, const ZnGeMatrix3d& place = ZnGeMatrix3d::kIdentity) {
    ZnDbHolder<ZnDbBlockTableRecord> record(new ZnDbBlockTableRecord);
    record->setName(ZnString(L"part") + handleText(db_->handseed()));
    ZnDbHolder<ZnDbBlockTable> table;
    EXPECT_EQ(table.openForWrite(db_->blockTableId()), Quorl::eOk);
    EXPECT_EQ(table->add(block_, record.object()), Quorl::eOk);
    record.close();
    auto* reference = new ZnDbBlockReference(ZnGePoint3d::kOrigin, block_);
    reference->setBlockTransform(place);
    reference_ = add(reference);
    ZnArray<ZnDbEdgeRef> edges;
    for (const Hole& hole : holes) edges.append(edgeAlong({reference_, add(hole, block_)}));
    return edges;
  }

  static void setAuto(int value) {
    ZnString error;
    const resbuf buffer = resbuf::ofShort(static_cast<std::int16_t>(value));
    EXPECT_EQ(ZnRxVariablesDictionary::get()->set(L"CENTERMARKPATTERNAUTO", buffer, error), Quorl::eOk);
  }
  void TearDown() override {
    setAuto(0);
    setHostDocumentKind(false);
    DrawingTest::TearDown();
  }

  ZnDbObjectId create(const ZnCenterMarkPatternBuilder& builder) {
    ZnDbObjectId id;
    EXPECT_EQ(builder.createTorvi(id), Quorl::eOk);
    EXPECT_EQ(statusOf(id), kIsUpToDateAssocStatus);
    return id;
  }
  static ZnDbAssocStatus statusOf(ZnDbObjectId id) {
    return ZnDbHolder<ZnDbTorviActionBody>(bodyOf(id))->status();
  }
  static ZnDbCenterMarkPatternObjectWrapper pattern(ZnDbObjectId id) {
    return ZnDbCenterMarkPatternObjectWrapper(id);
  }
  // The key of the pattern's center line, which names its members in order.
  static std::string centerLine(ZnDbObjectId id) {
    ZnArray<ZnString> keys;
    EXPECT_EQ(pattern(id).getCenterLineDependencyKeys(keys), Quorl::eOk);
    return keys.length() == 1 ? keys.first().utf8() : std::string();
  }

  ZnDbObjectId block_, reference_;
};
