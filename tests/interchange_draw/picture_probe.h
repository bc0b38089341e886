// Reads a bitmap back and asks where it has ink.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <string>

namespace interchange_test {

class PictureProbe {
public:
  // pageWidth is what the bitmap's width stands for, in millimetres.
  PictureProbe(const std::string& path, double pageWidth);

  bool isRead() const;
  int width() const;
  int height() const;
  // 0xRRGGBB at millimetres from the left and the lower edge; white outside.
  std::uint32_t colorAt(double x, double y) const;
  bool hasInkAt(double x, double y) const { return colorAt(x, y) != 0xffffff; }
  // Pixels that are not white.
  long inkedPixels() const;

private:
  std::uint32_t pixel(int column, int row) const;

  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface_;
  double pixelsPerMillimetre_;
};

} // namespace interchange_test
