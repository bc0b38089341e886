// Maps of space and of a plane, planes and boxes.
#include "ge_test_support.h"
#include "quorl/ge/bound_block3d.h"
#include "quorl/ge/line3d.h"
#include "quorl/ge/line_seg3d.h"
#include "quorl/ge/matrix2d.h"

using namespace geTest;

namespace {

TEST(Matrix, NamedMapsMoveKnownPoints) {
  struct Case {
    const char* name;
    ZnGeMatrix3d map;
    ZnGePoint3d from, to;
    double det, scale;
    bool isUniform;
  };
  const ZnGePoint3d c(1, 1, 1);
  const ZnGeVector3d z = ZnGeVector3d::kZAxis;
  const Case cases[] = {
      {"identity", ZnGeMatrix3d::kIdentity, {4, 5, 6}, {4, 5, 6}, 1, 1, true},
      {"translation", ZnGeMatrix3d::translation({1, 2, 3}), {4, 5, 6}, {5, 7, 9}, 1, 1, true},
      {"quarter turn", ZnGeMatrix3d::rotation(ZnGe::kHalfPi, z, c), {3, 1, 5}, {1, 3, 5}, 1, 1, true},
      {"turn about nothing", ZnGeMatrix3d::rotation(1.0, {0, 0, 0}, c), {3, 1, 5}, {3, 1, 5}, 1, 1, true},
      {"scaling", ZnGeMatrix3d::scaling(3.0, c), {2, 3, 4}, {4, 7, 10}, 27, 3, true},
      {"uneven", ZnGeMatrix3d::scaling({1, 2, 4}, c), {2, 2, 2}, {2, 3, 5}, 8, 4, false},
      {"mirror one axis", ZnGeMatrix3d::scaling({1, -1, 1}), {2, 3, 4}, {2, -3, 4}, -1, 1, true},
      {"plane mirror", ZnGeMatrix3d::mirroring(ZnGePlane(c, {2, 0, 0})), {4, 5, 6}, {-2, 5, 6}, -1, 1, true},
      {"point mirror", ZnGeMatrix3d::mirroring(c), {4, 5, 6}, {-2, -3, -4}, -1, 1, true},
      {"shear",
       ZnGeMatrix3d({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 1}),
       {1, 1, 1},
       {2, 1, 1},
       1,
       std::sqrt(2.0),
       false}};
  for (const Case& test : cases) {
    EXPECT_TRUE(isNear(test.map * test.from, test.to)) << test.name << test.map * test.from;
    EXPECT_TRUE(isNear(test.map.inverse() * test.to, test.from)) << test.name;
    EXPECT_NEAR(test.map.det(), test.det, kRounding) << test.name;
    EXPECT_NEAR(test.map.scale(), test.scale, kRounding) << test.name;
    EXPECT_EQ(test.map.isUniformlyScaled(), test.isUniform) << test.name;
    EXPECT_EQ(test.map.inverse().isUniformlyScaled(), test.isUniform) << test.name;
  }
}

RC_GTEST_PROP(MatrixProperties, InverseAndComposition, ()) {
  const ZnGeMatrix3d a = anySimilarity(), b = anySimilarity();
  const ZnGePoint3d p = anyPoint();
  const double size = 1e4;
  RC_ASSERT(isNear((a * b) * p, a * (b * p), size));
  RC_ASSERT(isNear(a.inverse() * (a * p), p, size));
  RC_ASSERT(isNear(ZnGeMatrix3d(b).preMultBy(a) * p, a * (b * p), size));
  RC_ASSERT(isNear((a * b).det(), a.det() * b.det(), size));
  RC_ASSERT(a.isUniformlyScaled());
  RC_ASSERT(isNear(std::pow(a.scale(), 3), std::fabs(a.det()), size));
}

RC_GTEST_PROP(MatrixProperties, ElementsRebuildTheMap, ()) {
  const ZnGeMatrix3d a = anySimilarity();
  const ZnGePoint3d p = anyPoint(), q = a * p;
  ZnGeMatrix3d rebuilt;
  for (int row = 0; row < 3; ++row) {
    const double sum = a(row, 0) * p.x + a(row, 1) * p.y + a(row, 2) * p.z + a(row, 3) * a(3, 3);
    RC_ASSERT(isNear(sum, row == 0 ? q.x : (row == 1 ? q.y : q.z), 1e4));
    for (int column = 0; column < 4; ++column) rebuilt.setElement(row, column, a(row, column));
  }
  RC_ASSERT(rebuilt == a);
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
  a.getCoordSystem(origin, x, y, z);
  RC_ASSERT(ZnGeMatrix3d().setCoordSystem(origin, x, y, z) == a);
  RC_ASSERT(isNear(x.length(), a.scale()));
}

TEST(Matrix, AnyTwoAxesMayLean) {
  for (const ZnGeVector3d& lean : {ZnGeVector3d(0, 0.6, 0.8), ZnGeVector3d(0.6, 0, 0.8)}) {
    EXPECT_FALSE(ZnGeMatrix3d({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, lean).isUniformlyScaled()) << lean;
  }
  EXPECT_FALSE(ZnGeMatrix3d({0, 0, 0}, {1, 0, 0}, {0.6, 0.8, 0}, {0, 0, 1}).isUniformlyScaled());
}

TEST(Matrix, SingularIsRelativeToTheAxes) {
  EXPECT_FALSE(ZnGeMatrix3d::scaling(1e-6).isSingular());
  EXPECT_FALSE(ZnGeMatrix3d::scaling({1.0, 1.0, 1e-8}).isSingular());
  const ZnGeMatrix3d flat = ZnGeMatrix3d::scaling({1.0, 1.0, 0.0});
  EXPECT_TRUE(flat.isSingular());
  EXPECT_TRUE(ZnGeMatrix3d({0, 0, 0}, {1, 2, 3}, {2, 4, 6}, {0, 0, 1}).isSingular());
  EXPECT_TRUE(flat.inverse() == ZnGeMatrix3d::kIdentity);
}

RC_GTEST_PROP(MatrixProperties, EntityFrames, ()) {
  const ZnGeVector3d normal = anyVector();
  const ZnGeMatrix3d frame = ZnGeMatrix3d::planeToWorld(normal);
  RC_ASSERT(isNear(frame.det(), 1.0));
  RC_ASSERT(isNear(frame * ZnGeVector3d::kZAxis, normal.normal()));
  RC_ASSERT(isNear(frame * ZnGeVector3d::kXAxis, normal.perpVector()));
  RC_ASSERT(ZnGeMatrix3d::worldToPlane(normal) * frame == ZnGeMatrix3d::kIdentity);
  // The x axis of every frame lies in the world's xy plane unless the normal is close to z.
  const bool isNearZ = std::max(std::fabs(normal.x), std::fabs(normal.y)) < normal.length() / 64.0;
  RC_ASSERT(isNear((isNearZ ? frame(1, 0) : frame(2, 0)), 0.0));
}

// A map of the plane does what the map of space with the same axes does, and is asked the same questions.
RC_GTEST_PROP(FlatMatrixProperties, AsInSpace, ()) {
  const auto number = [] { return *rc::gen::inRange(-300, 300) / 100.0; };
  const auto inSpace = [](const ZnGeMatrix2d& m) {
    return ZnGeMatrix3d({m.origin().x, m.origin().y, 0.0}, {m.xAxis().x, m.xAxis().y, 0.0},
                        {m.yAxis().x, m.yAxis().y, 0.0}, ZnGeVector3d::kZAxis * m.meanScale());
  };
  const ZnGePoint2d p(*coordinate(), *coordinate()), c(*coordinate(), *coordinate());
  const double turn = *angle(), size = 1e4;
  const ZnGeMatrix2d rotation = ZnGeMatrix2d::rotation(turn, c), shift = ZnGeMatrix2d::translation(p - c);
  const ZnGeMatrix2d uniform = ZnGeMatrix2d::scaling({2.0, *rc::gen::element(2.0, -2.0)});
  for (const ZnGeMatrix2d& map :
       {rotation, shift * uniform, uniform * rotation, rotation * ZnGeMatrix2d::scaling({3.0, 0.5}),
        ZnGeMatrix2d(c, {number(), number()}, {number(), number()}), ZnGeMatrix2d::scaling({0.0, 1.0})}) {
    const ZnGeMatrix3d like = inSpace(map);
    const ZnGePoint3d image = like * ZnGePoint3d(p.x, p.y, 0.0);
    RC_ASSERT(isNear(ZnGePoint3d((map * p).x, (map * p).y, 0.0), image, size));
    RC_ASSERT(map.isUniformlyScaled() == like.isUniformlyScaled() || map.isSingular());
    RC_ASSERT(map.isSingular() == like.isSingular());
    if (std::fabs(map.det()) < 0.1) continue;
    RC_ASSERT(isNear(map.det() * map.meanScale(), like.det(), size));
    RC_ASSERT((map.inverse() * (map * p)).distanceTo(p) < size * kRounding);
    RC_ASSERT(((rotation * map) * p).distanceTo(rotation * (map * p)) < size * kRounding);
  }
  RC_ASSERT((rotation * p).distanceTo(c + (p - c).rotateBy(turn)) < size * kRounding);
}

RC_GTEST_PROP(PlaneProperties, CoordinatesAndProjection, ()) {
  const ZnGePlane plane(anyPoint(), anyVector());
  const ZnGePoint3d p = anyPoint();
  const ZnGePoint3d foot = plane.project(p);
  RC_ASSERT(isNear(plane.signedDistanceTo(foot), 0.0));
  RC_ASSERT(isNear(foot.distanceTo(p), std::fabs(plane.signedDistanceTo(p))));
  // Plane coordinates give the projection back, and measure true lengths.
  const ZnGePoint2d flat = p.convert2d(plane);
  RC_ASSERT(isNear(ZnGePoint3d(plane, flat), foot));
  RC_ASSERT(isNear(flat.distanceTo(ZnGePoint2d()), foot.distanceTo(plane.pointOnPlane())));
  const ZnGeVector3d v = anyVector();
  RC_ASSERT(isNear(ZnGeVector3d(plane, v.convert2d(plane)), plane.project(p + v) - foot));

  // A moved plane keeps the coordinates of moved points.
  const ZnGeMatrix3d turn = ZnGeMatrix3d::rotation(*angle(), anyVector(), anyPoint());
  ZnGePlane moved = plane;
  moved.transformBy(turn);
  RC_ASSERT((turn * p).convert2d(moved).distanceTo(flat) < kRounding * 1e3);
}

TEST(Planes, CoplanarEitherWayRound) {
  struct Case {
    const char* name;
    ZnGePlane a, b;
    ZnGeTol tol;
    bool parallel, coplanar, equal;
  };
  const Case cases[] = {
      {"same", {{0, 0, 1}, {0, 0, 1}}, {{5, 7, 1}, {0, 0, 2}}, {}, true, true, true},
      {"turned over", {{0, 0, 1}, {0, 0, 1}}, {{5, 7, 1}, {0, 0, -1}}, {}, true, true, false},
      {"offset", {{0, 0, 1}, {0, 0, 1}}, {{5, 7, 2}, {0, 0, 1}}, {}, true, false, false},
      {"offset in tolerance", {{0, 0, 1}, {0, 0, 1}}, {{5, 7, 1.5}, {0, 0, 1}}, {0.6, 0.1}, true, true, true},
      {"tilted", {{0, 0, 0}, {0, 0, 1}}, {{0, 0, 0}, {0, 1e-9, 1}}, {}, false, false, false},
      {"tilted far off", {{0, 0, 0}, {0, 0, 1}}, {{0, 9, 0}, {0, 0.01, 1}}, {0.05, 0.1}, true, false, false},
      {"without normal", {{1, 2, 0}, {0, 0, 0}}, {}, {}, true, true, true}};
  for (const Case& c : cases) {
    for (const auto& [p, q] : {std::pair(&c.a, &c.b), std::pair(&c.b, &c.a)}) {
      EXPECT_EQ(p->isParallelTo(*q, c.tol), c.parallel) << c.name;
      EXPECT_EQ(p->isCoplanarTo(*q, c.tol), c.coplanar) << c.name;
      EXPECT_EQ(p->isEqualTo(*q, c.tol), c.equal) << c.name;
    }
  }
}

TEST(Planes, AxesAreMadeSquare) {
  ZnGePoint3d origin;
  ZnGeVector3d u, v;
  const ZnGePlane slanted({1, 2, 3}, {0, 2, 0}, {5, 7, 0});
  slanted.getCoordSystem(origin, u, v);
  EXPECT_TRUE(isNear(origin, ZnGePoint3d(1, 2, 3)) && isNear(slanted.normal(), ZnGeVector3d(0, 0, -1)));
  EXPECT_TRUE(isNear(u, ZnGeVector3d(0, 1, 0)) && isNear(v, ZnGeVector3d(1, 0, 0)));
  EXPECT_TRUE(isNear(ZnGePlane({1, 2, 3}, {0, 2, 0}, {0, -7, 0}).normal(), ZnGeVector3d(0, 0, 1)));
}

TEST(Planes, HoldLinesInThem) {
  const ZnGePlane plane({0, 0, 2}, {0, 0, 1});
  EXPECT_TRUE(ZnGeLine3d({3, 3, 2}, ZnGeVector3d(1, 1, 0)).isOn(plane));
  EXPECT_FALSE(ZnGeLine3d({3, 3, 2}, ZnGeVector3d(1, 1, 1e-6)).isOn(plane));
  EXPECT_FALSE(ZnGeLineSeg3d({3, 3, 2}, ZnGePoint3d(3, 3, 2.1)).isOn(plane));
}

RC_GTEST_PROP(BoxProperties, TransformHoldsTheCorners, ()) {
  const ZnGePoint3d a = anyPoint(), b = anyPoint();
  const ZnGeMatrix3d map = anySimilarity();
  const ZnGeBoundBlock3d box(a, b);
  ZnGeBoundBlock3d around;
  for (int corner = 0; corner < 8; ++corner) {
    around.addPoint(map *
                    ZnGePoint3d(corner & 1 ? a.x : b.x, corner & 2 ? a.y : b.y, corner & 4 ? a.z : b.z));
  }
  const ZnGeBoundBlock3d moved = ZnGeBoundBlock3d(box).transformBy(map);
  RC_ASSERT(isNear(moved.min(), around.min(), 1e4) && isNear(moved.max(), around.max(), 1e4));
  const ZnGePoint3d p = anyPoint();
  RC_ASSERT(box.contains(p) == (box.distanceTo(p) == 0.0));
  RC_ASSERT(ZnGeBoundBlock3d(box).addPoint(p).contains(box));
}

TEST(Boxes, EmptyAddsNothing) {
  ZnGeBoundBlock3d empty, box({3, 2, 1}, {1, 2, 3});
  EXPECT_TRUE(ZnGeBoundBlock3d(empty).addBox(empty).isEmpty());
  EXPECT_TRUE(ZnGeBoundBlock3d(empty).transformBy(ZnGeMatrix3d::translation({1, 1, 1})).isEmpty());
  EXPECT_FALSE(empty.contains(ZnGePoint3d()));
  EXPECT_TRUE(isNear(ZnGeBoundBlock3d(box).addBox(empty).min(), ZnGePoint3d(1, 2, 1)));
  EXPECT_TRUE(isNear(empty.addBox(box).max(), ZnGePoint3d(3, 2, 3)));
}

} // namespace
