#include "interchange/svg_in/page_setup.h"

#include "interchange/svg_in/number_scanner.h"
#include "interchange/svg_in/transform_list.h"

#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>

namespace interchange {

namespace {

constexpr double kInch = 25.4;
constexpr double kDefaultDpi = 96;

std::string shortNumber(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", value);
  return text;
}

struct PixelSize {
  double dpi = kDefaultDpi;
  std::string reason;
};

// Editors before version 0.92 counted 90 pixels to the inch; the version stands in a prefixed attribute.
bool isOldEditor(const pugi::xml_node& root) {
  for (const pugi::xml_attribute& attribute : root.attributes()) {
    if (!std::string_view(attribute.name()).ends_with(":version")) continue;
    NumberScanner scanner(attribute.value());
    const std::optional<double> version = scanner.number();
    if (version && *version > 0 && *version < 0.92) return true;
  }
  return false;
}

// One exporter family writes points and calls them pixels. It signs its files with a generator comment, and
// every signed drawing of known size that we have confirms it; unsigned ones are left at the default.
bool writesPoints(const std::string& hint) {
  return hint.find("Generator:") != std::string::npos && hint.find("Illustrator") != std::string::npos;
}

PixelSize decidePixel(const pugi::xml_node& root, const std::string& hint, bool physical,
                      const ReadOptions& options) {
  if (options.dpi) return {*options.dpi, shortNumber(*options.dpi) + " dpi as asked for"};
  if (isOldEditor(root)) return {90, "90 dpi, as editors before version 0.92 wrote"};
  if (!physical && writesPoints(hint)) return {72, "72 dpi, as the exporter named in the file writes"};
  return {kDefaultDpi, "96 dpi, the default"};
}

struct RootSize {
  std::optional<Length> width;
  std::optional<Length> height;
};

// Percentages say nothing about a page that stands alone; sizes that are not positive say nothing at all.
std::optional<Length> sizeOf(const pugi::xml_attribute& attribute, std::string& problem) {
  const std::string_view text = trimmed(attribute.value());
  if (text.empty() || text == "auto") return std::nullopt;
  const std::optional<Length> length = parseLength(text);
  if (!length || !(length->value > 0)) {
    problem = std::string(attribute.name()) + "=\"" + std::string(text) + "\" is no size";
    return std::nullopt;
  }
  return length->kind == LengthKind::Percent ? std::nullopt : length;
}

// Millimetres of a root size; user units count as pixels there.
double toMillimetres(const Length& length, double pixel) {
  LengthContext context;
  context.dpi = kInch / pixel;
  return resolve(length, context, LengthAxis::X) * pixel;
}

void completeSizes(std::optional<double>& width, std::optional<double>& height, const ViewBox* box) {
  if (!box) return;
  if (width && !height) height = *width * box->height / box->width;
  if (height && !width) width = *height * box->width / box->height;
}

bool isPhysical(const RootSize& size) {
  const auto physical = [](const std::optional<Length>& l) { return l && l->kind == LengthKind::Physical; };
  return physical(size.width) || physical(size.height);
}

std::string reasonFor(bool physical, bool hasBox, bool sized, const std::string& pixelReason) {
  if (physical && hasBox) return "size and view box of the file";
  if (physical) return "size without view box: user units are pixels at " + pixelReason;
  const std::string start = sized ? "size in pixels only" : "no size";
  return start + ": no physical size; user units at " + pixelReason;
}

} // namespace

PageSetup setUpPage(const pugi::xml_node& root, const std::string& hint, const ReadOptions& options) {
  PageSetup page;
  const RootSize written{sizeOf(root.attribute("width"), page.problem),
                         sizeOf(root.attribute("height"), page.problem)};
  const pugi::xml_attribute boxText = root.attribute("viewBox");
  const std::optional<ViewBox> box = parseViewBox(boxText.value());
  if (boxText && !box) page.problem = "viewBox=\"" + std::string(boxText.value()) + "\" is no view box";

  const bool physical = isPhysical(written);
  PixelSize pixelSize = decidePixel(root, hint, physical, options);
  double pixel = kInch / pixelSize.dpi;
  if (!physical && options.unit) {
    pixel = millimetresOf(*options.unit, pixelSize.dpi);
    pixelSize.reason = shortNumber(pixel) + " mm as asked for";
  }
  std::optional<double> width, height;
  if (written.width) width = toMillimetres(*written.width, pixel);
  if (written.height) height = toMillimetres(*written.height, pixel);
  completeSizes(width, height, box ? &*box : nullptr);
  const bool sized = width.has_value() || height.has_value();

  ZnGeMatrix2d toViewport = ZnGeMatrix2d::scaling({pixel, pixel});
  if (box) {
    // Asked for a unit, a user unit is that unit, whatever a pixel size would stretch the view box to.
    const bool asBox = !physical && (options.unit || !sized);
    if (asBox || !width) width = box->width * pixel;
    if (asBox || !height) height = box->height * pixel;
    toViewport = fitViewBox(*box, *width, *height, root.attribute("preserveAspectRatio").value());
  }
  page.facts.width = width.value_or(0);
  page.facts.height = height.value_or(0);
  page.facts.hasPhysicalSize = physical;
  page.facts.dpi = pixelSize.dpi;
  page.facts.millimetresPerUnit = toViewport.xAxis().length();
  page.facts.unitReason = reasonFor(physical, box.has_value(), sized, pixelSize.reason);
  page.toPage = ZnGeMatrix2d({0, page.facts.height}, {1, 0}, {0, -1}) * toViewport;
  page.lengths.dpi = pixelSize.dpi;
  page.lengths.viewportWidth = box ? box->width : page.facts.width / pixel;
  page.lengths.viewportHeight = box ? box->height : page.facts.height / pixel;
  return page;
}

} // namespace interchange
