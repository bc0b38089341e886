#include "quorl/db/table/linetype_table.h"

#include <cmath>

#include "quorl/db/core/field_io.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbLinetypeTable, ZnDbSymbolTable, L"LINETYPETABLE")
ZNRX_DEFINE_DRAWING_CLASS(ZnDbLinetypeTableRecord, ZnDbSymbolTableRecord, L"LINETYPE")

namespace {
constexpr std::int16_t kVersion = 1;
}

struct ZnDbLinetypeTableRecord::Fields {
  ZnString description;
  bool scaledToFit = false;
  std::vector<Dash> dashes;

  bool isUsable() const {
    for (const Dash& dash : dashes)
      if (!Quorl::isFinite(dash.length)) return false;
    return true;
  }
};

const ZnRxClass* ZnDbLinetypeTable::recordClass() const { return ZnDbLinetypeTableRecord::desc(); }

bool ZnDbLinetypeTableRecord::has(int index) const { return index >= 0 && index < numDashes(); }

void ZnDbLinetypeTableRecord::setDescription(const ZnString& description) {
  assertWriteEnabled();
  description_ = description;
}

void ZnDbLinetypeTableRecord::setDashCount(int count) {
  assertWriteEnabled();
  dashes_.resize(static_cast<size_t>(count > 0 ? count : 0));
}

double ZnDbLinetypeTableRecord::dashLengthAt(int index) const {
  return has(index) ? dashes_[static_cast<size_t>(index)].length : 0.0;
}

ErrorStatus ZnDbLinetypeTableRecord::setDashLengthAt(int index, double length) {
  assertWriteEnabled();
  if (!has(index) || !Quorl::isFinite(length)) return Quorl::eOutOfRange;
  dashes_[static_cast<size_t>(index)].length = length;
  return Quorl::eOk;
}

ZnDbObjectId ZnDbLinetypeTableRecord::shapeStyleAt(int index) const {
  return has(index) ? dashes_[static_cast<size_t>(index)].shapeStyle : ZnDbObjectId();
}

ErrorStatus ZnDbLinetypeTableRecord::setShapeStyleAt(int index, ZnDbObjectId style) {
  assertWriteEnabled();
  if (!has(index)) return Quorl::eOutOfRange;
  dashes_[static_cast<size_t>(index)].shapeStyle = style;
  return Quorl::eOk;
}

ZnString ZnDbLinetypeTableRecord::textAt(int index) const {
  return has(index) ? dashes_[static_cast<size_t>(index)].text : ZnString();
}

ErrorStatus ZnDbLinetypeTableRecord::setTextAt(int index, const ZnString& text) {
  assertWriteEnabled();
  if (!has(index)) return Quorl::eOutOfRange;
  dashes_[static_cast<size_t>(index)].text = text;
  return Quorl::eOk;
}

double ZnDbLinetypeTableRecord::patternLength() const {
  double sum = 0.0;
  for (const Dash& dash : dashes_) sum += std::fabs(dash.length);
  return sum;
}

void ZnDbLinetypeTableRecord::setIsScaledToFit(bool fit) {
  assertWriteEnabled();
  scaledToFit_ = fit;
}

template<class Filer> ErrorStatus ZnDbLinetypeTableRecord::takeOver(Filer& filer, Fields& read) {
  Fields fields;
  if (zndbTakeOver(filer, fields, std::move(read)) != Quorl::eOk) return filer.status();
  description_ = fields.description;
  scaledToFit_ = fields.scaledToFit;
  dashes_ = std::move(fields.dashes);
  return filer.status();
}

ErrorStatus ZnDbLinetypeTableRecord::bdocOutFields(ZnDbFiler& filer) const {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::bdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeInt16(kVersion);
  filer.writeString(description_);
  filer.writeBool(scaledToFit_);
  filer.writeInt32(numDashes());
  for (const Dash& dash : dashes_) {
    filer.writeDouble(dash.length);
    filer.writeHardPointerId(dash.shapeStyle);
    filer.writeString(dash.text);
  }
  return filer.status();
}

ErrorStatus ZnDbLinetypeTableRecord::bdocInFields(ZnDbFiler& filer) {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::bdocInFields(filer); status != Quorl::eOk)
    return status;
  if (!zndbReadVersion(filer, kVersion)) return filer.status();
  Fields read;
  read.description = filer.readString();
  read.scaledToFit = filer.readBool();
  for (int left = filer.readCount(sizeof(double)); left > 0; --left) {
    Dash& dash = read.dashes.emplace_back();
    dash.length = filer.readDouble();
    dash.shapeStyle = filer.readHardPointerId();
    dash.text = filer.readString();
  }
  return takeOver(filer, read);
}

ErrorStatus ZnDbLinetypeTableRecord::tdocOutFields(ZnDbTdocFiler& filer) const {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::tdocOutFields(filer); status != Quorl::eOk)
    return status;
  filer.writeSubclassMarker(className());
  filer.writeString(3, description_);
  filer.writeBool(290, scaledToFit_);
  for (const Dash& dash : dashes_) {
    filer.writeDouble(40, dash.length);
    if (!dash.shapeStyle.isNull()) filer.writeId(340, dash.shapeStyle);
    if (!dash.text.isEmpty()) filer.writeString(1, dash.text);
  }
  return filer.status();
}

// A length begins a dash; a shape or text that follows stands on it.
ErrorStatus ZnDbLinetypeTableRecord::tdocInFields(ZnDbTdocFiler& filer) {
  if (const ErrorStatus status = ZnDbSymbolTableRecord::tdocInFields(filer); status != Quorl::eOk)
    return status;
  Fields read{description_, scaledToFit_, {}};
  zndbReadTdocSection(filer, className(), [&](const ZnDbTdocItem& item) {
    if (item.code == 3) read.description = item.text;
    if (item.code == 290) read.scaledToFit = item.integer != 0;
    if (item.code == 40) read.dashes.push_back({item.real, {}, {}});
    if (read.dashes.empty()) return;
    if (item.code == 340) read.dashes.back().shapeStyle = item.id;
    if (item.code == 1) read.dashes.back().text = item.text;
  });
  return takeOver(filer, read);
}
