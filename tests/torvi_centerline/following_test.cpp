// A center line while its edges change: it follows, keeps its sense and its lengths, and outlives its edges.
#include <rapidcheck.h>

#include "torvi_centerline/line_fixture.h"

namespace {

class CenterLineFollowing : public CenterLineTest {};

// The end extension is 6.5, longer than half, so start and end can be told apart.
TEST_F(CenterLineFollowing, ItKeepsItsSenseWhateverTheEdgesDo) {
  struct {
    const char *what, *lower, *upper, *line;
    bool free; // not told to keep its direction
  } const rows[] = {
      {"as made", "0,0 10,0", "0,4 10,4", "-0.5,2 12,2", false},
      {"first reversed", "10,0 0,0", "0,4 10,4", "-0.5,2 12,2", false},
      {"reversed and free", "10,0 0,0", "0,4 10,4", "10.5,2 -2,2", true},
      {"turned less than a quarter", "0,0 6,8", "-4,3 2,11", "-2.3,1.1 5.2,11.1", false},
      {"more than a quarter", "0,0 -6,8", "4,3 -2,11", "-4.3,9.9 3.2,-0.1", false},
      {"a quarter", "0,0 0,10", "4,0 4,10", "2,-0.5 2,12", false},
      {"a quarter, reversed", "0,10 0,0", "4,0 4,10", "2,10.5 2,-2", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const ZnDbObjectId id = addUsual();
    Line(id).setEndExtension(6.5);
    evaluate(id);
    if (row.free) ZnTorviLyxUtils::markCenterLinesNotToKeepDirection({id});
    EXPECT_EQ(ZnTorviLyxUtils::isCenterLineNotToKeepDirection(id), row.free);
    change<ZnDbLine>(lower_, [&](ZnDbLine& line) {
      line.setStartPoint(pointsOf(row.lower)[0]);
      line.setEndPoint(pointsOf(row.lower)[1]);
    });
    moveLine(upper_, row.upper);
    EXPECT_TRUE(runs(id, row.line));
    ZnTorviLyxUtils::unmarkCenterLinesNotToKeepDirection();
    EXPECT_FALSE(ZnTorviLyxUtils::isCenterLineNotToKeepDirection(id));
  }
}

TEST_F(CenterLineFollowing, LinesOfOneHandleInTwoDrawingsAreMarkedApart) {
  ZnDbDatabase other;
  const ZnDbObjectId here = db_->layerZero(), there = other.layerZero();
  ASSERT_EQ(here.handle(), there.handle());
  ZnTorviLyxUtils::markCenterLinesNotToKeepDirection({there});
  EXPECT_FALSE(ZnTorviLyxUtils::isCenterLineNotToKeepDirection(here));
  ZnTorviLyxUtils::unmarkCenterLinesNotToKeepDirection();
}

TEST_F(CenterLineFollowing, ExtensionsFollowUnlessTheyAreLengths) {
  struct {
    double start, end;        // set while the line is 10 long
    double length;            // of the edges afterwards
    double fromMiddle, reach; // what is drawn to each side, without overshoot
  } const rows[] = {{1e60, 1e60, 30, 15, 15},
                    {1e60, 7, 30, 15, 7},
                    {2, 1e60, 30, 2, 15},
                    {5, 7, 30, 15, 7}, // just the half length follows from now on
                    {5 + 0.9e-10, 5 - 0.9e-10, 4, 2, 2},
                    {5 + 2e-10, 0, 4, 5 + 2e-10, 0},
                    {0, 0, 4, 0, 0},
                    {-3, 1, 4, -3, 1},
                    {-1, 3e60, 4, -1, 2}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.start << " " << row.end);
    const ZnDbObjectId id = addUsual();
    Line line(id);
    line.setStartExtension(row.start);
    line.setEndExtension(row.end);
    evaluate(id);
    change<ZnDbLine>(lower_, [&](ZnDbLine& edge) { edge.setEndPoint({row.length, 0, 0}); });
    moveLine(upper_, {0, 4, 0}, {row.length, 4, 0});
    const double middle = row.length / 2;
    for (int alone = 0; alone < 3; ++alone) {
      EXPECT_TRUE(runs(drawn(id), {middle - row.fromMiddle - 0.5, 2, 0}, {middle + row.reach + 0.5, 2, 0}));
      line.breakAssociativity();
      evaluate(id);
    }
    EXPECT_NEAR(line.startExtension(), row.fromMiddle, 1e-12);
    EXPECT_NEAR(line.endExtension(), row.reach, 1e-12);
  }
}

// One edge moves from kind to kind of line; lines that have no middle between them let go in the end.
TEST_F(CenterLineFollowing, FromCaseToCase) {
  const ZnDbObjectId id = addUsual();
  struct {
    const char *what, *upper, *line;
  } const rows[] = {
      {"parallel", "0,6 10,6", "-0.5,3 10.5,3"},
      {"right corner", "0,0 0,10", "-0.353553390593,-0.353553390593 5.353553390593,5.353553390593"},
      {"in a row", "20,0 24,0", "4.5,0 22.5,0"},
      {"point ahead", "20,0 20,0", "4.5,0 20.5,0"},
      {"point beside", "4,6 4,6", "1.5,3 7.5,3"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    moveLine(upper_, row.upper);
    EXPECT_TRUE(runs(id, row.line));
  }
  for (const double away : {0.0, 1e6, 1e8}) {
    const P3 left(away + 1, away + 1, 0), right(away + 7, away + 1, 0);
    moveLine(lower_, right, right);
    moveLine(upper_, left, left);
    EXPECT_TRUE(Line(id).isFullyAssociative());
    EXPECT_TRUE(near(drawn(id).midPoint(), {away + 4, away + 1, 0}, 1e-8 + 1e-15 * away)) << "between points";
    EXPECT_NEAR(std::fabs(drawn(id).direction().y), 1.0, 1e-15) << "square to them, far out too";
    EXPECT_NEAR(drawn(id).length(), 1.0, 1e-6) << "overshoots alone";
  }
}

TEST_F(CenterLineFollowing, WithoutALineItLetsGoAndStays) {
  struct {
    const char *what, *upper;
    int erased;
    bool failed; // else it is disassociated and up to date
  } const rows[] = {{"skew", "0,4,1 1,9,1", 0, true},
                    {"one upon the other", "8,0 2,0", 0, true},
                    {"one erased", "0,4 10,4", 1, false},
                    {"both erased", "0,4 10,4", 2, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    const ZnDbObjectId id = addUsual();
    printed_.clear();
    if (row.erased > 0) erase(lower_);
    moveLine(upper_, row.upper);
    if (row.erased > 1) erase(upper_);
    evaluateChanges();
    EXPECT_EQ(statusOf(id), row.failed ? kFailedToEvaluateAssocStatus : kIsUpToDateAssocStatus);
    EXPECT_FALSE(Line(id).isFullyAssociative());
    evaluate(id);
    EXPECT_EQ(printed_.isEmpty(), Line(id).isAssociative()) << "told once nothing is left to follow";
    EXPECT_TRUE(runs(id, "-0.5,2 10.5,2"));
  }
}

TEST_F(CenterLineFollowing, AloneItGoesWhereItsReferenceGoes) {
  struct {
    const char* what;
    ZnGeMatrix3d by;
    const char *line, *followed; // without edges, and with them
    double end;                  // extension of the line without edges
  } const rows[] = {{"moved", ZnGeMatrix3d::translation({1, 2, 3}), "0.5,4,3 13,4,3", "-0.5,2 12,2", 6.5},
                    {"turned", ZnGeMatrix3d::rotation(2 * std::atan(1.0), {0, 0, 1}, {5, 2, 0}), "5,-3.5 5,9",
                     "-0.5,2 12,2", 6.5},
                    {"doubled", ZnGeMatrix3d::scaling(2.0, {5, 2, 0}), "-5.5,2 18.5,2", "-0.5,2 12,2", 13},
                    {"mirrored", ZnGeMatrix3d::mirroring(ZnGePlane({5, 0, 0}, {1, 0, 0})), "10.5,2 -2,2",
                     "10.5,2 -2,2", 6.5}};
  for (const auto& row : rows)
    for (const bool alone : {true, false}) {
      SCOPED_TRACE(row.what);
      const ZnDbObjectId id = addUsual();
      Line line(id);
      line.setEndExtension(6.5);
      if (alone) EXPECT_EQ(line.breakAssociativity(), Quorl::eOk);
      evaluate(id);
      change<ZnDbEntity>(id, [&](auto& entity) { EXPECT_EQ(entity.transformBy(row.by), Quorl::eOk); });
      for (int again = 0; again < 2; ++again) {
        evaluate(id);
        EXPECT_TRUE(runs(id, alone ? row.line : row.followed)) << alone << again;
      }
      EXPECT_NEAR(line.endExtension(), alone ? row.end : 6.5, 1e-9);
    }
}

// However the edges went, the line is as if made where they are, up to its sense, which never turns sharply.
TEST_F(CenterLineFollowing, WhereverItsEdgesWentALineIsAsIfMadeThere) {
  EXPECT_TRUE(rc::check([this] {
    const auto number = [](int from, int to) { return *rc::gen::inRange(from * 100, to * 100) / 100.0; };
    P3 ends[4];
    const auto placeWedge = [&] {
      const P3 corner(number(-50, 50), number(-50, 50), number(-5, 5));
      const double turn = number(0, 6), half = number(1, 14) / 10.0;
      for (int i = 0; i < 2; ++i) {
        const double angle = i == 0 ? turn + half : turn - half, reach = number(1, 20);
        const ZnGeVector3d ray(std::cos(angle), std::sin(angle), 0);
        ends[2 * i] = corner + ray * reach;
        ends[2 * i + 1] = corner + ray * (reach + number(1, 20));
      }
    };
    placeWedge();
    const ZnDbObjectId a = addLine(ends[0], ends[1]), b = addLine(ends[2], ends[3]);
    const ZnDbObjectId walked = addCenterLine(edgeOf(a), edgeOf(b));
    ZnGeVector3d before = drawn(walked).direction();
    for (int moves = *rc::gen::inRange(1, 5); moves > 0; --moves) {
      placeWedge();
      change<ZnDbLine>(a, [&](ZnDbLine& line) {
        line.setStartPoint(ends[0]);
        line.setEndPoint(ends[1]);
      });
      moveLine(b, ends[2], ends[3]);
      RC_ASSERT(before.dotProduct(drawn(walked).direction()) > -1e-9);
      before = drawn(walked).direction();
    }
    ZnGeLineSeg3d fresh = drawn(addCenterLine(edgeOf(a), edgeOf(b)));
    if (fresh.direction().dotProduct(before) < 0.0) fresh.reverseParam();
    RC_ASSERT(runs(drawn(walked), fresh.startPoint(), fresh.endPoint()));
    RC_ASSERT(!HasFailure());
  }));
}

} // namespace
