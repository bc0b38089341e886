// What a dimension is drawn with; drawing, exploding and extents all start from it.
#pragma once

#include <array>
#include <vector>

#include "quorl/base/string.h"
#include "quorl/ge/line_seg3d.h"

// Lengths of a style times its overall scale.
struct ZnDbDimensionSizes {
  double extensionOffset = 0.0;
  double extensionBeyond = 0.0;
  double arrowLength = 0.0;
  double textHeight = 0.0;
  double textGap = 0.0;
};

struct ZnDbDimensionGraphics {
  std::vector<ZnGeLineSeg3d> lines;
  std::vector<std::array<ZnGePoint3d, 3>> arrowHeads; // tip first
  ZnGePoint3d textPosition;                           // middle of the baseline
  ZnGeVector3d textDirection = ZnGeVector3d::kXAxis;
  double textHeight = 0.0;
  ZnString text;

  // An arrow head with its tip there, pointing along the unit direction, in the plane with that normal.
  void addArrowHead(const ZnGePoint3d& tip, const ZnGeVector3d& direction, const ZnGeVector3d& normal,
                    double length);
};

// The direction or its opposite, whichever text is read along in the plane with that normal: to the right of
// the plane's x axis, upwards where it is vertical.
ZnGeVector3d zndbReadableDirection(const ZnGeVector3d& direction, const ZnGeVector3d& normal);
