// The closed outlines of a drawing: which holes belong to one part, and which merely share its sheet.
#pragma once

#include <vector>

#include "torvi/host/geometry.h"

namespace companion {

// A closed line seen along z, as a polygon that departs little from it.
struct Outline {
  std::vector<ZnGePoint2d> corners;
  ZnGePoint2d lower, upper; // of its box
  double area = 0.0;
  ZnGePoint2d middle() const { return {(lower.x + upper.x) / 2.0, (lower.y + upper.y) / 2.0}; }
  bool holds(const ZnGePoint2d& point) const;
};

// Closed chains, and open ones that meet end to end, wherever just two of them meet.
std::vector<Outline> joinOutlines(std::vector<std::vector<ZnGePoint2d>> chains);

// A circle on the sheet.
struct Disc {
  ZnGePoint2d center;
  double radius = 0.0;
};

// For each disc, no two of them concentric, the smallest outline around it that holds another one too; -1 for
// a disc that is on its own on the sheet. A frame round everything is no part, and a disc that holds others
// is itself an outline: it belongs to the part around it, if any, but is none of its holes (isOutline).
struct PartOfDisc {
  int outline = -1;
  bool isOutline = false;
};
std::vector<PartOfDisc> partsOf(const std::vector<Disc>& discs, const std::vector<Outline>& outlines);

} // namespace companion
