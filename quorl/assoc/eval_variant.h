// A value of one of five kinds, as actions keep them by name.
#pragma once

#include <variant>

#include "quorl/base/error_status.h"
#include "quorl/base/string.h"
#include "quorl/db/core/object_id.h"
#include "quorl/ge/point3d.h"

class ZnDbTdocFiler;
struct ZnDbTdocItem;

class ZnDbEvalVariant {
public:
  enum Kind { kNone = 0, kInt = 1, kDouble = 2, kText = 3, kObjectId = 4, kPoint = 5 };

  ZnDbEvalVariant() = default;
  ZnDbEvalVariant(int value)
      : value_(value) {}
  ZnDbEvalVariant(double value)
      : value_(value) {}
  ZnDbEvalVariant(const ZnString& value)
      : value_(value) {}
  ZnDbEvalVariant(const wchar_t* value)
      : value_(ZnString(value)) {}
  ZnDbEvalVariant(ZnDbObjectId value)
      : value_(value) {}
  ZnDbEvalVariant(const ZnGePoint3d& value)
      : value_(value) {}

  Kind kind() const { return static_cast<Kind>(value_.index()); }

  // Each gives eInvalidInput, and leaves its target alone, for a value of another kind. Nothing is converted,
  // but for an object id, which reads as text too: the hexadecimal text of its handle.
  Quorl::ErrorStatus getValue(int& value) const { return get(value); }
  Quorl::ErrorStatus getValue(double& value) const { return get(value); }
  Quorl::ErrorStatus getValue(ZnString& value) const;
  Quorl::ErrorStatus getValue(ZnDbObjectId& value) const { return get(value); }
  Quorl::ErrorStatus getValue(ZnGePoint3d& value) const { return get(value); }

  // The same kind and exactly the same value; doubles without tolerance, and not-a-number equals itself, so
  // that writing what stands is seen as no change.
  friend bool operator==(const ZnDbEvalVariant& a, const ZnDbEvalVariant& b);

  // Fields. An object id is a soft pointer: it is translated with its holder and keeps nothing alive.
  template<class Filer> void bdocOut(Filer& filer) const;
  template<class Filer> Quorl::ErrorStatus bdocIn(Filer& filer); // eFileDamaged for an unknown kind
  void tdocOut(ZnDbTdocFiler& filer) const;                      // one item, whose group code tells the kind
  static bool isTdocCode(int code);
  void tdocIn(const ZnDbTdocItem& item); // of a code for which isTdocCode is true

  // Calls with the value as a visitor of fields has it; not for a value without kind.
  template<class Call> void visit(Call&& call) const {
    switch (kind()) {
    case kNone:
      return;
    case kInt:
      return call(static_cast<std::int64_t>(std::get<int>(value_)));
    case kDouble:
      return call(std::get<double>(value_));
    case kText:
      return call(std::get<ZnString>(value_));
    case kObjectId:
      return call(std::get<ZnDbObjectId>(value_));
    case kPoint:
      return call(std::get<ZnGePoint3d>(value_));
    }
  }

private:
  template<class T> Quorl::ErrorStatus get(T& value) const {
    const T* held = std::get_if<T>(&value_);
    if (!held) return Quorl::eInvalidInput;
    value = *held;
    return Quorl::eOk;
  }

  std::variant<std::monostate, int, double, ZnString, ZnDbObjectId, ZnGePoint3d> value_;
};

template<class Filer> void ZnDbEvalVariant::bdocOut(Filer& filer) const {
  filer.writeInt8(static_cast<std::int8_t>(kind()));
  switch (kind()) {
  case kNone:
    return;
  case kInt:
    return filer.writeInt32(std::get<int>(value_));
  case kDouble:
    return filer.writeDouble(std::get<double>(value_));
  case kText:
    return filer.writeString(std::get<ZnString>(value_));
  case kObjectId:
    return filer.writeSoftPointerId(std::get<ZnDbObjectId>(value_));
  case kPoint:
    return filer.writePoint3d(std::get<ZnGePoint3d>(value_));
  }
}

template<class Filer> Quorl::ErrorStatus ZnDbEvalVariant::bdocIn(Filer& filer) {
  switch (filer.readInt8()) {
  case kNone:
    value_ = std::monostate();
    break;
  case kInt:
    value_ = static_cast<int>(filer.readInt32());
    break;
  case kDouble:
    value_ = filer.readDouble();
    break;
  case kText:
    value_ = filer.readString();
    break;
  case kObjectId:
    value_ = filer.readSoftPointerId();
    break;
  case kPoint:
    value_ = filer.readPoint3d();
    break;
  default:
    filer.setStatus(Quorl::eFileDamaged);
  }
  return filer.status();
}
