#include "quorl/file/drawing_header.h"

#include <algorithm>

#include "quorl/db/core/database_version.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"
#include "quorl/file/handle_index.h"

namespace {

using Ids = ZnDbDatabase::HeaderIds;

// The order is that of the files.
constexpr ZnDrawingHeader::Place kHeaderIds[ZnDrawingHeader::kIds] = {
    {"block-table", &Ids::blockTable, ZnDbBlockTable::desc, true},
    {"layer-table", &Ids::layerTable, ZnDbLayerTable::desc, true},
    {"linetype-table", &Ids::linetypeTable, ZnDbLinetypeTable::desc, true},
    {"dimension-style-table", &Ids::dimStyleTable, ZnDbDimStyleTable::desc, true},
    {"named-objects", &Ids::namedObjects, ZnDbDictionary::desc, true},
    {"model-space", &Ids::modelSpace, ZnDbBlockTableRecord::desc, true, L"*Model_Space"},
    {"paper-space", &Ids::paperSpace, ZnDbBlockTableRecord::desc, true, L"*Paper_Space"},
    {"layer-zero", &Ids::layerZero, ZnDbLayerTableRecord::desc, true, L"0"},
    {"linetype-by-layer", &Ids::byLayer, ZnDbLinetypeTableRecord::desc, true, L"ByLayer"},
    {"linetype-by-block", &Ids::byBlock, ZnDbLinetypeTableRecord::desc, true, L"ByBlock"},
    {"linetype-continuous", &Ids::continuous, ZnDbLinetypeTableRecord::desc, true, L"CONTINUOUS"},
    {"current-space", &Ids::currentSpace, ZnDbBlockTableRecord::desc, false, nullptr, &Ids::modelSpace},
    {"current-layer", &Ids::clayer, ZnDbLayerTableRecord::desc, false, nullptr, &Ids::layerZero},
    {"current-linetype", &Ids::celtype, ZnDbLinetypeTableRecord::desc, false, nullptr, &Ids::byLayer},
    {"current-dimension-style", &Ids::dimstyle, ZnDbDimStyleTableRecord::desc, false, L"Standard"},
};

constexpr char kPlace[] = "section header";
constexpr int kColumns = 4;

// Rows of four, the last row of the matrix being always the same.
int row(size_t element) { return static_cast<int>(element) / kColumns; }
int column(size_t element) { return static_cast<int>(element) % kColumns; }

} // namespace

const ZnDrawingHeader::Place& ZnDrawingHeader::place(size_t index) { return kHeaderIds[index]; }

bool ZnDrawingHeader::of(const ZnDbDatabase& database, std::uint64_t objectCount, ZnDrawingHeader& header,
                         ZnFileError& error) {
  const Ids ids = database.headerIds();
  for (size_t i = 0; i < kIds; ++i) {
    const Place& entry = kHeaderIds[i];
    const ZnDbObjectId id = ids.*entry.place;
    header.handles[i] = id.isErased() ? 0 : id.handle().value;
    if (entry.required && header.handles[i] == 0)
      return error.fail(Quorl::eInvalidInput, kPlace, std::string("the drawing has no ") + entry.name, "one");
  }
  header.nextHandle = database.nextHandle().value;
  header.objectCount = objectCount;
  header.version = Quorl::kFileVersion;
  header.maintenanceVersion = Quorl::kFileMaintenanceVersion;
  header.insertionUnits = database.insertionUnits();
  for (size_t i = 0; i < kUcs; ++i) header.ucs[i] = database.ucsMatrix()(row(i), column(i));
  for (const auto& [name, value] : database.variables()) header.variables.emplace_back(ZnString(name), value);
  std::sort(header.variables.begin(), header.variables.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  return true;
}

bool ZnDrawingHeader::apply(ZnDbDatabase& database, const ZnHandleIndex& index, ZnFileError& error) const {
  Ids ids;
  for (size_t i = 0; i < kIds; ++i) {
    const Place& entry = kHeaderIds[i];
    const ZnDbObjectId id = index.find(handles[i]);
    const std::string shown = handleText(ZnDbHandle(handles[i])).utf8();
    if (id.isNull() && entry.required)
      return error.fail(Quorl::eFileDamaged, kPlace,
                        std::string(entry.name) + " is " + shown + ", which is not in the file", "an object");
    if (!id.isNull() && !id.isDerivedFrom(entry.cls()))
      return error.fail(Quorl::eFileDamaged, kPlace,
                        std::string(entry.name) + " is " + shown + ", a " + id.objectClass()->name().utf8(),
                        "a " + entry.cls()->name().utf8());
    ids.*entry.place = id.isNull() && entry.substitute ? ids.*entry.substitute : id;
  }
  database.setHeaderIds(ids);
  database.setNextHandle(ZnDbHandle(nextHandle));
  database.setOriginalFileSavedBy(version, maintenanceVersion);
  database.setInsertionUnits(insertionUnits);
  ZnGeMatrix3d matrix;
  for (size_t i = 0; i < kUcs; ++i) matrix.setElement(row(i), column(i), ucs[i]);
  database.setUcsMatrix(matrix);
  for (const auto& [name, value] : variables) database.installVariable(name.atom(), value);
  return true;
}
