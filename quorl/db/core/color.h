// Colors and transparencies as entities and layers state them.
#pragma once

#include <cstdint>

// By layer, by block, an index of the standard palette (1 to 255), or true color.
class ZnCmColor {
public:
  enum Method : std::uint8_t { kByLayer, kByBlock, kIndex, kTrueColor };

  ZnCmColor() = default;
  // 0 is by block, 256 by layer, 1 to 255 the palette; others count as by layer.
  static ZnCmColor fromIndex(int index);
  static ZnCmColor fromRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

  Method method() const { return method_; }
  void setMethod(Method method) { method_ = method; }
  // 0, 256 or the palette index; for a true color the nearest palette index.
  int colorIndex() const;
  void setColorIndex(int index) { *this = fromIndex(index); }
  // 0xRRGGBB; 0 for by layer and by block.
  std::uint32_t rgb() const;

  // One number that says it all, for filing.
  std::uint32_t packed() const { return static_cast<std::uint32_t>(method_) << 24 | value_; }
  static ZnCmColor fromPacked(std::uint32_t packed);
  friend bool operator==(const ZnCmColor&, const ZnCmColor&) = default;

private:
  Method method_ = kByLayer;
  std::uint32_t value_ = 0;
};

class ZnCmTransparency {
public:
  enum Method : std::uint8_t { kByLayer = 0, kByBlock = 1, kByAlpha = 2 };

  ZnCmTransparency() = default;
  explicit ZnCmTransparency(std::uint8_t alpha)
      : method_(kByAlpha)
      , alpha_(alpha) {}

  Method method() const { return method_; }
  void setMethod(Method method) { method_ = method; }
  std::uint8_t alpha() const { return method_ == kByAlpha ? alpha_ : 255; } // 255 is opaque

  std::uint32_t packed() const { return static_cast<std::uint32_t>(method_) << 8 | alpha_; }
  static ZnCmTransparency fromPacked(std::uint32_t packed);
  friend bool operator==(const ZnCmTransparency&, const ZnCmTransparency&) = default;

private:
  Method method_ = kByLayer;
  std::uint8_t alpha_ = 255;
};
