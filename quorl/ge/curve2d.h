// What every curve in a plane answers: points by parameter and the parameter by point.
#pragma once

#include "quorl/ge/entity2d.h"
#include "quorl/ge/interval.h"

class ZnGeCurve2d : public ZnGeEntity2d {
public:
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kCurve2d || ZnGeEntity2d::isKindOf(id);
  }
  ZnGeCurve2d* copy() const override = 0;
  ZnGeCurve2d& transformBy(const ZnGeMatrix2d& matrix) override = 0;

  // Parameters; each class says what its parameter means.
  virtual void getInterval(ZnGeInterval& interval) const = 0;
  virtual ZnGePoint2d evalPoint(double param) const = 0;
  // As in space: the nearest point's, within the interval, and exactly the bound's when it can't be told from
  // an end under both tol and gTol.
  double paramOf(const ZnGePoint2d& point, const ZnGeTol& tol = ZnGeContext::gTol) const;

  // Points; exact to rounding whatever the tolerance.
  ZnGePoint2d closestPointTo(const ZnGePoint2d& point, const ZnGeTol& tol = ZnGeContext::gTol) const;
  bool isOn(const ZnGePoint2d& point, const ZnGeTol& tol = ZnGeContext::gTol) const;
  // The parameter is set only when the point lies on the curve.
  bool isOn(const ZnGePoint2d& point, double& param, const ZnGeTol& tol = ZnGeContext::gTol) const;

  // As in space; there is no kind for points and segments of a plane, so those of space are given.
  virtual bool isDegenerate(ZnGe::EntityId& kind, const ZnGeTol& tol = ZnGeContext::gTol) const = 0;
  bool isDegenerate(const ZnGeTol& tol = ZnGeContext::gTol) const;

protected:
  // Parameter of the nearest point of the curve, within the interval.
  virtual double nearestParam(const ZnGePoint2d& point) const = 0;
};
