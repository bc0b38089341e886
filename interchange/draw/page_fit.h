// How large a picture's page is and where the drawing lies on it.
#pragma once

#include "interchange/draw/picture_options.h"

#include "quorl/ge/matrix2d.h"

#include <optional>

namespace interchange {

struct Extent {
  ZnGePoint2d min;
  ZnGePoint2d max;
};

struct PageFit {
  double width = 0; // millimetres
  double height = 0;
  double scale = 1;    // millimetres on the page of one drawing unit
  ZnGeMatrix2d toPage; // drawing units, y up, to millimetres from the upper left corner, y down
};

struct PaperSize {
  double width = 0;
  double height = 0;
};

// `extent` is in drawing units, nothing for an empty drawing; `unit` is the drawing unit's millimetres.
// `paper` is the sheet whose lower left corner is the origin of the space, and decides when neither page nor
// scale are given. An empty drawing has a small blank page.
PageFit fitPage(const std::optional<Extent>& extent, double unit, const std::optional<PaperSize>& paper,
                const PictureOptions& options);

// Millimetres of one drawing unit by the drawing's unit number; drawings without units count in millimetres.
double millimetresOfInsertionUnit(int insertionUnits);

} // namespace interchange
