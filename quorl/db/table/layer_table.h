// Layers.
#pragma once

#include "quorl/db/core/color.h"
#include "quorl/db/core/line_weight.h"
#include "quorl/db/core/use_count.h"
#include "quorl/db/table/symbol_table.h"

class ZnDbLayerTable : public ZnDbSymbolTable {
  ZNRX_DECLARE_MEMBERS(ZnDbLayerTable)

public:
  const ZnRxClass* recordClass() const override;

protected:
  void completeRecord(ZnDbSymbolTableRecord& record) const override;
};

class ZnDbLayerTableRecord : public ZnDbSymbolTableRecord {
  ZNRX_DECLARE_MEMBERS(ZnDbLayerTableRecord)

public:
  const ZnCmColor& color() const { return color_; }
  Quorl::ErrorStatus setColor(const ZnCmColor& color);
  ZnDbObjectId linetypeObjectId() const { return linetypeId_; }
  Quorl::ErrorStatus
  setLinetypeObjectId(ZnDbObjectId linetype); // eInvalidInput for an id that is no linetype
  ZnDb::LineWeight lineWeight() const { return lineWeight_; }
  Quorl::ErrorStatus setLineWeight(ZnDb::LineWeight weight); // eOutOfRange for by layer and by block
  const ZnCmTransparency& transparency() const { return transparency_; }
  Quorl::ErrorStatus setTransparency(const ZnCmTransparency& transparency);
  bool isOff() const { return off_; }
  void setIsOff(bool off);
  bool isFrozen() const { return frozen_; }
  Quorl::ErrorStatus setIsFrozen(bool frozen);
  bool isLocked() const { return locked_; }
  void setIsLocked(bool locked);
  bool isPlottable() const { return plottable_; }
  void setIsPlottable(bool plottable);
  bool isShown() const { return !off_ && !frozen_; }

  ZNDB_DECLARE_FIELDS
  Quorl::ErrorStatus judgePlace(const ZnDbDatabase& drawing) const override; // eInvalidInput for the linetype
  void attachLinks() override;
  void detachLinks() override;

protected:
  ZnString auditLabel() const override { return L"layer " + name(); }

private:
  ZnCmColor color_ = ZnCmColor::fromIndex(7);
  ZnDbObjectId linetypeId_;
  ZnDbUseCount linetypeUse_;
  ZnDb::LineWeight lineWeight_ = ZnDb::kLineWeightByDefault;
  ZnCmTransparency transparency_{255};
  bool off_ = false, frozen_ = false, locked_ = false, plottable_ = true;
};
