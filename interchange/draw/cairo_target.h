// Inks strokes, areas and lettering with Cairo.
#pragma once

#include "interchange/draw/stroke_target.h"

#include <cairo.h>

namespace interchange {

class CairoTarget final : public StrokeTarget {
public:
  // The context's user unit is a millimetre of the page; it must outlive the target. Lines are at least
  // `thinnest` millimetres wide.
  CairoTarget(cairo_t* cairo, const ZnGeMatrix2d& toPage, double thinnest);

  void stroke(const std::vector<Contour>& contours, const Ink& ink, LineEnds ends) override;
  void area(const Contour& contour, const Ink& ink) override;
  void dot(ZnGePoint2d center, double diameter, const Ink& ink) override;
  void lettering(const Lettering& lettering, const Ink& ink) override;
  void pushWindow(ZnGePoint2d corner, ZnGePoint2d opposite) override;
  void popWindow() override;

private:
  void setInk(const Ink& ink);
  void trace(const Contour& contour);

  cairo_t* cairo_;
  ZnGeMatrix2d toPage_;
  double thinnest_;
};

} // namespace interchange
