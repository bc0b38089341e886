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
    EXPECT_EQ(ZnTorviLyxUtils::checkForArc(), row.checkArc == 1);
    ZnDbTransaction attempt(*db_);
    ZnDbObjectId id;
    EXPECT_EQ(ZnTorviLyxUtils::createCenterMark(line, id, db_.get()), row.status);
    if (row.status != Quorl::eOk) continue;
    EXPECT_TRUE(wrap(id).isCenterObject());
    EXPECT_FALSE(wrap(id).isAssociative());
    EXPECT_EQ(statusOf(id), kFailedToEvaluateAssocStatus);
  }
}

} // namespace
