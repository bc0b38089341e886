#include "db_core/small_drawing.h"
#include "quorl/db/table/layer_table.h"

using Quorl::ErrorStatus;

namespace {

class Opening : public SmallDrawing {};

TEST_F(Opening, ManyReadersOrOneWriter) {
  using enum ZnDbOpenMode;
  struct Case {
    ZnDbOpenMode first, second;
    ErrorStatus expected;
  };
  const Case cases[] = {
      {kForRead, kForRead, Quorl::eOk},
      {kForRead, kForWrite, Quorl::eWasOpenForRead},
      {kForWrite, kForRead, Quorl::eWasOpenForWrite},
      {kForWrite, kForWrite, Quorl::eWasOpenForWrite},
  };
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  for (const Case& c : cases) {
    ZnDbObject *first = nullptr, *second = nullptr;
    ASSERT_EQ(zndbOpenObject(first, id, c.first), Quorl::eOk);
    EXPECT_EQ(zndbOpenObject(second, id, c.second), c.expected);
    EXPECT_EQ(second != nullptr, c.expected == Quorl::eOk);
    if (second) second->close();
    first->close();
    EXPECT_EQ(first->close(), Quorl::eNotOpenedYet) << "nothing is left open";
  }
}

TEST_F(Opening, RefusesWhatIsNotThere) {
  const ZnDbObjectId erased = addCircle(0.0, 1.0);
  erase(erased);
  ZnDbObjectId neverRead;
  ASSERT_EQ(db.getZnDbObjectId(neverRead, true, ZnDbHandle(0xABCDEF)), Quorl::eOk);
  struct Case {
    ZnDbObjectId id;
    bool openErased;
    ErrorStatus expected;
  };
  const Case cases[] = {
      {ZnDbObjectId(), false, Quorl::eNullObjectId},
      {neverRead, true, Quorl::ePermanentlyErased},
      {erased, false, Quorl::eWasErased},
      {erased, true, Quorl::eOk},
  };
  for (const Case& c : cases) {
    ZnDbHolder<ZnDbObject> holder;
    EXPECT_EQ(holder.open(c.id, c.openErased), c.expected);
    EXPECT_EQ(holder.status(), c.expected);
    EXPECT_EQ(holder.object() != nullptr, c.expected == Quorl::eOk);
  }
}

TEST_F(Opening, HolderStatuses) {
  ZnDbHolder<ZnDbLine> holder;
  EXPECT_EQ(holder.status(), Quorl::eNotOpenedYet);
  EXPECT_EQ(holder.writeStatus(), Quorl::eNotOpenedYet);
  EXPECT_EQ(holder.open(addCircle(0.0, 1.0)), Quorl::eWrongObjectClass);
  EXPECT_EQ(holder.writeStatus(), Quorl::eWrongObjectClass);
  ASSERT_EQ(holder.open(add(new ZnDbLine)), Quorl::eOk);
  EXPECT_EQ(holder.writeStatus(), Quorl::eHeldForReadOnly);
  ASSERT_EQ(holder.upgrade(), Quorl::eOk);
  EXPECT_EQ(holder.writeStatus(), Quorl::eOk);
  holder.acquire(nullptr);
  EXPECT_EQ(holder.status(), Quorl::eNullObjectPointer);
  EXPECT_EQ(holder.writeStatus(), Quorl::eNullObjectPointer);
  holder.acquire(new ZnDbLine);
  EXPECT_EQ(holder.status(), Quorl::eOk);
  EXPECT_EQ(holder.writeStatus(), Quorl::eOk);
}

TEST_F(Opening, HolderReadsBesideAWriterAndNeverWritesBesideAReader) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  {
    ZnDbHolder<ZnDbCircle> writer, inner;
    ASSERT_EQ(writer.openForWrite(id), Quorl::eOk);
    EXPECT_EQ(inner.open(id), Quorl::eOk);
    EXPECT_EQ(inner.upgrade(), Quorl::eOk) << "the one who writes around it is on the same thread";
  }
  ZnDbObject* reader = nullptr;
  ASSERT_EQ(zndbOpenObject(reader, id, ZnDbOpenMode::kForRead), Quorl::eOk);
  ZnDbHolder<ZnDbCircle> holder;
  EXPECT_EQ(holder.open(id), Quorl::eOk);
  EXPECT_EQ(holder.upgrade(), Quorl::eWasOpenForRead);
  EXPECT_FALSE(holder.object()->upgradeOpen() == Quorl::eOk);
  holder.close();
  reader->close();
  EXPECT_EQ(holder.openForWrite(id), Quorl::eOk);
}

TEST_F(Opening, HolderDeletesWhatNeverEnteredADrawing) {
  struct Counted : ZnDbLine {
    explicit Counted(int& alive)
        : count(alive) {
      ++count;
    }
    ~Counted() override { --count; }
    int& count;
  };
  int alive = 0;
  {
    ZnDbHolder<ZnDbLine> holder(new Counted(alive));
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
  auto* kept = new ZnDbLine;
  ZnDbHolder<ZnDbLine> holder(kept);
  ZnDbHolder<ZnDbBlockTableRecord> space;
  ASSERT_EQ(space.openForWrite(db.modelSpaceId()), Quorl::eOk);
  ASSERT_EQ(space->appendZnDbEntity(kept), Quorl::eOk);
  holder.close();
  EXPECT_EQ(kept->close(), Quorl::eNotOpenedYet) << "closing the holder closed the new entity";
}

TEST_F(Opening, LockedLayersHinderWritersUnlessForced) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  {
    ZnDbHolder<ZnDbLayerTableRecord> layer;
    ASSERT_EQ(layer.openForWrite(db.layerZero()), Quorl::eOk);
    layer->setIsLocked(true);
  }
  ZnDbObject* object = nullptr;
  EXPECT_EQ(zndbOpenObject(object, id, ZnDbOpenMode::kForWrite), Quorl::eOnLockedLayer);
  EXPECT_EQ(zndbForceOpenObjectOnLockedLayer(object, id), Quorl::eOk);
  object->close();
  ZnDbHolder<ZnDbCircle> holder(id);
  EXPECT_EQ(holder.upgrade(), Quorl::eOnLockedLayer);
  EXPECT_EQ(holder.upgrade(true), Quorl::eOk);
}

TEST_F(Opening, WritingWithoutTheRightStopsTheProgram) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  ZnDbHolder<ZnDbCircle> reader(id);
  EXPECT_DEATH(reader->setRadius(2.0), "isWriteEnabled");
}

} // namespace
