#include "interchange/draw/svg_path_target.h"

#include "interchange/draw/contour_measure.h"
#include "interchange/draw/lettering_face.h"
#include "interchange/tolerance.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <utility>

namespace interchange {

namespace {

constexpr double kHairline = 0.05; // millimetres
// Hundred-thousandths of a millimetre: below what any reader of the file can tell.
constexpr double kDecimalsOfMillimetre = 5;
constexpr int kMostDecimals = 9;
constexpr int kOpacityDecimals = 3;
// Cairo rounds outlines to a 256th of a unit; enlarged, the letters stay exact.
constexpr double kOutlineScale = 1000;

std::string colorText(std::uint32_t rgb) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4) text += kDigits[rgb >> shift & 0xf];
  return text;
}

// Fixed notation without needless zeros, with a point in every locale.
std::string fixedNumber(double value, int decimals) {
  char buffer[64];
  const auto [end, status] =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  std::string text(buffer, end);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

} // namespace

SvgPathTarget::SvgPathTarget(const ZnGeMatrix2d& toUser, double unit, std::string prefix)
    : toUser_(toUser)
    , unit_(unit)
    , decimals_(
          std::clamp(static_cast<int>(std::ceil(kDecimalsOfMillimetre + std::log10(unit))), 0, kMostDecimals))
    , prefix_(std::move(prefix)) {}

std::string SvgPathTarget::point(ZnGePoint2d userPoint) const {
  return fixedNumber(userPoint.x, decimals_) + " " + fixedNumber(userPoint.y, decimals_);
}

void SvgPathTarget::note(ZnGePoint2d drawingPoint) {
  if (!extent_) extent_ = Extent{drawingPoint, drawingPoint};
  extent_->min = {std::min(extent_->min.x, drawingPoint.x), std::min(extent_->min.y, drawingPoint.y)};
  extent_->max = {std::max(extent_->max.x, drawingPoint.x), std::max(extent_->max.y, drawingPoint.y)};
}

std::string SvgPathTarget::dataOf(const Contour& contour) {
  if (contour.segments.empty()) return {};
  std::string data = "M" + point(toUser_ * contour.segments.front().start);
  note(contour.segments.front().start);
  for (const Segment& segment : contour.segments) {
    for (const Segment& piece : asCubics(segment)) {
      note(piece.end);
      if (piece.kind == SegmentKind::Line)
        data += "L";
      else
        data += "C" + point(toUser_ * piece.control1) + " " + point(toUser_ * piece.control2) + " ";
      data += point(toUser_ * piece.end);
    }
  }
  return contour.closed ? data + "Z" : data;
}

// The style attribute outweighs the rules of the document's style sheets, which know nothing of the
// annotation.
void SvgPathTarget::appendElement(const std::string& data, const std::string& paint) {
  if (data.empty()) return;
  elements_ +=
      "<" + prefix_ + "path style=\"" + paint + ";opacity:1;visibility:visible\" d=\"" + data + "\"/>\n";
}

void SvgPathTarget::stroke(const std::vector<Contour>& contours, const Ink& ink, LineEnds ends) {
  std::string data;
  for (const Contour& contour : contours) data += dataOf(contour);
  std::string paint = "fill:none;stroke:" + colorText(ink.rgb);
  paint += ";stroke-width:" + fixedNumber(std::max(ink.width, kHairline) / unit_, decimals_);
  paint += ";stroke-opacity:" + fixedNumber(ink.opacity, kOpacityDecimals);
  paint += std::string(";stroke-linecap:") + (ends == LineEnds::Round ? "round" : "butt");
  appendElement(data, paint + ";stroke-linejoin:round;stroke-dasharray:none");
}

void SvgPathTarget::area(const Contour& contour, const Ink& ink) {
  appendElement(dataOf(contour), "fill:" + colorText(ink.rgb) + ";fill-opacity:" +
                                     fixedNumber(ink.opacity, kOpacityDecimals) + ";stroke:none");
}

void SvgPathTarget::dot(ZnGePoint2d center, double diameter, const Ink& ink) {
  // A touch of a round pen: as a small circle, whoever reads the document again would take it for a hole. The
  // length is a paper size; in drawing units it depends on how the drawing lies on the source.
  const ZnGeVector2d half{tolerance::kDotLength / 2 / unit_ / toUser_.meanScale(), 0};
  Ink pen = ink;
  pen.width = diameter;
  stroke({Contour{{Segment::line(center - half, center + half)}, false}}, pen, LineEnds::Round);
}

void SvgPathTarget::lettering(const Lettering& lettering, const Ink& ink) {
  const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
      cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1), &cairo_surface_destroy);
  const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface.get()), &cairo_destroy);
  cairo_scale(cairo.get(), kOutlineScale, kOutlineScale);
  setUpLettering(cairo.get(), lettering, toUser_);
  cairo_text_path(cairo.get(), lettering.text.c_str());
  cairo_identity_matrix(cairo.get());
  const std::unique_ptr<cairo_path_t, decltype(&cairo_path_destroy)> path(cairo_copy_path(cairo.get()),
                                                                          &cairo_path_destroy);
  std::string data;
  for (int i = 0; path->status == CAIRO_STATUS_SUCCESS && i < path->num_data;
       i += path->data[i].header.length) {
    static constexpr const char* kCommands[] = {"M", "L", "C", "Z"};
    const cairo_path_data_t* item = &path->data[i];
    data += kCommands[item->header.type];
    for (int k = 1; k < item->header.length; ++k)
      data += (k > 1 ? " " : "") + point({item[k].point.x / kOutlineScale, item[k].point.y / kOutlineScale});
  }
  note(lettering.position);
  appendElement(data, "fill:" + colorText(ink.rgb) +
                          ";fill-opacity:" + fixedNumber(ink.opacity, kOpacityDecimals) + ";stroke:none");
}

} // namespace interchange
