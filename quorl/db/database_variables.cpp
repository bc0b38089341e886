#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "quorl/db/block_table.h"
#include "quorl/db/database.h"
#include "quorl/db/database_reactor.h"
#include "quorl/db/dim_style_table.h"
#include "quorl/db/host_services.h"
#include "quorl/db/layer_table.h"
#include "quorl/db/linetype_file.h"
#include "quorl/db/linetype_table.h"
#include "quorl/db/tell_each.h"
#include "quorl/db/undo.h"
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

ErrorStatus fillLinetype(ZnDbLinetypeTableRecord& record, const ZnDbLinetypeSpec& spec) {
  if (const ErrorStatus status = record.setName(spec.name); status != Quorl::eOk) return status;
  record.setDescription(spec.description);
  record.setNumDashes(static_cast<int>(spec.dashes.size()));
  for (size_t i = 0; i < spec.dashes.size(); ++i) record.setDashLengthAt(static_cast<int>(i), spec.dashes[i]);
  record.setIsScaledToFit(spec.scaledToFit);
  return Quorl::eOk;
}

const ZnString& ltscaleName() {
  static const ZnString name(L"LTSCALE");
  return name;
}

} // namespace

void ZnDbDatabase::noteHeaderChange(const wchar_t* name, bool before) {
  if (reactors_.empty()) return;
  const ZnString text(name);
  zndbTellEach(reactors_, [&](ZnDbDatabaseReactor& reactor) {
    before ? reactor.headerSysVarWillChange(this, text) : reactor.headerSysVarChanged(this, text, true);
  });
}

// Header ids change alike: the record must be of the right class, the old value is kept, watchers are told.
ErrorStatus ZnDbDatabase::changeHeaderId(ZnDbObjectId ZnDbDatabase::*place, ZnDbObjectId id,
                                         const ZnRxClass* cls, const wchar_t* name) {
  if (id.isErased() || id.database() != this || !id.isDerivedFrom(cls)) return Quorl::eInvalidInput;
  if (this->*place == id) return Quorl::eOk;
  noteHeaderChange(name, true);
  undo_->keepHeader([this, place, kept = this->*place]() mutable { std::swap(kept, this->*place); });
  this->*place = id;
  noteHeaderChange(name, false);
  return Quorl::eOk;
}

ErrorStatus ZnDbDatabase::setCurrentSpaceId(ZnDbObjectId blockRecord) {
  return changeHeaderId(&ZnDbDatabase::currentSpaceId_, blockRecord, ZnDbBlockTableRecord::desc(), L"CTAB");
}

ErrorStatus ZnDbDatabase::setClayer(ZnDbObjectId layer) {
  return changeHeaderId(&ZnDbDatabase::clayer_, layer, ZnDbLayerTableRecord::desc(), L"CLAYER");
}

ErrorStatus ZnDbDatabase::setCeltype(ZnDbObjectId linetype) {
  return changeHeaderId(&ZnDbDatabase::celtype_, linetype, ZnDbLinetypeTableRecord::desc(), L"CELTYPE");
}

ErrorStatus ZnDbDatabase::setDimstyle(ZnDbObjectId style) {
  return changeHeaderId(&ZnDbDatabase::dimstyle_, style, ZnDbDimStyleTableRecord::desc(), L"DIMSTYLE");
}

double ZnDbDatabase::ltscale() const { return ltscale_; }

ErrorStatus ZnDbDatabase::setLtscale(double scale) {
  if (!(scale > 0.0) || !std::isfinite(scale)) return Quorl::eOutOfRange;
  put(ltscaleName().atom(), ZnRxVariableValue::ofDouble(scale));
  return Quorl::eOk;
}

const ZnRxVariableValue* ZnDbDatabase::find(ZnAtom name) const {
  const auto found = variables_.find(name);
  return found == variables_.end() ? nullptr : &found->second;
}

// An absent value is a state of its own: undoing the first change makes the value absent again.
void ZnDbDatabase::exchangeVariable(ZnAtom name, std::optional<ZnRxVariableValue>& value) {
  std::optional<ZnRxVariableValue> before;
  if (const ZnRxVariableValue* held = find(name)) before = *held;
  if (value)
    variables_[name] = *value;
  else
    variables_.erase(name);
  value = before;
  if (name != ltscaleName().atom()) return;
  const ZnRxVariableValue* held = find(name);
  ltscale_ = held ? held->number().value_or(1.0) : 1.0;
}

void ZnDbDatabase::put(ZnAtom name, const ZnRxVariableValue& value) {
  const std::wstring text(name.text());
  noteHeaderChange(text.c_str(), true);
  std::optional<ZnRxVariableValue> exchanged = value;
  exchangeVariable(name, exchanged);
  undo_->keepHeader([this, name, exchanged]() mutable { exchangeVariable(name, exchanged); });
  noteHeaderChange(text.c_str(), false);
}

ErrorStatus ZnDbDatabase::loadLineTypeFile(const ZnString& name, const ZnString& file) {
  ZnDbHolder<ZnDbLinetypeTable> table(linetypeTableId_);
  if (!table.isOpen()) return table.status();
  const bool all = name == L"*";
  if (!all && table->has(name)) return Quorl::eDuplicateKey;
  std::vector<ZnDbLinetypeSpec> specs;
  ZnString error;
  const ErrorStatus read = zndbReadLinetypeFile(linetypeFilePath(file, fileName_), name, specs, error);
  if (read != Quorl::eOk) return read;
  if (specs.empty()) return Quorl::eKeyNotFound;
  if (const ErrorStatus status = table.upgrade(); status != Quorl::eOk) return status;
  for (const ZnDbLinetypeSpec& spec : specs) {
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
      ZnDb::kLnWt000, ZnDb::kLnWt005, ZnDb::kLnWt009, ZnDb::kLnWt013, ZnDb::kLnWt015, ZnDb::kLnWt018,
      ZnDb::kLnWt020, ZnDb::kLnWt025, ZnDb::kLnWt030, ZnDb::kLnWt035, ZnDb::kLnWt040, ZnDb::kLnWt050,
      ZnDb::kLnWt053, ZnDb::kLnWt060, ZnDb::kLnWt070, ZnDb::kLnWt080, ZnDb::kLnWt090, ZnDb::kLnWt100,
      ZnDb::kLnWt106, ZnDb::kLnWt120, ZnDb::kLnWt140, ZnDb::kLnWt158, ZnDb::kLnWt200, ZnDb::kLnWt211};
  ZnDb::LineWeight nearest = kWeights[0];
  for (const ZnDb::LineWeight weight : kWeights)
    if (std::abs(weight - hundredthsOfMm) < std::abs(nearest - hundredthsOfMm)) nearest = weight;
  return nearest;
}

ZnGeMatrix3d zndbUcsMatrix(const ZnDbDatabase* database) {
  if (!database) database = zndbHostApplicationServices()->workingDatabase();
  return database ? database->ucsMatrix() : ZnGeMatrix3d();
}
