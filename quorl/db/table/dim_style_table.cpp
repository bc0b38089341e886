#include "quorl/db/table/dim_style_table.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbDimStyleTable, ZnDbSymbolTable, L"DIMSTYLETABLE")
ZNRX_DEFINE_DRAWING_CLASS(ZnDbDimStyleTableRecord, ZnDbSymbolTableRecord, L"DIMSTYLE")

namespace {

constexpr std::int16_t kVersion = 1;
constexpr std::int64_t kMostDecimals = 15;

bool isLength(double value) { return Quorl::isFinite(value) && value >= 0.0; }
bool isFactor(double value) { return Quorl::isFinite(value) && value > 0.0; }

} // namespace

const ZnRxClass* ZnDbDimStyleTable::recordClass() const { return ZnDbDimStyleTableRecord::desc(); }

bool ZnDbDimStyleTableRecord::Values::isUsable() const {
  for (const double length : {exo, exe, asz, txt, gap})
    if (!isLength(length)) return false;
  return isFactor(scale) && isFactor(lfac) && dec >= 0 && dec <= kMostDecimals;
}

// A change is made on a copy, so that what is not allowed leaves no trace.
ErrorStatus ZnDbDimStyleTableRecord::set(double Values::*member, double value) {
  assertWriteEnabled();
  Values changed = values_;
  changed.*member = value;
  if (!changed.isUsable()) return Quorl::eOutOfRange;
  values_ = changed;
  return Quorl::eOk;
}

ErrorStatus ZnDbDimStyleTableRecord::setOverallScale(double value) { return set(&Values::scale, value); }
ErrorStatus ZnDbDimStyleTableRecord::setExtensionOffset(double value) { return set(&Values::exo, value); }
ErrorStatus ZnDbDimStyleTableRecord::setExtensionBeyond(double value) { return set(&Values::exe, value); }
ErrorStatus ZnDbDimStyleTableRecord::setArrowLength(double value) { return set(&Values::asz, value); }
ErrorStatus ZnDbDimStyleTableRecord::setTextHeight(double value) { return set(&Values::txt, value); }
ErrorStatus ZnDbDimStyleTableRecord::setTextGap(double value) { return set(&Values::gap, value); }
ErrorStatus ZnDbDimStyleTableRecord::setLengthFactor(double value) { return set(&Values::lfac, value); }

ErrorStatus ZnDbDimStyleTableRecord::setDecimals(int value) {
  assertWriteEnabled();
  if (value < 0 || value > kMostDecimals) return Quorl::eOutOfRange;
  values_.dec = value;
  return Quorl::eOk;
}

ErrorStatus ZnDbDimStyleTableRecord::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::bdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeInt16(kVersion);
  for (double Values::*member : Values::kReals) filer.writeDouble(values_.*member);
  filer.writeInt16(static_cast<std::int16_t>(values_.dec));
  return filer.status();
}

ErrorStatus ZnDbDimStyleTableRecord::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::bdocInFields(filer); status != Quorl::eOk)
    return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Values read;
  for (double Values::*member : Values::kReals) read.*member = filer.readDouble();
  read.dec = filer.readInt16();
  return zndbTakeOver(filer, values_, std::move(read));
}

ErrorStatus ZnDbDimStyleTableRecord::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::tdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeSubclassMarker(className());
  int code = 40;
  for (double Values::*member : Values::kReals) filer.writeDouble(code++, values_.*member);
  filer.writeInteger(60, values_.dec);
  return filer.status();
}

ErrorStatus ZnDbDimStyleTableRecord::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::tdocInFields(filer); status != Quorl::eOk)
    return status;
  Values read = values_;
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    int code = 40;
    for (double Values::*member : Values::kReals)
      if (item.code == code++) read.*member = item.real;
    if (item.code == 60) read.dec = item.integer;
  });
  return zndbTakeOver(filer, values_, std::move(read));
}
