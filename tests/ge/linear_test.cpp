// Lines and segments, in space and in a plane, and the relations between them.
#include <limits>

#include "ge_test_support.h"
#include "quorl/ge/line2d.h"
#include "quorl/ge/line3d.h"
#include "quorl/ge/line_seg3d.h"

using namespace geTest;

namespace {

constexpr double kUnbounded = std::numeric_limits<double>::infinity();

struct Ends {
  ZnGePoint3d from, to;
  bool isSegment;

  std::unique_ptr<ZnGeLinearEnt3d> make(const ZnGeMatrix3d& map) const {
    if (isSegment) return std::make_unique<ZnGeLineSeg3d>(map * from, map * to);
    return std::make_unique<ZnGeLine3d>(map * from, map * to);
  }
};

struct PairCase {
  const char* name;
  Ends a, b;
  ZnGeTol tol;
  bool meets;
  ZnGePoint3d at;
};

const ZnGeTol kTight, kLoose(1e-8, 1e-8);
constexpr double kHair = 0.5e-8; // between the two

Ends seg(const ZnGePoint3d& from, const ZnGePoint3d& to) { return {from, to, true}; }
Ends line(const ZnGePoint3d& from, const ZnGePoint3d& to) { return {from, to, false}; }

const PairCase kCrossing[] = {
    {"segments", seg({-1, 0, 0}, {1, 0, 0}), seg({0, -2, 0}, {0, 2, 0}), kTight, true, {0, 0, 0}},
    {"short of it", seg({1, 0, 0}, {2, 0, 0}), seg({0, 1, 0}, {0, 2, 0}), kTight, true, {0, 0, 0}},
    {"their lines", line({1, 0, 0}, {2, 0, 0}), line({0, 1, 0}, {0, 2, 0}), kTight, true, {0, 0, 0}},
    {"far segment", line({1, 0, 0}, {2, 0, 0}), seg({0, 1, 0}, {0, 2, 0}), kTight, true, {0, 0, 0}},
    {"wedge", seg({3, 1, 2}, {9, 3, 2}), seg({3, -1, 2}, {9, -3, 2}), kTight, true, {0, 0, 2}},
    {"skew segments", seg({1, 0, 0}, {2, 0, 0}), seg({0, 1, 1e-3}, {0, 2, 1e-3}), kTight, false, {}},
    {"corner", seg({1, 0, 0}, {4, 4, 0}), seg({4, 4, 0}, {9, 4, 1}), kTight, true, {4, 4, 0}},
    {"skew", line({0, 0, 0}, {1, 0, 0}), line({0, 0, 1e-3}, {0, 1, 1e-3}), kTight, false, {}},
    {"nearly skew",
     line({0, 0, 0}, {1, 0, 0}),
     line({0, 0, kHair}, {0, 1, kHair}),
     kLoose,
     true,
     {0, 0, kHair / 2}},
    {"same, tight", line({0, 0, 0}, {1, 0, 0}), line({0, 0, kHair}, {0, 1, kHair}), kTight, false, {}},
    {"point on segment", seg({1, 0, 0}, {1, 0, 0}), seg({0, 0, 0}, {4, 0, 0}), kTight, false, {}},
    {"degenerate line", line({1, 0, 0}, {1, 0, 0}), line({0, 0, 0}, {4, 0, 0}), kTight, false, {}},
    {"two points", seg({1, 0, 0}, {1, 0, 0}), seg({1, 0, 0}, {1, 0, 0}), kTight, false, {}}};

struct ParallelCase {
  const char* name;
  Ends a, b;
  ZnGeTol tol;
  bool isColinear;
  double overlap; // length of the common stretch, 0 for none
};

const ParallelCase kParallel[] = {
    {"side by side", seg({0, 0, 0}, {1, 0, 0}), seg({0, 1, 0}, {-5, 1, 0}), kTight, false, 0},
    {"a hair off", seg({0, 0, 0}, {1, 0, 0}), seg({0, kHair, 0}, {2, kHair, 0}), kTight, false, 0},
    {"same, loose", seg({0, 0, 0}, {1, 0, 0}), seg({0, kHair, 0}, {2, kHair, 0}), kLoose, true, 1},
    {"loosely parallel", line({0, 0, 0}, {1, 0, 0}), line({0, 1, 0}, {1, 1 + kHair, 0}), kLoose, false, 0},
    {"long and tilted", seg({0, 0, 0}, {100, 0, 0}), line({0, 0, 0}, {1, kHair, 0}), kLoose, false, 0},
    {"apart", seg({0, 0, 0}, {1, 1, 1}), seg({2, 2, 2}, {3, 3, 3}), kTight, true, 0},
    {"touching", seg({0, 0, 0}, {1, 0, 0}), seg({1, 0, 0}, {3, 0, 0}), kTight, true, 0},
    {"overlapping", seg({0, 0, 0}, {3, 0, 0}), seg({5, 0, 0}, {1, 0, 0}), kTight, true, 2},
    {"inside", seg({0, 0, 0}, {9, 0, 0}), seg({5, 0, 0}, {4, 0, 0}), kTight, true, 1},
    {"on a line", seg({0, 0, 0}, {0, 4, 0}), line({0, 9, 0}, {0, 7, 0}), kTight, true, 4},
    {"same line", line({0, 0, 0}, {0, 4, 0}), line({0, 9, 0}, {0, 7, 0}), kTight, true, kUnbounded}};

// Runs the check on the pair in both orders, with either one reversed, in several places of space.
template<class Case, class Check> void forEachPair(const Case& c, const Check& check) {
  const ZnGeMatrix3d maps[] = {ZnGeMatrix3d(), ZnGeMatrix3d::translation({3, -2, 5}),
                               ZnGeMatrix3d::rotation(ZnGe::kHalfPi, {0, 1, 0}, {1, 1, 1}),
                               ZnGeMatrix3d::mirroring(ZnGePlane({0, 0, 1}, {0, 0, 1}))};
  for (const ZnGeMatrix3d& map : maps) {
    SCOPED_TRACE(c.name);
    const auto a = c.a.make(map), b = c.b.make(map);
    check(map, *a, *b);
    check(map, *b, *a);
    a->reverseParam();
    check(map, *a, *b);
    check(map, *b, *a);
  }
}

const ZnGePoint3d kUntouched(123, 456, 789);

TEST(Linear, CrossingOnesMeetOrNot) {
  for (const PairCase& c : kCrossing) {
    forEachPair(c, [&c](const ZnGeMatrix3d& map, const ZnGeLinearEnt3d& a, const ZnGeLinearEnt3d& b) {
      ZnGePoint3d meeting = kUntouched;
      EXPECT_EQ(a.intersectWith(b, meeting, c.tol), c.meets);
      EXPECT_TRUE(isNear(meeting, c.meets ? map * c.at : kUntouched)) << meeting;
      EXPECT_FALSE(a.isParallelTo(b, c.tol) || a.isColinearTo(b, c.tol));
      ZnGeLinearEnt3d* common = nullptr;
      EXPECT_FALSE(a.overlap(b, common, c.tol));
      EXPECT_EQ(common, nullptr);
    });
  }
}

TEST(Linear, ParallelOnesOverlapOrNot) {
  for (const ParallelCase& c : kParallel) {
    forEachPair(c, [&c](const ZnGeMatrix3d&, const ZnGeLinearEnt3d& a, const ZnGeLinearEnt3d& b) {
      ZnGePoint3d meeting = kUntouched;
      EXPECT_FALSE(a.intersectWith(b, meeting, c.tol));
      EXPECT_TRUE(isNear(meeting, kUntouched));
      EXPECT_TRUE(a.isParallelTo(b, c.tol));
      EXPECT_EQ(a.isColinearTo(b, c.tol), c.isColinear);
      ZnGeLinearEnt3d* common = nullptr;
      EXPECT_EQ(a.overlap(b, common, c.tol), c.overlap > 0.0);
      const std::unique_ptr<ZnGeLinearEnt3d> owned(common);
      ASSERT_EQ(common != nullptr, c.overlap > 0.0);
      if (common == nullptr) return;
      EXPECT_TRUE(common->direction().isCodirectionalTo(a.direction(), kLoose));
      EXPECT_EQ(common->isBounded(), c.overlap < kUnbounded);
      if (!common->isBounded()) return;
      EXPECT_NEAR(common->length(), c.overlap, kRounding);
      for (const double share : {0.0, 0.5, 1.0}) {
        EXPECT_TRUE(a.isOn(pointAtShare(*common, share), kLoose) &&
                    b.isOn(pointAtShare(*common, share), kLoose));
      }
    });
  }
}

RC_GTEST_PROP(LinearProperties, MeetAtTheConstructedPoint, ()) {
  const ZnGePoint3d meeting = anyPoint();
  const ZnGeVector3d d = anyVector(), e = anyVector();
  RC_PRE(d.normal().crossProduct(e.normal()).length() > 0.05);
  // Shares below 0 and above 1 put the meeting point outside of a segment: it is found all the same.
  const auto share = rc::gen::map(rc::gen::inRange(-8, 17), [](int n) { return n / 8.0 + 0.01; });
  const double onD = *share, onE = *share;
  const ZnGeLineSeg3d a(meeting - d * onD, meeting + d * (1.0 - onD));
  const ZnGeLineSeg3d b(meeting - e * onE, meeting + e * (1.0 - onE));
  const bool isInside = onD >= 0.0 && onD <= 1.0 && onE >= 0.0 && onE <= 1.0;
  const ZnGeTol wide(1e-6, 1e-6);
  const ZnGeTol tol(kRounding, kRounding);
  ZnGePoint3d found;
  RC_ASSERT(a.intersectWith(b, found, tol) && isNear(found, meeting, 100.0));
  RC_ASSERT((a.isOn(found, wide) && b.isOn(found, wide)) == isInside);
  ZnGeLine3d lineA, lineB;
  a.getLine(lineA);
  b.getLine(lineB);
  RC_ASSERT(lineA.intersectWith(lineB, found, tol));
  RC_ASSERT(isNear(found, meeting, 100.0));
  RC_ASSERT(isNear(lineA.paramOf(meeting), onD * d.length(), 1e3));
  RC_ASSERT(isNear(lineA.evalPoint(lineA.paramOf(meeting)), meeting, 100.0));
}

TEST(Linear, EndsAreKeptToTheLastBit) {
  const ZnGePoint3d start(0.1, 1e9, -0.3), end(0.7, 1e-9, 1.0 / 3.0);
  const ZnGeLineSeg3d segment(start, end);
  EXPECT_EQ(segment.evalPoint(1.0).y, end.y);
  EXPECT_EQ(segment.evalPoint(0.0).z, start.z);
  ZnGeLineSeg3d turned(segment);
  turned.set(turned.endPoint(), turned.startPoint());
  EXPECT_EQ(turned.startPoint().x, end.x);
  EXPECT_EQ(turned.endPoint().y, start.y);
  const ZnGeLineSeg3d point(start, start);
  EXPECT_EQ(point.startPoint().x, start.x);
  EXPECT_EQ(point.endPoint().y, start.y);
  EXPECT_TRUE(point.isDegenerate());
  EXPECT_TRUE(isNear(point.direction(), ZnGeVector3d(0, 0, 0)));
  EXPECT_EQ(point.paramOf({9, 9, 9}), 0.0);
  // A wide tolerance widens what lies on the segment, not the parameter.
  const ZnGeLineSeg3d along({1, 1, 0}, ZnGePoint3d(5, 1, 0));
  EXPECT_NEAR(along.paramOf({1.05, 1, 0}, ZnGeTol(0.1, 0.1)), 0.0125, kRounding);
  EXPECT_TRUE(along.isOn({0.95, 1, 0}, ZnGeTol(0.1, 0.1)) && !along.isOn({0.95, 1, 0}));
}

RC_GTEST_PROP(FlatLineProperties, RelationsAsInSpace, ()) {
  const ZnGePoint2d p(*coordinate(), *coordinate()), q(*coordinate(), *coordinate());
  const ZnGeVector2d d(*coordinate(), *coordinate()), e(*coordinate(), *coordinate());
  const ZnGeLine2d a(p, d), b(q, q + e);
  const ZnGeLine3d inSpaceA({p.x, p.y, 0}, ZnGeVector3d(d.x, d.y, 0));
  const ZnGeLine3d inSpaceB({q.x, q.y, 0}, ZnGeVector3d(e.x, e.y, 0));
  RC_ASSERT(a.isParallelTo(b) == inSpaceA.isParallelTo(inSpaceB));
  RC_ASSERT(a.isDegenerate() == inSpaceA.isDegenerate());
  ZnGePoint2d flat(1e3, 1e3);
  ZnGePoint3d meeting(1e3, 1e3, 0);
  RC_ASSERT(a.intersectWith(b, flat) == inSpaceA.intersectWith(inSpaceB, meeting));
  RC_ASSERT(isNear(ZnGePoint3d(flat.x, flat.y, 0), meeting, 1e3 + meeting.asVector().length() * 1e3));
  const ZnGePoint3d off(q.x, q.y, 0);
  RC_ASSERT(isNear(a.paramOf(q), inSpaceA.paramOf(off), 1e3));
  RC_ASSERT(isNear(a.closestPointTo(q).distanceTo(q), inSpaceA.distanceTo(off), 1e3));
  double param = -1.0;
  RC_ASSERT(a.isOn(q, param) == inSpaceA.isOn(off));
  RC_ASSERT(b.isOn(q, param) && param == 0.0);
}

TEST(Linear, EqualityMindsTheSense) {
  const ZnGeLine3d line({0, 0, 0}, ZnGePoint3d(1, 0, 0)), shifted({5, 0, 0}, ZnGePoint3d(9, 0, 0));
  EXPECT_TRUE(line == ZnGeLine3d());
  EXPECT_TRUE(line == shifted);
  EXPECT_TRUE(line != ZnGeLine3d(shifted).reverseParam());
  EXPECT_TRUE(line != ZnGeLineSeg3d({0, 0, 0}, ZnGePoint3d(1, 0, 0)));
  const ZnGeLine2d flat;
  EXPECT_TRUE(flat == ZnGeLine2d({7, 0}, ZnGeVector2d(2, 0)));
  EXPECT_TRUE(flat != ZnGeLine2d({7, 0}, ZnGeVector2d(-2, 0)));
  EXPECT_EQ(line.length(), kUnbounded);
  EXPECT_TRUE(line.boundBox().isEmpty());
}

} // namespace
