#include "interchange/svg_in/color.h"

#include "interchange/scene_samples.h"

#include <gtest/gtest.h>

#include <string>

using namespace interchange;
using namespace interchange_test;

namespace {

TEST(SvgColor, Notations) {
  struct Case {
    const char* text;
    std::optional<Color> color;
  };
  const Case cases[] = {{"#fff", Color{255, 255, 255}},
                        {"#1a2B3c", Color{26, 43, 60}},
                        {"#1a2b3cff", Color{26, 43, 60}},
                        {"#f008", Color{255, 0, 0}},
                        {" Red ", Color{255, 0, 0}},
                        {"yellowgreen", Color{154, 205, 50}},
                        {"aliceblue", Color{240, 248, 255}},
                        {"rgb(1,2,3)", Color{1, 2, 3}},
                        {"rgb(100%, 0%, 50%)", Color{255, 0, 128}},
                        {"rgba(1 2 3 / 0.5)", Color{1, 2, 3}},
                        {"rgb(300,-5,0)", Color{255, 0, 0}},
                        {"hsl(120, 100%, 50%)", Color{0, 255, 0}},
                        {"hsl(210, 50%, 40%)", Color{51, 102, 153}},
                        {"#12345", std::nullopt},
                        {"#12g", std::nullopt},
                        {"rgb(1,2)", std::nullopt},
                        {"no-such-color", std::nullopt},
                        {"", std::nullopt}};
  for (const Case& c : cases) EXPECT_EQ(parseColor(c.text), c.color) << c.text;
}

// Who wins: attribute < sheet (by weight, then order) < style attribute < important.
TEST(SvgStyle, CascadeAndInheritance) {
  const std::string sheet =
      "<style>/* c */ circle{stroke:#010101} .a,.b{stroke:#020202}\n"
      ".a.b{stroke:#030303} #x{stroke:#040404} .loud{stroke:#050505 !important}"
      "g .no{stroke:#ff0000} @media print{.a{stroke:#ff0000}} *{stroke-width:2}</style>";
  struct Case {
    const char* element;
    Color color;
  };
  const Case cases[] = {
      {"<circle r='1' stroke='#990000'/>", {1, 1, 1}},
      {"<ellipse rx='1' ry='1' stroke='#990000'/>", {0x99, 0, 0}},
      {"<circle r='1' class='b'/>", {2, 2, 2}},
      {"<circle r='1' class='c b  a'/>", {3, 3, 3}},
      {"<circle r='1' class='a b' id='x'/>", {4, 4, 4}},
      {"<circle r='1' id='x' style='stroke:#060606'/>", {6, 6, 6}},
      {"<circle r='1' class='loud' style='stroke:#060606'/>", {5, 5, 5}},
      {"<g class='no'><circle class='no' r='1'/></g>", {1, 1, 1}},
      {"<g stroke='#070707'><rect width='1' height='2'/></g>", {7, 7, 7}},
      {"<g stroke='#070707'><rect width='1' height='2' stroke='inherit'/></g>", {7, 7, 7}},
      {"<g stroke='#070707'><rect width='1' height='2' stroke='garbage'/></g>", {7, 7, 7}},
      {"<g color='#080808'><rect width='1' height='2' stroke='currentColor'/></g>", {8, 8, 8}},
      {"<rect width='1' height='2' stroke='none' fill='#090909'/>", {9, 9, 9}},
      {"<rect width='1' height='2' stroke='url(#lg) #0a0a0a'/>", {10, 10, 10}},
      {"<text stroke='#ff0000' fill='#0b0b0b'>ink</text>", {11, 11, 11}}};
  for (const Case& c : cases) {
    const Scene scene = read(page(sheet + c.element));
    ASSERT_EQ(scene.elements.size(), 1u) << c.element;
    EXPECT_EQ(scene.elements[0].style.color, c.color) << c.element;
    EXPECT_EQ(scene.skipped.size(), 2u) << "the two rules that are not followed";
  }
}

TEST(SvgStyle, WidthsAndDashesAreMillimetresOnThePage) {
  struct Case {
    const char* attributes;
    double width;
    std::vector<double> dash;
  };
  const Case cases[] = {{"", 1, {}},
                        {"stroke-width='0.25'", 0.25, {}},
                        {"stroke-width='0'", 0, {}},
                        {"stroke-width='-3'", 1, {}},
                        {"stroke-width='96px' transform='scale(0.5)'", 48, {}},
                        {"transform='scale(4 9)'", 6, {}},
                        {"stroke-dasharray='4 2'", 1, {4, 2}},
                        {"stroke-dasharray='4,2,1' transform='scale(2)'", 2, {8, 4, 2, 8, 4, 2}},
                        {"stroke-dasharray='none'", 1, {}},
                        {"stroke-dasharray='0 0'", 1, {}},
                        {"stroke-dasharray='4 -1'", 1, {}}};
  for (const Case& c : cases) {
    const std::string line = "<line x2='9' stroke='red' " + std::string(c.attributes) + "/>";
    const Scene scene = read(page(line));
    ASSERT_EQ(scene.elements.size(), 1u) << line;
    EXPECT_NEAR(scene.elements[0].style.width, c.width, 1e-9) << line;
    EXPECT_EQ(scene.elements[0].style.dash, c.dash) << line;
  }
}

TEST(SvgStyle, HiddenThingsStayWithTheirReason) {
  struct Case {
    const char* content;
    const char* reason; // empty: visible
    double opacity = 1;
  };
  const Case cases[] = {
      {"<circle r='1'/>", ""},
      {"<circle r='1' display='none'/>", "display:none on <circle>"},
      {"<g id='off' style='display:none'><g display='inline'><circle r='1'/></g></g>", "on <g id=\"off\">"},
      {"<g visibility='hidden'><circle r='1'/></g>", "visibility:hidden"},
      {"<g visibility='hidden'><circle r='1' visibility='visible'/></g>", ""},
      {"<circle r='1' visibility='collapse'/>", "visibility:hidden"},
      {"<g opacity='0'><circle r='1'/></g>", "opacity 0"},
      {"<g opacity='0.5'><circle r='1' opacity='50%' fill-opacity='0.5'/></g>", "", 0.125},
      {"<circle r='1' fill='none'/>", "neither stroke nor fill"},
      {"<circle r='1' fill-opacity='0'/>", "opacity 0"},
      {"<circle r='1' fill-opacity='0' stroke='red' stroke-opacity='.25'/>", "", 0.25},
      {"<g transform='scale(1 0)'><path d='M0 0L5 5'/></g>", "flattened"},
      {"<text><tspan fill='none'>a</tspan></text>", ""}};
  for (const Case& c : cases) {
    const Scene scene = read(page(c.content));
    ASSERT_EQ(scene.elements.size(), 1u) << c.content;
    const Element& element = scene.elements[0];
    EXPECT_EQ(element.visible, std::string(c.reason).empty()) << c.content << element.hiddenReason;
    EXPECT_NE(element.hiddenReason.find(c.reason), std::string::npos) << c.content << element.hiddenReason;
    if (element.visible) {
      EXPECT_NEAR(element.style.opacity, c.opacity, 1e-12) << c.content;
    }
  }
}

} // namespace
