#include "interchange/draw/lettering_face.h"

#include <memory>

namespace interchange {

namespace {

constexpr double kCapitalShare = 0.729; // height of the face's capitals as a part of the font size

// A capital is one unit high.
void chooseFace(cairo_t* cairo) {
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_set_font_options(cairo, options);
  cairo_font_options_destroy(options);
  cairo_select_font_face(cairo, "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(cairo, 1 / kCapitalShare);
}

} // namespace

void setUpLettering(cairo_t* cairo, const Lettering& lettering, const ZnGeMatrix2d& place) {
  static constexpr double kShares[] = {0, 0.5, 1};
  const ZnGePoint2d at = place * lettering.position;
  const ZnGeVector2d along = place * lettering.along, up = place * lettering.up;
  const cairo_matrix_t matrix{along.x, along.y, -up.x, -up.y, at.x, at.y};
  cairo_transform(cairo, &matrix);
  chooseFace(cairo);
  cairo_move_to(cairo, -kShares[static_cast<int>(lettering.alignment)] * widthOfText(lettering.text), 0);
}

// Measured large, so that the rounding of the measures does not show.
double widthOfText(const std::string& text) {
  constexpr double kEnlarged = 1000;
  const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
      cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1), &cairo_surface_destroy);
  const std::unique_ptr<cairo_t, decltype(&cairo_destroy)> cairo(cairo_create(surface.get()), &cairo_destroy);
  cairo_scale(cairo.get(), kEnlarged, kEnlarged);
  chooseFace(cairo.get());
  cairo_text_extents_t extents;
  cairo_text_extents(cairo.get(), text.c_str(), &extents);
  return extents.x_advance;
}

} // namespace interchange
