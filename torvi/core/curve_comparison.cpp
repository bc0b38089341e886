#include <algorithm>
#include <cmath>

#include "torvi/core/action_body_utils.h"
#include "torvi/core/edge_relations.h"
#include "torvi/core/tolerance.h"
#include "torvi/drawing/shapes.h"

namespace {

struct Axes {
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
};

// Origin and unit axes: scale makes no difference to what is compared.
Axes unitAxesOf(const ZnGeMatrix3d& m) {
  Axes axes;
  m.getCoordSystem(axes.origin, axes.x, axes.y, axes.z);
  axes.x.normalize(ZnGeContext::gTol);
  axes.y.normalize(ZnGeContext::gTol);
  axes.z.normalize(ZnGeContext::gTol);
  return axes;
}

bool bothAre(const ZnGeCurve3d* a, const ZnGeCurve3d* b, ZnGe::EntityId kind) {
  return a->isKindOf(kind) && b->isKindOf(kind);
}

// On a large circle the angle of equal points is less than that of small ones.
double angleTolerance(double radius) {
  const double ofPoints = ZnGeContext::gTol.equalPoint() / std::max(radius, 1.0);
  return ofPoints + kCoordinateRounding * torvi::kFullTurn;
}

} // namespace

bool ZnDbTorviActionBodyUtils::lineLineEqual(const ZnGeLineSeg3d* a, const ZnGeLineSeg3d* b) {
  return torvi::isSamePoint(a->startPoint(), b->startPoint()) &&
         torvi::isSamePoint(a->endPoint(), b->endPoint());
}

bool ZnDbTorviActionBodyUtils::circleArcsEqual(const ZnGeCircArc3d* a, const ZnGeCircArc3d* b) {
  const ZnGeTol& tol = ZnGeContext::gTol;
  if (a->radius() != b->radius()) return false;
  const double angle = angleTolerance(a->radius());
  return torvi::isSamePoint(a->center(), b->center()) && a->normal().isEqualTo(b->normal(), tol) &&
         std::fabs(a->startAng() - b->startAng()) <= angle && std::fabs(a->endAng() - b->endAng()) <= angle;
}

bool ZnDbTorviActionBodyUtils::areTwoCurvesEqual(const ZnGeCurve3d* a, const ZnGeCurve3d* b) {
  if (bothAre(a, b, ZnGe::kLine3d)) return true;
  if (bothAre(a, b, ZnGe::kLineSeg3d))
    return lineLineEqual(static_cast<const ZnGeLineSeg3d*>(a), static_cast<const ZnGeLineSeg3d*>(b));
  if (bothAre(a, b, ZnGe::kCircularArc3d))
    return circleArcsEqual(static_cast<const ZnGeCircArc3d*>(a), static_cast<const ZnGeCircArc3d*>(b));
  return false;
}

bool ZnDbTorviActionBodyUtils::geCurvesAreEqual(ZnArray<ZnGeCurve3d*> a, ZnArray<ZnGeCurve3d*> b,
                                                bool allowMore) {
  if (a.length() > b.length() || (a.length() < b.length() && !allowMore)) return false;
  for (int i = 0; i < a.length(); ++i)
    if (!areTwoCurvesEqual(a[i], b[i])) return false;
  return true;
}

void ZnDbTorviActionBodyUtils::rotateMatrixToAlignRefMatrix(ZnGeMatrix3d& m, const ZnGeMatrix3d& ref) {
  const ZnGeTol& tol = ZnGeContext::gTol;
  const Axes own = unitAxesOf(m);
  const Axes wanted = unitAxesOf(ref);
  const double angle = own.x.angleTo(wanted.x);
  if (angle <= tol.equalVector()) return;
  ZnGeVector3d axis = own.x.crossProduct(wanted.x);
  // Opposite axes leave the turning plane open; it is the matrix's own.
  if (axis.isEqualTo(ZnGeVector3d(), tol)) axis = own.z;
  axis.normalize(tol);
  ZnGeMatrix3d rotation;
  rotation.setToRotation(angle, axis, own.origin);
  m = rotation * m;
}

bool ZnDbTorviActionBodyUtils::areTwoCoordinatesEqual(const ZnGeMatrix3d& a, const ZnGeMatrix3d& b) {
  const ZnGeTol& tol = ZnGeContext::gTol;
  const Axes first = unitAxesOf(a);
  const Axes second = unitAxesOf(b);
  return torvi::isSamePoint(first.origin, second.origin) && first.x.isEqualTo(second.x, tol) &&
         first.y.isEqualTo(second.y, tol) && first.z.isEqualTo(second.z, tol);
}
