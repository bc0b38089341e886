// What an affine map makes of the plane of an entity that is stored by its normal and by lengths, angles or
// coordinates in that plane.
#pragma once

#include "quorl/base/error_status.h"
#include "quorl/ge/matrix3d.h"

struct ZnDbPlaneImage {
  ZnGeVector3d normal;   // unit; chosen so that the sense of rotation in the plane stays, mirrored or not
  double scale = 1.0;    // factor on lengths in the plane, when uniform
  double turn = 0.0;     // to be added to angles from the plane's x axis, when uniform
  bool isUniform = true; // whether circles in the plane stay circles
};

// eDegenerateGeometry for a map that flattens the plane, eInvalidInput for one that is not finite.
Quorl::ErrorStatus zndbPlaneImage(const ZnGeVector3d& normal, const ZnGeMatrix3d& transform,
                                  ZnDbPlaneImage& image);

// The same for an entity that only a uniform map keeps; eNonUniformScale for others.
Quorl::ErrorStatus zndbUniformPlaneImage(const ZnGeVector3d& normal, const ZnGeMatrix3d& transform,
                                         ZnDbPlaneImage& image);
