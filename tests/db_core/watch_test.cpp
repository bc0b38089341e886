#include "db_core/small_drawing.h"
#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/object_reactor.h"

namespace {

class Watching : public SmallDrawing {};

struct Listener : ZnDbObjectReactor {
  void openedForModify(const ZnDbObject*) override { told += 'o'; }
  void modified(const ZnDbObject*) override { told += 'm'; }
  void modifiedUndone(const ZnDbObject*) override { told += 'u'; }
  void erased(const ZnDbObject*, bool erasing) override { told += erasing ? 'e' : 'b'; }
  std::string told;
};

struct DrawingListener : ZnDbDatabaseReactor {
  void objectAppended(ZnDbDatabase*, const ZnDbObject*) override { told += 'a'; }
  void objectModified(ZnDbDatabase*, const ZnDbObject* object) override {
    told += object->isUndoing() ? 'u' : 'm';
  }
  void objectErased(ZnDbDatabase*, const ZnDbObject*, bool erasing) override { told += erasing ? 'e' : 'b'; }
  std::string told;
};

TEST_F(Watching, ReactorsHearAtTheCloseThatEndsTheChanges) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  Listener listener;
  {
    ZnDbHolder<ZnDbCircle> circle;
    ASSERT_EQ(circle.openForWrite(id), Quorl::eOk);
    circle->addReactor(&listener);
    circle->addReactor(&listener);
    circle->setRadius(2.0);
    {
      ZnDbHolder<ZnDbCircle> inner;
      ASSERT_EQ(inner.openForWrite(id), Quorl::eOk);
      inner->setRadius(3.0);
    }
    EXPECT_EQ(listener.told, "o") << "an inner writer does not end the change";
  }
  EXPECT_EQ(listener.told, "om");
  {
    ZnDbHolder<ZnDbCircle> circle;
    circle.openForWrite(id);
  }
  EXPECT_EQ(listener.told, "om") << "opening without a change is no change";
  db.undoRecorder().startStep();
  erase(id);
  ASSERT_EQ(db.undoRecorder().undo(), Quorl::eOk);
  EXPECT_EQ(listener.told, "omoeb");
  ZnDbHolder<ZnDbCircle>(id)->removeReactor(&listener);
}

// Takes off itself and the next, as a watcher does that is done and takes its helper along.
struct Leaver : ZnDbDatabaseReactor {
  Leaver(ZnDbDatabase& database, DrawingListener& helper)
      : db(database)
      , next(helper) {}
  void objectModified(ZnDbDatabase*, const ZnDbObject*) override {
    db.removeReactor(this);
    db.removeReactor(&next);
  }
  ZnDbDatabase& db;
  DrawingListener& next;
};

TEST_F(Watching, ReactorsThatAreGoneAreNotTold) {
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  DrawingListener helper, last;
  Leaver leaver(db, helper);
  for (ZnDbDatabaseReactor* reactor : std::initializer_list<ZnDbDatabaseReactor*>{&leaver, &helper, &last})
    db.addReactor(reactor);
  setRadius(id, 2.0);
  setRadius(id, 3.0);
  EXPECT_EQ(helper.told, "");
  EXPECT_EQ(last.told, "mm");
  db.removeReactor(&last);
}

TEST_F(Watching, DrawingReactors) {
  DrawingListener listener;
  db.addReactor(&listener);
  const ZnDbObjectId id = addCircle(0.0, 1.0);
  EXPECT_EQ(std::count(listener.told.begin(), listener.told.end(), 'a'), 1);
  db.undoRecorder().startStep();
  listener.told.clear();
  setRadius(id, 2.0);
  EXPECT_EQ(listener.told, "m");
  ASSERT_EQ(db.undoRecorder().undo(), Quorl::eOk);
  EXPECT_EQ(listener.told, "mu");
  db.removeReactor(&listener);
  setRadius(id, 5.0);
  EXPECT_EQ(listener.told, "mu");
}

} // namespace
