#include "torvi/centerline/object_wrapper.h"

#include "torvi/centerline/action_body.h"
#include "torvi/core/action_body_utils.h"

using Quorl::ErrorStatus;

namespace {

using Body = ZnDbCenterLineActionBody;

// The body's answer, or the neutral one when it can't be opened. Reading endings renews a working copy, so
// the body is no constant.
template<class Result, class Ask> Result ask(ZnDbObjectId bodyId, const Result& absent, Ask&& question) {
  ZnDbHolder<Body> body(bodyId);
  return body.isOpen() ? question(*body) : absent;
}

template<class Change> ErrorStatus change(ZnDbObjectId bodyId, Change&& doIt) {
  ZnDbHolder<Body> body;
  const ErrorStatus status = body.openForWrite(bodyId);
  return status == Quorl::eOk ? doIt(*body) : status;
}

} // namespace

double ZnDbCenterLineObjectWrapper::startExtension() const {
  return ask(actionBody(), 0.0, [](const Body& body) { return body.startExtension(); });
}

double ZnDbCenterLineObjectWrapper::endExtension() const {
  return ask(actionBody(), 0.0, [](const Body& body) { return body.endExtension(); });
}

double ZnDbCenterLineObjectWrapper::startOvershoot() const {
  return ask(actionBody(), 0.0, [](const Body& body) { return body.startOvershoot(); });
}

double ZnDbCenterLineObjectWrapper::endOvershoot() const {
  return ask(actionBody(), 0.0, [](const Body& body) { return body.endOvershoot(); });
}

ErrorStatus ZnDbCenterLineObjectWrapper::setStartExtension(double value) {
  return change(actionBody(), [value](Body& body) { return body.setStartExtension(value); });
}

ErrorStatus ZnDbCenterLineObjectWrapper::setEndExtension(double value) {
  return change(actionBody(), [value](Body& body) { return body.setEndExtension(value); });
}

ErrorStatus ZnDbCenterLineObjectWrapper::setStartOvershoot(double value) {
  return change(actionBody(), [value](Body& body) { return body.setStartOvershoot(value); });
}

ErrorStatus ZnDbCenterLineObjectWrapper::setEndOvershoot(double value) {
  return change(actionBody(), [value](Body& body) { return body.setEndOvershoot(value); });
}

int ZnDbCenterLineObjectWrapper::edgeRefDirEnding(int index) const {
  ZnDbHolder<Body> body(actionBody());
  return body.isOpen() ? body->edgeRefDirEnding(index) : static_cast<int>(body.status());
}

ErrorStatus ZnDbCenterLineObjectWrapper::edgeRefDirEndingArray(ZnArray<int>& endings) const {
  ZnDbHolder<Body> body(actionBody());
  return body.isOpen() ? body->edgeRefDirEndingArray(endings) : body.status();
}

ErrorStatus ZnDbCenterLineObjectWrapper::setEdgeRefDirEnding(int index, int value) {
  return change(actionBody(), [&](Body& body) { return body.setEdgeRefDirEnding(index, value); });
}

ErrorStatus ZnDbCenterLineObjectWrapper::setEdgeRefDirEndingArray(const ZnArray<int>& endings) {
  return change(actionBody(), [&](Body& body) { return body.setEdgeRefDirEndingArray(endings); });
}

double ZnDbCenterLineObjectWrapper::cachedCenterLineLength() const {
  return ask(actionBody(), 0.0, [](const Body& body) { return body.cachedCenterLineLength(); });
}

ZnGeVector3d ZnDbCenterLineObjectWrapper::cachedCenterLineDirection() const {
  return ask(actionBody(), ZnGeVector3d::kXAxis,
             [](const Body& body) { return body.cachedCenterLineDirection(); });
}

ErrorStatus ZnDbCenterLineObjectWrapper::setCachedCenterLineLength(double length) {
  return change(actionBody(), [length](Body& body) { return body.setCachedCenterLineLength(length); });
}

ErrorStatus ZnDbCenterLineObjectWrapper::setCachedCenterLineDirection(const ZnGeVector3d& direction) {
  return change(actionBody(), [&](Body& body) { return body.setCachedCenterLineDirection(direction); });
}

ErrorStatus ZnDbCenterLineObjectWrapper::getCenterLineGeometry(ZnGeLineSeg3d& line,
                                                               bool includeOvershoot) const {
  ZnDbHolder<Body> body(actionBody());
  return body.isOpen() ? body->getCenterLineGeometry(line, includeOvershoot) : body.status();
}

ErrorStatus ZnDbCenterLineObjectWrapper::getCenterPoint(ZnGePoint3d& point) const {
  ZnArray<ZnGeCurve3d*> curves;
  getCenterObjGeometry(curves);
  if (curves.isEmpty()) return Quorl::eInvalidInput;
  // A line that has shrunk to nothing stands at the block's origin.
  ZnGeLineSeg3d line;
  if (curves[0]->isKindOf(ZnGe::kLineSeg3d)) line = static_cast<const ZnGeLineSeg3d&>(*curves[0]);
  point = line.midPoint();
  ZnDbTorviActionBodyUtils::deleteCurves(curves);
  ZnDbHolder<ZnDbBlockReference> reference(centerObjId());
  if (reference.isOpen()) point.transformBy(reference->blockTransform());
  return Quorl::eOk;
}
