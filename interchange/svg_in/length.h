// Lengths with a unit, as attributes and style properties write them.
#pragma once

#include "interchange/svg_in/read_options.h"

#include <optional>
#include <string_view>

namespace interchange {

enum class LengthKind { Number, Pixel, Physical, Percent, FontSize };

// value counts millimetres for physical lengths, font sizes for FontSize (em; ex is half of one) and the
// number as written otherwise.
struct Length {
  double value = 0;
  LengthKind kind = LengthKind::Number;
};

// Nothing when the text is no length or carries an unknown unit.
std::optional<Length> parseLength(std::string_view text);

// Millimetres of one unit; pixels need the dpi.
double millimetresOf(LengthUnit unit, double dpi);

// What a length in user units is measured by.
struct LengthContext {
  double dpi = 96;          // user units to the inch of a physical length
  double viewportWidth = 0; // user units, for percentages
  double viewportHeight = 0;
  double fontSize = 16;
};

// Which side of the viewport a percentage refers to.
enum class LengthAxis { X, Y, Diagonal };

// In user units.
double resolve(const Length& length, const LengthContext& context, LengthAxis axis);

} // namespace interchange
