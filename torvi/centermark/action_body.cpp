#include "torvi/centermark/action_body.h"

#include "torvi/centermark/layout.h"
#include "torvi/host/class_registration.h"
#include "torvi/style/style.h"

using Quorl::ErrorStatus;

TORVI_DEFINE_BODY_CLASS(ZnDbCenterMarkActionBody, ZnDbTorviActionBody)

namespace {

// Names of values, built once: a name that keeps its buffer is looked up without making text.
const ZnString kNoName;
const ZnString kExtensions[] = {L"HorizontalStartExtension", L"HorizontalEndExtension",
                                L"VerticalStartExtension", L"VerticalEndExtension"};
const ZnString kOvershoots[] = {L"HorizontalStartOvershoot", L"HorizontalEndOvershoot",
                                L"VerticalStartOvershoot", L"VerticalEndOvershoot"};
const ZnString kVisibilities[] = {L"eCrossHairHorizontalLine_visibility",
                                  L"eCrossHairVerticalLine_visibility",
                                  L"eLeftLine_visibility",
                                  L"eRightLine_visibility",
                                  L"eBottomLine_visibility",
                                  L"eTopLine_visibility"};
const ZnString kUndefinedVisibility(L"undefined_visibility");
const ZnString kCrossHairLengthExpression(L"CrossHairLengthExpression");
const ZnString kCrossHairGapExpression(L"CrossHairGapExpression");
const ZnString kCachedCircleRadius(L"CachedCircleRadius");
const ZnString kCachedRotation(L"CachedRotation");

const ZnString& ofSide(const ZnString (&names)[4], ZnCenterMarkSubEntType type) {
  return torvi::isExtensionLine(type) ? names[type - eLeftLine] : kNoName;
}

const ZnString& visibilityName(ZnCenterMarkSubEntType type) {
  return type >= eCrossHairHorizontalLine && type <= eTopLine ? kVisibilities[type] : kUndefinedVisibility;
}

// The style is asked for its text only where the mark has none of its own.
ZnString textOr(const ZnDbTorviActionBodyBase& body, const ZnString& name, ZnString (*absent)()) {
  ZnDbEvalVariant value;
  ZnString text;
  const bool held = body.getValueParam(name, value) == Quorl::eOk && value.getValue(text) == Quorl::eOk;
  return held ? text : absent();
}

} // namespace

const ZnString& ZnDbCenterMarkActionBody::extensionParamName(ZnCenterMarkSubEntType type) {
  return ofSide(kExtensions, type);
}

ZnDbTorviLayout* ZnDbCenterMarkActionBody::getLayout() const {
  return new ZnDbCenterMarkLayout(centerObjectId());
}

double ZnDbCenterMarkActionBody::extension(ZnCenterMarkSubEntType type) const {
  ZnDbEvalVariant value;
  double stored = 0.0;
  if (getValueParam(extensionParamName(type), value) != Quorl::eOk || value.getValue(stored) != Quorl::eOk)
    return 0.0;
  return getResolvedExtensionLength(stored, type);
}

ErrorStatus ZnDbCenterMarkActionBody::setExtension(ZnCenterMarkSubEntType type, double value) {
  return storeValue(extensionParamName(type), ZnDbEvalVariant(value));
}

ErrorStatus ZnDbCenterMarkActionBody::resetExtensions() {
  for (const ZnCenterMarkSubEntType line : torvi::kExtensionLines) setExtension(line, kAutoMatchExtension);
  return Quorl::eOk;
}

double ZnDbCenterMarkActionBody::getResolvedExtensionLength(double stored, ZnCenterMarkSubEntType) const {
  if (!isAutoMatchExtension(stored)) return stored;
  return isAssociative(false) ? getRefCircleRadius() : cachedCircleRadius();
}

double ZnDbCenterMarkActionBody::getResolvedExtensionLength(double stored, ZnCenterMarkSubEntType,
                                                            double radius) const {
  return isAutoMatchExtension(stored) ? radius : stored;
}

double ZnDbCenterMarkActionBody::overshoot(ZnCenterMarkSubEntType type) const {
  return valueOf(ofSide(kOvershoots, type), 0.0);
}

ErrorStatus ZnDbCenterMarkActionBody::setOvershoot(ZnCenterMarkSubEntType type, double value) {
  return setOvershoot(ofSide(kOvershoots, type), value);
}

ErrorStatus ZnDbCenterMarkActionBody::setOvershoot(const ZnString& key, double value) {
  if (value < -ZnGeContext::gTol.equalPoint()) return Quorl::eInvalidInput;
  return storeValue(key, ZnDbEvalVariant(value));
}

ErrorStatus ZnDbCenterMarkActionBody::resetOvershoots() {
  const double overshoot = ZnTorviStyle::getCenterOvershoot();
  for (const ZnCenterMarkSubEntType line : torvi::kExtensionLines) setOvershoot(line, overshoot);
  return Quorl::eOk;
}

ZnString ZnDbCenterMarkActionBody::crossHairLengthExpression() const {
  return textOr(*this, kCrossHairLengthExpression, ZnTorviStyle::getCrossHairLengthExpression);
}

ZnString ZnDbCenterMarkActionBody::crossHairGapExpression() const {
  return textOr(*this, kCrossHairGapExpression, ZnTorviStyle::getCrossHairGapExpression);
}

ErrorStatus ZnDbCenterMarkActionBody::setCrossHairLengthExpression(const ZnString& expression) {
  return storeValue(kCrossHairLengthExpression, ZnDbEvalVariant(expression));
}

ErrorStatus ZnDbCenterMarkActionBody::setCrossHairGapExpression(const ZnString& expression) {
  return storeValue(kCrossHairGapExpression, ZnDbEvalVariant(expression));
}

double ZnDbCenterMarkActionBody::cachedCircleRadius() const { return valueOf(kCachedCircleRadius, 0.0); }

double ZnDbCenterMarkActionBody::cachedRotation() const { return valueOf(kCachedRotation, 0.0); }

ErrorStatus ZnDbCenterMarkActionBody::setCachedCircleRadius(double radius) {
  return storeValue(kCachedCircleRadius, ZnDbEvalVariant(radius));
}

ErrorStatus ZnDbCenterMarkActionBody::setCachedRotation(double rotation) {
  return storeValue(kCachedRotation, ZnDbEvalVariant(rotation));
}

// A circle that can't be had leaves the default one's radius behind: the old radius must not outlive it.
void ZnDbCenterMarkActionBody::updateCachedCircleRadius() {
  if (!isAssociative(false)) return;
  ZnGeCircArc3d circle;
  getRefCircle(circle);
  setCachedCircleRadius(circle.radius());
}

ErrorStatus ZnDbCenterMarkActionBody::setSubEntVisibility(ZnCenterMarkSubEntType type, bool visible) {
  return setBoolParam(visibilityName(type), visible);
}

bool ZnDbCenterMarkActionBody::getSubEntVisibility(ZnCenterMarkSubEntType type) const {
  return getBoolParam(visibilityName(type), true);
}

ErrorStatus ZnDbCenterMarkActionBody::setExtensionLinesVisibility(bool visible) {
  ErrorStatus status = Quorl::eOk;
  for (const ZnCenterMarkSubEntType line : torvi::kExtensionLines)
    status = setSubEntVisibility(line, visible);
  return status;
}

bool ZnDbCenterMarkActionBody::getExtensionLinesVisibility() const {
  for (const ZnCenterMarkSubEntType line : torvi::kExtensionLines)
    if (!getSubEntVisibility(line)) return false;
  return true;
}
