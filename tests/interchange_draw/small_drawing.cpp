#include "interchange_draw/small_drawing.h"

#include "quorl/db/entity/line.h"
#include "quorl/db/table/linetype_table.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace interchange_test {

namespace {

template<class Table, class Record>
ZnDbObjectId addRecord(ZnDbObjectId tableId, const wchar_t* name, const std::function<void(Record&)>& set) {
  ZnDbHolder<Table> table;
  EXPECT_EQ(table.openForWrite(tableId), Quorl::eOk);
  auto* record = new Record;
  record->setName(name);
  ZnDbObjectId id;
  EXPECT_EQ(table->add(id, record), Quorl::eOk);
  set(*record);
  record->close();
  return id;
}

// Gone when the program ends.
struct ScratchFolder {
  std::filesystem::path path =
      std::filesystem::path(testing::TempDir()) / ("interchange_draw_" + std::to_string(::getpid()));
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};

} // namespace

ZnDbObjectId SmallDrawing::add(ZnDbEntity* entity, ZnDbObjectId block) {
  ZnDbHolder<ZnDbBlockTableRecord> record;
  EXPECT_EQ(record.openForWrite(block.isNull() ? database.modelSpaceId() : block), Quorl::eOk);
  ZnDbObjectId id;
  EXPECT_EQ(record->appendZnDbEntity(id, entity), Quorl::eOk);
  entity->setDatabaseDefaults(&database);
  entity->close();
  return id;
}

ZnDbObjectId SmallDrawing::addLine(double x1, double y1, double x2, double y2, ZnDbObjectId block) {
  return add(new ZnDbLine(ZnGePoint3d(x1, y1, 0), ZnGePoint3d(x2, y2, 0)), block);
}

ZnDbObjectId SmallDrawing::addLinetype(const wchar_t* name, std::initializer_list<double> lengths) {
  return addRecord<ZnDbLinetypeTable, ZnDbLinetypeTableRecord>(
      database.linetypeTableId(), name, [&](ZnDbLinetypeTableRecord& record) {
        record.setDashCount(static_cast<int>(lengths.size()));
        int index = 0;
        for (const double length : lengths) record.setDashLengthAt(index++, length);
      });
}

ZnDbObjectId SmallDrawing::addLayer(const wchar_t* name,
                                    const std::function<void(ZnDbLayerTableRecord&)>& set) {
  return addRecord<ZnDbLayerTable, ZnDbLayerTableRecord>(
      database.layerTableId(), name, [&](ZnDbLayerTableRecord& record) {
        record.setLinetypeObjectId(database.continuousLinetype());
        set(record);
      });
}

ZnDbObjectId SmallDrawing::addBlock(const wchar_t* name) {
  return addRecord<ZnDbBlockTable, ZnDbBlockTableRecord>(database.blockTableId(), name,
                                                         [](ZnDbBlockTableRecord&) {});
}

void SmallDrawing::change(ZnDbObjectId id, const std::function<void(ZnDbEntity&)>& set) {
  ZnDbHolder<ZnDbEntity> entity;
  ASSERT_EQ(entity.openForWrite(id), Quorl::eOk);
  set(*entity);
}

std::string scratchPath(const std::string& name) {
  static const ScratchFolder scratch;
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::filesystem::path folder = scratch.path / test->name();
  std::filesystem::create_directories(folder);
  return (folder / name).string();
}

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace interchange_test
