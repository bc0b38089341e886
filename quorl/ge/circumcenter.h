// The circle through three points of a plane, by the chords from the first of them. Kept apart from the arc
// so that a search over many triples gets the arc's own center, to the last bit, without making arcs.
#pragma once

#include "quorl/ge/vector2d.h"

namespace ZnGe {

// Whether there is one, by gTol: the chords b and c from the first point and the closing one all have a
// length and b is not parallel to c. The lengths are those of the vectors, for callers that know them
// already.
inline bool spanCircle(const ZnGeVector2d& b, const ZnGeVector2d& c, double lengthB, double lengthC,
                       double lengthClosing) {
  const double point = ZnGeContext::gTol.equalPoint(), vector = ZnGeContext::gTol.equalVector();
  if (!(lengthB > point && lengthC > point && lengthClosing > point)) return false;
  if (lengthB <= vector || lengthC <= vector) return true;
  return std::fabs(b.crossProduct(c)) > vector * lengthB * lengthC;
}

// From the first point to the center, where the bisectors of the chords b and c meet: with D = 2 b x c it is
// the vector |b|^2 c - |c|^2 b turned clockwise, over D.
constexpr ZnGeVector2d circumcenterOffset(const ZnGeVector2d& b, const ZnGeVector2d& c) {
  return -(c * b.lengthSquared() - b * c.lengthSquared()).perpVector() / (2.0 * b.crossProduct(c));
}

} // namespace ZnGe
