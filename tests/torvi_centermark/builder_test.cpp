#include "torvi/centermark/builder.h"

#include <numbers>

#include "quorl/db/core/transaction.h"
#include "support/drawing_fixture.h"

namespace {

using Value = ZnRxVariableValue;

class MarkBuilder : public DrawingTest {
protected:
  void setRules(bool lines, int checkArc) {
    put(L"CENTERMARKEXE", Value::ofBool(lines));
    put(L"CENTERMARKCHECKARC", Value::ofInt16(static_cast<std::int16_t>(checkArc)));
  }
  static double radians(double degrees) { return degrees * std::numbers::pi / 180.0; }
  Quorl::ErrorStatus create(const ZnDbEdgeRef& edge, ZnDbObjectId& id) {
    return ZnCenterMarkBuilder(ZnArray<ZnDbEdgeRef>{edge}, db_.get()).createTorvi(id);
  }
};

TEST_F(MarkBuilder, TheArcRuleHidesTheLinesOfShortArcs) {
  struct {
    bool lines;
    int checkArc;
    double degrees; // 360 is a circle
    bool visible;
  } const rows[] = {{true, 0, 10.0, true},        {true, 1, 10.0, false}, {true, 1, 239.0, false},
                    {true, 1, 239.999999, false}, {true, 1, 240.0, true}, {true, 1, 359.0, true},
                    {true, 1, 360.0, true},       {true, 2, 10.0, true},  {false, 0, 360.0, false},
                    {false, 1, 360.0, false},     {false, 1, 10.0, false}};
  for (const auto& row : rows)
    for (const double start : {0.0, 1.0, 300.0}) {
      SCOPED_TRACE(testing::Message()
                   << row.lines << row.checkArc << " " << row.degrees << " from " << start);
      setRules(row.lines, row.checkArc);
      const ZnDbObjectId shape = row.degrees == 360.0
                                     ? addCircle({}, 10.0)
                                     : addArc({}, 10.0, radians(start), radians(start + row.degrees));
      EXPECT_EQ(wrap(addMark(shape)).getExtensionLinesVisibility(), row.visible);
    }
}

TEST_F(MarkBuilder, TheDecisionStaysWhenTheArcChanges) {
  setRules(true, 1);
  const ZnDbObjectId arc = addArc({0.0, 0.0, 0.0}, 10.0, 0.0, radians(90.0));
  const ZnDbObjectId mark = addMark(arc);
  change<ZnDbArc>(arc, [&](ZnDbArc& shape) { shape.setEndAngle(radians(300.0)); });
  evaluateChanges();
  EXPECT_FALSE(wrap(mark).getExtensionLinesVisibility());
  ZnArray<ZnDbObjectId> ids;
  wrap(mark).getCenterEntitesIds(ids);
  EXPECT_EQ(ids.length(), 6);
  EXPECT_NEAR(wrap(mark).getSubentLineGeometry(eTopLine, true).length(), 8.5, 1e-9);
}

TEST_F(MarkBuilder, OnlyTheArcRuleLooksAtTheEdge) {
  const ZnDbObjectId line = addLine({0.0, 0.0, 0.0}, {5.0, 0.0, 0.0});
  struct {
    bool lines;
    int checkArc;
    Quorl::ErrorStatus status;
  } const rows[] = {{true, 1, Quorl::eInvalidInput}, {false, 1, Quorl::eOk}, {true, 0, Quorl::eOk}};
  for (const auto& row : rows) {
    setRules(row.lines, row.checkArc);
    ZnDbTransaction attempt(*db_);
    ZnDbObjectId id;
    EXPECT_EQ(create(edgeOf(line), id), row.status) << row.lines << row.checkArc;
  }
}

TEST_F(MarkBuilder, FirstValuesAreTheStylesOfThatMoment) {
  put(L"CENTERCROSSSIZE", L"0.25x");
  put(L"CENTERCROSSGAP", L"2");
  put(L"CENTEREXE", Value::ofDouble(1.75));
  put(L"CENTERLAYER", L"Axes");
  const auto mark = wrap(addMark(addCircle({0.0, 0.0, 0.0}, 4.0)));
  EXPECT_EQ(mark.crossHairLengthExpression().utf8(), "0.25x");
  EXPECT_EQ(mark.crossHairGapExpression().utf8(), "2");
  EXPECT_EQ(mark.verticalStartOvershoot(), 1.75);
  EXPECT_EQ(ZnDbHolder<ZnDbEntity>(mark.centerObjId())->layer().utf8(), "Axes");
}

TEST_F(MarkBuilder, AShapeWithoutCircleLosesItsAssociation) {
  ZnDbObjectId id;
  EXPECT_EQ(create(edgeOf(addLine({0.0, 0.0, 0.0}, {5.0, 0.0, 0.0})), id), Quorl::eOk);
  const ZnDbCenterMarkObjectWrapper mark(id);
  EXPECT_TRUE(mark.isCenterObject());
  EXPECT_FALSE(mark.isAssociative());
  EXPECT_EQ(ZnDbHolder<ZnDbAssocActionBody>(mark.actionBody())->status(), kFailedToEvaluateAssocStatus);
}

TEST_F(MarkBuilder, WithoutDatabaseTheWorkingOneIsUsedAndThereIsNoPreview) {
  ZnCenterMarkBuilder builder;
  builder.addInputEdge(edgeOf(addCircle({0.0, 0.0, 0.0}, 4.0)));
  ZnDbObjectId id;
  EXPECT_EQ(builder.createTorvi(id), Quorl::eOk);
  EXPECT_EQ(id.database(), db_.get());
  ZnArray<ZnDbCurve*> curves;
  EXPECT_EQ(builder.createTorviTransients(nullptr, curves), Quorl::eNotProvided);
  EXPECT_TRUE(curves.isEmpty());
}

} // namespace
