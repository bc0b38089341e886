// Arc length along a contour, and the part of it between two lengths.
#pragma once

#include "interchange/recognize/contour.h"

#include <cstddef>
#include <vector>

namespace interchange {

// Lengths are exact for lines and circular arcs and correct to about ten digits for all other pieces. The
// contour must outlive its measure.
class ContourMeasure {
public:
  explicit ContourMeasure(const Contour& contour);

  double length() const { return ends_.empty() ? 0 : ends_.back(); }
  // The open contour from one arc length to another; `to` may run beyond the end of a closed contour by up to
  // its length, everything else is kept within the contour.
  Contour part(double from, double to) const;
  ZnGePoint2d pointAt(double length) const;

private:
  void appendPart(double from, double to, Contour& part) const;
  double paramAt(std::size_t index, double length) const; // within the piece, 0..1

  const Contour& contour_;
  std::vector<double> ends_; // arc length at the end of each piece
};

// The piece as cubics that leave it by less than five millionths of its size; lines stay lines.
std::vector<Segment> asCubics(const Segment& segment);

} // namespace interchange
