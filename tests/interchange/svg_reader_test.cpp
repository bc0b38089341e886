#include "interchange/svg_in/svg_reader.h"

#include "interchange/scene_samples.h"
#include "interchange/svg_in/placed_circles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace interchange;
using namespace interchange_test;

namespace {

// A circle of radius 10 user units about (20, 30), and where it comes out.
struct SizeCase {
  const char* root;
  double unit; // mm
  double width, height;
  Point2 center;
  bool physical;
  const char* reason;
  std::optional<double> dpi = {};
  std::optional<LengthUnit> lengthUnit = {};
};

constexpr double kPixel = 25.4 / 96;

TEST(SvgReader, SizesAndUnits) {
  const SizeCase cases[] = {
      {"width='100mm' height='50mm' viewBox='0 0 100 50'", 1, 100, 50, {20, 20}, true, "view box"},
      {"width='10cm' height='5cm' viewBox='0 0 200 100'", 0.5, 100, 50, {10, 35}, true, "view box"},
      {"width='2in' height='1in' viewBox='-10 -10 144 72'",
       25.4 / 72,
       50.8,
       25.4,
       {30 * 25.4 / 72, 25.4 - 40 * 25.4 / 72},
       true,
       "view box"},
      {"width='72pt' height='6pc' viewBox='0 0 72 72'",
       25.4 / 72,
       25.4,
       25.4,
       {20 * 25.4 / 72, 42 * 25.4 / 72},
       true,
       "view box"},
      {"width='100mm' viewBox='0 0 100 50'", 1, 100, 50, {20, 20}, true, "view box"},
      {"width='100mm' height='100mm' viewBox='0 0 100 50'", 1, 100, 100, {20, 45}, true, "view box"},
      {"width='100mm' height='100mm' viewBox='0 0 100 50' preserveAspectRatio='xMinYMin'",
       1,
       100,
       100,
       {20, 70},
       true,
       "view box"},
      {"width='100mm' height='100mm' viewBox='0 0 50 100' preserveAspectRatio='xMaxYMax slice'",
       2,
       100,
       100,
       {40, 140},
       true,
       "view box"},
      {"width='100mm' height='50mm'", kPixel, 100, 50, {20 * kPixel, 50 - 30 * kPixel}, true, "96 dpi"},
      {"ed:version='0.48.4 r9' width='100mm' height='50mm'",
       25.4 / 90,
       100,
       50,
       {20 * 25.4 / 90, 50 - 30 * 25.4 / 90},
       true,
       "90 dpi"},
      {"ed:version='0.92.1' width='100mm' height='50mm'",
       kPixel,
       100,
       50,
       {20 * kPixel, 50 - 30 * kPixel},
       true,
       "96 dpi"},
      {"ed:version='0.48' width='100mm' height='50mm'",
       25.4 / 72,
       100,
       50,
       {20 * 25.4 / 72, 50 - 30 * 25.4 / 72},
       true,
       "asked",
       72},
      {"version='0.5' width='96px' height='96'",
       kPixel,
       25.4,
       25.4,
       {20 * kPixel, 66 * kPixel},
       false,
       "no physical size"},
      {"width='96px' height='96px' viewBox='0 0 48 48'",
       2 * kPixel,
       25.4,
       25.4,
       {40 * kPixel, 36 * kPixel},
       false,
       "no physical size"},
      {"viewBox='0 0 96 96'", 1, 96, 96, {20, 66}, false, "asked", {}, LengthUnit::Millimetre},
      {"width='192' height='192' viewBox='0 0 96 96'",
       25.4,
       96 * 25.4,
       96 * 25.4,
       {20 * 25.4, 66 * 25.4},
       false,
       "asked",
       {},
       LengthUnit::Inch},
      {"width='100mm' height='50mm' viewBox='0 0 100 50'",
       1,
       100,
       50,
       {20, 20},
       true,
       "view box",
       72,
       LengthUnit::Inch},
      {"width='100%' height='100%' viewBox='0 0 96 96'",
       kPixel,
       25.4,
       25.4,
       {20 * kPixel, 66 * kPixel},
       false,
       "no size"},
      {"", kPixel, 0, 0, {20 * kPixel, -30 * kPixel}, false, "no size"}};
  for (const SizeCase& c : cases) {
    SCOPED_TRACE(c.root);
    ReadOptions options;
    options.dpi = c.dpi;
    options.unit = c.lengthUnit;
    const std::string text =
        std::string("<svg xmlns:ed='urn:e' ") + c.root + "><circle cx='20' cy='30' r='10'/></svg>";
    const Scene scene = read(text, options);
    EXPECT_NEAR(scene.document.millimetresPerUnit, c.unit, 1e-9);
    EXPECT_NEAR(scene.document.width, c.width, 1e-9);
    EXPECT_NEAR(scene.document.height, c.height, 1e-9);
    EXPECT_EQ(scene.document.hasPhysicalSize, c.physical);
    EXPECT_NE(scene.document.unitReason.find(c.reason), std::string::npos) << scene.document.unitReason;
    const std::vector<Circle> circles = all<Circle>(scene.elements);
    ASSERT_EQ(circles.size(), 1u);
    EXPECT_NEAR(circles[0].radius, 10 * c.unit, 1e-9);
    EXPECT_NEAR(distance(circles[0].center, c.center), 0, 1e-9);
  }
}

TEST(SvgReader, TransformsReachTheElement) {
  struct Case {
    const char* transform;
    Point2 end; // of a line from the origin to (10, 0), on a page of 100 x 100 mm
  };
  const double root = std::sqrt(0.5);
  const Case cases[] = {{"translate(5)", {15, 100}},
                        {"translate(5,6)", {15, 94}},
                        {"translate(5 6) scale(2)", {25, 94}},
                        {"scale(2) translate(5 6)", {30, 88}},
                        {"scale(2,-1)", {20, 100}},
                        {"rotate(90)", {0, 90}},
                        {"rotate(90 10 0)", {10, 100}},
                        {"rotate(45), translate(0)", {10 * root, 100 - 10 * root}},
                        {"skewY(45)", {10, 90}},
                        {"skewX(45)", {10, 100}},
                        {"matrix(1 2 3 4 5 6)", {15, 100 - 26}},
                        {"matrix(1,2,3,4,5,6)translate(1,1)", {19, 100 - 32}}};
  for (const Case& c : cases) {
    const std::string inner = "<line x2='10' transform='" + std::string(c.transform) + "'/>";
    const std::string outer = "<g transform='" + std::string(c.transform) + "'><line x2='10'/></g>";
    for (const std::string& content : {inner, outer}) {
      const auto lines = all<Line>(read(page("<g stroke='red'>" + content + "</g>")).elements);
      ASSERT_EQ(lines.size(), 1u) << content;
      EXPECT_NEAR(distance(lines[0].end, c.end), 0, 1e-9) << content;
    }
  }
  const Scene scene = read(page("<line x2='10' stroke='red' transform='turn(3)'/>"));
  ASSERT_EQ(scene.problems.size(), 1u);
  EXPECT_NE(scene.problems[0].expected.find("rotate"), std::string::npos);
}

TEST(SvgReader, BasicShapes) {
  struct Case {
    const char* element;
    const char* kind; // letter of the variant, or the reason to skip it
    std::size_t vertices = 0;
  };
  const Case cases[] = {{"<line x1='1' y1='2' x2='3' y2='4'/>", "L"},
                        {"<line x1='1' y1='2' x2='1' y2='2'/>", "without length"},
                        {"<polyline points='0,0 10,0 10,10'/>", "P", 3},
                        {"<polygon points='0 0 10 0 10 10'/>", "P", 3},
                        {"<polygon points='0 0'/>", "fewer than two"},
                        {"<rect width='10' height='5'/>", "P", 4},
                        {"<rect width='10' height='5' rx='2'/>", "P", 8},
                        {"<rect width='10' height='5' ry='1'/>", "P", 8},
                        {"<rect width='10' height='5' ry='99'/>", "E"},
                        {"<rect width='10' height='10' rx='5'/>", "C"},
                        {"<rect width='10' height='10' rx='99' ry='2'/>", "E"},
                        {"<rect width='0' height='10'/>", "zero size"},
                        {"<circle r='0'/>", "zero radius"},
                        {"<circle r='-4'/>", "negative radius"},
                        {"<circle r='5%'/>", "C"},
                        {"<circle r='1in'/>", "C"},
                        {"<circle r='big'/>", "cannot be read"},
                        {"<ellipse rx='3' ry='3'/>", "C"},
                        {"<ellipse rx='3'/>", "C"},
                        {"<ellipse rx='3' ry='2'/>", "E"},
                        {"<path/>", "without data"},
                        {"<path d=''/>", "without data"},
                        {"<path d='M1 1'/>", "draws nothing"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.element);
    const Scene scene = read(page(c.element));
    if (std::string(c.kind).size() > 1) {
      ASSERT_EQ(scene.skipped.size(), 1u);
      EXPECT_NE(scene.skipped[0].why.find(c.kind), std::string::npos) << scene.skipped[0].why;
      EXPECT_TRUE(scene.elements.empty());
      continue;
    }
    ASSERT_FALSE(scene.elements.empty());
    EXPECT_EQ("LPCAESTI"[scene.elements[0].shape.index()], c.kind[0]);
    if (const auto* polyline = std::get_if<Polyline>(&scene.elements[0].shape)) {
      EXPECT_EQ(polyline->vertices.size(), c.vertices);
    }
  }
}

TEST(SvgReader, GroupsBecomeLayers) {
  const Scene scene =
      read(page("<circle r='1'/>"
                "<g ed:groupmode='layer' ed:label='Cut' id='a'><circle r='1'/>"
                "<g id='nested'><circle r='1'/></g>"
                "<g ed:groupmode='layer' ed:label='Inner'><circle r='1'/></g></g>"
                "<g id='plain'><circle r='1'/></g>"
                "<g><circle r='1'/></g>"
                "<g ed:groupmode='layer' ed:label='Off' style='display:none'><circle r='1'/></g>"
                "<g ed:groupmode='layer' ed:label='Cut'><circle r='1'/></g>"));
  std::string layers;
  for (const Element& element : scene.elements) layers += scene.layers[element.layer].name + " ";
  EXPECT_EQ(layers, "0 Cut Cut Inner plain 0 Off Cut ");
  ASSERT_EQ(scene.layers.size(), 5u);
  for (const Layer& layer : scene.layers) EXPECT_EQ(layer.visible, layer.name != "Off") << layer.name;
}

// Each snippet draws circles of radius 2 mm at the given centers, y up on a page 100 mm high.
TEST(SvgReader, ReferencesDrawWhereTheyStand) {
  const std::string hole = "<defs><circle id='h' r='2'/></defs>";
  struct Case {
    std::string content;
    std::vector<Point2> centers;
    std::size_t inserts;
    std::size_t blocks;
  };
  const Case cases[] = {
      {hole + "<use href='#h' x='10' y='20'/>", {{10, 80}}, 1, 1},
      {hole + "<use xlink:href='#h' x='10' y='20'/><use href='#h'/>", {{10, 80}, {0, 100}}, 2, 1},
      {"<use href='#h' x='1'/><circle id='h' cx='5' r='2'/>", {{6, 100}, {5, 100}}, 1, 1},
      {hole + "<g id='p'><use href='#h' x='3'/></g><use href='#p' y='10'/>", {{3, 100}, {3, 90}}, 2, 2},
      {hole + "<use href='#h' x='3' transform='rotate(90)'/>", {{0, 97}}, 1, 1},
      // Half as wide: only drawn in place does the ellipse become the round hole that it is on the page.
      {"<defs><ellipse id='e' cx='10' rx='4' ry='2'/></defs><use href='#e' transform='scale(0.5 1)'/>",
       {{5, 100}},
       0,
       0},
      {"<symbol id='s' viewBox='0 0 10 10'><circle cx='5' cy='5' r='1'/></symbol>"
       "<use href='#s' x='40' y='20' width='20' height='20'/>",
       {{50, 70}},
       1,
       1},
      {"<symbol id='s' viewBox='0 0 50 50'><circle cx='5' cy='5' r='1'/></symbol><use href='#s'/>",
       {{10, 90}},
       1,
       1},
      {"<svg x='10' y='10' width='20' height='20' viewBox='0 0 10 10'><circle cx='5' cy='5' r='1'/></svg>",
       {{20, 80}},
       0,
       0},
      {"<switch><g requiredExtensions='x'><circle r='9'/></g><g><circle r='2'/></g><circle r='7'/></switch>",
       {{0, 100}},
       0,
       0},
      {"<a><circle cx='7' r='2'/></a>", {{7, 100}}, 0, 0}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.content);
    const Scene scene = read(page(c.content));
    EXPECT_TRUE(scene.problems.empty());
    const std::vector<PlacedCircle> circles = placedCircles(scene);
    ASSERT_EQ(circles.size(), c.centers.size());
    for (std::size_t i = 0; i < circles.size(); ++i) {
      EXPECT_NEAR(distance(circles[i].circle.center, c.centers[i]), 0, 1e-9);
      EXPECT_NEAR(circles[i].circle.radius, 2, 1e-9);
      EXPECT_TRUE(circles[i].visible);
    }
    std::size_t inserts = all<Insert>(scene.elements).size();
    EXPECT_EQ(inserts, c.inserts);
    EXPECT_EQ(scene.blocks.size(), c.blocks);
  }
}

TEST(SvgReader, DefinitionsCarryTheStyleOfTheirUse) {
  const Scene scene =
      read(page("<defs><g id='d'><circle r='2'/></g><g id='unused'><path d='M0 0h5'/></g></defs>"
                "<g stroke='red'><use href='#d'/><use href='#d'/></g>"
                "<use href='#d' stroke='blue' stroke-width='3' transform='scale(2)'/>"
                "<use href='#d' display='none'/><use href='#gone'/><use href='other.svg#d'/>"));
  ASSERT_EQ(scene.blocks.size(), 4u);
  EXPECT_EQ(scene.blocks[0].name, "d");
  EXPECT_EQ(scene.blocks[1].name, "d_2");
  EXPECT_EQ(scene.blocks[3].name, "unused");
  EXPECT_EQ(scene.blocks[0].elements[0].style.color, (Color{255, 0, 0}));
  EXPECT_EQ(scene.blocks[1].elements[0].style.color, (Color{0, 0, 255}));
  // Widths are those on the page, so that no insert has to scale them again.
  EXPECT_NEAR(scene.blocks[1].elements[0].style.width, 6, 1e-9);
  ASSERT_EQ(scene.elements.size(), 4u);
  EXPECT_FALSE(scene.elements[3].visible);
  ASSERT_EQ(scene.problems.size(), 1u);
  EXPECT_NE(scene.problems[0].what.find("#gone"), std::string::npos);
  EXPECT_EQ(scene.skipped.size(), 2u);
}

TEST(SvgReader, TextsHavePlaceSizeAndDirection) {
  struct Case {
    const char* content;
    std::vector<Text> texts; // position, height, rotation, width factor, mirrored, anchor, baseline, string
  };
  const auto S = TextAnchor::Start;
  const auto A = TextBaseline::Alphabetic;
  const Case cases[] = {
      {"<text x='10' y='20' font-size='5'>Hole  1\n</text>", {{{10, 80}, 5, 0, 1, false, S, A, "Hole 1"}}},
      {"<text x='10' y='20' style='font-size:5px' text-anchor='middle' dominant-baseline='hanging'>A</text>",
       {{{10, 80}, 5, 0, 1, false, TextAnchor::Middle, TextBaseline::Hanging, "A"}}},
      {"<text font-size='5' transform='matrix(0 -1 1 0 30 40)'>up</text>",
       {{{30, 60}, 5, M_PI / 2, 1, false, S, A, "up"}}},
      {"<text font-size='5' transform='scale(2 1)'>wide</text>", {{{0, 100}, 5, 0, 2, false, S, A, "wide"}}},
      {"<text font-size='5' transform='scale(1 -1)'>back</text>", {{{0, 100}, 5, 0, 1, true, S, A, "back"}}},
      {"<text font-size='4'><tspan x='1' y='2'>one</tspan><tspan x='1' y='7'>two <tspan fill='red'>x</tspan>"
       "</tspan></text>",
       {{{1, 98}, 4, 0, 1, false, S, A, "one"}, {{1, 93}, 4, 0, 1, false, S, A, "two x"}}},
      {"<text font-size='4' y='9' xml:space='preserve'>a  b</text>",
       {{{0, 91}, 4, 0, 1, false, S, A, "a  b"}}},
      {"<text font-size='10'><tspan font-size='50%' x='1 2 3' dy='1'>&#216;5</tspan></text>",
       {{{1, 99},
         5,
         0,
         1,
         false,
         S,
         A,
         "\xC3\x98"
         "5"}}}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.content);
    const std::vector<Text> texts = all<Text>(read(page(c.content)).elements);
    ASSERT_EQ(texts.size(), c.texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const Text& text = texts[i];
      const Text& expected = c.texts[i];
      EXPECT_EQ(text.string, expected.string);
      EXPECT_NEAR(distance(text.position, expected.position), 0, 1e-9);
      EXPECT_NEAR(text.height, expected.height, 1e-9);
      EXPECT_NEAR(text.rotation, expected.rotation, 1e-9);
      EXPECT_NEAR(text.widthFactor, expected.widthFactor, 1e-9);
      EXPECT_EQ(text.mirrored, expected.mirrored);
      EXPECT_EQ(text.anchor, expected.anchor);
      EXPECT_EQ(text.baseline, expected.baseline);
    }
  }
}

TEST(SvgReader, NamesWhatItPassesOver) {
  const Scene scene = read("<svg xmlns='http://www.w3.org/2000/svg' width='9mm' height='9mm'>\n"
                           "<title>t</title><desc/><metadata><x/></metadata>\n"
                           "<image id='logo' href='a.png'/>\n"
                           "<defs><linearGradient id='lg'/><clipPath id='cp'/></defs>\n"
                           "<foreignObject/><ed:view/><blink/>\n"
                           "<g clip-path='url(#cp)'><circle id='c' r='1'/></g>\n"
                           "<path d='M0 0 L1 1 oops'/>\n"
                           "</svg>");
  std::string skipped;
  for (const Skipped& s : scene.skipped) skipped += s.what + ":" + std::to_string(s.line) + " ";
  EXPECT_EQ(skipped, "<image id=\"logo\">:3 <linearGradient id=\"lg\">:4 <clipPath id=\"cp\">:4 "
                     "<foreignObject>:5 <ed:view>:5 <blink>:5 <g>:6 ");
  ASSERT_EQ(scene.elements.size(), 2u);
  EXPECT_EQ(scene.elements[0].source.id, "c");
  EXPECT_EQ(scene.elements[0].source.line, 6);
  ASSERT_EQ(scene.problems.size(), 1u);
  EXPECT_EQ(scene.problems[0].line, 7);
}

} // namespace
