// A drawing with edge extensions.
#pragma once

#include "support/drawing_fixture.h"
#include "torvi/edgeextension/action_body.h"
#include "torvi/edgeextension/builder.h"
#include "torvi/edgeextension/layout.h"

class EdgeExtensionTest : public DrawingTest {
protected:
  using Body = ZnDbEdgeExtensionActionBody;
  using Extension = ZnDbEdgeExtensionObjectWrapper;
  using P3 = ZnGePoint3d;

  void SetUp() override {
    DrawingTest::SetUp();
    setStyle(1.0, 0.5);
  }
  // How far the lines run past the crossing, and the gap at which they start.
  void setStyle(double past, double gap) {
    change<ZnDbDimStyleTableRecord>(db_->dimstyle(), [&](ZnDbDimStyleTableRecord& style) {
      EXPECT_EQ(style.setExtensionBeyond(past), Quorl::eOk);
      EXPECT_EQ(style.setExtensionOffset(gap), Quorl::eOk);
    });
  }
  ZnDbObjectId addExtension(const ZnDbEdgeRef& first, const ZnDbEdgeRef& second) {
    ZnDbObjectId id;
    EXPECT_EQ(ZnTorviLyxUtils::createEdgeExtension({first, second}, id, db_.get()), Quorl::eOk);
    return id;
  }
  // A chamfered corner: the crossing is the origin, the near ends are (4, 0) and (0, 3).
  static constexpr const char* kUsual = "3.5,0 -1,0 0,2.5 0,-1";
  ZnDbObjectId addUsual() {
    right_ = addLineOf("4,0 10,0");
    up_ = addLineOf("0,9 0,3");
    return addExtension(edgeOf(right_), edgeOf(up_));
  }
  // Whether the ends of its lines, as drawn in the coordinates of the space, are these.
  static testing::AssertionResult shows(ZnDbObjectId id, const std::vector<P3>& expected,
                                        double tolerance = 1e-8) {
    OwnedCurves held;
    EXPECT_EQ(Extension(id).getCenterObjGeometry(held.curves), Quorl::eOk);
    if (expected.size() != 4 || held.curves.length() != 2)
      return testing::AssertionFailure() << "no two lines";
    for (size_t i = 0; i < expected.size(); ++i) {
      const auto* line = static_cast<const ZnGeLineSeg3d*>(held.curves[static_cast<int>(i / 2)]);
      const P3 end = i % 2 == 0 ? line->startPoint() : line->endPoint();
      if (const auto same = near(Extension(id).blockTransform() * end, expected[i], tolerance); !same)
        return same;
    }
    return testing::AssertionSuccess();
  }
  static testing::AssertionResult shows(ZnDbObjectId id, const char* expected) {
    return shows(id, pointsOf(expected));
  }

  ZnDbObjectId right_, up_;
};
