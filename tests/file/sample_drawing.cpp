#include "file/sample_drawing.h"

#include <cmath>
#include <limits>

#include "db/entity_samples.h"
#include "quorl/db/entity/dimension.h"
#include "quorl/db/entity/text.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/external_link.h"
#include "quorl/file/tdoc_items.h"

#include <xxhash.h>

namespace fileTest {

namespace {

void addTexts(ZnDbObjectId space) {
  for (const wchar_t* text : {L"", L" both ends ", L"two\nlines\r\nand a back\\slash \\n",
                              L"\u00e4\u6f22\u5b57\U0001F4D0", L"0", L"1001", L"tab\tand bell\a"})
    append(space, new ZnDbText(ZnGePoint3d(1, 2, 3), text, 2.5));
}

void addExtremeLines(ZnDbObjectId space) {
  using Limits = std::numeric_limits<double>;
  for (const double value : {-0.0, Limits::denorm_min(), -Limits::min(), 1e308, Limits::max(), 0.1, 1.0 / 3.0,
                             std::nextafter(1.0, 2.0), 123456789012345678.0})
    append(space, new ZnDbLine(ZnGePoint3d(value, -value, 0), ZnGePoint3d(0, 1, value)));
}

void addBlocks(ZnDbDatabase& database, ZnDbObjectId layer, ZnDbObjectId style) {
  const ZnDbObjectId inner = addRecord<ZnDbBlockTableRecord>(database.blockTableId(), L"inner");
  const ZnDbObjectId outer = addRecord<ZnDbBlockTableRecord>(database.blockTableId(), L"*U");
  for (const dbTest::EntitySample& sample : dbTest::entitySamples()) {
    auto* entity = sample.make().release();
    const bool reference = entity->isKindOf(ZnDbBlockReference::desc());
    if (reference) static_cast<ZnDbBlockReference*>(entity)->setBlockTableRecord(inner);
    const ZnDbObjectId id = append(reference ? outer : inner, entity);
    change(id, [&](ZnDbEntity& open) {
      EXPECT_EQ(open.setLayer(layer), Quorl::eOk);
      open.setColor(ZnCmColor::fromRgb(1, 200, 30));
      open.setLinetypeScale(0.7);
      if (auto* dimension = ZnDbDimension::cast(&open)) dimension->setDimensionStyle(style);
    });
  }
  append(outer, new ZnDbBlockReference(ZnGePoint3d(1, 0, 0), inner));
  // Layers above have references of their own.
  for (const ZnRxClass* cls : znrxClasses()) {
    if (cls->appName() != L"Quorl" || cls->isAbstract() || cls->parent() != ZnDbBlockReference::desc())
      continue;
    auto* reference = static_cast<ZnDbBlockReference*>(cls->create());
    reference->setBlockTableRecord(inner);
    append(outer, reference);
  }
  append(database.modelSpaceId(), new ZnDbBlockReference(ZnGePoint3d(0, 5, 0), outer));
  append(database.paperSpaceId(), new ZnDbBlockReference(ZnGePoint3d(0, 0, 9), outer));
}

void addVariables(ZnDbDatabase& database) {
  const std::pair<const wchar_t*, ZnRxVariableValue> values[] = {
      {L"SAMPLEBOOL", ZnRxVariableValue::ofBool(true)},
      {L"SAMPLESHORT", ZnRxVariableValue::ofInt16(-32768)},
      {L"SAMPLELONG", ZnRxVariableValue::ofInt32(2147483647)},
      {L"SAMPLEREAL", ZnRxVariableValue::ofDouble(-0.1)},
      {L"SAMPLETEXT", ZnRxVariableValue::ofString(L"a\\b\nc \u00df")},
      {L"SAMPLEEMPTY", ZnRxVariableValue::ofString(L"")}};
  for (const auto& [name, value] : values) database.put(ZnString(name).atom(), value);
  EXPECT_EQ(database.setLtscale(2.25), Quorl::eOk);
}

void addErased(ZnDbDatabase& database) {
  const ZnDbObjectId layer = addRecord<ZnDbLayerTableRecord>(database.layerTableId(), L"gone");
  append(database.modelSpaceId(), new ZnDbLine({0, 0, 0}, {1, 1, 1}));
  erase(layer);
  erase(append(database.modelSpaceId(), new ZnDbLine({0, 0, 0}, {2, 2, 2})));
  erase(addNamed(database, L"GONE", new ZnDbDictionary));
}

} // namespace

ZnDbObjectId addNamed(ZnDbDatabase& database, const wchar_t* name, ZnDbObject* object) {
  ZnDbHolder<ZnDbDictionary> named;
  EXPECT_EQ(named.openForWrite(database.namedObjectsDictionaryId()), Quorl::eOk);
  ZnDbObjectId id;
  EXPECT_EQ(named->setAt(name, object, id), Quorl::eOk);
  object->close();
  return id;
}

std::unique_ptr<ZnDbDatabase> sampleDrawing() {
  auto database = std::make_unique<ZnDbDatabase>();
  const ZnDbObjectId dashed = addRecord<ZnDbLinetypeTableRecord>(database->linetypeTableId(), L"DASHED",
                                                                 [](ZnDbLinetypeTableRecord& record) {
                                                                   record.setDescription(L"__ . __");
                                                                   record.setDashCount(3);
                                                                   const double dashes[] = {0.5, -0.25, 0.0};
                                                                   for (int i = 0; i < 3; ++i)
                                                                     record.setDashLengthAt(i, dashes[i]);
                                                                   record.setIsScaledToFit(true);
                                                                 });
  const ZnDbObjectId layer = addRecord<ZnDbLayerTableRecord>(database->layerTableId(), L"Ma\u00dfe",
                                                             [&](ZnDbLayerTableRecord& record) {
                                                               record.setLinetypeObjectId(dashed);
                                                               record.setColor(ZnCmColor::fromIndex(3));
                                                               record.setLineWeight(ZnDb::kLineWeight035);
                                                               record.setIsPlottable(false);
                                                             });
  const ZnDbObjectId style =
      addRecord<ZnDbDimStyleTableRecord>(database->dimStyleTableId(), L"Small",
                                         [](ZnDbDimStyleTableRecord& record) { record.setTextHeight(1.25); });
  addTexts(database->modelSpaceId());
  addExtremeLines(database->modelSpaceId());
  addBlocks(*database, layer, style);
  const ZnDbObjectId nested = addNamed(*database, L"SAMPLE", new ZnDbDictionary);
  change<ZnDbObject>(nested, [](ZnDbObject& o) { EXPECT_EQ(o.createExtensionDictionary(), Quorl::eOk); });
  change<ZnDbExternalLink>(addNamed(*database, L"EXTERNAL", new ZnDbExternalLink),
                           [&](ZnDbExternalLink& link) {
                             link.setPath(L"parts/plate.bdoc");
                             link.setSources({{L"1F", layer}, {L"inner|2A", style}});
                           });
  addVariables(*database);
  addErased(*database);
  database->setCurrentLayer(layer);
  database->setCurrentDimensionStyle(style);
  database->setInsertionUnits(1);
  database->setUcsMatrix(ZnGeMatrix3d({1, 2, 3}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}));
  return database;
}

std::string written(const ZnDbDatabase& database, ZnDrawingFormat format) {
  std::string bytes;
  ZnFileError error;
  EXPECT_EQ(zndbDrawingToBytes(database, format, bytes, error), Quorl::eOk) << error.text();
  EXPECT_FALSE(bytes.empty());
  return bytes;
}

std::unique_ptr<ZnDbDatabase> opened(const std::string& bytes) {
  ZnFileError error;
  std::unique_ptr<ZnDbDatabase> database = zndbDrawingFromBytes(bytes, error);
  EXPECT_NE(database, nullptr) << error.text();
  return database ? std::move(database) : std::make_unique<ZnDbDatabase>();
}

namespace {

// With what is made of each section in the place of its checksum.
template<class Hash> std::string withChecksums(const std::string& text, Hash&& hashOf) {
  std::string result;
  size_t section = 0;
  for (size_t at = 0; at < text.size();) {
    const size_t value = std::min(text.find('\n', at), text.size() - 1) + 1;
    const size_t end = std::min(text.find('\n', value), text.size() - 1) + 1;
    const std::string code = text.substr(at, value - at), said = text.substr(value, end - value);
    result += code + (code == "1001\n" ? hashOf(std::string_view(result).substr(section), said) : said);
    if (code == "1000\n") section = result.size();
    at = end;
  }
  return result;
}

} // namespace

std::string unsealed(const std::string& text) {
  return withChecksums(text, [](std::string_view, const std::string&) { return "?\n"; });
}

std::string sealed(const std::string& text) {
  return withChecksums(text, [](std::string_view section, const std::string& said) {
    if (said != "?\n") return said;
    std::string hash;
    Quorl::appendHex(hash, XXH64(section.data(), section.size(), 0));
    return hash + "\n";
  });
}

} // namespace fileTest
