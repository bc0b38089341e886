#include <memory>

#include "torvi/core/action_body.h"
#include "torvi/core/object_pointer.h"
#include "torvi/dbutils/lyx_utils.h"
#include "torvi/pattern/action_body.h"

bool ZnTorviLyxUtils::isCenterObject(ZnDbObjectId id, ZnDbTorviType type) {
  ZnResBufList context;
  return isCenterObject(id, type, context);
}

bool ZnTorviLyxUtils::isCenterObject(ZnDbObjectId id, ZnDbTorviType type, ZnResBufList& context) {
  ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(id);
  return wrapper.openStatus() == Quorl::eOk && isCenterObject(wrapper.object(), type, context);
}

bool ZnTorviLyxUtils::isCenterObject(const ZnDbTorviObjectWrapper* wrapper, ZnDbTorviType type,
                                     ZnResBufList& context) {
  if (!wrapper) return false;
  bool isFullPCD = false, showCenterMark = false;
  if (type == kCenterMarkPattern && wrapper->centerType() == kCenterMarkPattern &&
      getTorviPatternContext(wrapper, isFullPCD, showCenterMark)) {
    constexpr int kShort = 5003, kEnd = 5000;
    context.reset(znutBuildList(kShort, int(isFullPCD), kShort, int(showCenterMark), kEnd));
  }
  return true;
}

bool ZnTorviLyxUtils::isCenterObjectOfType(ZnDbObjectId id, ZnDbTorviType type) {
  ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(id);
  if (wrapper.openStatus() != Quorl::eOk) return false;
  return type == kTorviAny || wrapper->centerType() == type;
}

namespace {

// The one reference of the block, or null when it has none or several.
ZnDbObjectId onlyReferenceOf(const ZnDbBlockTableRecord& block) {
  ZnDbObjectId only;
  block.countReferences(only);
  return only;
}

} // namespace

bool ZnTorviLyxUtils::isCenterObjectCurve(const ZnDbCurve* curve, ZnDbObjectId& id, ZnDbTorviType& type) {
  if (!curve) return false;
  for (ZnDbObjectId owner = curve->ownerId(); !owner.isNull();) {
    if (!owner.isDerivedFrom(ZnDbBlockTableRecord::desc())) return false;
    ZnDbHolder<ZnDbBlockTableRecord> block(owner);
    if (!block.isOpen()) return false;
    const ZnDbObjectId only = onlyReferenceOf(*block);
    if (only.isNull()) return false;
    ZnDbTorviObjectPointer<ZnDbTorviObjectWrapper> wrapper(only);
    if (wrapper.openStatus() == Quorl::eOk) {
      id = only;
      type = wrapper->centerType();
      return true;
    }
    ZnDbHolder<ZnDbBlockReference> reference(only);
    if (!reference.isOpen()) return false;
    owner = reference->ownerId();
  }
  return false;
}

bool ZnTorviLyxUtils::getTorviPatternContext(const ZnDbTorviObjectWrapper* wrapper, bool& isFullPCD,
                                             bool& showCenterMark) {
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body(wrapper ? wrapper->actionBody() : ZnDbObjectId());
  if (!body.isOpen()) return false;
  isFullPCD = body->isFullPCD();
  showCenterMark = body->showCenterMark();
  return true;
}

bool ZnTorviLyxUtils::isCenterMirrored(ZnDbObjectId id) {
  ZnDbHolder<ZnDbBlockReference> reference(id);
  return reference.isOpen() && reference->blockTransform().det() < 0.0;
}

bool ZnTorviLyxUtils::isAnyCenterMarksOnLayer(ZnDbLayerTableRecord* layer,
                                              const ZnArray<ZnDbObjectId>& actions) {
  if (!layer) return false;
  for (const ZnDbObjectId actionId : actions) {
    ZnDbHolder<ZnDbAssocAction> action(actionId);
    if (!action.isOpen() ||
        ZnDbTorviObjectWrapper::getCenterTypeFromActionBody(action->actionBody()) != kCenterMark)
      continue;
    ZnDbHolder<ZnDbEntity> center(getTorviFromActionBodyId(action->actionBody()));
    if (center.isOpen() && center->layerId() == layer->objectId()) return true;
  }
  return false;
}
