#include "torvi/centermark/block_sync.h"

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/navigation.h"
#include "torvi/core/object_pointer.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/shapes.h"
#include "torvi/drawing/views.h"

using Quorl::ErrorStatus;

namespace {

using MarkPointer = ZnDbTorviObjectPointer<ZnDbCenterMarkObjectWrapper>;

void swapHorizontalSides(ZnDbCenterMarkObjectWrapper& mark) {
  const double startExtension = mark.horizontalStartExtension(), endExtension = mark.horizontalEndExtension();
  const double startOvershoot = mark.horizontalStartOvershoot(), endOvershoot = mark.horizontalEndOvershoot();
  mark.setHorizontalStartExtension(endExtension);
  mark.setHorizontalEndExtension(startExtension);
  mark.setHorizontalStartOvershoot(endOvershoot);
  mark.setHorizontalEndOvershoot(startOvershoot);
}

void swapVerticalSides(ZnDbCenterMarkObjectWrapper& mark) {
  const double startExtension = mark.verticalStartExtension(), endExtension = mark.verticalEndExtension();
  const double startOvershoot = mark.verticalStartOvershoot(), endOvershoot = mark.verticalEndOvershoot();
  mark.setVerticalStartExtension(endExtension);
  mark.setVerticalEndExtension(startExtension);
  mark.setVerticalStartOvershoot(endOvershoot);
  mark.setVerticalEndOvershoot(startOvershoot);
}

} // namespace

ErrorStatus computeCenterMarkTransform(ZnDbObjectId centerObject, ZnGeMatrix3d& transform,
                                       ZnGeCircArc3d* referenceCircle) {
  ZnDbHolder<ZnDbCenterMarkActionBody> body(torvi::bodyOfReference(centerObject));
  if (!body.isOpen()) return body.status();
  ZnGeCircArc3d circle;
  const ErrorStatus status = body->getRefCircle(circle);
  if (referenceCircle) *referenceCircle = circle;
  ZnGeMatrix3d base;
  if (hostDocumentKindQuery())
    base.setToTranslation(circle.center().asVector());
  else
    base = torvi::circleCoordinates(circle);
  transform =
      base * ZnGeMatrix3d::rotation(body->cachedRotation(), ZnGeVector3d::kZAxis, ZnGePoint3d::kOrigin);
  return status;
}

void applyBlockScaleToExtensions(ZnDbObjectId centerObject) {
  const MarkPointer mark(centerObject);
  if (mark.openStatus() != Quorl::eOk || mark->isAssociative()) return;
  ZnDbHolder<ZnDbBlockReference> reference;
  if (reference.openForWrite(centerObject) != Quorl::eOk) return;
  const double scale = reference->blockTransform().scale();
  if (scale == 1.0) return;
  const double left = mark->horizontalStartExtension(), right = mark->horizontalEndExtension();
  const double bottom = mark->verticalStartExtension(), top = mark->verticalEndExtension();
  mark->setHorizontalStartExtension(left * scale);
  mark->setHorizontalEndExtension(right * scale);
  mark->setVerticalStartExtension(bottom * scale);
  mark->setVerticalEndExtension(top * scale);
}

void undoCenterMarkMirror(ZnDbObjectId centerObject) {
  ZnDbHolder<ZnDbBlockReference> reference;
  if (reference.openForWrite(centerObject) != Quorl::eOk) return;
  const MarkPointer mark(centerObject);
  if (mark.openStatus() != Quorl::eOk || !torvi::isMirrored(centerObject)) return;
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
  reference->blockTransform().getCoordSystem(origin, x, y, z);
  if (x.dotProduct(ZnGeVector3d::kXAxis) < 0.0) {
    reference->transformBy(ZnGeMatrix3d::mirroring(ZnGePlane(origin, x)));
    swapHorizontalSides(*mark);
  } else if (y.dotProduct(ZnGeVector3d::kYAxis) < 0.0) {
    reference->transformBy(ZnGeMatrix3d::mirroring(ZnGePlane(origin, y)));
    swapVerticalSides(*mark);
  }
}

void updateCachedRotationFromBlock(ZnDbObjectId centerObject) {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject);
  ZnDbHolder<ZnDbCenterMarkActionBody> body;
  if (!reference.isOpen() || body.openForWrite(torvi::bodyOfReference(centerObject)) != Quorl::eOk) return;
  const ZnDbObjectId viewport = body->getDependentViewportId();
  double rotation = reference->rotation();
  if (!viewport.isNull()) {
    // A reference of its own tells the rotation in the edge's space: the stored one is not touched.
    ZnDbBlockReference turned;
    turned.setBlockTransform(torvi::modelToPaper(viewport).inverse() * reference->blockTransform());
    rotation = turned.rotation();
  }
  if (!viewport.isNull() && viewport == torvi::activeViewportId()) return;
  if (rotation != body->cachedRotation()) body->setCachedRotation(rotation);
}
