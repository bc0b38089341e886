#include "interchange/svg_in/text_runs.h"

#include "interchange/svg_in/number_scanner.h"
#include "interchange/tolerance.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace interchange {

namespace {

// Mean advance of a letter as a part of the font's size, for the rare run that starts relative to the end
// of the one before; without the font nothing better can be said.
constexpr double kAdvance = 0.55;
constexpr int kDeepestSpan = 64;

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

bool preservesSpace(pugi::xml_node node) {
  for (; node; node = node.parent()) {
    if (const pugi::xml_attribute rule = node.attribute("xml:space")) {
      return std::string_view(rule.value()) == "preserve";
    }
  }
  return false;
}

class TextReader {
public:
  TextReader(const StyleSheet& sheet, const LengthContext& lengths, bool preserve)
      : sheet_(sheet)
      , lengths_(lengths)
      , preserve_(preserve) {}

  std::vector<TextRun> read(const pugi::xml_node& node, const ComputedStyle& style) {
    readSpan(node, style, 0);
    finishRun();
    return std::move(runs_);
  }

private:
  // The first number of a coordinate list; the others move single letters.
  bool coordinate(const pugi::xml_node& node, const char* name, LengthAxis axis, const ComputedStyle& style,
                  double& value) const {
    const std::string_view text = trimmed(node.attribute(name).value());
    const std::string_view first = text.substr(0, text.find_first_of(" ,\t\r\n"));
    const std::optional<Length> length = parseLength(first);
    if (!length) return false;
    LengthContext lengths = lengths_;
    lengths.fontSize = style.fontSize;
    value = resolve(*length, lengths, axis);
    return true;
  }

  void readSpan(const pugi::xml_node& node, const ComputedStyle& style, int depth) {
    ZnGePoint2d at = runs_.empty() ? ZnGePoint2d{} : penAfterRun();
    ZnGeVector2d move;
    const bool hasX = coordinate(node, "x", LengthAxis::X, style, at.x);
    const bool hasY = coordinate(node, "y", LengthAxis::Y, style, at.y);
    const bool hasDx = coordinate(node, "dx", LengthAxis::X, style, move.x);
    const bool hasDy = coordinate(node, "dy", LengthAxis::Y, style, move.y);
    if (depth == 0 || hasX || hasY || hasDx || hasDy) beginRun(at + move, style, node);
    for (const pugi::xml_node& child : node.children()) {
      if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
        append(child.value());
      } else if (child.type() == pugi::node_element && depth < kDeepestSpan) {
        const std::string_view name = child.name();
        const std::string_view local = name.substr(name.find(':') + 1); // npos + 1 is 0
        if (local != "tspan" && local != "a") continue;
        const ComputedStyle inner = computeStyle(child, local, style, sheet_, lengths_);
        if (inner.displayed) readSpan(child, inner, depth + 1);
      }
    }
  }

  ZnGePoint2d penAfterRun() const {
    const Text& text = runs_.back().text;
    const auto letters = std::count_if(text.string.begin(), text.string.end(),
                                       [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
    const double advance = text.anchor == TextAnchor::Start ? kAdvance : 0;
    return text.position + ZnGeVector2d{advance * text.height * static_cast<double>(letters), 0};
  }

  void beginRun(ZnGePoint2d at, const ComputedStyle& style, const pugi::xml_node& node) {
    finishRun();
    TextRun run;
    run.text.position = at;
    run.text.height = style.fontSize;
    run.text.anchor = style.anchor;
    run.text.baseline = style.baseline;
    run.style = style;
    run.node = node;
    runs_.push_back(std::move(run));
  }

  void append(std::string_view added) {
    std::string& string = runs_.back().text.string;
    for (const char c : added) {
      const char shown = isSpace(c) ? ' ' : c;
      const bool folded = !preserve_ && shown == ' ' && (string.empty() || string.back() == ' ');
      if (!folded) string.push_back(shown);
    }
  }

  // An empty run only moved the pen; its position stays with what follows through the attributes there.
  void finishRun() {
    if (runs_.empty()) return;
    std::string& string = runs_.back().text.string;
    if (!preserve_ && !string.empty() && string.back() == ' ') string.pop_back();
    if (trimmed(string).empty()) runs_.pop_back();
  }

  const StyleSheet& sheet_;
  const LengthContext& lengths_;
  bool preserve_;
  std::vector<TextRun> runs_;
};

} // namespace

std::vector<TextRun> readText(const pugi::xml_node& node, const ComputedStyle& style, const StyleSheet& sheet,
                              const LengthContext& lengths) {
  return TextReader(sheet, lengths, preservesSpace(node)).read(node, style);
}

void placeText(Text& text, const ZnGeMatrix2d& map) {
  const ZnGeVector2d along = map * ZnGeVector2d(1, 0);
  const ZnGeVector2d up = map * ZnGeVector2d(0, -1);
  const double stretch = along.length();
  const double area = along.crossProduct(up);
  text.position = map * text.position;
  if (!(stretch > 0) || !(std::abs(area) > 0)) return;
  const double rise = std::abs(area) / stretch; // of the height, across the writing direction
  text.height *= rise;
  text.widthFactor = stretch / rise;
  text.rotation = along.signedAngle();
  text.mirrored = area < 0;
}

} // namespace interchange
