#include "interchange/draw/picture_writer.h"

#include "interchange/draw/cairo_target.h"
#include "interchange/draw/file_output.h"
#include "interchange/draw/page_fit.h"
#include "interchange/draw/picture_draw.h"
#include "interchange/draw/shown_extents.h"

#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/entity/shown_content.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dictionary.h"
#include "quorl/db/table/layout.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace interchange {

namespace {

constexpr double kInch = 25.4;
constexpr double kPointsPerMillimetre = 72 / kInch;
// The largest page that readers of PDF have to accept is 200 inches long.
constexpr double kLongestPage = 200 * kInch;
constexpr double kMostPixels = 100e6;
constexpr double kLongestBitmap = 30000;
constexpr int kUsualPixels = 2000;
constexpr double kHairline = 0.05; // millimetres, of vector pictures
constexpr double kChordOnPage = 0.005;
// Cairo keeps coordinates to a 256th of a device unit: hundredths of a millimetre leave room for true sizes.
constexpr double kSvgUnitsPerMillimetre = 100;

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

struct Sheet {
  PageFit fit;
  ZnDbObjectId space;
};

struct Job {
  const ZnDbDatabase& database;
  const std::string& path;
  const PictureOptions& options;
  const std::vector<const ZnDbEntity*>& extra;
  Quorl::Failure& error;

  bool fail(std::string what, std::string expected) const {
    return error.set(path, 0, std::move(what), std::move(expected));
  }
};

std::string shortNumber(double value) {
  char text[32];
  const auto [end, status] = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 6);
  return {text, end};
}

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) {
  static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
  return CAIRO_STATUS_SUCCESS;
}

// Draws everything on a surface of `resolution` device units to the millimetre.
bool paint(const Job& job, const Sheet& sheet, cairo_surface_t* surface, double resolution, double thinnest) {
  const Context context(cairo_create(surface), &cairo_destroy);
  cairo_t* cairo = context.get();
  cairo_scale(cairo, resolution, resolution);
  const auto channel = [&job](int shift) { return (job.options.background >> shift & 0xff) / 255.0; };
  cairo_set_source_rgb(cairo, channel(16), channel(8), channel(0));
  cairo_paint(cairo);

  TraitResolver resolver(job.database, job.options.background);
  CairoTarget target(cairo, sheet.fit.toPage, thinnest);
  PictureDraw draw(resolver, target, kChordOnPage / sheet.fit.scale, job.options.lineWeightFactor);
  draw.drawSpace(sheet.space, job.database.modelSpaceId());
  for (const ZnDbEntity* entity : job.extra) draw.drawEntity(*entity);
  const cairo_status_t status = cairo_status(cairo);
  return status == CAIRO_STATUS_SUCCESS ||
         job.fail(std::string("the picture cannot be drawn: ") + cairo_status_to_string(status),
                  "enough memory");
}

bool finish(const Job& job, cairo_surface_t* surface) {
  cairo_surface_finish(surface);
  const cairo_status_t status = cairo_surface_status(surface);
  return status == CAIRO_STATUS_SUCCESS ||
         job.fail(std::string("the picture cannot be made: ") + cairo_status_to_string(status),
                  "enough memory");
}

bool isPageUsable(const Job& job, const Sheet& sheet) {
  if (std::max(sheet.fit.width, sheet.fit.height) <= kLongestPage) return true;
  return job.fail("the page of " + shortNumber(sheet.fit.width) + " by " + shortNumber(sheet.fit.height) +
                      " mm is too large",
                  "at most " + shortNumber(kLongestPage) + " mm a side; choose a page or a smaller scale");
}

// Cairo writes the page in its device units; the size on paper stands in the root's width and height.
void setSvgSize(std::string& svg, const PageFit& fit) {
  const auto replace = [&svg](const char* name, double millimetres) {
    const std::size_t tag = svg.find("<svg ");
    const std::size_t at = svg.find(std::string(" ") + name + "=\"", tag);
    if (tag == std::string::npos || at == std::string::npos) return;
    const std::size_t value = svg.find('"', at) + 1;
    svg.replace(value, svg.find('"', value) - value, shortNumber(millimetres) + "mm");
  };
  replace("width", fit.width);
  replace("height", fit.height);
}

// Cairo numbers its surfaces through the life of the process; the picture counts its own.
void renumberSurfaces(std::string& svg) {
  constexpr std::string_view kName = "surface";
  std::map<std::string, std::string> numbers;
  for (std::size_t at = svg.find(kName); at != std::string::npos; at = svg.find(kName, at)) {
    at += kName.size();
    const std::size_t end = std::min(svg.find_first_not_of("0123456789", at), svg.size());
    if (end == at) continue;
    const std::string next = std::to_string(numbers.size());
    const std::string& number = numbers.try_emplace(svg.substr(at, end - at), next).first->second;
    svg.replace(at, end - at, number);
  }
}

bool makeSvg(const Job& job, const Sheet& sheet, std::string& bytes) {
  if (!isPageUsable(job, sheet)) return false;
  const double width = sheet.fit.width * kSvgUnitsPerMillimetre,
               height = sheet.fit.height * kSvgUnitsPerMillimetre;
  const Surface surface(cairo_svg_surface_create_for_stream(append, &bytes, width, height),
                        &cairo_surface_destroy);
  if (!paint(job, sheet, surface.get(), kSvgUnitsPerMillimetre, kHairline) || !finish(job, surface.get()))
    return false;
  setSvgSize(bytes, sheet.fit);
  renumberSurfaces(bytes);
  return true;
}

bool makePdf(const Job& job, const Sheet& sheet, std::string& bytes) {
  if (!isPageUsable(job, sheet)) return false;
  const double width = sheet.fit.width * kPointsPerMillimetre,
               height = sheet.fit.height * kPointsPerMillimetre;
  const Surface surface(cairo_pdf_surface_create_for_stream(append, &bytes, width, height),
                        &cairo_surface_destroy);
  // The day of writing is no part of the drawing.
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, "");
  return paint(job, sheet, surface.get(), kPointsPerMillimetre, kHairline) && finish(job, surface.get());
}

bool makePng(const Job& job, const Sheet& sheet, std::string& bytes) {
  const double longer = std::max(sheet.fit.width, sheet.fit.height);
  double resolution = kUsualPixels / longer;
  if (job.options.longerSidePixels > 0)
    resolution = job.options.longerSidePixels / longer;
  else if (job.options.dpi > 0)
    resolution = job.options.dpi / kInch;
  const double width = std::max(1.0, std::round(sheet.fit.width * resolution));
  const double height = std::max(1.0, std::round(sheet.fit.height * resolution));
  if (!(std::max(width, height) <= kLongestBitmap) || !(width * height <= kMostPixels)) {
    return job.fail("the bitmap of " + shortNumber(width) + " by " + shortNumber(height) +
                        " pixels is too large",
                    "at most " + shortNumber(kLongestBitmap) + " pixels a side and " +
                        shortNumber(kMostPixels / 1000000) + " million in all");
  }
  const Surface surface(
      cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width), static_cast<int>(height)),
      &cairo_surface_destroy);
  if (!paint(job, sheet, surface.get(), resolution, 1 / resolution)) return false;
  const cairo_status_t status = cairo_surface_write_to_png_stream(surface.get(), append, &bytes);
  return status == CAIRO_STATUS_SUCCESS ||
         job.fail(std::string("the picture cannot be made: ") + cairo_status_to_string(status),
                  "enough memory");
}

struct Format {
  const char* ending;
  bool (*make)(const Job&, const Sheet&, std::string&);
};
constexpr Format kFormats[] = {{".svg", makeSvg}, {".pdf", makePdf}, {".png", makePng}};

const Format* formatOf(std::string path) {
  std::transform(path.begin(), path.end(), path.begin(),
                 [](unsigned char c) { return static_cast<char>(c < 128 ? std::tolower(c) : c); });
  for (const Format& format : kFormats)
    if (path.ends_with(format.ending)) return &format;
  return nullptr;
}

bool areOptionsUsable(const Job& job) {
  struct Number {
    const char* name;
    double value;
  };
  const PictureOptions& options = job.options;
  for (const Number& number :
       {Number{"page width", options.pageWidth}, Number{"page height", options.pageHeight},
        Number{"scale", options.scale}, Number{"resolution", options.dpi},
        Number{"bitmap size", static_cast<double>(options.longerSidePixels)},
        Number{"line weight factor", options.lineWeightFactor}}) {
    if (std::isfinite(number.value) && number.value >= 0) continue;
    return job.fail(std::string("the ") + number.name + " is no size", "a number of 0 or more");
  }
  if (!std::isfinite(options.margin)) return job.fail("the margin is no size", "millimetres");
  if ((options.pageWidth > 0) == (options.pageHeight > 0)) return true;
  return job.fail("the page has one side only", "width and height, or neither");
}

// The layout of that name, or of the current space; null for a space without one.
ZnDbObjectId layoutIdFor(const Job& job) {
  const ZnDbHolder<ZnDbDictionary> layouts(job.database.getLayoutDictionary());
  ZnDbObjectId id;
  if (!job.options.layout.empty()) {
    if (layouts.isOpen()) layouts->getAt(ZnString::fromUtf8(job.options.layout), id);
    return id;
  }
  const ZnDbHolder<ZnDbBlockTableRecord> space(job.database.currentSpaceId());
  return space.isOpen() ? space->layoutId() : id;
}

bool chooseSheet(const Job& job, Sheet& sheet) {
  sheet.space = job.database.currentSpaceId();
  std::optional<PaperSize> paper;
  const ZnDbHolder<ZnDbLayout> layout(layoutIdFor(job));
  if (layout.isOpen()) {
    sheet.space = layout->blockTableRecordId();
    if (layout->paperWidth() > 0 && layout->paperHeight() > 0)
      paper = PaperSize{layout->paperWidth(), layout->paperHeight()};
  } else if (!job.options.layout.empty()) {
    return job.fail("the drawing has no layout \"" + job.options.layout + "\"", "the name of a layout");
  }
  for (const ZnDbObjectId space : {sheet.space, job.database.modelSpaceId()})
    if (zndbShownCount(space) > kMostShownDrawn)
      return job.fail("the blocks show each other more often than can be drawn",
                      "a drawing that shows " + std::to_string(kMostShownDrawn) + " entities at most");
  TraitResolver resolver(job.database, job.options.background);
  // Paper space counts in millimetres whatever the model does.
  const bool isModel = sheet.space == job.database.modelSpaceId();
  const double unit = isModel ? millimetresOfInsertionUnit(job.database.insertionUnits()) : 1;
  sheet.fit = fitPage(shownExtents(resolver, sheet.space, job.extra), unit, paper, job.options);
  return true;
}

} // namespace

bool makePicture(const ZnDbDatabase& database, const std::string& path, const PictureOptions& options,
                 std::string& bytes, Quorl::Failure& error, const std::vector<const ZnDbEntity*>& extra) {
  const Job job{database, path, options, extra, error};
  const Format* format = formatOf(path);
  if (!format)
    return job.fail("the ending tells no picture format", "a path that ends in .svg, .pdf or .png");
  Sheet sheet;
  return areOptionsUsable(job) && chooseSheet(job, sheet) && format->make(job, sheet, bytes);
}

bool writePicture(const ZnDbDatabase& database, const std::string& path, const PictureOptions& options,
                  Quorl::Failure& error, const std::vector<const ZnDbEntity*>& extra) {
  std::string bytes;
  return makePicture(database, path, options, bytes, error, extra) && writeWhole(path, bytes, error);
}

} // namespace interchange
