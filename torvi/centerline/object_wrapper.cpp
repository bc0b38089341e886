#include "torvi/centerline/object_wrapper.h"

#include "torvi/centerline/action_body.h"
#include "torvi/core/action_body_utils.h"
#include "torvi/drawing/ask.h"

using Quorl::ErrorStatus;
using Body = ZnDbCenterLineActionBody;
using torvi::ask;
using torvi::change;

double ZnDbCenterLineObjectWrapper::startExtension() const {
  return ask<Body>(actionBody(), 0.0, &Body::startExtension);
}

double ZnDbCenterLineObjectWrapper::endExtension() const {
  return ask<Body>(actionBody(), 0.0, &Body::endExtension);
}

double ZnDbCenterLineObjectWrapper::startOvershoot() const {
  return ask<Body>(actionBody(), 0.0, &Body::startOvershoot);
}

double ZnDbCenterLineObjectWrapper::endOvershoot() const {
  return ask<Body>(actionBody(), 0.0, &Body::endOvershoot);
}

ErrorStatus ZnDbCenterLineObjectWrapper::setStartExtension(double value) {
  return change<Body>(actionBody(), &Body::setStartExtension, value);
}

ErrorStatus ZnDbCenterLineObjectWrapper::setEndExtension(double value) {
  return change<Body>(actionBody(), &Body::setEndExtension, value);
}

ErrorStatus ZnDbCenterLineObjectWrapper::setStartOvershoot(double value) {
  return change<Body>(actionBody(), &Body::setStartOvershoot, value);
}

ErrorStatus ZnDbCenterLineObjectWrapper::setEndOvershoot(double value) {
  return change<Body>(actionBody(), &Body::setEndOvershoot, value);
}

int ZnDbCenterLineObjectWrapper::edgeRefDirEnding(int index) const {
  ZnDbHolder<Body> body(actionBody());
  return body.isOpen() ? body->edgeRefDirEnding(index) : static_cast<int>(body.status());
}

ErrorStatus ZnDbCenterLineObjectWrapper::edgeRefDirEndingArray(ZnArray<int>& endings) const {
  return torvi::askStatus<Body>(actionBody(), &Body::edgeRefDirEndingArray, endings);
}

ErrorStatus ZnDbCenterLineObjectWrapper::setEdgeRefDirEnding(int index, int value) {
  return change<Body>(actionBody(), &Body::setEdgeRefDirEnding, index, value);
}

ErrorStatus ZnDbCenterLineObjectWrapper::setEdgeRefDirEndingArray(const ZnArray<int>& endings) {
  return change<Body>(actionBody(), &Body::setEdgeRefDirEndingArray, endings);
}

double ZnDbCenterLineObjectWrapper::cachedCenterLineLength() const {
  return ask<Body>(actionBody(), 0.0, &Body::cachedCenterLineLength);
}

ZnGeVector3d ZnDbCenterLineObjectWrapper::cachedCenterLineDirection() const {
  return ask<Body>(actionBody(), ZnGeVector3d::kXAxis, &Body::cachedCenterLineDirection);
}

ErrorStatus ZnDbCenterLineObjectWrapper::setCachedCenterLineLength(double length) {
  return change<Body>(actionBody(), &Body::setCachedCenterLineLength, length);
}

ErrorStatus ZnDbCenterLineObjectWrapper::setCachedCenterLineDirection(const ZnGeVector3d& direction) {
  return change<Body>(actionBody(), &Body::setCachedCenterLineDirection, direction);
}

ErrorStatus ZnDbCenterLineObjectWrapper::getCenterLineGeometry(ZnGeLineSeg3d& line,
                                                               bool includeOvershoot) const {
  return torvi::askStatus<Body>(actionBody(), &Body::getCenterLineGeometry, line, includeOvershoot);
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
