// A drawing with few objects, and the short ways to add to it.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "quorl/db/core/database.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"

class SmallDrawing : public ::testing::Test {
protected:
  ~SmallDrawing() override {
    // Whatever a case did, the drawing must still be sound.
    for (const ZnString& fault : db.audit(false)) ADD_FAILURE() << fault.utf8();
  }

  ZnDbObjectId append(ZnDbEntity* entity, ZnDbObjectId block = {}) {
    ZnDbHolder<ZnDbBlockTableRecord> record;
    EXPECT_EQ(record.openForWrite(block.isNull() ? db.modelSpaceId() : block), Quorl::eOk);
    ZnDbObjectId id;
    EXPECT_EQ(record->appendZnDbEntity(id, entity), Quorl::eOk);
    entity->close();
    return id;
  }

  ZnDbObjectId addCircle(double x, double radius, ZnDbObjectId block = {}) {
    return append(new ZnDbCircle(ZnGePoint3d(x, 0.0, 0.0), ZnGeVector3d::kZAxis, radius), block);
  }

  ZnDbObjectId addBlock(const wchar_t* name) {
    ZnDbHolder<ZnDbBlockTable> table;
    EXPECT_EQ(table.openForWrite(db.blockTableId()), Quorl::eOk);
    auto* record = new ZnDbBlockTableRecord;
    EXPECT_EQ(record->setName(name), Quorl::eOk);
    ZnDbObjectId id;
    EXPECT_EQ(table->add(id, record), Quorl::eOk);
    record->close();
    return id;
  }

  ZnDbObjectId addReference(ZnDbObjectId block, ZnDbObjectId into = {}) {
    return append(new ZnDbBlockReference(ZnGePoint3d(), block), into);
  }

  double radiusOf(ZnDbObjectId circle) const { return ZnDbHolder<ZnDbCircle>(circle, true)->radius(); }

  void setRadius(ZnDbObjectId id, double radius) {
    ZnDbHolder<ZnDbCircle> circle;
    ASSERT_EQ(circle.openForWrite(id), Quorl::eOk);
    ASSERT_EQ(circle->setRadius(radius), Quorl::eOk);
  }

  void erase(ZnDbObjectId id, bool erasing = true) {
    ZnDbHolder<ZnDbObject> object;
    ASSERT_EQ(object.openForWrite(id, true), Quorl::eOk);
    ASSERT_EQ(object->erase(erasing), Quorl::eOk);
  }

  // The drawing's objects as text: handle, class, erased mark, and for circles their size and place.
  std::string dump() const {
    std::string text;
    for (const ZnDbObjectId id : db.allObjectIds()) {
      if (id.isErased()) continue;
      text += handleText(id.handle()).utf8() + ' ' + id.objectClass()->name().utf8();
      if (id.isDerivedFrom(ZnDbCircle::desc())) {
        ZnDbHolder<ZnDbCircle> circle(id);
        text += ' ' + std::to_string(circle->radius()) + ' ' + std::to_string(circle->center().x);
      }
      text += ' ' + handleText(id.slot()->object->ownerId().handle()).utf8() + '\n';
    }
    return text;
  }

  ZnDbDatabase db;
};
