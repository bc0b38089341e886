// What keeps a center mark's stored values honest when the user has moved, scaled, mirrored or turned its
// block reference. All work on the mark by the id of its reference, and pass over what can't be opened.
#pragma once

#include "torvi/host/database.h"
#include "torvi/host/export.h"

// Where the reference has to stand: on the circle's center, in its plane, turned by the remembered rotation.
// Without the circle it stands where it is, upright and unscaled. In a document of drawing views the plane is
// the world's. The status is that of finding the circle; the transform is written even when that fails, but
// not when there is no mark. The circle itself goes to whoever wants it.
TORVI_EXPORT Quorl::ErrorStatus computeCenterMarkTransform(ZnDbObjectId centerObject, ZnGeMatrix3d& transform,
                                                           ZnGeCircArc3d* referenceCircle = nullptr);

// A mark without its circle that was scaled takes the scale into its extensions; those that followed the
// circle get a fixed length by that.
TORVI_EXPORT void applyBlockScaleToExtensions(ZnDbObjectId centerObject);
// Takes scale and skew out of the reference of a mark without its circle.
void setBlockUpright(ZnDbObjectId centerObject);
// Mirrors the reference back and exchanges lengths and visibility of the two sides instead: it looks as
// before.
TORVI_EXPORT void undoCenterMarkMirror(ZnDbObjectId centerObject);
// Remembers how the reference is turned, as seen in the space of the edge; not while the user works in the
// viewport through which the edge is seen.
TORVI_EXPORT void updateCachedRotationFromBlock(ZnDbObjectId centerObject);
