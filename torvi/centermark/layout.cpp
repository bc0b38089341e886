#include "torvi/centermark/layout.h"

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/block_sync.h"
#include "torvi/centermark/mark_curves.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/centermark/props_provider.h"
#include "torvi/core/navigation.h"
#include "torvi/core/object_pointer.h"
#include "torvi/drawing/linetypes.h"

using Quorl::ErrorStatus;

namespace {
using MarkPointer = ZnDbTorviObjectPointer<ZnDbCenterMarkObjectWrapper>;
}

ErrorStatus ZnDbCenterMarkLayout::createEntities(ZnArray<ZnDbEntity*>& entities, ZnArray<ZnString>&) {
  for (int type = eCrossHairHorizontalLine; type <= eTopLine; ++type) entities.append(new ZnDbLine);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkLayout::adjustEntities(const ZnArray<ZnDbEntity*>& entities,
                                                 const ZnArray<ZnString>&) {
  ZnDbDatabase* database =
      centerObject().isNull() ? zndbHostApplicationServices()->workingDatabase() : centerObject().database();
  const ZnDbObjectId continuous = torvi::crossHairLinetypeId(database);
  for (int type = eCrossHairHorizontalLine; type <= eCrossHairVerticalLine && type < entities.length();
       ++type)
    if (entities[type]) entities[type]->setLinetype(continuous, true);
  const MarkPointer mark(centerObject());
  if (mark.openStatus() != Quorl::eOk) return Quorl::eOk;
  for (int i = 0; i < entities.length(); ++i)
    if (entities[i] && !mark->getSubEntVisibility(static_cast<ZnCenterMarkSubEntType>(i)))
      entities[i]->setVisibility(ZnDb::kInvisible, true);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkLayout::evaluateGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>& keys) {
  applyBlockScaleToExtensions(centerObject());
  undoCenterMarkMirror(centerObject());
  // What has gone into the extensions must not stay on the reference, also where that keeps its rotation.
  setBlockUpright(centerObject());
  if (!hostDocumentKindQuery()) updateCachedRotationFromBlock(centerObject());
  compareGeometry(curves, keys);
  if (curves.isEmpty()) return Quorl::eInvalidInput;
  // For read: somebody may look at the body, and the radius is the action's.
  ZnDbHolder<ZnDbCenterMarkActionBody> body(torvi::bodyOfReference(centerObject()));
  if (body.isOpen() && body->isAssociative(false)) body->setCachedCircleRadius(referenceCircle_.radius());
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkLayout::compareGeometry(ZnArray<ZnGeCurve3d*>& curves, ZnArray<ZnString>&) {
  const ErrorStatus status = computeCenterMarkTransform(centerObject(), transform_, &referenceCircle_);
  if (status != Quorl::eOk) return status;
  const ZnDbCenterMarkPropsProvider provider(centerObject(), referenceCircle_.radius());
  return generateCenterMarkCurves(curves, provider, transform_, referenceCircle_);
}
