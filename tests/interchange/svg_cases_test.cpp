// Snippets of drawings and what the reader makes of them, told as text in svg_cases.txt.
#include "interchange/scene_samples.h"
#include "interchange/svg_in/color.h"
#include "interchange/svg_in/path_data.h"
#include "interchange/svg_in/placed_circles.h"
#include "support/told_cases.h"

#include <fmt/format.h>

#include <cmath>
#include <map>

using namespace interchange;
using namespace interchange_test;

namespace {

// Without what rounding leaves of a zero.
std::string number(double value) {
  if (std::abs(value) < 1e-9) return "0";
  return fmt::format("{:.6g}", value);
}
std::string point(const ZnGePoint2d& p) { return number(p.x) + "," + number(p.y); }
std::string degrees(double radians) { return number(radians * 180 / M_PI); }
std::string hex(const Color& color) {
  return fmt::format("#{:02x}{:02x}{:02x}", color.red, color.green, color.blue);
}

struct ShapeText {
  const Scene& scene;
  std::string operator()(const Line& line) const {
    return "line " + point(line.start) + " " + point(line.end);
  }
  std::string operator()(const Circle& c) const {
    return "circle " + point(c.center) + " r" + number(c.radius);
  }
  std::string operator()(const Arc& a) const {
    return fmt::format("arc {} r{} {}..{}", point(a.center), number(a.radius), degrees(a.startAngle),
                       degrees(a.endAngle));
  }
  std::string operator()(const EllipseArc& e) const {
    return fmt::format("ellipse {} {},{} {}{}", point(e.center), number(e.major.x), number(e.major.y),
                       number(e.ratio), e.closed ? "" : " open");
  }
  std::string operator()(const Spline& s) const { return fmt::format("spline of {}", s.control.size()); }
  std::string operator()(const Insert& insert) const { return "insert " + scene.blocks[insert.block].name; }
  std::string operator()(const Polyline& polyline) const {
    std::string text = polyline.closed ? "polygon" : "polyline";
    for (const Vertex& v : polyline.vertices)
      text += " " + point(v.point) + (v.bulge == 0 ? "" : ":" + number(v.bulge));
    return text;
  }
  std::string operator()(const Text& t) const {
    static constexpr const char* kAnchors[] = {"", " middle", " end"};
    static constexpr const char* kBaselines[] = {"", " centered", " hanging"};
    return fmt::format("text '{}' {} h{} {}x{}{}{}{}", t.string, point(t.position), number(t.height),
                       degrees(t.rotation), number(t.widthFactor), t.mirrored ? " mirrored" : "",
                       kAnchors[static_cast<int>(t.anchor)], kBaselines[static_cast<int>(t.baseline)]);
  }
};

void appendFaults(const Scene& scene, Lines& lines) {
  for (const Skipped& s : scene.skipped)
    lines.push_back(fmt::format("skipped {} {}: {}", s.line, s.what, s.why));
  for (const Quorl::Failure& problem : scene.problems) lines.push_back("problem " + problem.text());
}

Lines shapes(const std::string& content) {
  const Scene scene = read(page(content));
  Lines lines;
  for (const Element& element : scene.elements) lines.push_back(std::visit(ShapeText{scene}, element.shape));
  appendFaults(scene, lines);
  return lines;
}

// Circles where they stand on the page, and the blocks with their content's style.
Lines references(const std::string& content) {
  const Scene scene = read(page(content));
  Lines lines;
  for (const PlacedCircle& placed : placedCircles(scene))
    lines.push_back(ShapeText{scene}(placed.circle) + (placed.visible ? "" : " hidden"));
  std::size_t inserts = all<Insert>(scene.elements).size();
  if (inserts > 0) lines.push_back(fmt::format("inserts {}", inserts));
  for (const Block& block : scene.blocks) {
    const Style& style = block.elements.at(0).style;
    lines.push_back(fmt::format("block {} {} w{}", block.name, hex(style.color), number(style.width)));
  }
  appendFaults(scene, lines);
  return lines;
}

Lines styles(const std::string& content) {
  const Scene scene = read(page(content));
  Lines lines;
  for (const Element& element : scene.elements) {
    const Style& style = element.style;
    std::string text =
        scene.layers[element.layer].name + (scene.layers[element.layer].visible ? "" : "(off)");
    text += " " + hex(style.color) + " w" + number(style.width);
    for (const double dash : style.dash) text += "-" + number(dash);
    if (style.opacity != 1) text += " opacity " + number(style.opacity);
    lines.push_back(text + (element.visible ? "" : " hidden: " + element.hiddenReason));
  }
  appendFaults(scene, lines);
  return lines;
}

// Attributes of the root, then what was asked for: "| dpi 72", "| mm", "| in".
Lines sizes(const std::string& input) {
  const std::size_t bar = input.find(" | ");
  const std::string asked = bar == std::string::npos ? "" : input.substr(bar);
  ReadOptions options;
  if (asked.find("dpi 72") != std::string::npos) options.dpi = 72;
  if (asked.find("mm") != std::string::npos) options.unit = LengthUnit::Millimetre;
  if (asked.find("in") != std::string::npos) options.unit = LengthUnit::Inch;
  const Scene scene = read(
      "<svg xmlns:ed='urn:e' " + input.substr(0, bar) + "><circle cx='20' cy='30' r='10'/></svg>", options);
  const DocumentFacts& facts = scene.document;
  Lines lines{fmt::format("{} x {} mm, unit {}, {}: {}", number(facts.width), number(facts.height),
                          number(facts.millimetresPerUnit), facts.hasPhysicalSize ? "physical" : "pixels",
                          facts.unitReason)};
  for (const Circle& circle : all<Circle>(scene.elements)) lines.push_back(ShapeText{scene}(circle));
  appendFaults(scene, lines);
  return lines;
}

Lines colors(const std::string& input) {
  const std::optional<Color> color = parseColor(input == "(nothing)" ? "" : input);
  return {color ? hex(*color) : "none"};
}

Lines paths(const std::string& d) {
  const PathData data = parsePath(d);
  Lines lines;
  for (const Contour& contour : data.contours) {
    std::string text = "M" + point(contour.segments.front().start);
    for (const Segment& s : contour.segments) {
      if (s.kind == SegmentKind::Line) text += " L" + point(s.end);
      if (s.kind == SegmentKind::Cubic)
        text += " C" + point(s.control1) + " " + point(s.control2) + " " + point(s.end);
      if (s.kind == SegmentKind::Arc)
        text += fmt::format(" A{} r{},{} {} {}", point(s.arc.center), number(s.arc.u.length()),
                            number(s.arc.v.length()), degrees(s.arc.sweep), point(s.end));
    }
    lines.push_back(text + (contour.closed ? " Z" : ""));
  }
  if (data.error)
    lines.push_back(
        fmt::format("at {}: {}, expected {}", data.error->position, data.error->what, data.error->expected));
  return lines;
}

// A whole document of one line, in which "\n" stands for a line's end.
Lines documents(const std::string& text) {
  const SvgReadResult result = readSvg(withLineEnds(text), "a.svg");
  if (result.error) return {"refused " + result.error->text()};
  Lines lines;
  for (const Element& element : result.scene.elements)
    lines.push_back(fmt::format("{} {} {}", element.source.line, element.source.id,
                                std::visit(ShapeText{result.scene}, element.shape)));
  appendFaults(result.scene, lines);
  return lines;
}

TEST(SvgReader, MakesOfSnippetsWhatIsTold) {
  const std::map<std::string, std::function<Lines(const std::string&)>> sections{
      {"shapes", shapes}, {"references", references}, {"styles", styles},      {"sizes", sizes},
      {"colors", colors}, {"paths", paths},           {"documents", documents}};
  runToldCases("interchange/svg_cases.txt", 150,
               [&](const std::string& section, const std::string& input, const Lines&) {
                 return sections.at(section)(input);
               });
}

} // namespace
