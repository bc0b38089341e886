#include "torvi/centermark/object_wrapper.h"

#include <stdexcept>

#include "torvi/centermark/action_body.h"
#include "torvi/centermark/props_provider.h"
#include "torvi/centermark/size_calculator.h"
#include "torvi/drawing/ask.h"
#include "torvi/style/length_expression.h"

using Quorl::ErrorStatus;
using Body = ZnDbCenterMarkActionBody;
using torvi::ask;
using torvi::change;

namespace {

constexpr ZnCenterMarkSubEntType kPointOrder[] = {eLeftLine, eBottomLine, eRightLine, eTopLine};

// A number that no double holds is as bad as any other invalid text to the one who set it.
template<class Check> bool isValid(Check&& check) {
  try {
    return check();
  } catch (const std::out_of_range&) {
    return false;
  }
}

void takeFour(const ZnArray<ZnGePoint3d>& points, ZnGePoint3d& left, ZnGePoint3d& bottom, ZnGePoint3d& right,
              ZnGePoint3d& top) {
  left = points[0];
  bottom = points[1];
  right = points[2];
  top = points[3];
}

} // namespace

double ZnDbCenterMarkObjectWrapper::getExtensionLineLength(ZnCenterMarkSubEntType type) const {
  return ask<Body>(actionBody(), 0.0, &Body::extension, type);
}

double ZnDbCenterMarkObjectWrapper::getOvershoot(ZnCenterMarkSubEntType type) const {
  return ask<Body>(actionBody(), 0.0, &Body::overshoot, type);
}

double ZnDbCenterMarkObjectWrapper::getMinExtension(ZnCenterMarkSubEntType type) const {
  return ask<Body>(actionBody(), 0.0, &Body::getMinExtension, type);
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setExtension(ZnCenterMarkSubEntType type, double value) {
  return change<Body>(actionBody(), &Body::setExtension, type, value);
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setOvershoot(ZnCenterMarkSubEntType type, double value) {
  return change<Body>(actionBody(), [&](Body& body) { return body.setOvershoot(type, value); });
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setAllOvershoots(double value) {
  return change<Body>(actionBody(), [&](Body& body) {
    for (const ZnCenterMarkSubEntType line : torvi::kExtensionLines) body.setOvershoot(line, value);
    return Quorl::eOk;
  });
}

ZnGePoint3d ZnDbCenterMarkObjectWrapper::farEnd(ZnCenterMarkSubEntType type, bool includeOvershoot) const {
  const ZnGeLineSeg3d line = getSubentLineGeometry(type, includeOvershoot);
  return type == eLeftLine || type == eBottomLine ? line.startPoint() : line.endPoint();
}

void ZnDbCenterMarkObjectWrapper::appendFarEnds(ZnArray<ZnGePoint3d>& points, bool includeOvershoot) const {
  for (const ZnCenterMarkSubEntType line : kPointOrder) points.append(farEnd(line, includeOvershoot));
}

ErrorStatus ZnDbCenterMarkObjectWrapper::getAllExtensionPoints(ZnArray<ZnGePoint3d>& points) const {
  appendFarEnds(points, false);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkObjectWrapper::getAllExtensionPoints(ZnGePoint3d& left, ZnGePoint3d& bottom,
                                                               ZnGePoint3d& right, ZnGePoint3d& top) const {
  ZnArray<ZnGePoint3d> points;
  appendFarEnds(points, false);
  takeFour(points, left, bottom, right, top);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkObjectWrapper::getAllOvershootPoints(ZnArray<ZnGePoint3d>& points) const {
  appendFarEnds(points, true);
  return Quorl::eOk;
}

ErrorStatus ZnDbCenterMarkObjectWrapper::getAllOvershootPoints(ZnGePoint3d& left, ZnGePoint3d& bottom,
                                                               ZnGePoint3d& right, ZnGePoint3d& top) const {
  ZnArray<ZnGePoint3d> points;
  appendFarEnds(points, true);
  takeFour(points, left, bottom, right, top);
  return Quorl::eOk;
}

ZnString ZnDbCenterMarkObjectWrapper::crossHairLengthExpression() const {
  return ask<Body>(actionBody(), ZnString(L"0.0"), &Body::crossHairLengthExpression);
}

ZnString ZnDbCenterMarkObjectWrapper::crossHairGapExpression() const {
  return ask<Body>(actionBody(), ZnString(L"0.0"), &Body::crossHairGapExpression);
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setCrossHairLengthExpression(const ZnString& expression) {
  ZnString normalised;
  if (!isValid([&] { return isValidCrossSizeExpression(expression, normalised); }))
    return Quorl::eInvalidInput;
  return change<Body>(actionBody(), &Body::setCrossHairLengthExpression, normalised);
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setCrossHairGapExpression(const ZnString& expression) {
  ZnString normalised;
  double number = 0.0;
  if (!isValid([&] { return parseLengthExpression(expression, normalised, number); }))
    return Quorl::eInvalidInput;
  return change<Body>(actionBody(), &Body::setCrossHairGapExpression, normalised);
}

double ZnDbCenterMarkObjectWrapper::crossHairLength() const {
  double length = 0.0, gap = 0.0;
  return getCrossLengthAndGap(length, gap) == Quorl::eOk ? length : 0.0;
}

double ZnDbCenterMarkObjectWrapper::crossHairGap() const {
  double length = 0.0, gap = 0.0;
  return getCrossLengthAndGap(length, gap) == Quorl::eOk ? gap : 0.0;
}

ErrorStatus ZnDbCenterMarkObjectWrapper::getCrossLengthAndGap(double& length, double& gap) const {
  ZnDbHolder<Body> body(actionBody());
  if (body.isOpen()) return body->getCrossLengthAndGap(length, gap);
  return getCrossLengthAndGapFromProvider(ZnDbCenterMarkPropsProvider(centerObjId()), length, gap, 0.0);
}

bool ZnDbCenterMarkObjectWrapper::isCenterCrossTooLarge(ZnCenterMarkSubEntType type) const {
  if (!torvi::isExtensionLine(type)) return false;
  double length = 0.0, gap = 0.0;
  if (getCrossLengthAndGap(length, gap) != Quorl::eOk) return false;
  return length + gap > getExtensionLineLength(type);
}

ErrorStatus ZnDbCenterMarkObjectWrapper::getRefCircle(ZnGeCircArc3d& circle) const {
  return torvi::askStatus<Body>(actionBody(), &Body::getRefCircle, circle);
}

double ZnDbCenterMarkObjectWrapper::getRefCircleRadius() const {
  return ask<Body>(actionBody(), 0.0, &Body::getRefCircleRadius);
}

ErrorStatus ZnDbCenterMarkObjectWrapper::getCenterPoint(ZnGePoint3d& point) const {
  ZnGeCircArc3d circle;
  const ErrorStatus status = getRefCircle(circle);
  if (status == Quorl::eOk) point = circle.center();
  return status;
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setCachedCircleRadius(double radius) {
  return change<Body>(actionBody(), &Body::setCachedCircleRadius, radius);
}

// Opened for read: an evaluation that holds the body calls this.
void ZnDbCenterMarkObjectWrapper::updateCachedCircleRadius() {
  ZnDbHolder<ZnDbCenterMarkActionBody> body(actionBody());
  if (body.isOpen()) body->updateCachedCircleRadius();
}

double ZnDbCenterMarkObjectWrapper::rotation() const {
  ZnDbHolder<ZnDbBlockReference> reference(centerObjId());
  return reference.isOpen() ? reference->rotation() : 0.0;
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setRotation(double angle) {
  ZnDbHolder<ZnDbBlockReference> reference;
  const ErrorStatus status = reference.openForWrite(centerObjId(), false, true);
  return status == Quorl::eOk ? reference->setRotation(angle) : status;
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setSubEntVisibility(ZnCenterMarkSubEntType type, bool visible) {
  return change<Body>(actionBody(), &Body::setSubEntVisibility, type, visible);
}

bool ZnDbCenterMarkObjectWrapper::getSubEntVisibility(ZnCenterMarkSubEntType type) const {
  return ask<Body>(actionBody(), true, &Body::getSubEntVisibility, type);
}

ErrorStatus ZnDbCenterMarkObjectWrapper::setExtensionLinesVisibility(bool visible) {
  return change<Body>(actionBody(), &Body::setExtensionLinesVisibility, visible);
}

bool ZnDbCenterMarkObjectWrapper::getExtensionLinesVisibility() const {
  return ask<Body>(actionBody(), true, &Body::getExtensionLinesVisibility);
}

ZnGeVector3d ZnDbCenterMarkObjectWrapper::getSubentDirection(ZnCenterMarkSubEntType type) const {
  return ask<Body>(actionBody(), ZnGeVector3d::kXAxis, &Body::getSubentDirection, type);
}

ZnGeLineSeg3d ZnDbCenterMarkObjectWrapper::getSubentLineGeometry(ZnCenterMarkSubEntType type,
                                                                 bool includeOvershoot) const {
  const ZnGeLineSeg3d absent(ZnGePoint3d::kOrigin, ZnGePoint3d(1.0, 0.0, 0.0));
  return ask<Body>(actionBody(), absent,
                   [&](const Body& body) { return body.getSubentLineGeometry(type, includeOvershoot); });
}
