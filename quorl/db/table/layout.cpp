#include "quorl/db/table/layout.h"

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/table/symbol_table.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbLayout, ZnDbObject, L"LAYOUT")

namespace {
constexpr auto kPaperSize = ZnDbRule::atLeast(0.0);
}

ErrorStatus ZnDbLayout::setLayoutName(const ZnString& name) {
  assertWriteEnabled();
  const ErrorStatus status = ZnDbSymbolUtilities::validateSymbolName(name);
  if (status == Quorl::eOk) name_ = name;
  return status;
}

void ZnDbLayout::setBlockTableRecordId(ZnDbObjectId block) {
  assertWriteEnabled();
  blockId_ = block;
}

void ZnDbLayout::setTabOrder(int order) {
  assertWriteEnabled();
  tabOrder_ = order;
}

ErrorStatus ZnDbLayout::setPaperSize(double width, double height) {
  assertWriteEnabled();
  if (kPaperSize(width) != Quorl::eOk || kPaperSize(height) != Quorl::eOk) return Quorl::eOutOfRange;
  paperWidth_ = width;
  paperHeight_ = height;
  return Quorl::eOk;
}

template<class Walk> void ZnDbLayout::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(1, L"name", name_);
  walk.id(ZnReferenceKind::kSoftPointer, 330, L"block", blockId_);
  walk.field(90, L"tab order", tabOrder_);
  walk.field(40, L"paper width", paperWidth_, kPaperSize);
  walk.field(41, L"paper height", paperHeight_, kPaperSize);
}

ZNDB_DEFINE_FIELDS(ZnDbLayout, ZnDbObject)
