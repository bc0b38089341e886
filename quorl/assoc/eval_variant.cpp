#include "quorl/assoc/eval_variant.h"

#include <bit>
#include <cstdint>

#include "quorl/db/core/filer.h"
#include "quorl/db/core/tdoc_filer.h"

using Quorl::ErrorStatus;

namespace {

// Group codes of the kinds; a value without kind is a bool that says so.
constexpr int kIntCode = 90, kDoubleCode = 40, kTextCode = 1, kIdCode = 330, kPointCode = 10, kNoneCode = 290;

bool sameBits(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

} // namespace

ErrorStatus ZnDbEvalVariant::getValue(ZnString& value) const {
  if (const auto* id = std::get_if<ZnDbObjectId>(&value_)) {
    value = handleText(id->handle());
    return Quorl::eOk;
  }
  return get(value);
}

bool operator==(const ZnDbEvalVariant& a, const ZnDbEvalVariant& b) {
  if (a.value_.index() != b.value_.index()) return false;
  if (const auto* p = std::get_if<double>(&a.value_)) return sameBits(*p, std::get<double>(b.value_));
  if (const auto* p = std::get_if<ZnGePoint3d>(&a.value_)) {
    const auto& q = std::get<ZnGePoint3d>(b.value_);
    return sameBits(p->x, q.x) && sameBits(p->y, q.y) && sameBits(p->z, q.z);
  }
  if (const auto* p = std::get_if<int>(&a.value_)) return *p == std::get<int>(b.value_);
  if (const auto* p = std::get_if<ZnString>(&a.value_)) return *p == std::get<ZnString>(b.value_);
  if (const auto* p = std::get_if<ZnDbObjectId>(&a.value_)) return *p == std::get<ZnDbObjectId>(b.value_);
  return true;
}

void ZnDbEvalVariant::tdocOut(ZnDbTdocFiler& filer) const {
  switch (kind()) {
  case kNone:
    return filer.writeBool(kNoneCode, false);
  case kInt:
    return filer.writeInteger(kIntCode, std::get<int>(value_));
  case kDouble:
    return filer.writeDouble(kDoubleCode, std::get<double>(value_));
  case kText:
    return filer.writeString(kTextCode, std::get<ZnString>(value_));
  case kObjectId:
    return filer.writeId(kIdCode, std::get<ZnDbObjectId>(value_));
  case kPoint:
    return filer.writePoint3d(kPointCode, std::get<ZnGePoint3d>(value_));
  }
}

bool ZnDbEvalVariant::isTdocCode(int code) {
  for (const int own : {kIntCode, kDoubleCode, kTextCode, kIdCode, kPointCode, kNoneCode})
    if (code == own) return true;
  return false;
}

void ZnDbEvalVariant::tdocIn(const ZnDbTdocItem& item) {
  switch (item.code) {
  case kIntCode:
    value_ = static_cast<int>(item.integer);
    break;
  case kDoubleCode:
    value_ = item.real;
    break;
  case kTextCode:
    value_ = item.text;
    break;
  case kIdCode:
    value_ = item.id;
    break;
  case kPointCode:
    value_ = item.point;
    break;
  default:
    value_ = std::monostate();
  }
}
