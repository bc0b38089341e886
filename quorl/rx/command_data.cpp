#include "quorl/rx/command_data.h"

#include <algorithm>

#include "quorl/base/assert.h"

ZnRxCommandValue::ZnRxCommandValue(bool value)
    : held_(value) {}
ZnRxCommandValue::ZnRxCommandValue(int value)
    : held_(std::int64_t{value}) {}
ZnRxCommandValue::ZnRxCommandValue(std::int64_t value)
    : held_(value) {}
ZnRxCommandValue::ZnRxCommandValue(double value)
    : held_(value) {}
ZnRxCommandValue::ZnRxCommandValue(const wchar_t* value)
    : held_(ZnString(value)) {}
ZnRxCommandValue::ZnRxCommandValue(const ZnString& value)
    : held_(value) {}

ZnRxCommandValue ZnRxCommandValue::array() {
  ZnRxCommandValue value;
  value.held_ = Array();
  return value;
}

ZnRxCommandValue ZnRxCommandValue::object() {
  ZnRxCommandValue value;
  value.held_ = Object();
  return value;
}

bool ZnRxCommandValue::asBool(bool absent) const {
  const bool* value = std::get_if<bool>(&held_);
  return value ? *value : absent;
}

std::int64_t ZnRxCommandValue::asInt(std::int64_t absent) const {
  const std::int64_t* value = std::get_if<std::int64_t>(&held_);
  return value ? *value : absent;
}

double ZnRxCommandValue::asDouble(double absent) const {
  if (const std::int64_t* whole = std::get_if<std::int64_t>(&held_)) return static_cast<double>(*whole);
  const double* value = std::get_if<double>(&held_);
  return value ? *value : absent;
}

ZnString ZnRxCommandValue::asString(const ZnString& absent) const {
  const ZnString* value = std::get_if<ZnString>(&held_);
  return value ? *value : absent;
}

const ZnRxCommandValue::Array& ZnRxCommandValue::items() const {
  static const Array none;
  const Array* items = std::get_if<Array>(&held_);
  return items ? *items : none;
}

const ZnRxCommandValue::Object& ZnRxCommandValue::members() const {
  static const Object none;
  const Object* members = std::get_if<Object>(&held_);
  return members ? *members : none;
}

const ZnRxCommandValue& ZnRxCommandValue::at(std::wstring_view name) const {
  static const ZnRxCommandValue none;
  for (const ZnRxCommandMember& member : members())
    if (member.name.view() == name) return member.value;
  return none;
}

ZnRxCommandValue& ZnRxCommandValue::append(ZnRxCommandValue item) {
  if (isNull()) held_ = Array();
  QUORL_ASSERT(kind() == Kind::kArray);
  Array& items = std::get<Array>(held_);
  items.push_back(std::move(item));
  return items.back();
}

ZnRxCommandValue& ZnRxCommandValue::operator[](std::wstring_view name) {
  if (isNull()) held_ = Object();
  QUORL_ASSERT(kind() == Kind::kObject);
  Object& members = std::get<Object>(held_);
  const auto found = std::find_if(members.begin(), members.end(), [name](const ZnRxCommandMember& member) {
    return member.name.view() == name;
  });
  if (found != members.end()) return found->value;
  members.push_back({ZnString(name), {}});
  return members.back().value;
}

bool operator==(const ZnRxCommandMember& a, const ZnRxCommandMember& b) {
  return a.name == b.name && a.value == b.value;
}

bool operator==(const ZnRxCommandValue& a, const ZnRxCommandValue& b) { return a.held_ == b.held_; }
