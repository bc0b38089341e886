// What travels between a command and its caller: a small tree of plain values. Neither side needs to know
// the other's classes; objects of a drawing are named by handle.
#pragma once

#include <cstdint>
#include <string_view>
#include <variant>
#include <vector>

#include "quorl/base/string.h"

struct ZnRxCommandMember;

class ZnRxCommandValue {
public:
  using Array = std::vector<ZnRxCommandValue>;
  using Object = std::vector<ZnRxCommandMember>; // in order of insertion
  enum class Kind { kNull, kBool, kInt, kDouble, kString, kArray, kObject };

  ZnRxCommandValue() = default; // null
  ZnRxCommandValue(bool value);
  ZnRxCommandValue(int value);
  ZnRxCommandValue(std::int64_t value);
  ZnRxCommandValue(double value);
  ZnRxCommandValue(const wchar_t* value);
  ZnRxCommandValue(const ZnString& value);
  static ZnRxCommandValue array();
  static ZnRxCommandValue object();

  // Reading. A value of another kind gives the neutral answer: the default, an empty text, nothing.
  Kind kind() const { return static_cast<Kind>(held_.index()); }
  bool isNull() const { return kind() == Kind::kNull; }
  bool asBool(bool absent = false) const;
  std::int64_t asInt(std::int64_t absent = 0) const;
  double asDouble(double absent = 0.0) const; // an int counts as one
  ZnString asString(const ZnString& absent = {}) const;
  const Array& items() const;
  const Object& members() const;
  // The member of that name, or a null value; names are compared as they are.
  const ZnRxCommandValue& at(std::wstring_view name) const;

  // Building. A null value becomes an array or an object; to append to any other kind is a bug of the caller.
  ZnRxCommandValue& append(ZnRxCommandValue item);
  ZnRxCommandValue& operator[](std::wstring_view name);

  friend bool operator==(const ZnRxCommandValue& a, const ZnRxCommandValue& b);

private:
  // In the order of Kind.
  std::variant<std::monostate, bool, std::int64_t, double, ZnString, Array, Object> held_;
};

struct ZnRxCommandMember {
  ZnString name;
  ZnRxCommandValue value;
};
bool operator==(const ZnRxCommandMember& a, const ZnRxCommandMember& b);
