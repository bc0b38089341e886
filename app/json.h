// The program's JSON: made from the plain values that commands give, and written in one way.
#pragma once

#include <nlohmann/json.hpp>

#include "quorl/rx/command_data.h"

namespace app {

using Json = nlohmann::ordered_json;

// Numbers that JSON has not become null.
Json toJson(const ZnRxCommandValue& value);
Json toJson(double number);
// Indented, with a line end; text that is no UTF-8 is repaired, so that writing can't fail.
std::string jsonText(const Json& json);

} // namespace app
