// Color values of attributes and style sheets.
#pragma once

#include "interchange/svg_in/scene.h"

#include <optional>
#include <string_view>

namespace interchange {

// #rgb, #rgba, #rrggbb, #rrggbbaa, rgb() and rgba() with numbers or percentages, hsl(), and color names.
// Alpha is left out: paint and opacity are told apart elsewhere. Nothing for anything else.
std::optional<Color> parseColor(std::string_view text);

} // namespace interchange
