#include "quorl/ge/linear_ent3d.h"

#include <algorithm>
#include <limits>

#include "quorl/ge/line3d.h"
#include "quorl/ge/line_seg3d.h"
#include "quorl/ge/planar_ent.h"

namespace {

double distanceToLine(const ZnGePoint3d& point, const ZnGePoint3d& base, const ZnGeVector3d& direction) {
  return (point - base).crossProduct(direction).length();
}

// Whether the points that define the second entity lie on the unbounded line of the first.
bool isDefinedOnLineOf(const ZnGeLinearEnt3d& line, const ZnGeLinearEnt3d& entity, const ZnGeTol& tol) {
  const ZnGePoint3d base = line.pointOnLine();
  const ZnGeVector3d direction = line.direction();
  const ZnGePoint3d start = entity.pointOnLine();
  if (distanceToLine(start, base, direction) > tol.equalPoint()) return false;
  return !entity.isBounded() || distanceToLine(start + entity.span(), base, direction) <= tol.equalPoint();
}

// The stretch of an entity, by distance from the given base in the given direction.
ZnGeInterval stretchAlong(const ZnGeLinearEnt3d& entity, const ZnGePoint3d& base,
                          const ZnGeVector3d& direction) {
  if (!entity.isBounded()) return ZnGeInterval();
  const ZnGePoint3d start = entity.pointOnLine();
  const double first = (start - base).dotProduct(direction);
  const double second = (start + entity.span() - base).dotProduct(direction);
  return ZnGeInterval(std::min(first, second), std::max(first, second));
}

} // namespace

ZnGeVector3d ZnGeLinearEnt3d::direction() const {
  const ZnGeVector3d along = span();
  const double size = along.length();
  return size > ZnGeContext::gTol.equalPoint() ? along / size : ZnGeVector3d::kIdentity;
}

void ZnGeLinearEnt3d::getLine(ZnGeLine3d& line) const { line.set(pointOnLine(), span()); }

// With unit directions d, e and w the vector between the bases, the feet of the common perpendicular lie at
// (w x e).n / n.n and (w x d).n / n.n along the two, n being d x e, and w.n / |n| apart.
bool ZnGeLinearEnt3d::intersectWith(const ZnGeLinearEnt3d& other, ZnGePoint3d& point,
                                    const ZnGeTol& tol) const {
  const ZnGeVector3d d = direction();
  const ZnGeVector3d e = other.direction();
  const ZnGeVector3d n = d.crossProduct(e);
  // Also true of a degenerate entity, whose direction is zero.
  if (n.length() <= tol.equalVector()) return false;

  const ZnGeVector3d w = other.pointOnLine() - pointOnLine();
  if (std::fabs(w.dotProduct(n)) > tol.equalPoint() * n.length()) return false;
  const double onThis = w.crossProduct(e).dotProduct(n) / n.lengthSquared();
  const double onOther = w.crossProduct(d).dotProduct(n) / n.lengthSquared();
  point = ZnGeLineSeg3d(pointOnLine() + d * onThis, other.pointOnLine() + e * onOther).midPoint();
  return true;
}

bool ZnGeLinearEnt3d::intersectWith(const ZnGePlanarEnt& plane, ZnGePoint3d& point,
                                    const ZnGeTol& tol) const {
  const ZnGeVector3d d = direction();
  const double approach = d.dotProduct(plane.normal());
  if (std::fabs(approach) <= tol.equalVector()) return false;
  const double distance = -plane.signedDistanceTo(pointOnLine()) / approach;
  point = pointOnLine() + d * distance;
  return true;
}

bool ZnGeLinearEnt3d::overlap(const ZnGeLinearEnt3d& other, ZnGeLinearEnt3d*& result,
                              const ZnGeTol& tol) const {
  result = nullptr;
  if (!isColinearTo(other, tol)) return false;
  const ZnGePoint3d base = pointOnLine();
  const ZnGeVector3d d = direction();
  const ZnGeInterval mine = stretchAlong(*this, base, d);
  const ZnGeInterval theirs = stretchAlong(other, base, d);
  const ZnGeInterval common(std::max(mine.lowerBound(), theirs.lowerBound()),
                            std::min(mine.upperBound(), theirs.upperBound()));
  if (common.length() <= tol.equalPoint()) return false;
  if (common.isBounded()) {
    result = new ZnGeLineSeg3d(base + d * common.lowerBound(), base + d * common.upperBound());
  } else {
    result = new ZnGeLine3d(base, span());
  }
  return true;
}

bool ZnGeLinearEnt3d::isParallelTo(const ZnGeLinearEnt3d& other, const ZnGeTol& tol) const {
  return direction().isParallelTo(other.direction(), tol);
}

bool ZnGeLinearEnt3d::isColinearTo(const ZnGeLinearEnt3d& other, const ZnGeTol& tol) const {
  return isParallelTo(other, tol) && isDefinedOnLineOf(*this, other, tol) &&
         isDefinedOnLineOf(other, *this, tol);
}

bool ZnGeLinearEnt3d::isOn(const ZnGePlanarEnt& plane, const ZnGeTol& tol) const {
  if (!plane.isOn(pointOnLine(), tol)) return false;
  if (isBounded()) return plane.isOn(pointOnLine() + span(), tol);
  return std::fabs(direction().dotProduct(plane.normal())) <= tol.equalVector();
}
