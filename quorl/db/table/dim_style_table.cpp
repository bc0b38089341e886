#include "quorl/db/table/dim_style_table.h"

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbDimStyleTable, ZnDbSymbolTable, L"DIMSTYLETABLE")
ZNRX_DEFINE_DRAWING_CLASS(ZnDbDimStyleTableRecord, ZnDbSymbolTableRecord, L"DIMSTYLE")

namespace {

constexpr auto kLength = ZnDbRule::atLeast(0.0);
constexpr auto kFactor = ZnDbRule::positive();
constexpr auto kDecimals = ZnDbRule::between(0, 15);

// What is not allowed is out of range, finite or not.
template<class T, class Rule> ErrorStatus put(T& target, T value, const Rule& rule) {
  return ZnDbRule::take(target, value, rule) == Quorl::eOk ? Quorl::eOk : Quorl::eOutOfRange;
}

} // namespace

const ZnRxClass* ZnDbDimStyleTable::recordClass() const { return ZnDbDimStyleTableRecord::desc(); }

ErrorStatus ZnDbDimStyleTableRecord::setOverallScale(double value) {
  assertWriteEnabled();
  return put(overallScale_, value, kFactor);
}

ErrorStatus ZnDbDimStyleTableRecord::setExtensionOffset(double value) {
  assertWriteEnabled();
  return put(extensionOffset_, value, kLength);
}

ErrorStatus ZnDbDimStyleTableRecord::setExtensionBeyond(double value) {
  assertWriteEnabled();
  return put(extensionBeyond_, value, kLength);
}

ErrorStatus ZnDbDimStyleTableRecord::setArrowLength(double value) {
  assertWriteEnabled();
  return put(arrowLength_, value, kLength);
}

ErrorStatus ZnDbDimStyleTableRecord::setTextHeight(double value) {
  assertWriteEnabled();
  return put(textHeight_, value, kLength);
}

ErrorStatus ZnDbDimStyleTableRecord::setTextGap(double value) {
  assertWriteEnabled();
  return put(textGap_, value, kLength);
}

ErrorStatus ZnDbDimStyleTableRecord::setLengthFactor(double value) {
  assertWriteEnabled();
  return put(lengthFactor_, value, kFactor);
}

ErrorStatus ZnDbDimStyleTableRecord::setDecimals(int value) {
  assertWriteEnabled();
  return put(decimals_, value, kDecimals);
}

template<class Walk> void ZnDbDimStyleTableRecord::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(40, L"overall scale", overallScale_, kFactor);
  walk.field(41, L"extension offset", extensionOffset_, kLength);
  walk.field(42, L"extension beyond", extensionBeyond_, kLength);
  walk.field(43, L"arrow length", arrowLength_, kLength);
  walk.field(44, L"text height", textHeight_, kLength);
  walk.field(45, L"text gap", textGap_, kLength);
  walk.field(46, L"length factor", lengthFactor_, kFactor);
  walk.field(60, L"decimals", zndbAs<std::int16_t>(decimals_), kDecimals);
}

ZNDB_DEFINE_FIELDS(ZnDbDimStyleTableRecord, ZnDbSymbolTableRecord)
