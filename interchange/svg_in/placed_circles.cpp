#include "interchange/svg_in/placed_circles.h"

#include <variant>

namespace interchange {

namespace {

struct Collector {
  const Scene& scene;
  std::vector<PlacedCircle> found;
  std::size_t pageElement = 0;

  // Inserts keep circles round: the reader makes them of similarities only.
  void collect(const std::vector<Element>& elements, const ZnGeMatrix2d& toPage, bool visible, bool onPage) {
    for (std::size_t i = 0; i < elements.size(); ++i) {
      if (onPage) pageElement = i;
      const Element& element = elements[i];
      const bool seen = visible && element.visible;
      if (const Insert* insert = std::get_if<Insert>(&element.shape)) {
        collect(scene.blocks[insert->block].elements, toPage * insert->matrix, seen, false);
      } else if (const Circle* circle = std::get_if<Circle>(&element.shape)) {
        PlacedCircle placed{*circle, pageElement, seen};
        const double scale = toPage.meanScale();
        placed.circle.center = toPage * circle->center;
        placed.circle.radius *= scale;
        placed.circle.fit.deviation *= scale;
        found.push_back(placed);
      }
    }
  }
};

} // namespace

std::vector<PlacedCircle> placedCircles(const Scene& scene) {
  Collector collector{scene, {}, 0};
  collector.collect(scene.elements, {}, true, true);
  return std::move(collector.found);
}

} // namespace interchange
