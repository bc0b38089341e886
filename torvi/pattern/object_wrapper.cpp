#include "torvi/pattern/object_wrapper.h"

#include "torvi/drawing/ask.h"

using Quorl::ErrorStatus;
using Body = ZnDbCenterMarkPatternActionBody;
using torvi::ask;
using torvi::change;

CenterMarkPatternType ZnDbCenterMarkPatternObjectWrapper::getCenterPatternType() const {
  return ask<Body>(actionBody(), kCenterPatternNone, &Body::getCenterPatternType);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setCenterPatternType(CenterMarkPatternType type) {
  return change<Body>(actionBody(), &Body::setCenterPatternType, type);
}

bool ZnDbCenterMarkPatternObjectWrapper::isFullPCD() const {
  return ask<Body>(actionBody(), false, &Body::isFullPCD);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setIsFullPCD(bool full) {
  return change<Body>(actionBody(), &Body::setIsFullPCD, full);
}

bool ZnDbCenterMarkPatternObjectWrapper::showCenterMark() const {
  return ask<Body>(actionBody(), false, &Body::showCenterMark);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setShowCenterMark(bool show) {
  return change<Body>(actionBody(), &Body::setShowCenterMark, show);
}

bool ZnDbCenterMarkPatternObjectWrapper::getReferenceEdge(ZnDbEdgeRef& edge, double& pickParam) const {
  return ask<Body>(actionBody(), false, &Body::getReferenceEdge, edge, pickParam);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setReferenceEdge(const ZnDbEdgeRef& edge, double pickParam) {
  return change<Body>(actionBody(), &Body::setReferenceEdge, edge, pickParam);
}

bool ZnDbCenterMarkPatternObjectWrapper::getCachedInputEdgeOnMajorAxis(ZnCenterMarkSubEntType type,
                                                                       int& index, double& radius) const {
  return ask<Body>(actionBody(), false, &Body::getCachedInputEdgeOnMajorAxis, type, index, radius);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::cacheInputEdgesOnMajorAxis(const int (&indices)[4],
                                                                           const double (&radii)[4]) {
  return change<Body>(actionBody(), &Body::cacheInputEdgesOnMajorAxis, indices, radii);
}

double ZnDbCenterMarkPatternObjectWrapper::startOvershoot(const ZnString& key) const {
  return ask<Body>(actionBody(), 0.0, &Body::startOvershoot, key);
}

double ZnDbCenterMarkPatternObjectWrapper::endOvershoot(const ZnString& key) const {
  return ask<Body>(actionBody(), 0.0, &Body::endOvershoot, key);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setStartOvershoot(const ZnString& key, double value) {
  return change<Body>(actionBody(), &Body::setStartOvershoot, key, value, true);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setEndOvershoot(const ZnString& key, double value) {
  return change<Body>(actionBody(), &Body::setEndOvershoot, key, value, true);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::getCenterLineDependencyKeys(ZnArray<ZnString>& keys) const {
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body(actionBody());
  if (body.isOpen()) body->getCenterLineDependencyKeys(keys);
  return body.status();
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::renameCenterLineKey(const ZnString& oldKey,
                                                                    const ZnString& newKey) {
  return change<Body>(actionBody(), &Body::renameCenterLineKey, oldKey, newKey);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::reverseCenterLineKey(const ZnString& oldKey,
                                                                     const ZnString& newKey) {
  return change<Body>(actionBody(), &Body::reverseCenterLineKey, oldKey, newKey);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::startCenterLine(const ZnString& key) {
  return change<Body>(actionBody(), &Body::startCenterLine, key);
}

double ZnDbCenterMarkPatternObjectWrapper::memberOvershoot() const {
  return ask<Body>(actionBody(), 0.0, &Body::memberOvershoot);
}

double ZnDbCenterMarkPatternObjectWrapper::pitchRadius() const {
  return ask<Body>(actionBody(), 0.0, &Body::pitchRadius);
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::getCenterLineEndPoints(const ZnString& key,
                                                                       ZnGePoint3d& start,
                                                                       ZnGePoint3d& end) const {
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body(actionBody());
  if (!body.isOpen()) return body.status();
  if (body->getCenterPatternType() != kCenterPatternLinear) return Quorl::eNothingToDo;
  ZnDbHolder<ZnDbLine> line(body->getOutputEdge(key));
  if (!line.isOpen()) return line.status();
  const ZnGeMatrix3d toSpace = blockTransform();
  start = toSpace * line->startPoint();
  end = toSpace * line->endPoint();
  body->fixCenterLineEndPointsForLegayObj(key, start, end);
  return Quorl::eOk;
}
