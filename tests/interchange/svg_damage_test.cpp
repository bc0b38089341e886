// Files as they should not be: one clear message or a scene, never a crash, a hang or a number that is none.
#include "interchange/recognize/limits.h"
#include "interchange/svg_in/placed_circles.h"
#include "interchange/svg_in/svg_reader.h"
#include "interchange/svg_in/text_encoding.h"

#include "interchange/scene_samples.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>

using namespace interchange;
using namespace interchange_test;

namespace {

std::string repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

// Each definition repeats the one before it twice; `transform` decides how.
std::string bomb(int levels, const std::string& attributes, const char* inner = "<circle id='l0' r='1'/>") {
  std::string content = std::string("<defs>") + inner;
  for (int i = 1; i <= levels; ++i) {
    const std::string use = "<use href='#l" + std::to_string(i - 1) + "' " + attributes + "/>";
    content += "<g id='l" + std::to_string(i) + "'>" + use + use + "</g>";
  }
  return page(content + "</defs><use href='#l" + std::to_string(levels) + "'/>");
}

TEST(SvgDamage, RefusalsNameTheLine) {
  struct Case {
    const char* name;
    std::string text;
    int line;
    const char* what;
  };
  const Case cases[] = {
      {"empty", "", 1, "document"},
      {"nesting", "<svg>" + repeated("<g>\n", 5000) + repeated("</g>", 5000) + "</svg>", 1000, "deep"},
      {"chain",
       page("<g id='c0'/>" +
            [] {
              std::string chain;
              for (int i = 1; i < 3000; ++i) {
                chain +=
                    "<g id='c" + std::to_string(i) + "'><use href='#c" + std::to_string(i - 1) + "'/></g>";
              }
              return "<defs>" + chain + "</defs><use href='#c2999'/>";
            }()),
       1, "deep"},
      {"bomb", bomb(40, ""), 1, "repeat"},
      {"squeezed bomb", bomb(40, "transform='scale(1 0.99)'"), 1, "repeat"},
      {"coloured bomb", bomb(40, "stroke='red'"), 1, "repeat"},
      // It draws nothing, yet costs as much.
      {"empty bomb", bomb(40, "transform='scale(1 0.99)'", "<g id='l0'></g>"), 1, "repeat"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const SvgReadResult result = readSvg(c.text, "bad.svg");
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->file, "bad.svg");
    EXPECT_NEAR(result.error->line, c.line, c.line == 1000 ? 3 : 0);
    std::string what = result.error->what;
    for (char& letter : what) letter = static_cast<char>(std::tolower(letter));
    EXPECT_NE(what.find(c.what), std::string::npos) << what;
    EXPECT_FALSE(result.error->expected.empty());
    EXPECT_TRUE(result.scene.elements.empty());
  }
}

TEST(SvgDamage, CyclesAreSkippedAndReported) {
  for (const char* content : {"<use id='a' href='#a'/>", "<g id='a'><circle r='1'/><use href='#a'/></g>",
                              "<g id='a'><use href='#b'/></g><g id='b'><use href='#a'/></g>",
                              "<symbol id='a'><use href='#b' transform='scale(1 2)'/></symbol>"
                              "<g id='b'><use href='#a'/></g>"}) {
    const Scene scene = read(page(content));
    EXPECT_FALSE(scene.problems.empty()) << content;
    EXPECT_LE(placedCircles(scene).size(), 2u) << content;
  }
}

TEST(SvgDamage, NumbersThatAreNone) {
  for (const char* number :
       {"NaN", "inf", "-inf", "1e308", "1e999", "-1e30", "1e", "--5", "0x10", "", "1,5"}) {
    const std::string n = number;
    const Scene scene =
        read(page("<circle cx='" + n + "' cy='5' r='5'/><circle cx='5' cy='5' r='" + n +
                  "'/><path d='M0 0 L" + n + " 4 A" + n + " 3 0 0 1 9 9'/><g transform='scale(" + n +
                  ")'><line x2='3'/></g>"
                  "<polygon points='0 0 5 5 " +
                  n + " 7'/><text x='" + n + "' font-size='" + n +
                  "'>t</text>"
                  "<rect width='" +
                  n + "' height='4' stroke-width='" + n + "' rx='" + n + "'/>"));
    for (const Element& element : scene.elements) {
      for (const ZnGePoint2d& p : sample(element.shape)) ASSERT_TRUE(isUsable(p)) << number;
      EXPECT_TRUE(std::isfinite(element.style.width)) << number;
    }
  }
}

TEST(SvgDamage, EncodingsAreOneText) {
  const std::string plain = "<svg width='9mm' height='9mm'>\n<text>\xC3\xB8 5</text></svg>";
  const auto utf16 = [&](bool big) {
    std::string bytes = big ? "\xFE\xFF" : "\xFF\xFE";
    std::string latin = plain;
    latin.replace(latin.find("\xC3\xB8"), 2, "\xF8");
    for (const char c : latin) {
      bytes += big ? std::string{'\0', c} : std::string{c, '\0'};
    }
    return bytes;
  };
  std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>" + plain;
  latin.replace(latin.find("\xC3\xB8"), 2, "\xF8");
  for (const std::string& bytes : {plain, "\xEF\xBB\xBF" + plain, utf16(true), utf16(false), latin}) {
    const Scene scene = read(bytes);
    const auto texts = all<Text>(scene.elements);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].string, "\xC3\xB8 5");
    EXPECT_EQ(scene.elements[0].source.line, 2);
  }
  // Half a pair and an odd byte at the end are replaced and dropped.
  EXPECT_EQ(toUtf8(std::string("\xFF\xFE\x00\xD8\x41\x00\x42", 7)), "\xEF\xBF\xBD"
                                                                    "A");
}

const std::string& sampleText() {
  static const std::string text =
      "<?xml version='1.0'?>\n<svg xmlns='http://www.w3.org/2000/svg' width='50mm' height='40mm' "
      "viewBox='0 0 50 40'>\n<style>.a{fill:none;stroke:red} #b,path{stroke-dasharray:3 1}</style>\n"
      "<defs><symbol id='s' viewBox='0 0 9 9'><circle cx='4' cy='4' r='3'/></symbol></defs>\n"
      "<g class='a' transform='translate(2) rotate(30 4 5)'><use href='#s' x='3' width='8' height='8'/>\n"
      "<path id='b' d='M1 2h5v-3c1 1 2 2 3 1s1-1 2 0a3 2 20 015 5q1 2 3 3t4 1z m3 3A5 5 0 1 0 9 9'/>\n"
      "<rect x='1' y='2' width='8' height='7' rx='2'/><polygon points='0,0 5,0 5,5'/></g>\n"
      "<text x='4' y='5' font-size='3'>one <tspan dy='4'>two &amp; three</tspan></text>\n</svg>\n";
  return text;
}

// Whatever is left of a file: a message with a line in it, or a scene of finite things.
void expectSane(const std::string& text) {
  const SvgReadResult result = readSvg(text, "cut.svg");
  if (result.error) {
    RC_ASSERT(result.error->line >= 1);
    RC_ASSERT(!result.error->what.empty() && !result.error->expected.empty());
    return;
  }
  for (const Element& element : result.scene.elements) {
    for (const ZnGePoint2d& p : sample(element.shape)) RC_ASSERT(isUsable(p));
    RC_ASSERT(element.layer < result.scene.layers.size());
    if (const Insert* insert = std::get_if<Insert>(&element.shape)) {
      RC_ASSERT(insert->block < result.scene.blocks.size());
    }
  }
}

RC_GTEST_PROP(SvgDamage, TruncatedFiles, ()) {
  expectSane(sampleText().substr(0, *rc::gen::inRange<std::size_t>(0, sampleText().size())));
}

RC_GTEST_PROP(SvgDamage, DamagedBytes, ()) {
  std::string text = sampleText();
  const int hits = *rc::gen::inRange(1, 12);
  for (int i = 0; i < hits; ++i) {
    const auto at = *rc::gen::inRange<std::size_t>(60, text.size());
    static const std::string kBytes = "0123456789.-eE <>&'\"#()/,zaAmMnN\n\0";
    text[at] = kBytes[*rc::gen::inRange<std::size_t>(0, kBytes.size())];
  }
  expectSane(text);
}

} // namespace
