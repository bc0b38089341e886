// Straight curves in space, bounded or not, and the relations between them.
#pragma once

#include "quorl/ge/curve3d.h"

class ZnGeLine3d;
class ZnGePlanarEnt;

class ZnGeLinearEnt3d : public ZnGeCurve3d {
public:
  bool isKindOf(ZnGe::EntityId id) const override {
    return id == ZnGe::kLinearEnt3d || ZnGeCurve3d::isKindOf(id);
  }
  ZnGeLinearEnt3d* copy() const override = 0;
  ZnGeLinearEnt3d& transformBy(const ZnGeMatrix3d& matrix) override = 0;

  // A point of the line: the base of an unbounded one, the start of a segment.
  virtual ZnGePoint3d pointOnLine() const = 0;
  // From that point along the line: as given to an unbounded one, to the end of a segment.
  virtual ZnGeVector3d span() const = 0;
  virtual bool isBounded() const = 0;
  // Unit vector; the zero vector when the span is no longer than equalPoint of gTol.
  ZnGeVector3d direction() const;
  // The unbounded line with the same base and span.
  void getLine(ZnGeLine3d& line) const;

  // The common point of the unbounded lines that carry the two entities, midway between their nearest points,
  // which may be equalPoint apart. As with the relations below, bounds play no part: edges that meet only on
  // their extensions, at a chamfered corner or on a wedge, must get the point where they would meet. Who
  // needs the bounds asks isOn. False, with the point untouched, for parallel (by equalVector), skew and
  // degenerate ones.
  bool intersectWith(const ZnGeLinearEnt3d& other, ZnGePoint3d& point,
                     const ZnGeTol& tol = ZnGeContext::gTol) const;
  // By the same rule the point where the unbounded line pierces the plane. False, with the point untouched,
  // when parallel to the plane or degenerate.
  bool intersectWith(const ZnGePlanarEnt& plane, ZnGePoint3d& point,
                     const ZnGeTol& tol = ZnGeContext::gTol) const;
  // The common stretch of two colinear entities as a new entity that the caller owns, in the sense of this
  // one: a line for two lines, else a segment. False, with null, when they share nothing longer than
  // equalPoint.
  bool overlap(const ZnGeLinearEnt3d& other, ZnGeLinearEnt3d*& result,
               const ZnGeTol& tol = ZnGeContext::gTol) const;

  // Relations of the unbounded lines, by equalVector; false when either is degenerate.
  bool isParallelTo(const ZnGeLinearEnt3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const;
  // Parallel, and the base (and for a segment the end) of each within equalPoint of the line of the other.
  bool isColinearTo(const ZnGeLinearEnt3d& other, const ZnGeTol& tol = ZnGeContext::gTol) const;

  using ZnGeCurve3d::isOn;
  // Whether the whole entity lies in the plane: a segment with both ends, a line with its base and direction.
  bool isOn(const ZnGePlanarEnt& plane, const ZnGeTol& tol = ZnGeContext::gTol) const;
};
