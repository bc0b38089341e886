#include <numbers>

#include "rx/allocation_count.h"
#include "torvi_centermark/mark_fixture.h"

namespace {

using Body = ZnDbCenterMarkActionBody;
using MarkBody = MarkTest;

TEST_F(MarkBody, OvershootsRefuseLengthsBelowZero) {
  const double tolerance = ZnGeContext::gTol.equalPoint();
  Quorl::ErrorStatus (Body::*const setters[])(double) = {
      &Body::setHorizontalStartOvershoot, &Body::setHorizontalEndOvershoot, &Body::setVerticalStartOvershoot,
      &Body::setVerticalEndOvershoot};
  double (Body::*const getters[])() const = {&Body::horizontalStartOvershoot, &Body::horizontalEndOvershoot,
                                             &Body::verticalStartOvershoot, &Body::verticalEndOvershoot};
  for (const double value : {-1.0, -2.0 * tolerance, -0.5 * tolerance, 0.0, 3.0})
    changeBody([&](Body& body) {
      const bool fine = value >= -tolerance;
      body.resetOvershoots();
      for (int side = 0; side < 4; ++side) {
        EXPECT_EQ((body.*setters[side])(value), fine ? Quorl::eOk : Quorl::eInvalidInput);
        for (int other = 0; other < 4; ++other)
          EXPECT_EQ((body.*getters[other])(), fine && other <= side ? value : 0.5) << value << " " << side;
      }
    });
}

TEST_F(MarkBody, VisibilityOfLinesOneByOneAndTogether) {
  for (const ZnCenterMarkSubEntType line : {eLeftLine, eRightLine, eBottomLine, eTopLine})
    for (const bool shown : {false, true}) {
      EXPECT_EQ(wrap(mark_).setSubEntVisibility(line, shown), Quorl::eOk);
      EXPECT_EQ(wrap(mark_).getExtensionLinesVisibility(), shown);
    }
  EXPECT_EQ(wrap(mark_).setExtensionLinesVisibility(false), Quorl::eOk);
  for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line)
    EXPECT_EQ(wrap(mark_).getSubEntVisibility(static_cast<ZnCenterMarkSubEntType>(line)), line < eLeftLine);
  EXPECT_EQ(stored(L"eTopLine_visibility"), 0.0);
  wrap(mark_).setSubEntVisibility(static_cast<ZnCenterMarkSubEntType>(9), false);
  EXPECT_EQ(stored(L"undefined_visibility"), 0.0);
  evaluate(mark_);
}

TEST_F(MarkBody, ValuesThatAreNotStoredReadAsTheyWouldBeMade) {
  changeBody([](Body& body) {
    ZnArray<ZnString> names;
    body.ownedValueParamNames(names);
    for (const ZnString& name : names)
      if (name.find(L"DepId") < 0) body.removeValueParam(name);
  });
  put(L"CENTERCROSSSIZE", L"3");
  put(L"CENTERCROSSGAP", L"4x");
  changeBody([](Body& body) {
    EXPECT_TRUE(body.horizontalStartExtension() == 0.0 && body.verticalEndOvershoot() == 0.0);
    EXPECT_TRUE(body.cachedCircleRadius() == 0.0 && body.cachedRotation() == 0.0);
    EXPECT_EQ(body.crossHairLengthExpression(), L"3");
    EXPECT_EQ(body.crossHairGapExpression(), L"4x");
    EXPECT_TRUE(body.getSubEntVisibility(eTopLine));
    // Half the cross for every line.
    for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line)
      EXPECT_EQ(body.getMinExtension(static_cast<ZnCenterMarkSubEntType>(line)), 1.5);
  });
}

TEST_F(MarkBody, ACircleNeedsExactlyOneEdgeThatIsAnArc) {
  const auto addEdge = [](Body& body, ZnDbObjectId entity) {
    ZnDbObjectId param;
    int index = 0;
    EXPECT_EQ(body.addParam(Body::inputEdgeParamName(), ZnDbAssocEdgeActionParam::desc(), param, index),
              Quorl::eOk);
    EXPECT_EQ(body.setEdgeRef(index, edgeOf(entity)), Quorl::eOk);
  };
  changeBody([&](Body& body) {
    ZnGeCircArc3d circle;
    EXPECT_EQ(body.getRefCircle(circle), Quorl::eOk);
    addEdge(body, addCircle({}, 1.0));
    EXPECT_EQ(body.getRefCircle(circle), Quorl::eInvalidInput);
    for (const ZnDbObjectId id : body.paramsAtName(Body::inputEdgeParamName())) body.removeParam(id, true);
    addEdge(body, addLine({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}));
    EXPECT_EQ(body.getRefCircle(circle), Quorl::eInvalidInput);
    EXPECT_EQ(body.getRefCircleRadius(), 0.0);
  });
}

TEST_F(MarkBody, DirectionsCarryTheReferencesTransform) {
  change<ZnDbBlockReference>(mark_, [](ZnDbBlockReference& reference) {
    reference.setBlockTransform(ZnGeMatrix3d::rotation(std::numbers::pi / 2.0, ZnGeVector3d::kZAxis) *
                                ZnGeMatrix3d::scaling(2.0));
  });
  const ZnGeVector3d kExpected[] = {{0.0, 2.0, 0.0}, {-2.0, 0.0, 0.0}, {0.0, -2.0, 0.0},
                                    {0.0, 2.0, 0.0}, {2.0, 0.0, 0.0},  {-2.0, 0.0, 0.0}};
  for (int line = eCrossHairHorizontalLine; line <= eTopLine; ++line)
    EXPECT_TRUE(
        wrap(mark_).getSubentDirection(static_cast<ZnCenterMarkSubEntType>(line)).isEqualTo(kExpected[line]));
  evaluate(mark_);
}

TEST_F(MarkBody, ReadingAValueAllocatesNothing) {
  changeBody([](Body& body) { body.setVerticalStartExtension(4.0); });
  ZnDbHolder<Body> body(bodyOf(mark_));
  const auto readAll = [&] {
    return body->verticalStartExtension() + body->horizontalEndOvershoot() + body->cachedCircleRadius() +
           body->cachedRotation() + body->getExtensionLinesVisibility() +
           body->crossHairLengthExpression().length();
  };
  const double once = readAll();
  const long before = allocationCount();
  const double again = readAll();
  EXPECT_EQ(allocationCount(), before);
  EXPECT_EQ(once, again);
}

} // namespace
