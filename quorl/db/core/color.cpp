#include "quorl/db/core/color.h"

#include <array>
#include <cmath>

namespace {

constexpr int kByBlockIndex = 0, kByLayerIndex = 256;
constexpr std::uint32_t kValueMask = 0xffffff;

std::uint32_t rgbOf(double red, double green, double blue) {
  const auto channel = [](double share) { return static_cast<std::uint32_t>(std::lround(share * 255.0)); };
  return channel(red) << 16 | channel(green) << 8 | channel(blue);
}

// The palette: 1 to 7 the plain colors, 8 and 9 grays, from 10 on twenty-four hues of ten shades each (five
// levels of brightness, each full and half saturated), and a gray ramp from 250.
std::uint32_t paletteColor(int index) {
  constexpr std::uint32_t plain[] = {0x000000, 0xff0000, 0xffff00, 0x00ff00, 0x00ffff,
                                     0x0000ff, 0xff00ff, 0xffffff, 0x808080, 0xc0c0c0};
  constexpr double levels[] = {1.0, 0.8, 0.6, 0.45, 0.3};
  constexpr int firstHue = 10, firstGray = 250;
  if (index < firstHue) return plain[index];
  if (index >= firstGray) {
    const double gray = 0.2 + 0.16 * (index - firstGray);
    return rgbOf(gray, gray, gray);
  }
  const int hueStep = (index - firstHue) / 10;
  const double sextant = hueStep * 0.25; // of six, at steps of 15 degrees
  const double level = levels[index % 10 / 2];
  const double least = index % 2 ? 0.5 : 0.0;
  // A channel is full within one sextant of its own hue and falls off over the next.
  const auto channel = [&](double hue) {
    double distance = std::fabs(sextant - hue);
    if (distance > 3.0) distance = 6.0 - distance;
    const double share = distance <= 1.0 ? 1.0 : distance >= 2.0 ? 0.0 : 2.0 - distance;
    return level * (least + (1.0 - least) * share);
  };
  return rgbOf(channel(0.0), channel(2.0), channel(4.0));
}

const std::array<std::uint32_t, 256>& palette() {
  static const std::array<std::uint32_t, 256> colors = [] {
    std::array<std::uint32_t, 256> all{};
    for (int i = 1; i < 256; ++i) all[static_cast<size_t>(i)] = paletteColor(i);
    return all;
  }();
  return colors;
}

int squaredDistance(std::uint32_t a, std::uint32_t b) {
  int sum = 0;
  for (const int shift : {0, 8, 16}) {
    const int difference = static_cast<int>(a >> shift & 0xff) - static_cast<int>(b >> shift & 0xff);
    sum += difference * difference;
  }
  return sum;
}

} // namespace

ZnCmColor ZnCmColor::fromIndex(int index) {
  ZnCmColor color;
  if (index == kByBlockIndex) color.method_ = kByBlock;
  if (index > kByBlockIndex && index < kByLayerIndex) {
    color.method_ = kIndex;
    color.value_ = static_cast<std::uint32_t>(index);
  }
  return color;
}

ZnCmColor ZnCmColor::fromRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  ZnCmColor color;
  color.method_ = kTrueColor;
  color.value_ = static_cast<std::uint32_t>(red) << 16 | static_cast<std::uint32_t>(green) << 8 | blue;
  return color;
}

int ZnCmColor::colorIndex() const {
  if (method_ == kByLayer) return kByLayerIndex;
  if (method_ == kByBlock) return kByBlockIndex;
  if (method_ == kIndex) return static_cast<int>(value_);
  int nearest = 1;
  for (int i = 2; i < kByLayerIndex; ++i)
    if (squaredDistance(palette()[static_cast<size_t>(i)], value_) <
        squaredDistance(palette()[static_cast<size_t>(nearest)], value_))
      nearest = i;
  return nearest;
}

std::uint32_t ZnCmColor::rgb() const {
  if (method_ == kIndex) return palette()[value_ & 0xff];
  return method_ == kTrueColor ? value_ : 0;
}

// A number that packed() can't have given counts as by layer.
ZnCmColor ZnCmColor::fromPacked(std::uint32_t packed) {
  ZnCmColor color;
  const std::uint32_t method = packed >> 24, value = packed & kValueMask;
  if (method > kTrueColor || (method == kIndex && (value == 0 || value > 255))) return color;
  color.method_ = static_cast<Method>(method);
  color.value_ = value;
  return color;
}

ZnCmTransparency ZnCmTransparency::fromPacked(std::uint32_t packed) {
  ZnCmTransparency transparency(static_cast<std::uint8_t>(packed & 0xff));
  const std::uint32_t method = packed >> 8;
  transparency.setMethod(method == kByBlock ? kByBlock : method == kByAlpha ? kByAlpha : kByLayer);
  return transparency;
}
