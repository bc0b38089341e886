#include "interchange_draw/picture_probe.h"

#include <cmath>
#include <cstring>

namespace interchange_test {

PictureProbe::PictureProbe(const std::string& path, double pageWidth)
    : surface_(cairo_image_surface_create_from_png(path.c_str()), &cairo_surface_destroy)
    , pixelsPerMillimetre_(width() / pageWidth) {}

bool PictureProbe::isRead() const { return cairo_surface_status(surface_.get()) == CAIRO_STATUS_SUCCESS; }
int PictureProbe::width() const { return cairo_image_surface_get_width(surface_.get()); }
int PictureProbe::height() const { return cairo_image_surface_get_height(surface_.get()); }

std::uint32_t PictureProbe::pixel(int column, int row) const {
  const unsigned char* line =
      cairo_image_surface_get_data(surface_.get()) + row * cairo_image_surface_get_stride(surface_.get());
  std::uint32_t value = 0;
  std::memcpy(&value, line + 4 * column, sizeof value);
  return value & 0xffffff;
}

std::uint32_t PictureProbe::colorAt(double x, double y) const {
  const int column = static_cast<int>(std::floor(x * pixelsPerMillimetre_));
  const int row = static_cast<int>(std::floor(height() - y * pixelsPerMillimetre_));
  if (column < 0 || row < 0 || column >= width() || row >= height()) return 0xffffff;
  return pixel(column, row);
}

long PictureProbe::inkedPixels() const {
  long count = 0;
  for (int row = 0; row < height(); ++row)
    for (int column = 0; column < width(); ++column) count += pixel(column, row) != 0xffffff;
  return count;
}

} // namespace interchange_test
