#include "quorl/db/entity/circular_curve.h"

#include "quorl/db/entity/plane_image.h"

using Quorl::ErrorStatus;

ZnDbCircularCurve::ZnDbCircularCurve(const ZnGePoint3d& center, const ZnGeVector3d& normal, double radius) {
  setCenter(center);
  setNormal(normal);
  setRadius(radius);
}

ErrorStatus ZnDbCircularCurve::setCenter(const ZnGePoint3d& center) {
  assertWriteEnabled();
  return ZnDbRule::take(center_, center);
}

ErrorStatus ZnDbCircularCurve::setRadius(double radius) {
  assertWriteEnabled();
  return ZnDbRule::take(radius_, radius, ZnDbRule::atLeast(0.0));
}

ErrorStatus ZnDbCircularCurve::setNormal(const ZnGeVector3d& normal) {
  assertWriteEnabled();
  return Quorl::takeNormal(normal, normal_);
}

ErrorStatus ZnDbCircularCurve::transformBy(const ZnGeMatrix3d& transform) {
  assertWriteEnabled();
  ZnDbPlaneImage image;
  const ErrorStatus status = zndbUniformPlaneImage(normal_, transform, image);
  if (status != Quorl::eOk) return status;
  if (image.turn != 0.0) turned(image.turn);
  center_ = transform * center_;
  normal_ = image.normal;
  radius_ *= image.scale;
  return Quorl::eOk;
}

ErrorStatus ZnDbCircularCurve::getPlane(ZnGePlane& plane) const {
  plane.set(center_, normal_);
  return Quorl::eOk;
}
