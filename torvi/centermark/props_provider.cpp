#include "torvi/centermark/props_provider.h"

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/object_wrapper.h"
#include "torvi/core/object_pointer.h"
#include "torvi/drawing/linetypes.h"
#include "torvi/style/set_layer.h"
#include "torvi/style/style.h"

using torvi::isExtensionLine;

ZnDbCenterMarkPropsProvider::ZnDbCenterMarkPropsProvider(ZnDbObjectId centerObject)
    : centerObject_(centerObject)
    , database_(centerObject.isNull() ? zndbHostApplicationServices()->workingDatabase()
                                      : centerObject.database()) {}

ZnDbCenterMarkPropsProvider::ZnDbCenterMarkPropsProvider(ZnDbObjectId centerObject, double refCircleRadius)
    : ZnDbCenterMarkPropsProvider(centerObject) {
  refCircleRadius_ = refCircleRadius;
}

const ZnDbCenterMarkObjectWrapper* ZnDbCenterMarkPropsProvider::mark() const {
  if (centerObject_.isErased()) return nullptr;
  if (!mark_) mark_ = std::make_unique<ZnDbTorviObjectPointer<ZnDbCenterMarkObjectWrapper>>(centerObject_);
  return mark_->object();
}

ZnDbObjectId ZnDbCenterMarkPropsProvider::linetypeId() const {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject_);
  return reference.isOpen() ? reference->linetypeId() : torvi::centerLinetypeId(database_);
}

double ZnDbCenterMarkPropsProvider::linetypeScale() const {
  ZnDbHolder<ZnDbBlockReference> reference(centerObject_);
  return reference.isOpen() ? reference->linetypeScale() : ZnTorviStyle::getCenterLinetypeScale();
}

ZnDbObjectId ZnDbCenterMarkPropsProvider::layerId() const {
  ZnDbHolder<ZnDbEntity> entity(centerObject_);
  if (entity.isOpen()) return entity->layerId();
  ZnDbObjectId id;
  return ZnTorviSetLayer::getCenterLayerId(database_, id) == Quorl::eOk ? id : ZnDbObjectId();
}

ZnString ZnDbCenterMarkPropsProvider::crossHairLengthExpression() const {
  return mark() ? mark()->crossHairLengthExpression() : ZnTorviStyle::getCrossHairLengthExpression();
}

ZnString ZnDbCenterMarkPropsProvider::crossHairGapExpression() const {
  return mark() ? mark()->crossHairGapExpression() : ZnTorviStyle::getCrossHairGapExpression();
}

double ZnDbCenterMarkPropsProvider::refCircleRadius() const {
  if (refCircleRadius_) return *refCircleRadius_;
  return mark() ? mark()->getRefCircleRadius() : 0.0;
}

// Reads the stored value, so that one that follows the circle is resolved against the caller's radius.
double ZnDbCenterMarkPropsProvider::extensionLength(ZnCenterMarkSubEntType type, double radius) const {
  ZnDbHolder<ZnDbCenterMarkActionBody> body(mark() ? mark()->actionBody() : ZnDbObjectId());
  ZnDbEvalVariant value;
  double stored = 0.0;
  if (!body.isOpen() ||
      body->getValueParam(ZnDbCenterMarkActionBody::extensionParamName(type), value) != Quorl::eOk ||
      value.getValue(stored) != Quorl::eOk)
    return 0.0;
  return body->getResolvedExtensionLength(stored, type, radius);
}

double ZnDbCenterMarkPropsProvider::extension(ZnCenterMarkSubEntType type) const {
  if (!isExtensionLine(type)) return 0.0;
  return mark() ? mark()->getExtensionLineLength(type) : 0.0;
}

double ZnDbCenterMarkPropsProvider::overshoot(ZnCenterMarkSubEntType type) const {
  if (!isExtensionLine(type)) return 0.0;
  return mark() ? mark()->getOvershoot(type) : 0.0;
}
