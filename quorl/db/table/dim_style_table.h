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
  double overallScale() const { return values_.scale; }          // overall factor
  double extensionOffset() const { return values_.exo; }         // gap between an edge and its extension line
  double extensionBeyond() const { return values_.exe; }         // extension line beyond the dimension line
  double arrowLength() const { return values_.asz; }             // arrow length
  double textHeight() const { return values_.txt; }              // text height
  double textGap() const { return values_.gap; }                 // between text and dimension line
  double lengthFactor() const { return values_.lfac; }           // factor on measured lengths
  int decimals() const { return static_cast<int>(values_.dec); } // decimals
  // eOutOfRange for a negative length, or a factor of 0.
  Quorl::ErrorStatus setOverallScale(double value);
  Quorl::ErrorStatus setExtensionOffset(double value);
  Quorl::ErrorStatus setExtensionBeyond(double value);
  Quorl::ErrorStatus setArrowLength(double value);
  Quorl::ErrorStatus setTextHeight(double value);
  Quorl::ErrorStatus setTextGap(double value);
  Quorl::ErrorStatus setLengthFactor(double value);
  Quorl::ErrorStatus setDecimals(int value);

  Quorl::ErrorStatus bdocOutFields(ZnDbFiler& filer) const override;
  Quorl::ErrorStatus bdocInFields(ZnDbFiler& filer) override;
  Quorl::ErrorStatus tdocOutFields(ZnDbTdocFiler& filer) const override;
  Quorl::ErrorStatus tdocInFields(ZnDbTdocFiler& filer) override;

private:
  struct Values {
    double scale = 1.0, exo = 0.625, exe = 1.25, asz = 2.5, txt = 2.5, gap = 0.625, lfac = 1.0;
    std::int64_t dec = 2;

    static constexpr double Values::*kReals[] = {&Values::scale, &Values::exo, &Values::exe, &Values::asz,
                                                 &Values::txt,   &Values::gap, &Values::lfac};
    bool isUsable() const;
  };
  Quorl::ErrorStatus set(double Values::*member, double value);

  Values values_;
};
