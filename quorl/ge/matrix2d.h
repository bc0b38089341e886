// An affine map of a plane: the images of the origin and of the two unit axes.
#pragma once

#include "quorl/ge/point2d.h"

class ZnGeMatrix2d {
public:
  static const ZnGeMatrix2d kIdentity;

  constexpr ZnGeMatrix2d() = default;
  constexpr ZnGeMatrix2d(const ZnGePoint2d& origin, const ZnGeVector2d& xAxis, const ZnGeVector2d& yAxis)
      : x_(xAxis)
      , y_(yAxis)
      , origin_(origin) {}

  static constexpr ZnGeMatrix2d translation(const ZnGeVector2d& v);
  // Counterclockwise about the center.
  static ZnGeMatrix2d rotation(double angle, const ZnGePoint2d& center = ZnGePoint2d::kOrigin);
  // About the origin, one factor for each axis.
  static constexpr ZnGeMatrix2d scaling(const ZnGeVector2d& factors);

  constexpr const ZnGePoint2d& origin() const { return origin_; }
  constexpr const ZnGeVector2d& xAxis() const { return x_; }
  constexpr const ZnGeVector2d& yAxis() const { return y_; }
  // Negative for a map that mirrors.
  constexpr double det() const { return x_.crossProduct(y_); }
  // Length of the longer axis.
  double scale() const { return std::fmax(x_.length(), y_.length()); }
  // Geometric mean of the two principal scales: what the width of a line is multiplied by.
  double meanScale() const { return std::sqrt(std::fabs(det())); }
  // Whether the axes span no usable area for their lengths, or are no numbers, so that there is no inverse.
  bool isSingular() const;
  // Whether circles stay circles: axes of one length and perpendicular to each other, to equalVector relative
  // to the longer one. Mirroring is allowed.
  bool isUniformlyScaled(const ZnGeTol& tol = ZnGeContext::gTol) const;
  // The identity for a singular matrix; ask isSingular first where that matters.
  ZnGeMatrix2d inverse() const;

  constexpr ZnGeVector2d operator*(const ZnGeVector2d& v) const { return x_ * v.x + y_ * v.y; }
  constexpr ZnGePoint2d operator*(const ZnGePoint2d& p) const { return origin_ + *this * p.asVector(); }
  // First the right factor, then the left one.
  constexpr ZnGeMatrix2d operator*(const ZnGeMatrix2d& m) const {
    return {*this * m.origin_, *this * m.x_, *this * m.y_};
  }

private:
  ZnGeVector2d x_{1.0, 0.0};
  ZnGeVector2d y_{0.0, 1.0};
  ZnGePoint2d origin_;
};

inline constexpr ZnGeMatrix2d ZnGeMatrix2d::kIdentity{};

constexpr ZnGeMatrix2d ZnGeMatrix2d::translation(const ZnGeVector2d& v) {
  return {ZnGePoint2d(v.x, v.y), {1.0, 0.0}, {0.0, 1.0}};
}

constexpr ZnGeMatrix2d ZnGeMatrix2d::scaling(const ZnGeVector2d& factors) {
  return {ZnGePoint2d(), {factors.x, 0.0}, {0.0, factors.y}};
}
