#include "quorl/db/entity/plane_image.h"

#include <algorithm>
#include <cmath>

#include "quorl/db/core/geometry_checks.h"

// With the images x' and y' of the plane's axes, x' cross y' is the one normal about which the image of a
// counterclockwise turn is counterclockwise again. Angles and bulges then keep their signs under mirroring.
Quorl::ErrorStatus zndbPlaneImage(const ZnGeVector3d& normal, const ZnGeMatrix3d& transform,
                                  ZnDbPlaneImage& image) {
  if (!Quorl::isFinite(transform)) return Quorl::eInvalidInput;
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
  ZnGeMatrix3d::planeToWorld(normal).getCoordSystem(origin, x, y, z);
  const ZnGeVector3d imageX = transform * x;
  const ZnGeVector3d imageY = transform * y;
  const double lengthX = imageX.length();
  const double lengthY = imageY.length();
  const ZnGeVector3d area = imageX.crossProduct(imageY);
  if (area.length() <= ZnGe::kSingularRatio * lengthX * lengthY) return Quorl::eDegenerateGeometry;

  const double limit = ZnGeContext::gTol.equalVector();
  image.isUniform = std::fabs(lengthX - lengthY) <= limit * std::max(lengthX, lengthY) &&
                    std::fabs(imageX.dotProduct(imageY)) <= limit * lengthX * lengthY;
  image.scale = lengthX;
  // Moving alone must not wear a stored normal down by rounding.
  const bool axesStay = imageX.x == x.x && imageX.y == x.y && imageX.z == x.z && imageY.x == y.x &&
                        imageY.y == y.y && imageY.z == y.z;
  image.normal = axesStay ? normal : area / area.length();
  image.turn = axesStay ? 0.0 : image.normal.perpVector().angleTo(imageX, image.normal);
  return Quorl::eOk;
}

Quorl::ErrorStatus zndbUniformPlaneImage(const ZnGeVector3d& normal, const ZnGeMatrix3d& transform,
                                         ZnDbPlaneImage& image) {
  const Quorl::ErrorStatus status = zndbPlaneImage(normal, transform, image);
  return status == Quorl::eOk && !image.isUniform ? Quorl::eNonUniformScale : status;
}
