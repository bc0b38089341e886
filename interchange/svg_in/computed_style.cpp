#include "interchange/svg_in/computed_style.h"

#include "interchange/svg_in/color.h"
#include "interchange/svg_in/number_scanner.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace interchange {

namespace {

struct Context {
  const ComputedStyle& parent;
  LengthContext lengths;
};

using Apply = void (*)(ComputedStyle&, std::string_view, const Context&);

// A number or a percentage, 0..1.
std::optional<double> parseOpacity(std::string_view text) {
  const std::optional<Length> length = parseLength(text);
  if (!length) return std::nullopt;
  const double scale = length->kind == LengthKind::Percent ? 0.01 : 1;
  return std::clamp(length->value * scale, 0.0, 1.0);
}

// "url(#a) red" paints with what stands behind when the reference cannot be used; we never can.
void applyPaint(Paint& paint, std::string_view value, const ComputedStyle& style) {
  if (value.starts_with("url(")) {
    const std::size_t close = std::min(value.find(')'), value.size() - 1);
    const std::string_view fallback = trimmed(value.substr(close + 1));
    paint = {true, parseColor(fallback).value_or(Color{})};
    return;
  }
  if (value == "none" || value == "transparent") {
    paint.painted = false;
  } else if (value == "currentColor" || value == "currentcolor") {
    paint = {true, style.color};
  } else if (value == "context-fill" || value == "context-stroke") {
    paint.painted = true;
  } else if (const std::optional<Color> color = parseColor(value)) {
    paint = {true, *color};
  }
}

void applyColor(ComputedStyle& style, std::string_view value, const Context&) {
  if (const std::optional<Color> color = parseColor(value)) style.color = *color;
}
void applyFill(ComputedStyle& style, std::string_view value, const Context&) {
  applyPaint(style.fill, value, style);
}
void applyStroke(ComputedStyle& style, std::string_view value, const Context&) {
  applyPaint(style.stroke, value, style);
}
void applyFillOpacity(ComputedStyle& style, std::string_view value, const Context&) {
  style.fillOpacity = parseOpacity(value).value_or(style.fillOpacity);
}
void applyStrokeOpacity(ComputedStyle& style, std::string_view value, const Context&) {
  style.strokeOpacity = parseOpacity(value).value_or(style.strokeOpacity);
}
void applyOpacity(ComputedStyle& style, std::string_view value, const Context& context) {
  style.opacity = context.parent.opacity * parseOpacity(value).value_or(1);
}
void applyStrokeWidth(ComputedStyle& style, std::string_view value, const Context& context) {
  const std::optional<Length> length = parseLength(value);
  if (!length) return;
  const double width = resolve(*length, context.lengths, LengthAxis::Diagonal);
  if (width >= 0) style.strokeWidth = width;
}

void applyDash(ComputedStyle& style, std::string_view value, const Context& context) {
  style.dash.clear();
  double sum = 0;
  NumberScanner scanner(value);
  while (!scanner.atEnd()) {
    const std::size_t first = scanner.position();
    if (!scanner.number()) return style.dash.clear(); // "none" and what cannot be read: continuous
    scanner.word();
    const std::optional<Length> length = parseLength(value.substr(first, scanner.position() - first));
    const double dash = length ? resolve(*length, context.lengths, LengthAxis::Diagonal) : -1;
    if (!(dash >= 0)) return style.dash.clear();
    style.dash.push_back(dash);
    sum += dash;
    scanner.skipSeparator();
  }
  if (!(sum > 0)) style.dash.clear();
  const std::size_t count = style.dash.size();
  if (count % 2 == 0) return;
  style.dash.resize(2 * count); // an odd list is read twice to make pairs
  std::copy_n(style.dash.begin(), count, style.dash.begin() + static_cast<std::ptrdiff_t>(count));
}

void applyDisplay(ComputedStyle& style, std::string_view value, const Context&) {
  style.displayed = value != "none";
}
void applyVisibility(ComputedStyle& style, std::string_view value, const Context&) {
  style.visibility = value != "hidden" && value != "collapse";
}

void applyFontSize(ComputedStyle& style, std::string_view value, const Context& context) {
  const std::optional<Length> length = parseLength(value);
  if (!length) return;
  LengthContext lengths = context.lengths;
  lengths.fontSize = context.parent.fontSize;
  const bool percent = length->kind == LengthKind::Percent;
  const double size =
      percent ? length->value / 100 * context.parent.fontSize : resolve(*length, lengths, LengthAxis::Y);
  if (size >= 0) style.fontSize = size;
}

void applyAnchor(ComputedStyle& style, std::string_view value, const Context&) {
  style.anchor = value == "middle" ? TextAnchor::Middle
                 : value == "end"  ? TextAnchor::End
                                   : TextAnchor::Start;
}
void applyBaseline(ComputedStyle& style, std::string_view value, const Context&) {
  const bool middle = value == "middle" || value == "central";
  const bool hanging = value == "hanging" || value == "text-before-edge" || value == "text-top";
  style.baseline = middle ? TextBaseline::Middle : hanging ? TextBaseline::Hanging : TextBaseline::Alphabetic;
}

struct Property {
  std::string_view name;
  Apply apply;
};

// In the order of application: currentColor before the paints, the font before lengths that count in it.
constexpr std::array<Property, 14> kProperties{{{"color", applyColor},
                                                {"font-size", applyFontSize},
                                                {"fill", applyFill},
                                                {"fill-opacity", applyFillOpacity},
                                                {"stroke", applyStroke},
                                                {"stroke-opacity", applyStrokeOpacity},
                                                {"stroke-width", applyStrokeWidth},
                                                {"stroke-dasharray", applyDash},
                                                {"opacity", applyOpacity},
                                                {"display", applyDisplay},
                                                {"visibility", applyVisibility},
                                                {"text-anchor", applyAnchor},
                                                {"dominant-baseline", applyBaseline},
                                                {"alignment-baseline", applyBaseline}}};

// The winning value of each property, with the important ones marked.
struct Cascade {
  std::array<std::string, kProperties.size()> values;
  std::array<bool, kProperties.size()> important{};

  void set(std::string_view property, std::string_view value, bool isImportant) {
    for (std::size_t i = 0; i < kProperties.size(); ++i) {
      if (kProperties[i].name != property) continue;
      if (important[i] && !isImportant) return;
      values[i] = value;
      important[i] = isImportant;
      return;
    }
  }
};

} // namespace

std::string ComputedStyle::hiddenReason() const {
  if (!displayed) return "display:none";
  if (!visibility) return "visibility:hidden";
  if (opacity == 0) return "opacity 0";
  if (!stroke.painted && !fill.painted) return "neither stroke nor fill";
  const bool strokeSeen = stroke.painted && strokeOpacity > 0;
  const bool fillSeen = fill.painted && fillOpacity > 0;
  return strokeSeen || fillSeen ? "" : "stroke and fill opacity 0";
}

std::string ComputedStyle::key() const {
  std::string text;
  const auto add = [&](double value) { text += std::to_string(value) + ' '; };
  const auto addColor = [&](Color c) { add(c.red * 65536.0 + c.green * 256.0 + c.blue); };
  for (const Paint* paint : {&fill, &stroke}) {
    add(paint->painted);
    addColor(paint->color);
  }
  addColor(color);
  for (const double value : {fillOpacity, strokeOpacity, opacity, strokeWidth, fontSize}) add(value);
  for (const double value : dash) add(value);
  add(static_cast<int>(anchor) * 10 + static_cast<int>(baseline));
  add(visibility);
  return text;
}

ComputedStyle computeStyle(const pugi::xml_node& node, std::string_view elementName,
                           const ComputedStyle& parent, const StyleSheet& sheet, LengthContext lengths) {
  Cascade cascade;
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    cascade.set(attribute.name(), trimmed(attribute.value()), false);
  }
  const auto use = [&](const Declaration& d) { cascade.set(d.property, d.value, d.important); };
  if (!sheet.empty()) {
    sheet.forEach(elementName, node.attribute("class").value(), node.attribute("id").value(), use);
  }
  for (const Declaration& d : parseDeclarations(node.attribute("style").value())) use(d);

  ComputedStyle style = parent;
  style.displayed = true;
  Context context{parent, lengths};
  for (std::size_t i = 0; i < kProperties.size(); ++i) {
    const std::string& value = cascade.values[i];
    if (value.empty() || value == "inherit") continue;
    context.lengths.fontSize = style.fontSize;
    kProperties[i].apply(style, value, context);
  }
  return style;
}

bool hasReference(const pugi::xml_node& node, const char* property) {
  if (std::string_view(node.attribute(property).value()).starts_with("url(")) return true;
  const std::string_view style = node.attribute("style").value();
  if (style.find(property) == style.npos) return false;
  const std::vector<Declaration> declarations = parseDeclarations(style);
  return std::any_of(declarations.begin(), declarations.end(), [&](const Declaration& d) {
    return d.property == property && d.value.starts_with("url(");
  });
}

} // namespace interchange
