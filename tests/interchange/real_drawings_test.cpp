// Drawings by others, as they came from their editors: what each comes out as, told in real_drawings.txt.
#include "interchange/svg_in/placed_circles.h"
#include "interchange/svg_in/svg_reader.h"

#include "interchange/scene_samples.h"
#include "support/file_content.h"
#include "support/told_cases.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

using namespace interchange;

namespace {

const std::filesystem::path kFolder = QUORL_SOURCE_DIR "/../shared/inputs";

// The size, the circles by how they are drawn with the largest share by which one leaves a circle, and what
// else there is: outlines, curves that are no circle's, and how much of all is hidden.
Lines facts(const std::string& name) {
  const SvgReadResult result = readSvg(contentOf(kFolder / (name + ".svg")), name, {});
  EXPECT_FALSE(result.error) << result.error->text();
  const Scene& scene = result.scene;
  EXPECT_TRUE(scene.problems.empty());
  EXPECT_FALSE(scene.document.unitReason.empty());
  Lines lines{fmt::format("{:.3f} x {:.3f} mm{}", scene.document.width, scene.document.height,
                          scene.document.hasPhysicalSize ? "" : ", from pixels")};
  static constexpr const char* kSpellings[] = {"whole", "arcs", "curves", "polygon"};
  std::map<std::pair<RoundSpelling, int>, std::pair<int, double>> circles;
  for (const PlacedCircle& placed : placedCircles(scene)) {
    if (!placed.visible) continue;
    auto& [count, deviation] = circles[{placed.circle.fit.spelling, placed.circle.fit.pieces}];
    ++count;
    deviation = std::max(deviation, placed.circle.fit.relative);
  }
  for (const auto& [kind, found] : circles)
    lines.push_back(fmt::format("{} circles of {} {}, off by {:.0g}", found.first, kind.second,
                                kSpellings[static_cast<int>(kind.first)],
                                found.second < 1e-6 ? 0.0 : found.second));
  std::size_t hidden = 0;
  for (const Element& element : scene.elements) {
    EXPECT_LT(element.layer, scene.layers.size());
    EXPECT_GT(element.source.line, 0);
    EXPECT_EQ(element.visible, element.hiddenReason.empty());
    hidden += !element.visible;
  }
  const auto polylines = interchange_test::all<Polyline>(scene.elements);
  lines.push_back(fmt::format("{} polylines, {} splines, {} hidden of {} on {} layers", polylines.size(),
                              interchange_test::all<Spline>(scene.elements).size(), hidden,
                              scene.elements.size(), scene.layers.size()));
  // Of sheets that were drawn to check the scale: the sides of an upright square, whatever rounds its
  // corners.
  if (!name.starts_with("scale-square")) return lines;
  double width = 0, height = 0;
  for (const Polyline& polyline : polylines)
    for (const Vertex& a : polyline.vertices)
      for (const Vertex& b : polyline.vertices) {
        width = std::max(width, b.point.x - a.point.x);
        height = std::max(height, b.point.y - a.point.y);
      }
  lines.push_back(fmt::format("square of {:.1f} x {:.1f} mm", width, height));
  return lines;
}

TEST(RealDrawings, ComeOutAsTheyWereDrawn) {
  if (!std::filesystem::exists(kFolder)) GTEST_SKIP() << "the folder with the drawings is absent";
  runToldCases("interchange/real_drawings.txt", 24,
               [](const std::string&, const std::string& name, const Lines&) { return facts(name); });
}

} // namespace
