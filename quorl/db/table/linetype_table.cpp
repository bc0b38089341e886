#include "quorl/db/table/linetype_table.h"

#include <cmath>

#include "quorl/db/core/fields.h"
#include "quorl/db/core/geometry_checks.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(ZnDbLinetypeTable, ZnDbSymbolTable, L"LINETYPETABLE")
ZNRX_DEFINE_DRAWING_CLASS(ZnDbLinetypeTableRecord, ZnDbSymbolTableRecord, L"LINETYPE")

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

// A length begins a dash; a shape or text that follows stands on it.
template<class Walk> void ZnDbLinetypeTableRecord::describe(Walk& walk) {
  walk.section(className(), 1);
  walk.field(3, L"description", description_);
  walk.field(290, L"scaled to fit", scaledToFit_);
  const auto fields = [](auto& inner, Dash& dash) {
    inner.field(40, L"dash length", dash.length);
    inner.id(ZnReferenceKind::kHardPointer, 340, L"shape style", dash.shapeStyle);
    inner.optional(1, L"dash text", dash.text);
  };
  walk.list(40, L"dashes", dashes_, fields);
}

ZNDB_DEFINE_FIELDS(ZnDbLinetypeTableRecord, ZnDbSymbolTableRecord)
