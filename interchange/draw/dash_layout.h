// Where the dashes of a linetype lie along a curve: symmetric about its middle, with a long dash at each end.
#pragma once

#include <vector>

namespace interchange {

// A linetype in lengths along the curve: positive ones are dashes, negative ones gaps, zeros dots.
struct DashPattern {
  std::vector<double> lengths;
  // Stretch the whole pattern to the curve instead of the two end dashes.
  bool scaledToFit = false;
};

// A drawn part in arc length from the start; a dot has equal ends. Of a closed curve the last part may run
// beyond the length, which means on from the start.
struct DashSpan {
  double start = 0;
  double end = 0;

  bool isDot() const { return start == end; }
};

// Open curves begin and end within a long dash and have a dash at their middle, so that lines that cross at
// their middles cross in dashes; what does not fill a repeat is shared by the two end dashes. Closed curves
// get a whole number of repeats, stretched a little, with the middle of a long dash at their start. One span
// from end to end: the pattern has no gap, the curve is shorter than the least that shows the pattern, or it
// would take more than a hundred thousand dashes. No span for a curve without length.
std::vector<DashSpan> layOutDashes(const DashPattern& pattern, double length, bool closed);

} // namespace interchange
