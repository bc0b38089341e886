// Dimension styles: the lengths that dimensions and edge extensions are drawn with, in drawing units.
#pragma once

#include "quorl/db/table/symbol_table.h"

class ZnDbDimStyleTable : public ZnDbSymbolTable {
  ZNRX_DECLARE_MEMBERS(ZnDbDimStyleTable)

public:
  const ZnRxClass* recordClass() const override;
};

class ZnDbDimStyleTableRecord : public ZnDbSymbolTableRecord {
  ZNRX_DECLARE_MEMBERS(ZnDbDimStyleTableRecord)

public:
  double overallScale() const { return overallScale_; }       // overall factor
  double extensionOffset() const { return extensionOffset_; } // gap between an edge and its extension line
  double extensionBeyond() const { return extensionBeyond_; } // extension line beyond the dimension line
  double arrowLength() const { return arrowLength_; }         // arrow length
  double textHeight() const { return textHeight_; }           // text height
  double textGap() const { return textGap_; }                 // between text and dimension line
  double lengthFactor() const { return lengthFactor_; }       // factor on measured lengths
  int decimals() const { return decimals_; }
  // eOutOfRange for a negative length, or a factor of 0.
  Quorl::ErrorStatus setOverallScale(double value);
  Quorl::ErrorStatus setExtensionOffset(double value);
  Quorl::ErrorStatus setExtensionBeyond(double value);
  Quorl::ErrorStatus setArrowLength(double value);
  Quorl::ErrorStatus setTextHeight(double value);
  Quorl::ErrorStatus setTextGap(double value);
  Quorl::ErrorStatus setLengthFactor(double value);
  Quorl::ErrorStatus setDecimals(int value);

  ZNDB_DECLARE_FIELDS

private:
  double overallScale_ = 1.0, extensionOffset_ = 0.625, extensionBeyond_ = 1.25, arrowLength_ = 2.5;
  double textHeight_ = 2.5, textGap_ = 0.625, lengthFactor_ = 1.0;
  int decimals_ = 2;
};
