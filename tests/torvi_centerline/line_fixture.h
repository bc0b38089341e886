// A drawing with center lines on straight edges.
#pragma once

#include "support/drawing_fixture.h"
#include "torvi/centerline/action_body.h"
#include "torvi/centerline/builder.h"
#include "torvi/centerline/layout.h"

class CenterLineTest : public DrawingTest {
protected:
  using Line = ZnDbCenterLineObjectWrapper;
  using P3 = ZnGePoint3d;

  ZnDbObjectId addCenterLine(const ZnDbEdgeRef& first, const ZnDbEdgeRef& second, const P3& pick0 = {},
                             const P3& pick1 = {}) {
    const P3 picks[] = {pick0, pick1};
    ZnDbObjectId id;
    EXPECT_EQ(ZnTorviLyxUtils::createCenterLine({first, second}, picks, id, db_.get()), Quorl::eOk);
    return id;
  }
  // The usual one: along y = 2 from 0 to 10, with overshoots of 0.5.
  ZnDbObjectId addUsual() {
    lower_ = addLineOf("0,0 10,0");
    upper_ = addLineOf("0,4 10,4");
    return addCenterLine(edgeOf(lower_), edgeOf(upper_));
  }
  // What is drawn, overshoots included, in the coordinates of the space; that it agrees with its own values.
  static ZnGeLineSeg3d drawn(ZnDbObjectId id) {
    ZnGeLineSeg3d line;
    EXPECT_EQ(Line(id).getCenterLineGeometry(line, true), Quorl::eOk);
    EXPECT_TRUE(Line(id).doesActionMatchCurrentGeometry());
    return line;
  }
  static testing::AssertionResult runs(const ZnGeLineSeg3d& line, const P3& from, const P3& to) {
    const auto start = near(line.startPoint(), from), end = near(line.endPoint(), to);
    return start ? end : start;
  }
  static testing::AssertionResult runs(ZnDbObjectId id, const char* ends) {
    return runs(drawn(id), pointsOf(ends)[0], pointsOf(ends)[1]);
  }

  ZnDbObjectId lower_, upper_;
};
