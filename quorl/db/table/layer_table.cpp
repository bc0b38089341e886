#include "quorl/db/table/layer_table.h"

#include "quorl/db/core/database.h"
#include "quorl/db/core/field_io.h"
#include "quorl/db/table/linetype_table.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbLayerTable, ZnDbSymbolTable, L"LAYERTABLE")
ZNRX_DEFINE_DRAWING_CLASS(ZnDbLayerTableRecord, ZnDbSymbolTableRecord, L"LAYER")

namespace {

constexpr std::int16_t kVersion = 1;

// A layer's own weight; by layer and by block have nothing to refer to here.
bool isLayerWeight(std::int64_t weight) {
  if (weight == ZnDb::kLineWeightByDefault) return true;
  return weight >= 0 && weight <= ZnDb::kLineWeight211 &&
         ZnDbDatabase::getNearestLineWeight(static_cast<int>(weight)) == weight;
}

} // namespace

struct ZnDbLayerTableRecord::Fields {
  ZnCmColor color;
  ZnDbObjectId linetype;
  std::int64_t lineWeight = ZnDb::kLineWeightByDefault;
  ZnCmTransparency transparency;
  bool off = false, frozen = false, locked = false, plottable = true;
  bool isUsable() const { return isLayerWeight(lineWeight); }
};

const ZnRxClass* ZnDbLayerTable::recordClass() const { return ZnDbLayerTableRecord::desc(); }

// A layer is drawn in some linetype; one that names none is drawn continuous.
void ZnDbLayerTable::completeRecord(ZnDbSymbolTableRecord& record) const {
  auto& layer = static_cast<ZnDbLayerTableRecord&>(record);
  if (layer.linetypeObjectId().isNull() && database()->continuousLinetype().isValid())
    layer.setLinetypeObjectId(database()->continuousLinetype());
}

ErrorStatus ZnDbLayerTableRecord::setColor(const ZnCmColor& color) {
  assertWriteEnabled();
  color_ = color;
  return Quorl::eOk;
}

ErrorStatus ZnDbLayerTableRecord::setLinetypeObjectId(ZnDbObjectId linetype) {
  assertWriteEnabled();
  if (linetype.isErased() || !linetype.isDerivedFrom(ZnDbLinetypeTableRecord::desc()))
    return Quorl::eInvalidInput;
  if (database() && linetype.database() != database()) return Quorl::eInvalidInput;
  linetypeId_ = linetype;
  return Quorl::eOk;
}

ErrorStatus ZnDbLayerTableRecord::setLineWeight(ZnDb::LineWeight weight) {
  assertWriteEnabled();
  if (!isLayerWeight(weight)) return Quorl::eOutOfRange;
  lineWeight_ = weight;
  return Quorl::eOk;
}

ErrorStatus ZnDbLayerTableRecord::setTransparency(const ZnCmTransparency& transparency) {
  assertWriteEnabled();
  transparency_ = transparency;
  return Quorl::eOk;
}

void ZnDbLayerTableRecord::setIsOff(bool off) {
  assertWriteEnabled();
  off_ = off;
}

// What is drawn next must be seen: the current layer does not freeze.
ErrorStatus ZnDbLayerTableRecord::setIsFrozen(bool frozen) {
  assertWriteEnabled();
  if (frozen && database() && database()->clayer() == objectId()) return Quorl::eInvalidInput;
  frozen_ = frozen;
  return Quorl::eOk;
}

void ZnDbLayerTableRecord::setIsLocked(bool locked) {
  assertWriteEnabled();
  locked_ = locked;
}

void ZnDbLayerTableRecord::setIsPlottable(bool plottable) {
  assertWriteEnabled();
  plottable_ = plottable;
}

template<class Filer> ErrorStatus ZnDbLayerTableRecord::takeOver(Filer& filer, Fields& read) {
  Fields fields;
  if (zndbTakeOver(filer, fields, std::move(read)) != Quorl::eOk) return filer.status();
  color_ = fields.color;
  linetypeId_ = fields.linetype;
  lineWeight_ = static_cast<ZnDb::LineWeight>(fields.lineWeight);
  transparency_ = fields.transparency;
  off_ = fields.off;
  frozen_ = fields.frozen;
  locked_ = fields.locked;
  plottable_ = fields.plottable;
  return filer.status();
}

ErrorStatus ZnDbLayerTableRecord::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::bdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeInt16(kVersion);
  filer.writeInt32(static_cast<std::int32_t>(color_.packed()));
  filer.writeHardPointerId(linetypeId_);
  filer.writeInt16(lineWeight_);
  filer.writeInt32(static_cast<std::int32_t>(transparency_.packed()));
  for (const bool flag : {off_, frozen_, locked_, plottable_}) filer.writeBool(flag);
  return filer.status();
}

ErrorStatus ZnDbLayerTableRecord::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::bdocInFields(filer); status != Quorl::eOk)
    return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Fields read;
  read.color = ZnCmColor::fromPacked(static_cast<std::uint32_t>(filer.readInt32()));
  read.linetype = filer.readHardPointerId();
  read.lineWeight = filer.readInt16();
  read.transparency = ZnCmTransparency::fromPacked(static_cast<std::uint32_t>(filer.readInt32()));
  for (bool* flag : {&read.off, &read.frozen, &read.locked, &read.plottable}) *flag = filer.readBool();
  return takeOver(filer, read);
}

ErrorStatus ZnDbLayerTableRecord::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::tdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeSubclassMarker(className());
  filer.writeInteger(90, color_.packed());
  filer.writeId(340, linetypeId_);
  filer.writeInteger(60, lineWeight_);
  filer.writeInteger(91, transparency_.packed());
  filer.writeBool(290, off_);
  filer.writeBool(291, frozen_);
  filer.writeBool(292, locked_);
  filer.writeBool(293, plottable_);
  return filer.status();
}

ErrorStatus ZnDbLayerTableRecord::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::tdocInFields(filer); status != Quorl::eOk)
    return status;
  Fields read{color_, linetypeId_, lineWeight_, transparency_, off_, frozen_, locked_, plottable_};
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 90) read.color = ZnCmColor::fromPacked(static_cast<std::uint32_t>(item.integer));
    if (item.code == 340) read.linetype = item.id;
    if (item.code == 60) read.lineWeight = item.integer;
    if (item.code == 91)
      read.transparency = ZnCmTransparency::fromPacked(static_cast<std::uint32_t>(item.integer));
    if (item.code == 290) read.off = item.integer != 0;
    if (item.code == 291) read.frozen = item.integer != 0;
    if (item.code == 292) read.locked = item.integer != 0;
    if (item.code == 293) read.plottable = item.integer != 0;
  });
  return takeOver(filer, read);
}

void ZnDbLayerTableRecord::audit(std::vector<ZnString>& faults, bool fix) {
  ZnDbSymbolTableRecord::audit(faults, fix);
  if (!database() || (!linetypeId_.isErased() && linetypeId_.isDerivedFrom(ZnDbLinetypeTableRecord::desc())))
    return;
  faults.push_back(L"layer " + name() + L": its linetype is missing");
  if (fix) linetypeId_ = database()->continuousLinetype();
}
