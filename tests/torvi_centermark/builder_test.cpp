#include "torvi/centermark/builder.h"

#include "quorl/db/core/transaction.h"
#include "support/drawing_fixture.h"

namespace {

using MarkBuilder = DrawingTest;

TEST_F(MarkBuilder, OnlyTheArcRuleLooksAtTheEdge) {
  const ZnDbEdgeRef line = edgeOf(addLineOf("0,0 5,0"));
  struct {
    bool lines;
    int checkArc;
    Quorl::ErrorStatus status;
  } const rows[] = {{true, 1, Quorl::eInvalidInput}, {false, 1, Quorl::eOk}, {true, 0, Quorl::eOk}};
  for (const auto& row : rows) {
    put(L"CENTERMARKEXE", ZnRxVariableValue::ofBool(row.lines));
    put(L"CENTERMARKCHECKARC", ZnRxVariableValue::ofInt16(static_cast<std::int16_t>(row.checkArc)));
    ZnDbTransaction attempt(*db_);
    ZnDbObjectId id;
    EXPECT_EQ(ZnTorviLyxUtils::createCenterMark(line, id, db_.get()), row.status);
    if (row.status != Quorl::eOk) continue;
    EXPECT_TRUE(wrap(id).isCenterObject());
    EXPECT_FALSE(wrap(id).isAssociative());
    EXPECT_EQ(statusOf(id), kFailedToEvaluateAssocStatus);
  }
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
