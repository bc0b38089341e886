#include <rapidcheck.h>

#include "db_core/small_drawing.h"
#include "quorl/db/core/transaction.h"

namespace {

class Undoing : public SmallDrawing {};

TEST_F(Undoing, WhatFollowsAnUndoIsAStepOfItsOwn) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  undo().startStep();
  setRadius(id, 2.0);
  undo().startStep();
  setRadius(id, 3.0);
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_TRUE(undo().canRedo());
  setRadius(id, 4.0);
  EXPECT_FALSE(undo().canRedo());
  ASSERT_EQ(undo().undo(), Quorl::eOk);
  EXPECT_EQ(radiusOf(id), 2.0);
}

TEST_F(Undoing, TransactionsNest) {
  struct Case {
    bool keepInner, keepOuter;
    double expected;
  };
  const Case cases[] = {{true, true, 3.0}, {false, true, 2.0}, {true, false, 1.0}, {false, false, 1.0}};
  for (const Case& c : cases) {
    const ZnDbObjectId id = addCircle(0.0, 1.0);
    {
      ZnDbTransaction outer(db);
      setRadius(id, 2.0);
      {
        ZnDbTransaction inner(db);
        setRadius(id, 3.0);
        if (c.keepInner) EXPECT_EQ(inner.end(), Quorl::eOk);
      }
      if (c.keepOuter) EXPECT_EQ(outer.end(), Quorl::eOk);
    }
    EXPECT_EQ(radiusOf(id), c.expected);
    EXPECT_EQ(db.transactionManager().activeTransactionCount(), 0);
  }
  EXPECT_EQ(db.transactionManager().endTransaction(), Quorl::eNoTransaction);
  EXPECT_EQ(db.transactionManager().abortTransaction(), Quorl::eNoTransaction);
}

// Random edits: going back and forth through the whole history meets the same drawings again.
TEST(UndoHistory, IsTheSameBothWays) {
  struct Drawing : SmallDrawing {
    void TestBody() override {}
  };
  const bool held = rc::check("undo and redo retrace every step", [] {
    Drawing drawing;
    std::vector<ZnDbObjectId> circles{drawing.addCircle(0.0, 1.0)};
    drawing.db.undoRecorder().clear();
    std::vector<std::string> seen{drawing.dump()};
    const auto edits = *rc::gen::nonEmpty<std::vector<std::pair<unsigned char, unsigned char>>>();
    for (const auto& [kind, which] : edits) {
      drawing.db.undoRecorder().startStep();
      const ZnDbObjectId id = circles[which % circles.size()];
      if (kind % 3 == 0)
        circles.push_back(drawing.addCircle(which, 1.0 + kind));
      else if (kind % 3 == 1 && !id.isErased())
        drawing.setRadius(id, drawing.radiusOf(id) + 1.0);
      else
        erase(id, !id.isErased());
      seen.push_back(drawing.dump());
    }
    ZnDbUndoRecorder& undo = drawing.db.undoRecorder();
    for (size_t i = seen.size(); i-- > 1;) {
      RC_ASSERT(undo.undo() == Quorl::eOk);
      RC_ASSERT(drawing.dump() == seen[i - 1]);
    }
    RC_ASSERT(undo.undo() == Quorl::eNothingToUndo);
    for (size_t i = 1; i < seen.size(); ++i) {
      RC_ASSERT(undo.redo() == Quorl::eOk);
      RC_ASSERT(drawing.dump() == seen[i]);
    }
    RC_ASSERT(undo.redo() == Quorl::eNothingToUndo);
  });
  EXPECT_TRUE(held);
}

} // namespace
