// Inks strokes, areas and lettering with Cairo.
#pragma once

#include "interchange/draw/stroke_target.h"

#include <cairo.h>

namespace interchange {

class CairoTarget final : public StrokeTarget {
public:
  // The context's user unit is a millimetre of the page; it must outlive the target. Lines are at least
  // `thinnest` millimetres wide.
  CairoTarget(cairo_t* cairo, const Affine& toPage, double thinnest);

  void stroke(const std::vector<Contour>& contours, const Ink& ink, LineEnds ends) override;
  void area(const Contour& contour, const Ink& ink) override;
  void dot(Point2 center, double diameter, const Ink& ink) override;
  void lettering(const Lettering& lettering, const Ink& ink) override;
  void pushWindow(Point2 corner, Point2 opposite) override;
  void popWindow() override;

private:
  void setInk(const Ink& ink);
  void trace(const Contour& contour);

  cairo_t* cairo_;
  Affine toPage_;
  double thinnest_;
};

} // namespace interchange
