#include "quorl/db/core/database.h"
#include "quorl/db/core/database_version.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/layout.h"
#include "quorl/db/table/linetype_table.h"

namespace {

// Objects of a new drawing can't be refused by anything but a bug.
template<class T> ZnDbObjectId added(ZnDbDatabase& database, T* object, ZnDbObjectId owner) {
  ZnDbObjectId id;
  QUORL_ASSERT(database.addObject(object, owner, id) == Quorl::eOk);
  object->close();
  return id;
}

template<class Record>
ZnDbObjectId addedRecord(ZnDbObjectId tableId, const wchar_t* name, ZnDbObjectId linetype = {}) {
  ZnDbHolder<ZnDbSymbolTable> table;
  QUORL_ASSERT(table.openForWrite(tableId) == Quorl::eOk);
  auto* record = new Record;
  record->setName(name);
  ZnDbObjectId id;
  QUORL_ASSERT(table->add(id, record) == Quorl::eOk);
  if constexpr (std::is_same_v<Record, ZnDbLayerTableRecord>) record->setLinetypeObjectId(linetype);
  record->close();
  return id;
}

void addLayout(ZnDbObjectId dictionaryId, const wchar_t* name, ZnDbObjectId block, int order) {
  ZnDbHolder<ZnDbDictionary> dictionary;
  QUORL_ASSERT(dictionary.openForWrite(dictionaryId) == Quorl::eOk);
  auto* layout = new ZnDbLayout;
  ZnDbObjectId id;
  QUORL_ASSERT(dictionary->setAt(name, layout, id) == Quorl::eOk);
  layout->setLayoutName(name);
  layout->setBlockTableRecordId(block);
  layout->setTabOrder(order);
  layout->close();
  ZnDbHolder<ZnDbBlockTableRecord> record;
  QUORL_ASSERT(record.openForWrite(block) == Quorl::eOk);
  record->assertWriteEnabled();
  record->setLayoutId(id);
}

} // namespace

void zndbBuildDefaults(ZnDbDatabase& database) {
  ZnDbDatabase::HeaderIds ids;
  ids.blockTable = added(database, new ZnDbBlockTable, {});
  ids.layerTable = added(database, new ZnDbLayerTable, {});
  ids.linetypeTable = added(database, new ZnDbLinetypeTable, {});
  ids.dimStyleTable = added(database, new ZnDbDimStyleTable, {});
  ids.namedObjects = added(database, new ZnDbDictionary, {});

  ids.byBlock = addedRecord<ZnDbLinetypeTableRecord>(ids.linetypeTable, L"ByBlock");
  ids.byLayer = addedRecord<ZnDbLinetypeTableRecord>(ids.linetypeTable, L"ByLayer");
  ids.continuous = addedRecord<ZnDbLinetypeTableRecord>(ids.linetypeTable, L"CONTINUOUS");
  ids.layerZero = addedRecord<ZnDbLayerTableRecord>(ids.layerTable, L"0", ids.continuous);
  ids.dimstyle = addedRecord<ZnDbDimStyleTableRecord>(ids.dimStyleTable, L"Standard");
  ids.modelSpace = addedRecord<ZnDbBlockTableRecord>(ids.blockTable, L"*Model_Space");
  ids.paperSpace = addedRecord<ZnDbBlockTableRecord>(ids.blockTable, L"*Paper_Space");
  ids.currentSpace = ids.modelSpace;
  ids.clayer = ids.layerZero;
  ids.celtype = ids.byLayer;
  database.setHeaderIds(ids);

  ZnDbHolder<ZnDbDictionary> named;
  QUORL_ASSERT(named.openForWrite(ids.namedObjects) == Quorl::eOk);
  auto* layouts = new ZnDbDictionary;
  ZnDbObjectId layoutsId;
  QUORL_ASSERT(named->setAt(L"QUORL_LAYOUT", layouts, layoutsId) == Quorl::eOk);
  layouts->close();
  addLayout(layoutsId, L"Model", ids.modelSpace, 0);
  addLayout(layoutsId, L"Layout1", ids.paperSpace, 1);
}
