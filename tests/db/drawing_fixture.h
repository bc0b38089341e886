// A new drawing with short ways to put things into it.
#pragma once

#include <gtest/gtest.h>

#include "quorl/db/core/database.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

namespace dbTest {

class Drawing : public testing::Test {
protected:
  ZnDbDatabase drawing;

  ZnDbObjectId append(ZnDbObjectId block, ZnDbEntity* entity) {
    ZnDbHolder<ZnDbBlockTableRecord> record;
    EXPECT_EQ(record.openForWrite(block), Quorl::eOk);
    ZnDbObjectId id;
    EXPECT_EQ(record->appendZnDbEntity(id, entity), Quorl::eOk);
    entity->close();
    return id;
  }
  ZnDbObjectId addToModel(ZnDbEntity* entity) { return append(drawing.modelSpaceId(), entity); }

  template<class Record> ZnDbObjectId addRecord(ZnDbObjectId tableId, const wchar_t* name) {
    ZnDbHolder<ZnDbSymbolTable> table;
    EXPECT_EQ(table.openForWrite(tableId), Quorl::eOk);
    auto* record = new Record;
    record->setName(name);
    ZnDbObjectId id;
    EXPECT_EQ(table->add(id, record), Quorl::eOk);
    record->close();
    return id;
  }
  ZnDbObjectId addBlock(const wchar_t* name) {
    return addRecord<ZnDbBlockTableRecord>(drawing.blockTableId(), name);
  }
  ZnDbObjectId addReference(ZnDbObjectId owner, ZnDbObjectId block, const ZnGeMatrix3d& transform) {
    auto* reference = new ZnDbBlockReference(ZnGePoint3d(), block);
    EXPECT_EQ(reference->setBlockTransform(transform), Quorl::eOk);
    return append(owner, reference);
  }
  std::vector<ZnDbObjectId> referencesOf(ZnDbObjectId block) {
    const ZnDbHolder<ZnDbBlockTableRecord> record(block);
    ZnArray<ZnDbObjectId> ids;
    record->getBlockReferenceIds(ids);
    return {ids.begin(), ids.end()};
  }
};

} // namespace dbTest
