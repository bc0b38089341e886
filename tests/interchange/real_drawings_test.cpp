// Drawings by others, as they came from their editors: what each must come out as.
#include "interchange/svg_in/placed_circles.h"
#include "interchange/svg_in/svg_reader.h"

#include "interchange/scene_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using namespace interchange;

namespace {

using Whole = RoundSpelling;

// Spelling of most of the circles, and how many pieces each has.
struct Drawing {
  const char* name;
  int circles;
  RoundSpelling spelling;
  int pieces;
  int ofThatSpelling;
  double width, height; // mm
  bool physical;
  double largestDeviation; // of the radius, of any circle
};

const Drawing kDrawings[] = {
    {"nema-mount", 5, Whole::Curves, 11, 5, 161.36, 64.40, true, 0.002},
    {"hole-pattern-hex", 105, Whole::Curves, 11, 105, 120, 126.55, true, 0.002},
    {"front-panel-buttons", 25, Whole::Curves, 11, 25, 237.35, 132.85, true, 0.002},
    {"linkage-bars", 389, Whole::Curves, 11, 389, 251.9, 315.6, true, 0.002},
    {"gears-pair", 2, Whole::Curves, 11, 2, 188, 217.65, true, 0.002},
    {"laser-panels-mm", 23, Whole::Arcs, 2, 23, 1220, 610, true, 0.003},
    {"router-sled-inch", 17, Whole::Arcs, 2, 17, 778.9198, 540.9233, true, 1e-6},
    {"router-sled-toolpaths", 17, Whole::Arcs, 2, 17, 575.1931, 389.5280, true, 1e-5},
    {"keyboard-plate-polygon", 8, Whole::Polygon, 20, 8, 300.702, 129.252, true, 0.015},
    {"keyplate-board-plot-mm", 12, Whole::Whole, 1, 12, 148.5138, 118.3132, true, 1e-9},
    {"pcb-drill-map", 249, Whole::Whole, 1, 249, 297.002, 210.007, true, 1e-9},
    {"keyboard-case-cubic", 13, Whole::Curves, 4, 13, 150, 300, true, 0.002},
    {"plate-hidden-layers", 5, Whole::Whole, 1, 5, 150, 120, true, 1e-9},
    // Two of these are the counters of a letter, whose two arcs leave a circle by 0.86 %.
    {"acrylic-plates-css", 26, Whole::Arcs, 2, 26, 813.66 * 25.4 / 96, 566.19 * 25.4 / 96, false, 0.01},
    {"switch-plate-2cubic", 24, Whole::Curves, 2, 24, 500, 200, true, 0.02},
    {"acrylic-bottom-pt", 14, Whole::Curves, 4, 14, 419.528 * 25.4 / 72, 595.276 * 25.4 / 72, true, 0.002},
    {"iso-bolt-circle", 0, Whole::Whole, 1, 0, 100.09, 53.492262, true, 0},
    {"title-block-drawing", 2, Whole::Curves, 8, 2, 100.09, 69.99941, true, 0.006},
    {"ring-of-pads", 12, Whole::Whole, 1, 11, 50.8, 144.738 * 25.4 / 72, false, 0.002},
    {"board-header-rows", 86, Whole::Whole, 1, 86, 288.236 * 25.4 / 72, 53.34, false, 1e-9},
    {"square-plate-4holes", 4, Whole::Curves, 4, 4, 255 * 25.4 / 72, 266 * 25.4 / 72, false, 0.002},
    {"cable-holder-scaled-arc", 2, Whole::Arcs, 2, 1, 210, 297, true, 0.002},
    {"scale-square-90dpi", 0, Whole::Whole, 1, 0, 210, 297, true, 0},
    {"scale-square-viewbox", 0, Whole::Whole, 1, 0, 210, 297, true, 0},
};

std::filesystem::path folder() {
  return std::filesystem::path(QUORL_SOURCE_DIR) / ".." / "shared" / "inputs";
}

class RealDrawings : public testing::Test {
protected:
  void SetUp() override {
    if (!std::filesystem::exists(folder())) GTEST_SKIP() << "the folder with the drawings is absent";
  }

  static Scene read(const std::string& name, const ReadOptions& options = {}) {
    std::ifstream file(folder() / (name + ".svg"), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    SvgReadResult result = readSvg(text, name, options);
    EXPECT_FALSE(result.error) << result.error->text();
    return std::move(result.scene);
  }

  static std::vector<Circle> circlesOf(const Scene& scene) {
    std::vector<Circle> circles;
    for (const PlacedCircle& placed : placedCircles(scene)) {
      if (placed.visible) circles.push_back(placed.circle);
    }
    return circles;
  }
};

TEST_F(RealDrawings, CirclesAndSizes) {
  for (const Drawing& d : kDrawings) {
    SCOPED_TRACE(d.name);
    const Scene scene = read(d.name);
    const std::vector<Circle> circles = circlesOf(scene);
    EXPECT_EQ(static_cast<int>(circles.size()), d.circles);
    const auto spelled = std::count_if(circles.begin(), circles.end(), [&](const Circle& c) {
      return c.fit.spelling == d.spelling && c.fit.pieces == d.pieces;
    });
    EXPECT_EQ(static_cast<int>(spelled), d.ofThatSpelling);
    for (const Circle& circle : circles) EXPECT_LE(circle.fit.relative, d.largestDeviation);
    EXPECT_NEAR(scene.document.width, d.width, 1e-3);
    EXPECT_NEAR(scene.document.height, d.height, 1e-3);
    EXPECT_EQ(scene.document.hasPhysicalSize, d.physical);
    EXPECT_FALSE(scene.document.unitReason.empty());
    EXPECT_TRUE(scene.problems.empty());
    for (const Element& element : scene.elements) {
      EXPECT_LT(element.layer, scene.layers.size());
      EXPECT_GT(element.source.line, 0);
      EXPECT_EQ(element.visible, element.hiddenReason.empty());
    }
  }
}

// An upright square's sides, whatever rounds its corners.
TEST_F(RealDrawings, CheckSquaresAreAHundredMillimetres) {
  for (const char* name : {"scale-square-90dpi", "scale-square-viewbox"}) {
    const Scene scene = read(name);
    double width = 0, height = 0;
    for (const Polyline& polyline : interchange_test::all<Polyline>(scene.elements)) {
      const auto [left, right] =
          std::minmax_element(polyline.vertices.begin(), polyline.vertices.end(),
                              [](const Vertex& a, const Vertex& b) { return a.point.x < b.point.x; });
      const auto [low, high] =
          std::minmax_element(polyline.vertices.begin(), polyline.vertices.end(),
                              [](const Vertex& a, const Vertex& b) { return a.point.y < b.point.y; });
      width = std::max(width, right->point.x - left->point.x);
      height = std::max(height, high->point.y - low->point.y);
    }
    EXPECT_NEAR(width, 100, 0.01) << name;
    EXPECT_NEAR(height, 100, 0.01) << name;
  }
}

// The plate with one round per notch: each outline is one closed polyline, no curve left over.
TEST_F(RealDrawings, OutlinesStayWhole) {
  struct Case {
    const char* name;
    std::size_t outlines;
  };
  for (const Case& c :
       {Case{"switch-plate-2cubic", 82}, Case{"nema-mount", 10}, Case{"keyboard-case-cubic", 33},
        Case{"linkage-bars", 26}, Case{"hole-pattern-hex", 1}}) {
    const Scene scene = read(c.name);
    EXPECT_EQ(interchange_test::all<Polyline>(scene.elements).size(), c.outlines) << c.name;
    EXPECT_EQ(interchange_test::all<Spline>(scene.elements).size(), 0u) << c.name;
  }
}

TEST_F(RealDrawings, LayersAndHiddenThings) {
  const Scene scene = read("plate-hidden-layers");
  const auto hidden = std::count_if(scene.elements.begin(), scene.elements.end(),
                                    [](const Element& e) { return !e.visible; });
  EXPECT_EQ(interchange_test::all<Circle>(scene.elements).size(), 249u);
  EXPECT_EQ(hidden, 975);
  const auto cuts = std::find_if(scene.layers.begin(), scene.layers.end(),
                                 [](const Layer& l) { return l.name == "Edge.Cuts"; });
  ASSERT_NE(cuts, scene.layers.end());
  EXPECT_TRUE(cuts->visible);
}

} // namespace
