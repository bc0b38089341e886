// The circles of a scene where they stand on the page, those of repeated blocks at each of their places.
#pragma once

#include "interchange/svg_in/scene.h"

#include <cstddef>
#include <vector>

namespace interchange {

struct PlacedCircle {
  Circle circle;           // millimetres on the page; the fit's deviation as well
  std::size_t element = 0; // of the page: the circle itself or the insert that brings it
  bool visible = true;     // it and every insert above it
};

// In document order. The readers bound what a scene can repeat, so that the list is bounded too.
std::vector<PlacedCircle> placedCircles(const Scene& scene);

} // namespace interchange
