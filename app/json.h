// The program's JSON, written in one way.
#pragma once

#include <string>

#include "exchange/json.h"

namespace app {

using exchange::Json;
using exchange::toJson;

// Indented, with a line end; text that is no UTF-8 is repaired, so that writing can't fail.
std::string jsonText(const Json& json);

} // namespace app
