// Linetypes: patterns of dashes (positive), gaps (negative) and dots (zero), in drawing units.
#pragma once

#include <vector>

#include "quorl/db/table/symbol_table.h"

class ZnDbLinetypeTable : public ZnDbSymbolTable {
  ZNRX_DECLARE_MEMBERS(ZnDbLinetypeTable)

public:
  const ZnRxClass* recordClass() const override;
};

class ZnDbLinetypeTableRecord : public ZnDbSymbolTableRecord {
  ZNRX_DECLARE_MEMBERS(ZnDbLinetypeTableRecord)

public:
  const ZnString& description() const { return description_; }
  void setDescription(const ZnString& description);
  int numDashes() const { return static_cast<int>(dashes_.size()); }
  void setDashCount(int count);
  double dashLengthAt(int index) const;                         // 0 outside the pattern
  Quorl::ErrorStatus setDashLengthAt(int index, double length); // eOutOfRange
  ZnDbObjectId shapeStyleAt(int index) const;                   // null: no shape there
  Quorl::ErrorStatus setShapeStyleAt(int index, ZnDbObjectId style);
  ZnString textAt(int index) const;
  Quorl::ErrorStatus setTextAt(int index, const ZnString& text);
  double patternLength() const; // sum of absolute dash lengths
  bool isScaledToFit() const { return scaledToFit_; }
  void setIsScaledToFit(bool fit);

  ZNDB_DECLARE_FIELDS

private:
  struct Dash {
    double length = 0.0;
    ZnDbObjectId shapeStyle;
    ZnString text;
  };
  bool has(int index) const;

  ZnString description_;
  std::vector<Dash> dashes_;
  bool scaledToFit_ = false;
};
