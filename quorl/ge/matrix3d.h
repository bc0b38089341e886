// An affine map of space: the images of the origin and of the three unit axes.
#pragma once

#include "quorl/ge/point3d.h"

class ZnGeMatrix3d {
public:
  static const ZnGeMatrix3d kIdentity;

  constexpr ZnGeMatrix3d() = default;
  constexpr ZnGeMatrix3d(const ZnGePoint3d& origin, const ZnGeVector3d& xAxis, const ZnGeVector3d& yAxis,
                         const ZnGeVector3d& zAxis)
      : x_(xAxis)
      , y_(yAxis)
      , z_(zAxis)
      , origin_(origin) {}

  // Elements: columns 0 to 2 are the axes, column 3 is the origin, row 3 is always 0 0 0 1.
  double operator()(int row, int column) const;
  // Row 0 to 2 only.
  void setElement(int row, int column, double value);

  // Replace this map and return it
  ZnGeMatrix3d& setToIdentity() { return *this = ZnGeMatrix3d(); }
  ZnGeMatrix3d& setToTranslation(const ZnGeVector3d& v);
  // Counterclockwise about the axis through the center; a zero axis gives the identity.
  ZnGeMatrix3d& setToRotation(double angle, const ZnGeVector3d& axis,
                              const ZnGePoint3d& center = ZnGePoint3d::kOrigin);
  ZnGeMatrix3d& setToProduct(const ZnGeMatrix3d& left, const ZnGeMatrix3d& right) {
    return *this = left * right;
  }
  ZnGeMatrix3d& setCoordSystem(const ZnGePoint3d& origin, const ZnGeVector3d& xAxis,
                               const ZnGeVector3d& yAxis, const ZnGeVector3d& zAxis);

  // Maps as values
  static ZnGeMatrix3d translation(const ZnGeVector3d& v);
  static ZnGeMatrix3d rotation(double angle, const ZnGeVector3d& axis,
                               const ZnGePoint3d& center = ZnGePoint3d::kOrigin);
  static ZnGeMatrix3d scaling(double factor, const ZnGePoint3d& center = ZnGePoint3d::kOrigin);
  // One factor for each world axis.
  static ZnGeMatrix3d scaling(const ZnGeVector3d& factors, const ZnGePoint3d& center = ZnGePoint3d::kOrigin);
  static ZnGeMatrix3d mirroring(const ZnGePlanarEnt& plane);
  static ZnGeMatrix3d mirroring(const ZnGePoint3d& center);
  // The frame of entities with this normal: origin at the world origin, z along the normal, x its perpVector.
  // A zero normal counts as the world z axis.
  static ZnGeMatrix3d planeToWorld(const ZnGeVector3d& normal);
  static ZnGeMatrix3d worldToPlane(const ZnGeVector3d& normal);

  // Parts
  // The axes keep their scale.
  void getCoordSystem(ZnGePoint3d& origin, ZnGeVector3d& xAxis, ZnGeVector3d& yAxis,
                      ZnGeVector3d& zAxis) const;
  constexpr ZnGeVector3d translation() const { return origin_.asVector(); }
  ZnGeMatrix3d& setTranslation(const ZnGeVector3d& v);
  // Negative for a map that mirrors.
  constexpr double det() const { return x_.crossProduct(y_).dotProduct(z_); }
  // Length of the longest axis; exactly 1 for one that rounding alone keeps from it.
  double scale() const;
  // Whether the axes have no usable volume for their lengths, so that there is no inverse.
  bool isSingular() const;
  // Whether circles stay circles in every plane: axes of one length (to equalVector, relative to the longest)
  // and perpendicular to each other. Mirroring is allowed.
  bool isUniformlyScaled(const ZnGeTol& tol = ZnGeContext::gTol) const;
  // Origins by equalPoint, axes by equalVector.
  bool isEqualTo(const ZnGeMatrix3d& m, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool operator==(const ZnGeMatrix3d& m) const { return isEqualTo(m); }
  bool operator!=(const ZnGeMatrix3d& m) const { return !isEqualTo(m); }

  // Composition
  // The identity for a singular matrix; ask isSingular first where that matters.
  ZnGeMatrix3d inverse() const;
  // First the right factor, then the left one.
  constexpr ZnGeMatrix3d operator*(const ZnGeMatrix3d& m) const {
    return {*this * m.origin_, *this * m.x_, *this * m.y_, *this * m.z_};
  }
  constexpr ZnGeMatrix3d& operator*=(const ZnGeMatrix3d& m) { return *this = *this * m; }
  // This map followed by the given one.
  constexpr ZnGeMatrix3d& preMultBy(const ZnGeMatrix3d& m) { return *this = m * *this; }
  constexpr ZnGeVector3d operator*(const ZnGeVector3d& v) const { return x_ * v.x + y_ * v.y + z_ * v.z; }
  constexpr ZnGePoint3d operator*(const ZnGePoint3d& p) const { return origin_ + *this * p.asVector(); }

private:
  ZnGeVector3d x_{1.0, 0.0, 0.0};
  ZnGeVector3d y_{0.0, 1.0, 0.0};
  ZnGeVector3d z_{0.0, 0.0, 1.0};
  ZnGePoint3d origin_;
};

inline constexpr ZnGeMatrix3d ZnGeMatrix3d::kIdentity{};
