// A drawing of the host alone, and short ways to add to it and to change what is in it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quorl/db/core/database.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/entity/circle.h"
#include "quorl/db/entity/line.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

// Puts a new entity into the block; the drawing owns it.
inline ZnDbObjectId append(ZnDbObjectId block, ZnDbEntity* entity) {
  ZnDbHolder<ZnDbBlockTableRecord> record;
  EXPECT_EQ(record.openForWrite(block), Quorl::eOk);
  ZnDbObjectId id;
  EXPECT_EQ(record->appendZnDbEntity(id, entity), Quorl::eOk);
  entity->close();
  return id;
}

template<class Record, class Fill>
ZnDbObjectId addRecord(ZnDbObjectId tableId, const ZnString& name, Fill&& fill) {
  ZnDbHolder<ZnDbSymbolTable> table;
  EXPECT_EQ(table.openForWrite(tableId), Quorl::eOk);
  auto* record = new Record;
  EXPECT_EQ(record->setName(name), Quorl::eOk);
  ZnDbObjectId id;
  EXPECT_EQ(table->add(id, record), Quorl::eOk);
  fill(*record);
  record->close();
  return id;
}
template<class Record> ZnDbObjectId addRecord(ZnDbObjectId tableId, const ZnString& name) {
  return addRecord<Record>(tableId, name, [](Record&) {});
}

// Whatever its layer says, and erased or not.
template<class T = ZnDbEntity, class Change> void change(ZnDbObjectId id, Change&& make) {
  ZnDbHolder<T> object;
  ASSERT_EQ(object.openForWrite(id, true, true), Quorl::eOk);
  make(*object);
}
inline void erase(ZnDbObjectId id, bool erasing = true) {
  change<ZnDbObject>(id, [=](ZnDbObject& object) { EXPECT_EQ(object.erase(erasing), Quorl::eOk); });
}

struct HostDrawing {
  // To model space where no block is given.
  ZnDbObjectId add(ZnDbEntity* entity, ZnDbObjectId block = {}) {
    return append(block.isNull() ? db.modelSpaceId() : block, entity);
  }
  ZnDbObjectId addLine(const ZnGePoint3d& from, const ZnGePoint3d& to, ZnDbObjectId block = {}) {
    return add(new ZnDbLine(from, to), block);
  }
  ZnDbObjectId addCircle(double x, double radius, ZnDbObjectId block = {}) {
    return add(new ZnDbCircle(ZnGePoint3d(x, 0.0, 0.0), ZnGeVector3d::kZAxis, radius), block);
  }
  ZnDbObjectId addReference(ZnDbObjectId block, ZnDbObjectId into = {}, const ZnGeMatrix3d& transform = {}) {
    auto* reference = new ZnDbBlockReference(ZnGePoint3d(), block);
    EXPECT_EQ(reference->setBlockTransform(transform), Quorl::eOk);
    return add(reference, into);
  }
  ZnDbObjectId addBlock(const wchar_t* name) {
    return addRecord<ZnDbBlockTableRecord>(db.blockTableId(), name);
  }
  template<class Fill> ZnDbObjectId addLayer(const wchar_t* name, Fill&& fill) {
    return addRecord<ZnDbLayerTableRecord>(db.layerTableId(), name, [&](ZnDbLayerTableRecord& layer) {
      layer.setLinetypeObjectId(db.continuousLinetype());
      fill(layer);
    });
  }
  ZnDbObjectId addLinetype(const wchar_t* name, const std::vector<double>& dashes) {
    const auto fill = [&](ZnDbLinetypeTableRecord& linetype) {
      linetype.setDashCount(static_cast<int>(dashes.size()));
      for (size_t i = 0; i < dashes.size(); ++i) linetype.setDashLengthAt(static_cast<int>(i), dashes[i]);
    };
    return addRecord<ZnDbLinetypeTableRecord>(db.linetypeTableId(), name, fill);
  }
  void setRadius(ZnDbObjectId circle, double radius) {
    change<ZnDbCircle>(circle, [=](ZnDbCircle& c) { EXPECT_EQ(c.setRadius(radius), Quorl::eOk); });
  }
  double radiusOf(ZnDbObjectId circle) const { return ZnDbHolder<ZnDbCircle>(circle, true)->radius(); }
  std::vector<ZnDbObjectId> referencesOf(ZnDbObjectId block, bool directOnly = true) const {
    ZnArray<ZnDbObjectId> ids;
    EXPECT_EQ(ZnDbHolder<ZnDbBlockTableRecord>(block)->getBlockReferenceIds(ids, directOnly), Quorl::eOk);
    return {ids.begin(), ids.end()};
  }
  ZnDbUndoRecorder& undo() { return db.undoRecorder(); }

  ZnDbDatabase db;
};

// Whatever a case did, the drawing must still be sound.
struct HostDrawingTest : testing::Test, HostDrawing {
  ~HostDrawingTest() override {
    for (const ZnString& fault : db.audit(false)) ADD_FAILURE() << fault.utf8();
  }
};
