// An ellipse or an elliptic arc in space.
#pragma once

#include "quorl/ge/angles.h"
#include "quorl/ge/curve3d.h"

class ZnGeCircArc3d;

// The parameter t gives center + cos t * major + sin t * minor; it is no true angle. Start and end follow the
// rules of the circular arc: start in [0, 2 pi), end above it by at most 2 pi.
class ZnGeEllipticalArc3d : public ZnGeCurve3d {
public:
  // The unit circle about the origin, with normal z.
  ZnGeEllipticalArc3d() = default;
  // The half axes as vectors. Two that aren't perpendicular, or whose first is the shorter, are taken as
  // conjugate half diameters: they are replaced by the true axes and the parameters shifted with them, so
  // that the points stay those of the formula.
  ZnGeEllipticalArc3d(const ZnGePoint3d& center, const ZnGeVector3d& majorAxis, const ZnGeVector3d& minorAxis,
                      double startParam = 0.0, double endParam = ZnGe::kTwoPi);
  explicit ZnGeEllipticalArc3d(const ZnGeCircArc3d& arc);

  // Shape; the axes have the lengths of the half axes, major first.
  const ZnGePoint3d& center() const { return center_; }
  const ZnGeVector3d& majorAxis() const { return major_; }
  const ZnGeVector3d& minorAxis() const { return minor_; }
  double majorRadius() const { return major_.length(); }
  double minorRadius() const { return minor_.length(); }
  // Unit vector, major cross minor; some perpendicular of the major axis when the minor one is zero.
  ZnGeVector3d normal() const;
  double startParam() const { return start_; }
  double endParam() const { return end_; }
  ZnGePoint3d startPoint() const { return evalPoint(start_); }
  ZnGePoint3d endPoint() const { return evalPoint(end_); }
  ZnGeEllipticalArc3d& setCenter(const ZnGePoint3d& center);
  ZnGeEllipticalArc3d& setParams(double startParam, double endParam);

  ZnGe::EntityId type() const override { return ZnGe::kEllipticalArc3d; }
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kEllipticalArc3d || ZnGeCurve3d::isKindOf(id);
  }
  ZnGeEllipticalArc3d* copy() const override { return new ZnGeEllipticalArc3d(*this); }
  // Exact for every affine map; one that isn't uniform may shift the parameters.
  ZnGeEllipticalArc3d& transformBy(const ZnGeMatrix3d& matrix) override;
  // By points at equal shares of the spans; closed ones must also start at the same place.
  bool isEqualTo(const ZnGeEntity3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const override;

  void getInterval(ZnGeInterval& interval) const override { interval = ZnGeInterval(start_, end_); }
  ZnGePoint3d evalPoint(double param) const override;
  ZnGeVector3d evaluateDerivative(double param) const override;
  // Turns the minor axis round and keeps the major one.
  ZnGeEllipticalArc3d& reverseParam() override;
  using ZnGeCurve3d::isDegenerate;
  // A point when the arc is no longer than equalPoint, a segment when the minor half axis is.
  bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const override;
  double length() const override;
  // Exact.
  ZnGeBoundBlock3d boundBox() const override;
  void appendSamplePoints(double chordHeight, std::vector<ZnGePoint3d>& points) const override;

protected:
  double nearestParam(const ZnGePoint3d& point) const override;

private:
  void setConjugate(const ZnGeVector3d& first, const ZnGeVector3d& second, double startParam,
                    double endParam);

  ZnGePoint3d center_;
  ZnGeVector3d major_{1.0, 0.0, 0.0};
  ZnGeVector3d minor_{0.0, 1.0, 0.0};
  double start_ = 0.0;
  double end_ = ZnGe::kTwoPi;
};
