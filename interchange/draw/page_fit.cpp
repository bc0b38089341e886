#include "interchange/draw/page_fit.h"

#include <algorithm>

namespace interchange {

namespace {

constexpr double kBlankPage = 50;      // both sides, for nothing to show
constexpr double kLongestSheet = 1189; // of the A series
constexpr double kMarginShare = 0.05;
constexpr double kLeastMargin = 1; // so that the half width of border lines is not cut
constexpr double kLeastSide = 1;   // of a drawing that is a line or a point

// The drawing's center in the middle of the page.
ZnGeMatrix2d centered(const Extent& extent, const PageFit& page) {
  const ZnGeVector2d center = 0.5 * (extent.min.asVector() + extent.max.asVector());
  return ZnGeMatrix2d::translation({page.width / 2, page.height / 2}) *
         ZnGeMatrix2d::scaling({page.scale, -page.scale}) * ZnGeMatrix2d::translation(-center);
}

double marginFor(const PictureOptions& options, double width, double height) {
  if (options.margin >= 0) return options.margin;
  return std::max(kLeastMargin, kMarginShare * std::max(width, height));
}

PageFit fitToGivenPage(const Extent& extent, double unit, const PictureOptions& options) {
  PageFit page;
  page.width = options.pageWidth;
  page.height = options.pageHeight;
  const ZnGeVector2d size = extent.max - extent.min;
  // A margin that leaves nothing of the page is cut to what leaves half of it.
  const double margin =
      std::min(marginFor(options, page.width, page.height), std::min(page.width, page.height) / 4);
  page.scale = unit * options.scale;
  if (!(options.scale > 0)) {
    const double across = size.x > 0 ? (page.width - 2 * margin) / size.x : 0;
    const double along = size.y > 0 ? (page.height - 2 * margin) / size.y : 0;
    page.scale = across > 0 && along > 0 ? std::min(across, along) : std::max(across, along);
    if (!(page.scale > 0)) page.scale = unit;
  }
  page.toPage = centered(extent, page);
  return page;
}

PageFit fitAroundDrawing(const Extent& extent, double unit, const PictureOptions& options) {
  PageFit page;
  const ZnGeVector2d size = extent.max - extent.min;
  page.scale = unit * (options.scale > 0 ? options.scale : 1);
  const double longer = std::max(size.x, size.y) * page.scale;
  if (!(options.scale > 0) && longer > kLongestSheet) page.scale *= kLongestSheet / longer;
  page.width = std::max(size.x * page.scale, kLeastSide);
  page.height = std::max(size.y * page.scale, kLeastSide);
  const double margin = marginFor(options, page.width, page.height);
  page.width += 2 * margin;
  page.height += 2 * margin;
  page.toPage = centered(extent, page);
  return page;
}

} // namespace

PageFit fitPage(const std::optional<Extent>& extent, double unit, const std::optional<PaperSize>& paper,
                const PictureOptions& options) {
  const bool isGiven = options.pageWidth > 0 && options.pageHeight > 0;
  if (!isGiven && paper && !(options.scale > 0)) {
    PageFit page{paper->width, paper->height, 1, ZnGeMatrix2d({0, paper->height}, {1, 0}, {0, -1})};
    return page;
  }
  if (!extent) {
    PageFit page{kBlankPage, kBlankPage, unit, ZnGeMatrix2d::scaling({unit, -unit})};
    if (isGiven) {
      page.width = options.pageWidth;
      page.height = options.pageHeight;
    }
    return page;
  }
  return isGiven ? fitToGivenPage(*extent, unit, options) : fitAroundDrawing(*extent, unit, options);
}

double millimetresOfInsertionUnit(int insertionUnits) {
  struct Unit {
    int number;
    double millimetres;
  };
  static constexpr Unit kUnits[] = {{1, 25.4}, {2, 304.8}, {4, 1}, {5, 10}, {6, 1000}};
  for (const Unit& unit : kUnits)
    if (unit.number == insertionUnits) return unit.millimetres;
  return 1;
}

} // namespace interchange
