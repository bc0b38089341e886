// Lines and segments, in space and in a plane, and the relations between them.
#include <limits>

#include "ge_test_support.h"
#include "quorl/ge/line2d.h"
#include "quorl/ge/line3d.h"
#include "quorl/ge/line_seg3d.h"
#include "support/point_text.h"
#include "support/told_cases.h"

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

const ZnGeTol kTight, kLoose(1e-8, 1e-8);

struct Pair {
  Ends a, b;
  ZnGeTol tol;
};

// As "seg 0,0 1,0 line 0,1 1,1 loose" says it.
Pair pairOf(const std::string& text) {
  Pair pair;
  std::istringstream words(text);
  std::string kind, from, to, tolerance;
  for (Ends* ends : {&pair.a, &pair.b}) {
    words >> kind >> from >> to;
    *ends = {pointsOf(from).at(0), pointsOf(to).at(0), kind == "seg"};
  }
  words >> tolerance;
  pair.tol = tolerance == "loose" ? kLoose : kTight;
  return pair;
}

// Runs the check on the pair in both orders, with either one reversed, in several places of space.
template<class Check> void forEachPair(const Pair& c, const Check& check) {
  const ZnGeMatrix3d maps[] = {ZnGeMatrix3d(), ZnGeMatrix3d::translation({3, -2, 5}),
                               ZnGeMatrix3d::rotation(ZnGe::kHalfPi, {0, 1, 0}, {1, 1, 1}),
                               ZnGeMatrix3d::mirroring(ZnGePlane({0, 0, 1}, {0, 0, 1}))};
  for (const ZnGeMatrix3d& map : maps) {
    const auto a = c.a.make(map), b = c.b.make(map);
    check(map, *a, *b);
    check(map, *b, *a);
    a->reverseParam();
    check(map, *a, *b);
    check(map, *b, *a);
  }
}

const ZnGePoint3d kUntouched(123, 456, 789);

void expectCrossing(const Pair& c, const std::string& place) {
  forEachPair(c, [&](const ZnGeMatrix3d& map, const ZnGeLinearEnt3d& a, const ZnGeLinearEnt3d& b) {
    const bool meets = place != "nowhere";
    ZnGePoint3d meeting = kUntouched;
    EXPECT_EQ(a.intersectWith(b, meeting, c.tol), meets);
    EXPECT_TRUE(isNear(meeting, meets ? map * pointsOf(place).at(0) : kUntouched)) << meeting;
    EXPECT_FALSE(a.isParallelTo(b, c.tol) || a.isColinearTo(b, c.tol));
    ZnGeLine3d whole;
    a.getLine(whole);
    EXPECT_EQ(whole.intersectWith(b, meeting, c.tol), meets);
    ZnGeLinearEnt3d* common = nullptr;
    EXPECT_FALSE(a.overlap(b, common, c.tol));
    EXPECT_EQ(common, nullptr);
  });
}

// The length of the stretch that they have in common, or "beside" for those on two lines.
void expectParallel(const Pair& c, const std::string& told) {
  const double length = told == "beside" ? 0.0 : std::stod(told);
  forEachPair(c, [&](const ZnGeMatrix3d&, const ZnGeLinearEnt3d& a, const ZnGeLinearEnt3d& b) {
    ZnGePoint3d meeting = kUntouched;
    EXPECT_FALSE(a.intersectWith(b, meeting, c.tol));
    EXPECT_TRUE(isNear(meeting, kUntouched));
    EXPECT_TRUE(a.isParallelTo(b, c.tol));
    EXPECT_EQ(a.isColinearTo(b, c.tol), told != "beside");
    ZnGeLinearEnt3d* common = nullptr;
    EXPECT_EQ(a.overlap(b, common, c.tol), length > 0.0);
    const std::unique_ptr<ZnGeLinearEnt3d> owned(common);
    ASSERT_EQ(common != nullptr, length > 0.0);
    if (common == nullptr) return;
    EXPECT_TRUE(common->direction().isCodirectionalTo(a.direction(), kLoose));
    EXPECT_EQ(common->isBounded(), length < kUnbounded);
    if (!common->isBounded()) return;
    EXPECT_NEAR(common->length(), length, kRounding);
    for (const double share : {0.0, 0.5, 1.0}) {
      EXPECT_TRUE(a.isOn(pointAtShare(*common, share), kLoose) &&
                  b.isOn(pointAtShare(*common, share), kLoose));
    }
  });
}

TEST(Linear, PairsMeetOrOverlapOrDoNot) {
  runToldCases("ge/linear_cases.txt", 24,
               [](const std::string& section, const std::string& input, const Lines& told) {
                 SCOPED_TRACE(input);
                 (section == "crossing" ? expectCrossing : expectParallel)(pairOf(input), told.at(0));
                 return told;
               });
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
