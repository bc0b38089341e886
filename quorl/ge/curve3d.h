// What every curve in space answers: points by parameter, the parameter by point, extent and samples.
#pragma once

#include <vector>

#include "quorl/ge/bound_block3d.h"
#include "quorl/ge/entity3d.h"
#include "quorl/ge/interval.h"
#include "quorl/ge/point_on_curve3d.h"

class ZnGeCurve3d : public ZnGeEntity3d {
public:
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kCurve3d || ZnGeEntity3d::isKindOf(id);
  }
  ZnGeCurve3d* copy() const override = 0;
  ZnGeCurve3d& transformBy(const ZnGeMatrix3d& matrix) override = 0;

  // Parameters; each class says what its parameter means.
  virtual void getInterval(ZnGeInterval& interval) const = 0;
  ZnGeInterval interval() const;
  virtual ZnGePoint3d evalPoint(double param) const = 0;
  // First derivative by the parameter, not normalised.
  virtual ZnGeVector3d evaluateDerivative(double param) const = 0;
  // Parameter of the curve's point nearest to the given one, within the interval: beyond an end it is that
  // end's. It is exact to rounding; only a nearest point that both tol and gTol can't tell from an end takes
  // the end's parameter, so that comparisons with the bounds hold. On a closed curve that end is the lower.
  double paramOf(const ZnGePoint3d& point, const ZnGeTol& tol = ZnGeContext::gTol) const;
  // In place: the same points run through the other way. Parameters are those of the class, renewed.
  virtual ZnGeCurve3d& reverseParam() = 0;

  // Points; exact to rounding whatever the tolerance, which is taken so that all queries are called alike.
  ZnGePoint3d closestPointTo(const ZnGePoint3d& point, const ZnGeTol& tol = ZnGeContext::gTol) const;
  // The result refers to this curve.
  void getClosestPointTo(const ZnGePoint3d& point, ZnGePointOnCurve3d& result,
                         const ZnGeTol& tol = ZnGeContext::gTol) const;
  double distanceTo(const ZnGePoint3d& point) const;
  bool isOn(const ZnGePoint3d& point, const ZnGeTol& tol = ZnGeContext::gTol) const;
  // The parameter is set only when the point lies on the curve.
  bool isOn(const ZnGePoint3d& point, double& param, const ZnGeTol& tol = ZnGeContext::gTol) const;

  // Shape
  // Whether the curve has shrunk to something of a lower kind, given in `kind` (kPointEntity3d for a place);
  // otherwise `kind` is the curve's own type.
  virtual bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const = 0;
  bool isDegenerate(const ZnGeTol& tol = ZnGeContext::gTol) const;
  // Whether a curve that isn't degenerate ends where it starts.
  virtual bool isClosed(const ZnGeTol& tol = ZnGeContext::gTol) const;
  // Arc length in drawing units; infinity for an unbounded curve.
  virtual double length() const = 0;
  // Empty for an unbounded curve.
  virtual ZnGeBoundBlock3d boundBox() const = 0;
  // Appends points along the curve, both ends included, whose polyline departs from it by no more than the
  // chord height. A closed curve repeats its first point, an unbounded one adds nothing. Heights below
  // kFinestChordRatio of the curve's size, zero and negative ones are raised to that.
  virtual void appendSamplePoints(double chordHeight, std::vector<ZnGePoint3d>& points) const = 0;

protected:
  // Parameter of the nearest point of the curve, within the interval.
  virtual double nearestParam(const ZnGePoint3d& point) const = 0;
};
