#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "quorl/db/core/database.h"
#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/host_services.h"
#include "quorl/db/core/tell_each.h"
#include "quorl/db/core/undo.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_file.h"
#include "quorl/db/table/linetype_table.h"
#include "quorl/rx/host_globals.h"

using Quorl::ErrorStatus;

namespace {

// A file name without folder is looked for where the drawing lies, then beside the host's library.
std::string linetypeFilePath(const ZnString& file, const ZnString& drawing) {
  namespace fs = std::filesystem;
  const fs::path wanted(file.utf8());
  const fs::path beside = fs::path(drawing.utf8()).parent_path() / wanted;
  std::error_code none;
  if (wanted.is_absolute() || fs::exists(wanted, none)) return wanted.string();
  if (!drawing.isEmpty() && fs::exists(beside, none)) return beside.string();
  return (fs::path(Quorl::libraryFolder().utf8()) / wanted).string();
}

ErrorStatus fillLinetype(ZnDbLinetypeTableRecord& record, const ZnDbLinetypeDescription& spec) {
  if (const ErrorStatus status = record.setName(spec.name); status != Quorl::eOk) return status;
  record.setDescription(spec.description);
  record.setDashCount(static_cast<int>(spec.dashes.size()));
  for (size_t i = 0; i < spec.dashes.size(); ++i) record.setDashLengthAt(static_cast<int>(i), spec.dashes[i]);
  record.setIsScaledToFit(spec.scaledToFit);
  return Quorl::eOk;
}

} // namespace

void ZnDbDatabase::noteHeaderChange(const ZnString& name, bool before) {
  zndbTellEach(reactors_, [&](ZnDbDatabaseReactor& reactor) {
    before ? reactor.headerVariableWillChange(this, name) : reactor.headerVariableChanged(this, name, true);
  });
}

// Whoever watches hears of a change that is taken back as of the change itself.
void ZnDbDatabase::changeHeader(const ZnString& name, std::function<void()> exchange) {
  const auto told = [this, name, exchange = std::move(exchange)] {
    noteHeaderChange(name, true);
    exchange();
    noteHeaderChange(name, false);
  };
  told();
  undo_->keepHeader(told);
}

// Header ids change alike: the record must be of the right class.
ErrorStatus ZnDbDatabase::changeHeaderId(ZnDbObjectId ZnDbHeaderIds::*place, ZnDbObjectId id,
                                         const ZnRxClass* cls, const wchar_t* name) {
  if (id.isErased() || id.database() != this || !id.isDerivedFrom(cls)) return Quorl::eInvalidInput;
  if (ids_.*place == id) return Quorl::eOk;
  changeHeader(name,
               [this, place, kept = std::make_shared<ZnDbObjectId>(id)] { std::swap(*kept, ids_.*place); });
  return Quorl::eOk;
}

ErrorStatus ZnDbDatabase::setCurrentSpaceId(ZnDbObjectId blockRecord) {
  return changeHeaderId(&ZnDbHeaderIds::currentSpace, blockRecord, ZnDbBlockTableRecord::desc(), L"CTAB");
}

ErrorStatus ZnDbDatabase::setCurrentLayer(ZnDbObjectId layer) {
  return changeHeaderId(&ZnDbHeaderIds::clayer, layer, ZnDbLayerTableRecord::desc(), L"CurrentLayer");
}

ErrorStatus ZnDbDatabase::setCurrentLinetype(ZnDbObjectId linetype) {
  return changeHeaderId(&ZnDbHeaderIds::celtype, linetype, ZnDbLinetypeTableRecord::desc(),
                        L"CurrentLinetype");
}

ErrorStatus ZnDbDatabase::setCurrentDimensionStyle(ZnDbObjectId style) {
  return changeHeaderId(&ZnDbHeaderIds::dimstyle, style, ZnDbDimStyleTableRecord::desc(),
                        L"CurrentDimensionStyle");
}

ErrorStatus ZnDbDatabase::setLtscale(double scale) {
  if (!(scale > 0.0) || !std::isfinite(scale)) return Quorl::eOutOfRange;
  put(ZnDbDrawingVariables::linetypeScaleName(), ZnRxVariableValue::ofDouble(scale));
  return Quorl::eOk;
}

void ZnDbDatabase::installVariable(ZnAtom name, const ZnRxVariableValue& value) {
  std::optional<ZnRxVariableValue> kept = value;
  variables_.exchange(name, kept);
}

void ZnDbDatabase::put(ZnAtom name, const ZnRxVariableValue& value) {
  changeHeader(ZnString(name),
               [this, name, kept = std::make_shared<std::optional<ZnRxVariableValue>>(value)] {
                 variables_.exchange(name, *kept);
               });
}

ErrorStatus ZnDbDatabase::loadLineTypeFile(const ZnString& name, const ZnString& file) {
  ZnDbHolder<ZnDbLinetypeTable> table(ids_.linetypeTable);
  if (!table.isOpen()) return table.status();
  const bool all = name == L"*";
  if (!all && table->has(name)) return Quorl::eDuplicateKey;
  std::vector<ZnDbLinetypeDescription> specs;
  ZnString error;
  const ErrorStatus read = zndbReadLinetypeFile(linetypeFilePath(file, fileName_), name, specs, error);
  if (read != Quorl::eOk) return read;
  if (specs.empty()) return Quorl::eKeyNotFound;
  if (const ErrorStatus status = table.upgrade(); status != Quorl::eOk) return status;
  for (const ZnDbLinetypeDescription& spec : specs) {
    if (table->has(spec.name)) continue;
    auto* record = new ZnDbLinetypeTableRecord;
    ErrorStatus status = fillLinetype(*record, spec);
    ZnDbObjectId id;
    if (status == Quorl::eOk) status = table->add(id, record);
    if (status != Quorl::eOk) {
      delete record;
      return status;
    }
    record->close();
  }
  return Quorl::eOk;
}

ZnDb::LineWeight ZnDbDatabase::getNearestLineWeight(int hundredthsOfMm) {
  static constexpr ZnDb::LineWeight kWeights[] = {
      ZnDb::kLineWeight000, ZnDb::kLineWeight005, ZnDb::kLineWeight009, ZnDb::kLineWeight013,
      ZnDb::kLineWeight015, ZnDb::kLineWeight018, ZnDb::kLineWeight020, ZnDb::kLineWeight025,
      ZnDb::kLineWeight030, ZnDb::kLineWeight035, ZnDb::kLineWeight040, ZnDb::kLineWeight050,
      ZnDb::kLineWeight053, ZnDb::kLineWeight060, ZnDb::kLineWeight070, ZnDb::kLineWeight080,
      ZnDb::kLineWeight090, ZnDb::kLineWeight100, ZnDb::kLineWeight106, ZnDb::kLineWeight120,
      ZnDb::kLineWeight140, ZnDb::kLineWeight158, ZnDb::kLineWeight200, ZnDb::kLineWeight211};
  ZnDb::LineWeight nearest = kWeights[0];
  for (const ZnDb::LineWeight weight : kWeights)
    if (std::abs(weight - hundredthsOfMm) < std::abs(nearest - hundredthsOfMm)) nearest = weight;
  return nearest;
}

ZnGeMatrix3d zndbUcsMatrix(const ZnDbDatabase* database) {
  if (!database) database = zndbHostApplicationServices()->workingDatabase();
  return database ? database->ucsMatrix() : ZnGeMatrix3d();
}
