// What a picture is made of, after all traits are resolved: strokes, areas, dots and lettering.
#pragma once

#include "interchange/recognize/contour.h"

#include <cstdint>
#include <string>
#include <vector>

namespace interchange {

struct Ink {
  std::uint32_t rgb = 0; // 0xRRGGBB
  double opacity = 1;
  double width = 0.25; // millimetres on the paper; 0 is the thinnest line that shows
};

// Round ends for whole lines; dashes end where their length says.
enum class LineEnds { Round, Cut };

enum class Alignment { Left, Center, Right };

// One line of text on its baseline. `along` and `up` are as long as a capital letter is high, stretched as
// the letters are; they need not be perpendicular.
struct Lettering {
  ZnGePoint2d position;
  ZnGeVector2d along{1, 0};
  ZnGeVector2d up{0, 1};
  Alignment alignment = Alignment::Left;
  std::string text; // UTF-8
};

// Coordinates are drawing units of the space that is shown, y upwards.
class StrokeTarget {
public:
  virtual ~StrokeTarget() = default;

  // Contours that make up one stroke, such as the dashes of one line.
  virtual void stroke(const std::vector<Contour>& contours, const Ink& ink, LineEnds ends) = 0;
  virtual void area(const Contour& contour, const Ink& ink) = 0;
  // A round dot; the diameter is in millimetres on the paper.
  virtual void dot(ZnGePoint2d center, double diameter, const Ink& ink) = 0;
  virtual void lettering(const Lettering& lettering, const Ink& ink) = 0;

  // Until the window is popped nothing shows outside the rectangle of these corners.
  virtual void pushWindow(ZnGePoint2d corner, ZnGePoint2d opposite) = 0;
  virtual void popWindow() = 0;
};

} // namespace interchange
