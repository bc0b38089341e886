// Straight curves in a plane and the relations between them.
#pragma once

#include "quorl/ge/curve2d.h"

class ZnGeLinearEnt2d : public ZnGeCurve2d {
public:
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kLinearEnt2d || ZnGeCurve2d::isKindOf(id);
  }
  ZnGeLinearEnt2d* copy() const override = 0;
  ZnGeLinearEnt2d& transformBy(const ZnGeMatrix2d& matrix) override = 0;

  virtual ZnGePoint2d pointOnLine() const = 0;
  // From that point along the line, as given.
  virtual ZnGeVector2d span() const = 0;
  // Unit vector; the zero vector when the span is no longer than equalPoint of gTol.
  ZnGeVector2d direction() const;

  // The common point of the unbounded lines, as in space. False, with the point untouched, for lines that are
  // parallel by equalVector or degenerate.
  bool intersectWith(const ZnGeLinearEnt2d& other, ZnGePoint2d& point,
                     const ZnGeTol& tol = ZnGeContext::gTol) const;
  // By equalVector; false when either is degenerate.
  bool isParallelTo(const ZnGeLinearEnt2d& other, const ZnGeTol& tol = ZnGeContext::gTol) const;
};
