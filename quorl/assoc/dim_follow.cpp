#include "quorl/assoc/dim_follow.h"

#include "quorl/db/aligned_dimension.h"
#include "quorl/db/diametric_dimension.h"
#include "quorl/db/radial_dimension.h"

using Quorl::ErrorStatus;

namespace {

// The direction in the circle's plane that is nearest to the wanted one.
ZnGeVector3d directionIn(const ZnGeCircArc3d& circle, const ZnGeVector3d& wanted) {
  const ZnGeVector3d& normal = circle.normal();
  const ZnGeVector3d flat = wanted - normal * wanted.dotProduct(normal);
  return flat.isZeroLength() ? circle.refVec() : flat.normal();
}

ErrorStatus first(ErrorStatus a, ErrorStatus b) { return a == Quorl::eOk ? b : a; }

} // namespace

ErrorStatus zndbFollowCircle(ZnDbDimension& dimension, const ZnGeCircArc3d& circle) {
  if (auto* radial = ZnDbRadialDimension::cast(&dimension)) {
    const ZnGeVector3d direction = directionIn(circle, radial->chordPoint() - radial->center());
    return first(radial->setCenter(circle.center()),
                 radial->setChordPoint(circle.center() + direction * circle.radius()));
  }
  if (auto* diametric = ZnDbDiametricDimension::cast(&dimension)) {
    const ZnGeVector3d direction = directionIn(circle, diametric->chordPoint() - diametric->farChordPoint());
    return first(diametric->setChordPoint(circle.center() + direction * circle.radius()),
                 diametric->setFarChordPoint(circle.center() - direction * circle.radius()));
  }
  return Quorl::eWrongObjectClass;
}

ErrorStatus zndbFollowPoint(ZnDbDimension& dimension, int index, const ZnGePoint3d& point) {
  auto* aligned = ZnDbAlignedDimension::cast(&dimension);
  if (!aligned) return Quorl::eWrongObjectClass;
  if (index < 0 || index > 1) return Quorl::eOutOfRange;
  const ZnGePoint3d middle = aligned->xLine1Point() + (aligned->xLine2Point() - aligned->xLine1Point()) * 0.5;
  const ErrorStatus status = index == 0 ? aligned->setXLine1Point(point) : aligned->setXLine2Point(point);
  if (status != Quorl::eOk) return status;
  const ZnGePoint3d middleNow =
      aligned->xLine1Point() + (aligned->xLine2Point() - aligned->xLine1Point()) * 0.5;
  return aligned->setDimLinePoint(aligned->dimLinePoint() + (middleNow - middle));
}
