#include "quorl/db/table/layer_table.h"

#include "quorl/db/core/database.h"
#include "quorl/db/core/fields.h"
#include "quorl/db/table/linetype_table.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbLayerTable, ZnDbSymbolTable, L"LAYERTABLE")
ZNRX_DEFINE_DRAWING_CLASS(ZnDbLayerTableRecord, ZnDbSymbolTableRecord, L"LAYER")

namespace {

// A layer's own weight; by layer and by block have nothing to refer to here.
bool isLayerWeight(std::int64_t weight) {
  if (weight == ZnDb::kLineWeightByDefault) return true;
  return weight >= 0 && weight <= ZnDb::kLineWeight211 &&
         ZnDbDatabase::getNearestLineWeight(static_cast<int>(weight)) == weight;
}

constexpr auto kLayerWeights = ZnDbRule::passing(isLayerWeight, ZnDb::kLineWeightByDefault);

} // namespace

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
  linetypeUse_.exchange(linetypeId_, linetype);
  return Quorl::eOk;
}

ErrorStatus ZnDbLayerTableRecord::setLineWeight(ZnDb::LineWeight weight) {
  assertWriteEnabled();
  return ZnDbRule::take(lineWeight_, weight, kLayerWeights);
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

ErrorStatus ZnDbLayerTableRecord::judgePlace(const ZnDbDatabase& drawing) const {
  if (!linetypeId_.isNull() && (linetypeId_.isErased() || linetypeId_.database() != &drawing))
    return Quorl::eInvalidInput;
  return ZnDbSymbolTableRecord::judgePlace(drawing);
}

void ZnDbLayerTableRecord::attachLinks() {
  ZnDbSymbolTableRecord::attachLinks();
  if (database() && !isErased()) linetypeUse_.attach(linetypeId_);
}

void ZnDbLayerTableRecord::detachLinks() {
  ZnDbSymbolTableRecord::detachLinks();
  linetypeUse_.detach(linetypeId_);
}

template<class Walk> void ZnDbLayerTableRecord::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(90, L"color", color_);
  walk.id(ZnReferenceKind::kHardPointer, 340, L"linetype", linetypeId_,
          {ZnDbLinetypeTableRecord::desc(), &ZnDbDatabase::continuousLinetype});
  walk.field(60, L"line weight", zndbAs<std::int16_t>(lineWeight_), kLayerWeights);
  walk.field(91, L"transparency", transparency_);
  walk.field(290, L"off", off_);
  walk.field(291, L"frozen", frozen_);
  walk.field(292, L"locked", locked_);
  walk.field(293, L"plottable", plottable_);
}

ZNDB_DEFINE_FIELDS(ZnDbLayerTableRecord, ZnDbSymbolTableRecord)
