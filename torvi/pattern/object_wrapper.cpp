#include "torvi/pattern/object_wrapper.h"

using Quorl::ErrorStatus;

namespace {

// The body's answer, or the neutral one when it can't be opened.
template<class Result, class Ask> Result ask(ZnDbObjectId bodyId, const Result& absent, Ask&& question) {
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body(bodyId);
  return body.isOpen() ? question(*body) : absent;
}

// The status is that of the opening, or of the change.
template<class Change> ErrorStatus change(ZnDbObjectId bodyId, Change&& doIt) {
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body;
  const ErrorStatus status = body.openForWrite(bodyId);
  return status == Quorl::eOk ? doIt(*body) : status;
}

} // namespace

CenterMarkPatternType ZnDbCenterMarkPatternObjectWrapper::getCenterPatternType() const {
  return ask(actionBody(), kCenterPatternNone, [](const auto& body) { return body.getCenterPatternType(); });
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setCenterPatternType(CenterMarkPatternType type) {
  return change(actionBody(), [=](auto& body) { return body.setCenterPatternType(type); });
}

bool ZnDbCenterMarkPatternObjectWrapper::isFullPCD() const {
  return ask(actionBody(), false, [](const auto& body) { return body.isFullPCD(); });
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setIsFullPCD(bool full) {
  return change(actionBody(), [=](auto& body) { return body.setIsFullPCD(full); });
}

bool ZnDbCenterMarkPatternObjectWrapper::showCenterMark() const {
  return ask(actionBody(), false, [](const auto& body) { return body.showCenterMark(); });
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setShowCenterMark(bool show) {
  return change(actionBody(), [=](auto& body) { return body.setShowCenterMark(show); });
}

bool ZnDbCenterMarkPatternObjectWrapper::getReferenceEdge(ZnDbEdgeRef& edge, double& pickParam) const {
  return ask(actionBody(), false, [&](const auto& body) { return body.getReferenceEdge(edge, pickParam); });
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setReferenceEdge(const ZnDbEdgeRef& edge, double pickParam) {
  return change(actionBody(), [&](auto& body) { return body.setReferenceEdge(edge, pickParam); });
}

bool ZnDbCenterMarkPatternObjectWrapper::getCachedInputEdgeOnMajorAxis(ZnCenterMarkSubEntType type,
                                                                       int& index, double& radius) const {
  return ask(actionBody(), false,
             [&](const auto& body) { return body.getCachedInputEdgeOnMajorAxis(type, index, radius); });
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::cacheInputEdgesOnMajorAxis(const int (&indices)[4],
                                                                           const double (&radii)[4]) {
  return change(actionBody(), [&](auto& body) { return body.cacheInputEdgesOnMajorAxis(indices, radii); });
}

double ZnDbCenterMarkPatternObjectWrapper::startOvershoot(const ZnString& key) const {
  return ask(actionBody(), 0.0, [&](const auto& body) { return body.startOvershoot(key); });
}

double ZnDbCenterMarkPatternObjectWrapper::endOvershoot(const ZnString& key) const {
  return ask(actionBody(), 0.0, [&](const auto& body) { return body.endOvershoot(key); });
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setStartOvershoot(const ZnString& key, double value) {
  return change(actionBody(), [&](auto& body) { return body.setStartOvershoot(key, value, true); });
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::setEndOvershoot(const ZnString& key, double value) {
  return change(actionBody(), [&](auto& body) { return body.setEndOvershoot(key, value, true); });
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::getCenterLineDependencyKeys(ZnArray<ZnString>& keys) const {
  ZnDbHolder<ZnDbCenterMarkPatternActionBody> body(actionBody());
  if (body.isOpen()) body->getCenterLineDependencyKeys(keys);
  return body.status();
}

ErrorStatus ZnDbCenterMarkPatternObjectWrapper::renameCenterLineKey(const ZnString& oldKey,
                                                                    const ZnString& newKey) {
  return change(actionBody(), [&](auto& body) { return body.renameCenterLineKey(oldKey, newKey); });
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
