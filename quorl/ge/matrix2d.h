// An affine map of a plane.
#pragma once

#include "quorl/ge/point2d.h"

class ZnGeLinearEnt2d;

class ZnGeMatrix2d {
public:
  static const ZnGeMatrix2d kIdentity;

  constexpr ZnGeMatrix2d() = default;
  constexpr ZnGeMatrix2d(const ZnGePoint2d& origin, const ZnGeVector2d& xAxis, const ZnGeVector2d& yAxis)
      : x_(xAxis)
      , y_(yAxis)
      , origin_(origin) {}

  // Replace this map and return it
  ZnGeMatrix2d& setToTranslation(const ZnGeVector2d& v);
  ZnGeMatrix2d& setToRotation(double angle, const ZnGePoint2d& center = ZnGePoint2d::kOrigin);
  ZnGeMatrix2d& setToScaling(double factor, const ZnGePoint2d& center = ZnGePoint2d::kOrigin);
  // A degenerate line gives the identity.
  ZnGeMatrix2d& setToMirroring(const ZnGeLinearEnt2d& line);

  // Images of the origin and of the unit axes
  constexpr const ZnGePoint2d& origin() const { return origin_; }
  constexpr const ZnGeVector2d& xAxis() const { return x_; }
  constexpr const ZnGeVector2d& yAxis() const { return y_; }
  // Negative for a map that mirrors.
  constexpr double det() const { return x_.crossProduct(y_); }

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
