// What the caller decides about a picture.
#pragma once

#include <cstdint>
#include <string>

namespace interchange {

struct PictureOptions {
  // Name of the layout to show; empty for the current space.
  std::string layout;
  // Millimetres; 0 by 0 takes the layout's paper, or the drawing with a margin when that has none.
  double pageWidth = 0;
  double pageHeight = 0;
  // Millimetres around the drawing; below 0 a twentieth of its longer side.
  double margin = -1;
  // Millimetres on the paper of one in the drawing. 0 fits the drawing to a given page, and shows it at 1:1
  // on an automatic one unless that would be longer than the longest sheet of paper.
  double scale = 0;
  // Of PNG pictures: pixels of the longer side, or else dots to the inch, or else 2000 pixels.
  int longerSidePixels = 0;
  double dpi = 0;
  std::uint32_t background = 0xffffff; // 0xRRGGBB
  double lineWeightFactor = 1;
};

} // namespace interchange
