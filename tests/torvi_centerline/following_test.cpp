// A center line while its edges change: its sense and its lengths. The cases through which it goes are
// scenes.
#include <rapidcheck.h>

#include "torvi_centerline/line_fixture.h"

namespace {

class CenterLineFollowing : public CenterLineTest {};

TEST_F(CenterLineFollowing, OnlyWhereItIsMarkedALineGivesUpItsSense) {
  for (const bool marked : {false, true}) {
    const ZnDbObjectId id = addUsual();
    if (marked) ZnTorviLyxUtils::markCenterLinesNotToKeepDirection({id});
    EXPECT_EQ(ZnTorviLyxUtils::isCenterLineNotToKeepDirection(id), marked);
    ZnArray<ZnDbObjectId> dependents;
    ZnTorviLyxUtils::getCenterLinesDependOnEnt(lower_, dependents);
    EXPECT_EQ(dependents, ZnArray<ZnDbObjectId>{id});
    moveLine(lower_, "10,0 0,0");
    EXPECT_TRUE(runs(id, marked ? "10.5,2 -0.5,2" : "-0.5,2 10.5,2"));
    ZnTorviLyxUtils::unmarkCenterLinesNotToKeepDirection();
    EXPECT_FALSE(ZnTorviLyxUtils::isCenterLineNotToKeepDirection(id));
  }
  // Lines of one handle in two drawings are marked apart.
  ZnDbDatabase other;
  ASSERT_EQ(db_->layerZero().handle(), other.layerZero().handle());
  ZnTorviLyxUtils::markCenterLinesNotToKeepDirection({other.layerZero()});
  EXPECT_FALSE(ZnTorviLyxUtils::isCenterLineNotToKeepDirection(db_->layerZero()));
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
    setLine(lower_, {0, 0, 0}, {row.length, 0, 0});
    setLine(upper_, {0, 4, 0}, {row.length, 4, 0});
    evaluateChanges();
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
      setLine(a, ends[0], ends[1]);
      setLine(b, ends[2], ends[3]);
      evaluateChanges();
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
