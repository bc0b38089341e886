#include "quorl/assoc/dim_follow.h"

#include "quorl/db/entity/aligned_dimension.h"
#include "quorl/db/entity/diametric_dimension.h"
#include "quorl/db/entity/radial_dimension.h"
#include "quorl/db/entity/viewport.h"

using Quorl::ErrorStatus;

namespace {

// The direction in the circle's plane that is nearest to the wanted one.
ZnGeVector3d directionIn(const ZnGeCircArc3d& circle, const ZnGeVector3d& wanted) {
  const ZnGeVector3d& normal = circle.normal();
  const ZnGeVector3d flat = wanted - normal * wanted.dotProduct(normal);
  return flat.isZeroLength() ? circle.referenceVector() : flat.normal();
}

ErrorStatus first(ErrorStatus a, ErrorStatus b) { return a == Quorl::eOk ? b : a; }

} // namespace

ZnGeMatrix3d zndbToSheet(const ZnDbCompoundObjectId& path) {
  const ZnDbHolder<ZnDbViewport> viewport(path.topId());
  return viewport.isOpen() ? viewport->modelToPaperTransform() : ZnGeMatrix3d::kIdentity;
}

ErrorStatus zndbFollowCircle(ZnDbDimension& dimension, const ZnGeCircArc3d& circle) {
  if (auto* radial = ZnDbRadialDimension::cast(&dimension)) {
    const ZnGeVector3d direction = directionIn(circle, radial->pointOnCircle() - radial->center());
    return first(radial->setCenter(circle.center()),
                 radial->setPointOnCircle(circle.center() + direction * circle.radius()));
  }
  if (auto* diametric = ZnDbDiametricDimension::cast(&dimension)) {
    const ZnGeVector3d direction =
        directionIn(circle, diametric->pointOnCircle() - diametric->oppositePointOnCircle());
    return first(diametric->setPointOnCircle(circle.center() + direction * circle.radius()),
                 diametric->setOppositePointOnCircle(circle.center() - direction * circle.radius()));
  }
  return Quorl::eWrongObjectClass;
}

ErrorStatus zndbFollowPoint(ZnDbDimension& dimension, int index, const ZnGePoint3d& point) {
  auto* aligned = ZnDbAlignedDimension::cast(&dimension);
  if (!aligned) return Quorl::eWrongObjectClass;
  if (index < 0 || index > 1) return Quorl::eOutOfRange;
  const ZnGePoint3d middle = aligned->firstExtensionPoint() +
                             (aligned->secondExtensionPoint() - aligned->firstExtensionPoint()) * 0.5;
  const ErrorStatus status =
      index == 0 ? aligned->setFirstExtensionPoint(point) : aligned->setSecondExtensionPoint(point);
  if (status != Quorl::eOk) return status;
  const ZnGePoint3d middleNow = aligned->firstExtensionPoint() +
                                (aligned->secondExtensionPoint() - aligned->firstExtensionPoint()) * 0.5;
  return aligned->setDimensionLinePoint(aligned->dimensionLinePoint() + (middleNow - middle));
}
