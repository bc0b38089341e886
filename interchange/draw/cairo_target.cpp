#include "interchange/draw/cairo_target.h"

#include "interchange/draw/contour_measure.h"
#include "interchange/draw/lettering_face.h"
#include "interchange/tolerance.h"

#include <algorithm>
#include <cmath>

namespace interchange {

CairoTarget::CairoTarget(cairo_t* cairo, const ZnGeMatrix2d& toPage, double thinnest)
    : cairo_(cairo)
    , toPage_(toPage)
    , thinnest_(thinnest) {
  cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
}

void CairoTarget::setInk(const Ink& ink) {
  const auto channel = [&ink](int shift) { return (ink.rgb >> shift & 0xff) / 255.0; };
  cairo_set_source_rgba(cairo_, channel(16), channel(8), channel(0), ink.opacity);
  cairo_set_line_width(cairo_, std::max(ink.width, thinnest_));
}

void CairoTarget::trace(const Contour& contour) {
  if (contour.segments.empty()) return;
  const ZnGePoint2d start = toPage_ * contour.segments.front().start;
  cairo_move_to(cairo_, start.x, start.y);
  for (const Segment& segment : contour.segments) {
    for (const Segment& piece : asCubics(segment)) {
      const ZnGePoint2d end = toPage_ * piece.end;
      if (piece.kind == SegmentKind::Line) {
        cairo_line_to(cairo_, end.x, end.y);
        continue;
      }
      const ZnGePoint2d control1 = toPage_ * piece.control1, control2 = toPage_ * piece.control2;
      cairo_curve_to(cairo_, control1.x, control1.y, control2.x, control2.y, end.x, end.y);
    }
  }
  if (contour.closed) cairo_close_path(cairo_);
}

void CairoTarget::stroke(const std::vector<Contour>& contours, const Ink& ink, LineEnds ends) {
  setInk(ink);
  cairo_set_line_cap(cairo_, ends == LineEnds::Round ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
  for (const Contour& contour : contours) trace(contour);
  cairo_stroke(cairo_);
}

void CairoTarget::area(const Contour& contour, const Ink& ink) {
  setInk(ink);
  trace(contour);
  cairo_fill(cairo_);
}

// A touch of a round pen: as a small circle, whoever reads the picture would take it for a hole.
void CairoTarget::dot(ZnGePoint2d center, double diameter, const Ink& ink) {
  setInk(ink);
  const ZnGePoint2d at = toPage_ * center;
  cairo_set_line_width(cairo_, std::max(diameter, thinnest_));
  cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_ROUND);
  cairo_move_to(cairo_, at.x - tolerance::kDotLength / 2, at.y);
  cairo_line_to(cairo_, at.x + tolerance::kDotLength / 2, at.y);
  cairo_stroke(cairo_);
}

void CairoTarget::lettering(const Lettering& lettering, const Ink& ink) {
  cairo_save(cairo_);
  setInk(ink);
  setUpLettering(cairo_, lettering, toPage_);
  cairo_show_text(cairo_, lettering.text.c_str());
  cairo_restore(cairo_);
  cairo_new_path(cairo_);
}

void CairoTarget::pushWindow(ZnGePoint2d corner, ZnGePoint2d opposite) {
  cairo_save(cairo_);
  const ZnGePoint2d p = toPage_ * corner, q = toPage_ * opposite;
  cairo_rectangle(cairo_, std::min(p.x, q.x), std::min(p.y, q.y), std::abs(q.x - p.x), std::abs(q.y - p.y));
  cairo_clip(cairo_);
}

void CairoTarget::popWindow() { cairo_restore(cairo_); }

} // namespace interchange
