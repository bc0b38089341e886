// Dimension styles: the lengths that dimensions and edge extensions are drawn with, in drawing units.
#pragma once

#include "quorl/db/symbol_table.h"

class ZnDbDimStyleTable : public ZnDbSymbolTable {
  ZNRX_DECLARE_MEMBERS(ZnDbDimStyleTable)

public:
  const ZnRxClass* recordClass() const override;
};

class ZnDbDimStyleTableRecord : public ZnDbSymbolTableRecord {
  ZNRX_DECLARE_MEMBERS(ZnDbDimStyleTableRecord)

public:
  double dimscale() const { return values_.scale; }            // overall factor
  double dimexo() const { return values_.exo; }                // gap between an edge and its extension line
  double dimexe() const { return values_.exe; }                // extension line beyond the dimension line
  double dimasz() const { return values_.asz; }                // arrow length
  double dimtxt() const { return values_.txt; }                // text height
  double dimgap() const { return values_.gap; }                // between text and dimension line
  double dimlfac() const { return values_.lfac; }              // factor on measured lengths
  int dimdec() const { return static_cast<int>(values_.dec); } // decimals
  // eOutOfRange for a negative length, or a factor of 0.
  Quorl::ErrorStatus setDimscale(double value);
  Quorl::ErrorStatus setDimexo(double value);
  Quorl::ErrorStatus setDimexe(double value);
  Quorl::ErrorStatus setDimasz(double value);
  Quorl::ErrorStatus setDimtxt(double value);
  Quorl::ErrorStatus setDimgap(double value);
  Quorl::ErrorStatus setDimlfac(double value);
  Quorl::ErrorStatus setDimdec(int value);

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
