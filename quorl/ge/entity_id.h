// The kinds of geometric entities. Numbers are part of the interface: modules compare them.
#pragma once

namespace ZnGe {

// Abstract classes have a kind too, so that isKindOf can ask for any level of the hierarchy.
enum EntityId : int {
  kEntity2d = 1,
  kCurve2d = 2,
  kLinearEnt2d = 3,
  kLine2d = 4,
  kCircularArc2d = 5,
  kEntity3d = 6,
  kPointEntity3d = 7,
  kPointOnCurve3d = 8,
  kCurve3d = 9,
  kLinearEnt3d = 10,
  kCircularArc3d = 11,
  kEllipticalArc3d = 12,
  kNurbCurve3d = 13,
  kSurface = 14,
  kPlanarEnt = 15,
  kPlane = 16,
  kLine3d = 19,
  kLineSeg3d = 23,
};

} // namespace ZnGe
