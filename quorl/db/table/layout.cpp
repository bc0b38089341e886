#include "quorl/db/table/layout.h"

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"
#include "quorl/db/table/symbol_table.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbLayout, ZnDbObject, L"LAYOUT")

namespace {

constexpr std::int16_t kVersion = 1;

bool isPaper(double width, double height) {
  return Quorl::isFinite(width) && Quorl::isFinite(height) && width >= 0.0 && height >= 0.0;
}

} // namespace

struct ZnDbLayout::Fields {
  ZnString name;
  ZnDbObjectId block;
  std::int64_t tabOrder = 0;
  double width = 0.0, height = 0.0;
  bool isUsable() const { return isPaper(width, height) && tabOrder == static_cast<std::int32_t>(tabOrder); }
};

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
  if (!isPaper(width, height)) return Quorl::eOutOfRange;
  paperWidth_ = width;
  paperHeight_ = height;
  return Quorl::eOk;
}

template<class Filer> ErrorStatus ZnDbLayout::takeOver(Filer& filer, Fields& read) {
  Fields fields;
  if (zndbTakeOver(filer, fields, std::move(read)) != Quorl::eOk) return filer.status();
  name_ = fields.name;
  blockId_ = fields.block;
  tabOrder_ = static_cast<int>(fields.tabOrder);
  paperWidth_ = fields.width;
  paperHeight_ = fields.height;
  return filer.status();
}

ErrorStatus ZnDbLayout::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::bdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeInt16(kVersion);
  filer.writeString(name_);
  filer.writeSoftPointerId(blockId_);
  filer.writeInt32(tabOrder_);
  filer.writeDouble(paperWidth_);
  filer.writeDouble(paperHeight_);
  return filer.status();
}

ErrorStatus ZnDbLayout::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::bdocInFields(filer); status != Quorl::eOk) return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Fields read;
  read.name = filer.readString();
  read.block = filer.readSoftPointerId();
  read.tabOrder = filer.readInt32();
  read.width = filer.readDouble();
  read.height = filer.readDouble();
  return takeOver(filer, read);
}

ErrorStatus ZnDbLayout::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbObject::tdocOutFields(filer); status != Quorl::eOk) return status;
  filer.writeSubclassMarker(className());
  filer.writeString(1, name_);
  filer.writeId(330, blockId_);
  filer.writeInteger(90, tabOrder_);
  filer.writeDouble(40, paperWidth_);
  filer.writeDouble(41, paperHeight_);
  return filer.status();
}

ErrorStatus ZnDbLayout::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbObject::tdocInFields(filer); status != Quorl::eOk) return status;
  Fields read{name_, blockId_, tabOrder_, paperWidth_, paperHeight_};
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 1) read.name = item.text;
    if (item.code == 330) read.block = item.id;
    if (item.code == 90) read.tabOrder = item.integer;
    if (item.code == 40) read.width = item.real;
    if (item.code == 41) read.height = item.real;
  });
  return takeOver(filer, read);
}
