#include "app/json.h"

#include <cmath>

namespace app {

Json toJson(double number) {
  if (!std::isfinite(number)) return nullptr;
  return number + 0.0; // no minus zero
}

namespace {

Json arrayOf(const ZnRxCommandValue& value) {
  Json json = Json::array();
  for (const ZnRxCommandValue& item : value.items()) json.push_back(toJson(item));
  return json;
}

Json objectOf(const ZnRxCommandValue& value) {
  Json json = Json::object();
  for (const ZnRxCommandMember& member : value.members()) json[member.name.utf8()] = toJson(member.value);
  return json;
}

} // namespace

Json toJson(const ZnRxCommandValue& value) {
  switch (value.kind()) {
  case ZnRxCommandValue::Kind::kBool:
    return value.asBool();
  case ZnRxCommandValue::Kind::kInt:
    return value.asInt();
  case ZnRxCommandValue::Kind::kDouble:
    return toJson(value.asDouble());
  case ZnRxCommandValue::Kind::kString:
    return value.asString().utf8();
  case ZnRxCommandValue::Kind::kArray:
    return arrayOf(value);
  case ZnRxCommandValue::Kind::kObject:
    return objectOf(value);
  case ZnRxCommandValue::Kind::kNull:
    break;
  }
  return nullptr;
}

std::string jsonText(const Json& json) {
  constexpr int kIndent = 2;
  return json.dump(kIndent, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace app
