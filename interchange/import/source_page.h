// Where the user coordinates of an SVG file lie on the page that was read from it.
#pragma once

#include "interchange/svg_in/scene.h"
#include "quorl/ge/matrix2d.h"

#include <string_view>

namespace interchange {

struct SourcePage {
  ZnGeMatrix2d userToPage; // user units, y down, to millimetres, y up
  double width = 0;        // millimetres; 0 when the file does not tell
  double height = 0;
};

// `svg` is the text that the facts were read from. Text that is no XML gives a map by the facts alone.
SourcePage sourcePageOf(std::string_view svg, const DocumentFacts& facts);

} // namespace interchange
