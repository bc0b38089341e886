#include "torvi/centermark/block_sync.h"

#include <cmath>

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/navigation.h"
#include "torvi/core/object_pointer.h"
#include "torvi/core/reference_transform.h"
#include "torvi/core/tolerance.h"
#include "torvi/drawing/blocks.h"
#include "torvi/drawing/shapes.h"
#include "torvi/drawing/views.h"

using Quorl::ErrorStatus;

namespace {

using MarkPointer = ZnDbTorviObjectPointer<ZnDbCenterMarkObjectWrapper>;

// Of two opposite lines each takes what the other had.
void exchangeSides(ZnDbCenterMarkObjectWrapper& mark, ZnCenterMarkSubEntType one,
                   ZnCenterMarkSubEntType other) {
  struct Side {
    double extension, overshoot;
    bool visible;
  };
  const auto sideOf = [&](ZnCenterMarkSubEntType line) {
    return Side{mark.getExtensionLineLength(line), mark.getOvershoot(line), mark.getSubEntVisibility(line)};
  };
  const auto give = [&](ZnCenterMarkSubEntType line, const Side& side) {
    mark.setExtension(line, side.extension);
    mark.setOvershoot(line, side.overshoot);
    if (mark.getSubEntVisibility(line) != side.visible) mark.setSubEntVisibility(line, side.visible);
  };
  const Side ofOne = sideOf(one), ofOther = sideOf(other);
  give(one, ofOther);
  give(other, ofOne);
}

// Whether the circle that the mark follows looks the other way than the frame. Among views it is no matter
// which way a circle looks.
bool looksAway(const ZnDbCenterMarkActionBody& body, const ZnGeMatrix3d& frame, ZnGeVector3d& normal) {
  ZnGeCircArc3d circle;
  if (hostDocumentKindQuery() || !body.isAssociative(false) || body.getRefCircle(circle) != Quorl::eOk)
    return false;
  normal = circle.normal();
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
  frame.getCoordSystem(origin, x, y, z);
  return z.dotProduct(normal) < -ZnGeContext::gTol.equalVector() * z.length();
}

// How the reference is turned, as seen in the space of the edge. A circle that was mirrored there looks the
// other way, and the mark turns over with it: about the upright of its own space, where it may be level, and
// not about that of the edge's.
double rotationSeenThrough(ZnDbObjectId viewport, const ZnDbBlockReference& reference,
                           const ZnDbCenterMarkActionBody& body) {
  ZnDbBlockReference seen; // of its own: the stored one is not touched
  ZnGeMatrix3d standing = reference.blockTransform();
  if (ZnGeVector3d normal; looksAway(body, standing, normal))
    standing = ZnGeMatrix3d::planeToWorld(normal) *
               ZnGeMatrix3d::rotation(reference.rotation(), ZnGeVector3d::kZAxis, ZnGePoint3d::kOrigin);
  seen.setBlockTransform(torvi::modelToPaper(viewport).inverse() * standing);
  return seen.rotation();
}

// Without its circle it stands where it was left, upright.
bool frameAsLeft(const ZnDbCenterMarkActionBody& body, ZnGeMatrix3d& frame) {
  ZnDbHolder<ZnDbBlockReference> reference(body.centerObjectId());
  if (body.isAssociative(false) || !reference.isOpen()) return false;
  frame = torvi::rigidPartOf(reference->blockTransform());
  return true;
}

} // namespace

ErrorStatus computeCenterMarkTransform(ZnDbObjectId centerObject, ZnGeMatrix3d& transform,
                                       ZnGeCircArc3d* referenceCircle) {
  ZnDbHolder<ZnDbCenterMarkActionBody> body(torvi::bodyOfReference(centerObject));
  if (!body.isOpen()) return body.status();
  ZnGeCircArc3d circle;
  const ErrorStatus status = body->getRefCircle(circle);
  if (referenceCircle) *referenceCircle = circle;
  const bool isAmongViews = hostDocumentKindQuery();
  if (!isAmongViews && frameAsLeft(*body, transform)) return status;
  const ZnGeMatrix3d base =
      isAmongViews ? ZnGeMatrix3d::translation(circle.center().asVector()) : torvi::circleCoordinates(circle);
  transform =
      base * ZnGeMatrix3d::rotation(body->cachedRotation(), ZnGeVector3d::kZAxis, ZnGePoint3d::kOrigin);
  return status;
}

void applyBlockScaleToExtensions(ZnDbObjectId centerObject) {
  const MarkPointer mark(centerObject);
  if (mark.openStatus() != Quorl::eOk || mark->isAssociative()) return;
  ZnDbHolder<ZnDbBlockReference> reference;
  if (reference.openForWrite(centerObject) != Quorl::eOk) return;
  const double scale = torvi::scaleOf(reference->blockTransform());
  if (scale == 1.0) return;
  const double left = mark->horizontalStartExtension(), right = mark->horizontalEndExtension();
  const double bottom = mark->verticalStartExtension(), top = mark->verticalEndExtension();
  mark->setHorizontalStartExtension(left * scale);
  mark->setHorizontalEndExtension(right * scale);
  mark->setVerticalStartExtension(bottom * scale);
  mark->setVerticalEndExtension(top * scale);
}

// The circle of such a mark is read from the reference, so it is set upright before anything is measured by
// it: what is drawn this time is to the last digit what is drawn the next.
void setBlockUpright(ZnDbObjectId centerObject) {
  ZnDbHolder<ZnDbBlockReference> reference;
  const MarkPointer mark(centerObject);
  if (mark.openStatus() != Quorl::eOk || mark->isAssociative() ||
      reference.openForWrite(centerObject) != Quorl::eOk)
    return;
  const ZnGeMatrix3d upright = torvi::rigidPartOf(reference->blockTransform());
  if (!torvi::areExactlyEqual(upright, reference->blockTransform())) reference->setBlockTransform(upright);
}

// Turning one axis round and exchanging what lies on it leaves the look as it is, whichever axis that is.
// That of the plane has nothing on it and is turned if the circle was mirrored too and looks that way; else
// the one that points backwards; where neither does, or rounding would decide, the vertical one.
void undoCenterMarkMirror(ZnDbObjectId centerObject) {
  ZnDbHolder<ZnDbBlockReference> reference;
  if (reference.openForWrite(centerObject) != Quorl::eOk) return;
  const MarkPointer mark(centerObject);
  if (mark.openStatus() != Quorl::eOk || !torvi::isMirrored(centerObject)) return;
  ZnGePoint3d origin;
  ZnGeVector3d x, y, z;
  reference->blockTransform().getCoordSystem(origin, x, y, z);
  ZnDbHolder<ZnDbCenterMarkActionBody> body(mark->actionBody());
  if (ZnGeVector3d normal; body.isOpen() && looksAway(*body, reference->blockTransform(), normal)) {
    reference->setBlockTransform({origin, x, y, -z});
  } else if (x.dotProduct(ZnGeVector3d::kXAxis) < -ZnGeContext::gTol.equalVector() * x.length()) {
    reference->setBlockTransform({origin, -x, y, z});
    exchangeSides(*mark, eLeftLine, eRightLine);
  } else {
    reference->setBlockTransform({origin, x, -y, z});
    exchangeSides(*mark, eBottomLine, eTopLine);
  }
}

void updateCachedRotationFromBlock(ZnDbObjectId centerObject) {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject);
  ZnDbHolder<ZnDbCenterMarkActionBody> body;
  if (!reference.isOpen() || body.openForWrite(torvi::bodyOfReference(centerObject)) != Quorl::eOk) return;
  const ZnDbObjectId viewport = body->getDependentViewportId();
  if (!viewport.isNull() && viewport == torvi::activeViewportId()) return;
  const double rotation =
      viewport.isNull() ? reference->rotation() : rotationSeenThrough(viewport, *reference, *body);
  // What the way through a view has lost is no turn: taken over, it would add up from one evaluation to the
  // next.
  const double turned = std::remainder(rotation - body->cachedRotation(), torvi::kFullTurn);
  if (std::fabs(turned) > kAngleRounding) body->setCachedRotation(rotation);
}
