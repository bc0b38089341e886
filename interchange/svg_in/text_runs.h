// The pieces of a text element that have a position of their own.
#pragma once

#include "interchange/recognize/shape.h"
#include "interchange/svg_in/computed_style.h"

#include <pugixml.hpp>

#include <vector>

namespace interchange {

struct TextRun {
  Text text; // position and height in user units, y down
  ComputedStyle style;
  pugi::xml_node node; // the text or tspan that began it
};

// A tspan with a position begins a run, all others continue the one before them. Runs without any visible
// character are left out. White space is folded unless the element preserves it.
std::vector<TextRun> readText(const pugi::xml_node& node, const ComputedStyle& style, const StyleSheet& sheet,
                              const LengthContext& lengths);

// Maps a run by the user-to-owner transform: position, height, direction and stretch.
void placeText(Text& text, const ZnGeMatrix2d& map);

} // namespace interchange
