#include "torvi/core/object_wrapper.h"

#include "torvi/core/action_body.h"
#include "torvi/core/evaluation.h"
#include "torvi/core/navigation.h"
#include "torvi/drawing/ask.h"
#include "torvi/drawing/blocks.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;
using Body = ZnDbTorviActionBody;
using Reference = ZnDbBlockReference;
using torvi::ask;
using torvi::change;

ZnDbTorviObjectWrapper::ZnDbTorviObjectWrapper(ZnDbObjectId centerObject)
    : found_(torvi::centerObjectOf(centerObject)) {}

ZnDbTorviType ZnDbTorviObjectWrapper::getCenterTypeFromActionBody(ZnDbObjectId bodyId) {
  const torvi::Kind* kind = torvi::kindOfBody(bodyId);
  return kind ? kind->type : kTorviNone;
}

ZnDbTorviType ZnDbTorviObjectWrapper::getCenterType(ZnDbObjectId centerObject) {
  return torvi::centerObjectOf(centerObject).kind;
}

bool ZnDbTorviObjectWrapper::isCenterObject(ZnDbObjectId centerObject) {
  ZnArray<ZnDbObjectId> bodies;
  torvi::appendBodiesOn(centerObject, false, bodies);
  for (const ZnDbObjectId id : bodies)
    if (ZnDbHolder<Body>(id, true).isOpen()) return true;
  return false;
}

bool ZnDbTorviObjectWrapper::isAssociative() const {
  return ask<Body>(actionBody(), false, &Body::isAssociative, false);
}

bool ZnDbTorviObjectWrapper::isFullyAssociative() const {
  return ask<Body>(actionBody(), false, &Body::isAssociative, true);
}

ErrorStatus ZnDbTorviObjectWrapper::breakAssociativity() {
  return change<Body>(actionBody(), [](Body& body) { return body.breakAssociativity(); });
}

bool ZnDbTorviObjectWrapper::isExplicitlyDeassociatived() const {
  return ask<Body>(actionBody(), false, &Body::isExplicitlyDeassociatived);
}

ErrorStatus ZnDbTorviObjectWrapper::setIsExplicitlyDeassociatived(bool value) {
  return change<Body>(actionBody(), &Body::setIsExplicitlyDeassociatived, value);
}

bool ZnDbTorviObjectWrapper::associationToBeBroken() const {
  ZnDbHolder<Body> body;
  return body.openForWrite(actionBody()) == Quorl::eOk && body->associationToBeBroken();
}

ErrorStatus ZnDbTorviObjectWrapper::setAssociationToBeBroken(bool value) {
  return change<Body>(actionBody(), [=](Body& body) {
    body.setAssociationToBeBroken(value);
    return Quorl::eOk;
  });
}

ErrorStatus ZnDbTorviObjectWrapper::setCachedAssociateStatus(bool associative) {
  return change<Body>(actionBody(), &Body::setCachedAssociateStatus, associative);
}

int ZnDbTorviObjectWrapper::edgeRefCount() const { return ask<Body>(actionBody(), 0, &Body::edgeRefCount); }

ErrorStatus ZnDbTorviObjectWrapper::getEdgeRefs(ZnArray<ZnDbEdgeRef>& edges) const {
  return ask<Body>(actionBody(), Quorl::eOk, &Body::getEdgeRefs, edges);
}

ErrorStatus ZnDbTorviObjectWrapper::getAssociatedEntitiesIds(ZnArray<ZnDbObjectId>& ids) const {
  return ask<Body>(actionBody(), Quorl::eOk, &Body::getAssociatedEntitiesIds, ids);
}

ZnDbObjectId ZnDbTorviObjectWrapper::getDependentViewportId() const {
  return ask<Body>(actionBody(), ZnDbObjectId(), &Body::getDependentViewportId);
}

double ZnDbTorviObjectWrapper::cachedViewportScale() const {
  return ask<Body>(actionBody(), 0.0, &Body::cachedViewportScale);
}

bool ZnDbTorviObjectWrapper::doesActionMatchCurrentGeometry() const {
  return ask<Body>(actionBody(), true, &Body::doesActionMatchCurrentGeometry);
}

void ZnDbTorviObjectWrapper::explicitlyEvaluateCenterObject() {
  torvi::evaluateAlone(ZnDbAssocActionBody::parentAction(actionBody()));
}

ErrorStatus ZnDbTorviObjectWrapper::supressCenterEvaluation() {
  return change<Body>(actionBody(), &Body::setStatus, kSuppressedAssocStatus, true, false);
}

ErrorStatus ZnDbTorviObjectWrapper::unSupressCenterEvaluation() {
  return change<Body>(actionBody(), [](Body& body) {
    const ErrorStatus status = body.setStatus(kIsUpToDateAssocStatus, true, false);
    return status == Quorl::eOk ? body.setStatus(kChangedDirectlyAssocStatus, true, false) : status;
  });
}

bool ZnDbTorviObjectWrapper::isCenterEvaluationSupressed() const {
  return ask<Body>(actionBody(), false,
                   [](const Body& body) { return body.status() == kSuppressedAssocStatus; });
}

ZnDbObjectId ZnDbTorviObjectWrapper::styleDepId() const {
  return ask<Body>(actionBody(), ZnDbObjectId(), &Body::styleDepId);
}

ErrorStatus ZnDbTorviObjectWrapper::setStyleDepId(ZnDbObjectId id) {
  return change<Body>(actionBody(), &Body::setStyleDepId, id);
}

ErrorStatus ZnDbTorviObjectWrapper::addDependencyToStyle(ZnDbObjectId styleId) {
  return change<Body>(actionBody(), &Body::addDependencyToStyle, styleId);
}

ErrorStatus ZnDbTorviObjectWrapper::resetExtensions() {
  return change<Body>(actionBody(), &Body::resetExtensions);
}

ErrorStatus ZnDbTorviObjectWrapper::resetOvershoots() {
  return change<Body>(actionBody(), &Body::resetOvershoots);
}

double ZnDbTorviObjectWrapper::autoMatchExtension() const {
  return ask<Body>(actionBody(), 0.0, [](const Body&) { return Body::autoMatchExtension(); });
}

bool ZnDbTorviObjectWrapper::isAutoMatchExtension(double value) const {
  return ask<Body>(actionBody(), false, [=](const Body&) { return Body::isAutoMatchExtension(value); });
}

ErrorStatus ZnDbTorviObjectWrapper::getCenterEntitesIds(ZnArray<ZnDbObjectId>& ids) const {
  return ask<Body>(actionBody(), Quorl::eOk, [&](const Body& body) {
    return torvi::curvesOfReference(body.centerObjectId(), ids, false);
  });
}

ErrorStatus ZnDbTorviObjectWrapper::getCenterObjGeometry(ZnArray<ZnGeCurve3d*>& curves) const {
  return ask<Body>(actionBody(), Quorl::eOk,
                   [&](const Body& body) { return body.getCenterObjGeometry(curves); });
}

ZnDbObjectId ZnDbTorviObjectWrapper::getOutputEdge(const ZnString& key) const {
  return ask<Body>(actionBody(), ZnDbObjectId(), &Body::getOutputEdge, key);
}

ErrorStatus ZnDbTorviObjectWrapper::setOutputEdge(const ZnString& key, ZnDbObjectId id) {
  return change<Body>(actionBody(), &Body::setOutputEdge, key, id);
}

ErrorStatus ZnDbTorviObjectWrapper::renameOutputEdgeKey(const ZnString& oldKey, const ZnString& newKey) {
  return change<Body>(actionBody(), &Body::renameOutputEdgeKey, oldKey, newKey);
}

ErrorStatus ZnDbTorviObjectWrapper::getOutputEdgeKeys(ZnArray<ZnString>& keys) const {
  ZnDbHolder<Body> body(actionBody());
  if (body.isOpen()) body->getOutputEdgeKeys(keys);
  return Quorl::eOk;
}

ZnString ZnDbTorviObjectWrapper::subentLineType() const {
  ZnDbHolder<Body> body(actionBody());
  return body.isOpen() ? body->subentLineType() : ZnTorviStyle::getCenterLineTypeName();
}

int ZnDbTorviObjectWrapper::subentLineWeight() const {
  return ask<Body>(actionBody(), int{ZnDb::kLineWeightByLayer}, &Body::subentLineWeight);
}

double ZnDbTorviObjectWrapper::subentLinetypeScale() const {
  ZnDbHolder<Body> body(actionBody());
  return body.isOpen() ? body->subentLinetypeScale() : ZnTorviStyle::getCenterLinetypeScale();
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentLineType(const ZnString& name) {
  return change<Body>(actionBody(), &Body::setSubentLineType, name);
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentLineWeight(int weight) {
  return change<Body>(actionBody(), &Body::setSubentLineWeight, weight);
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentLinetypeScale(double scale) {
  return change<Body>(actionBody(), &Body::setSubentLinetypeScale, scale);
}

int ZnDbTorviObjectWrapper::colorIndex() const {
  constexpr int kByLayerColor = 256;
  return ask<Reference>(centerObjId(), kByLayerColor, &Reference::colorIndex);
}

ZnString ZnDbTorviObjectWrapper::linetype() const {
  ZnDbHolder<Reference> reference(centerObjId());
  return reference.isOpen() ? reference->linetype() : ZnTorviStyle::getCenterLineTypeName();
}

int ZnDbTorviObjectWrapper::lineWeight() const {
  return ask<Reference>(centerObjId(), ZnDb::kLineWeightByLayer, &Reference::lineWeight);
}

double ZnDbTorviObjectWrapper::linetypeScale() const {
  ZnDbHolder<Reference> reference(centerObjId());
  return reference.isOpen() ? reference->linetypeScale() : ZnTorviStyle::getCenterLinetypeScale();
}

ZnCmColor ZnDbTorviObjectWrapper::subentColor() const {
  return ask<Reference>(centerObjId(), ZnCmColor(), &Reference::color);
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentColor(const ZnCmColor& color) {
  return change<Reference>(centerObjId(), &Reference::setColor, color, true);
}

ErrorStatus ZnDbTorviObjectWrapper::setSubentColorIndex(int index) {
  return change<Reference>(centerObjId(), &Reference::setColorIndex, index, true);
}

ZnGeMatrix3d ZnDbTorviObjectWrapper::blockTransform() const {
  return ask<Reference>(centerObjId(), ZnGeMatrix3d(), &Reference::blockTransform);
}
