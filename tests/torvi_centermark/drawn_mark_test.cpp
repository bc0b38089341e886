// What a center mark looks like in the drawing, against its plain geometry.
#include <gtest/gtest.h>

#include <array>
#include <functional>

#include "support/drawing_fixture.h"

namespace {

struct DrawnLine {
  ZnGePoint3d start, end;
  bool visible = true;
};
using DrawnMark = std::array<DrawnLine, 6>;

class Drawn : public DrawingTest {
protected:
  // The entities of the mark's block, in world coordinates.
  static DrawnMark drawn(ZnDbObjectId mark) {
    ZnArray<ZnDbObjectId> ids;
    EXPECT_EQ(wrap(mark).getCenterEntitesIds(ids), Quorl::eOk);
    EXPECT_EQ(ids.length(), 6);
    DrawnMark lines;
    const ZnGeMatrix3d transform = wrap(mark).blockTransform();
    for (int i = 0; i < ids.length() && i < 6; ++i) {
      ZnDbHolder<ZnDbLine> line(ids[i]);
      EXPECT_TRUE(line.isOpen());
      lines[static_cast<size_t>(i)] = {transform * line->startPoint(), transform * line->endPoint(),
                                       line->visibility() == ZnDb::kVisible};
    }
    return lines;
  }
};

// Distances along a line from the center: its start and its end, in the line's positive direction.
struct Extent {
  double from, to;
};

struct Shape {
  const char* what;
  double radius;
  const wchar_t *length, *gap;
  double extension; // below zero: follows the circle
  double overshoot;
  Extent arm, right; // the arm of the cross, and the right line; the other lines are their images
  bool rightIsDrawn = true;
};

const Shape kShapes[] = {
    {"defaults", 10.0, L"0.1x", L"0.05x", -1.0, 0.5, {-1.0, 1.0}, {2.0, 10.5}},
    {"own extension", 10.0, L"0.1x", L"0.05x", 6.0, 0.25, {-1.0, 1.0}, {2.0, 6.25}},
    {"ends where it begins", 10.0, L"0.1x", L"0.05x", 1.5, 0.5, {-1.0, 1.0}, {2.0, 2.0}},
    {"too short for the gap", 10.0, L"0.1x", L"0.05x", 0.5, 0.5, {-1.0, 1.0}, {1.0, 1.0}},
    {"shorter than the cross", 10.0, L"0.1x", L"0.05x", 0.25, 0.5, {-1.0, 1.0}, {1.0, 0.75}},
    {"nothing left of the line", 10.0, L"0.1x", L"0.05x", 0.0, 0.0, {-1.0, 1.0}, {0.0, 0.0}, false}};

TEST_F(Drawn, LinesHaveTheirPlacesForEverySize) {
  const ZnGePoint3d center(7.0, -3.0, 2.0);
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(shape.what);
    const ZnDbObjectId mark = addMark(addCircle(center, shape.radius));
    change<ZnDbCenterMarkActionBody>(bodyOf(mark), [&](ZnDbCenterMarkActionBody& body) {
      body.setCrossHairLengthExpression(shape.length);
      body.setCrossHairGapExpression(shape.gap);
      for (const ZnCenterMarkSubEntType line : {eLeftLine, eRightLine, eBottomLine, eTopLine}) {
        body.setOvershoot(line, shape.overshoot);
        if (shape.extension >= 0.0) body.setExtension(line, shape.extension);
      }
    });
    evaluate(mark);
    const DrawnMark lines = drawn(mark);
    const auto isAt = [&](ZnCenterMarkSubEntType type, const ZnGeVector3d& along, double from, double to) {
      EXPECT_TRUE(near(lines[type].start, center + along * from)) << type;
      EXPECT_TRUE(near(lines[type].end, center + along * to)) << type;
    };
    isAt(eCrossHairHorizontalLine, ZnGeVector3d::kXAxis, shape.arm.from, shape.arm.to);
    isAt(eCrossHairVerticalLine, ZnGeVector3d::kYAxis, shape.arm.from, shape.arm.to);
    for (const ZnCenterMarkSubEntType line : {eLeftLine, eRightLine, eBottomLine, eTopLine})
      EXPECT_EQ(lines[line].visible, shape.rightIsDrawn) << line;
    if (!shape.rightIsDrawn) {
      EXPECT_EQ(wrap(mark).getSubentLineGeometry(eLeftLine, true).length(), 0.0);
      continue;
    }
    isAt(eLeftLine, ZnGeVector3d::kXAxis, -shape.right.to, -shape.right.from);
    isAt(eRightLine, ZnGeVector3d::kXAxis, shape.right.from, shape.right.to);
    isAt(eBottomLine, ZnGeVector3d::kYAxis, -shape.right.to, -shape.right.from);
    isAt(eTopLine, ZnGeVector3d::kYAxis, shape.right.from, shape.right.to);
  }
}

TEST_F(Drawn, LinesAreHiddenShrinkToNothingAndComeBack) {
  const ZnDbObjectId mark = addMark(addCircle({0.0, 0.0, 0.0}, 10.0));
  auto wrapper = wrap(mark);
  const std::pair<std::function<void()>, bool> steps[] = {
      {[&] { wrapper.setSubEntVisibility(eRightLine, false); }, false},
      {[&] { wrapper.setSubEntVisibility(eRightLine, true); }, true},
      {[&] { wrapper.setHorizontalEndExtension(-3.0); }, false},
      {[&] { wrapper.setHorizontalEndExtension(6.0); }, true}};
  for (const auto& [step, shown] : steps) {
    step();
    evaluate(mark);
    const DrawnMark lines = drawn(mark);
    for (size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(lines[i].visible, shown || i != eRightLine) << i;
  }
  EXPECT_TRUE(near(drawn(mark)[eRightLine].end, {6.5, 0.0, 0.0}));
}

} // namespace
