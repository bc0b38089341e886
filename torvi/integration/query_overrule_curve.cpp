#include "torvi/integration/query_overrule_curve.h"

#include "torvi/core/navigation.h"
#include "torvi/host/class_registration.h"

ZnRxClass* ZnRxQueryXOverruleTorviCurve::gpDesc = nullptr;

void ZnRxQueryXOverruleTorviCurve::rxInit() {
  torviRegisterPlainClass(gpDesc, className(), ZnRxQueryXOverrule::className());
}

ZnRxQueryXOverruleTorviCurve* ZnRxQueryXOverruleTorviCurve::instance() {
  static ZnRxQueryXOverruleTorviCurve overrule;
  return &overrule;
}

bool ZnRxQueryXOverruleTorviCurve::isApplicable(const ZnRxObject* object) const {
  return ZnDbLine::cast(object) || ZnDbArc::cast(object);
}

ZnRxObject* ZnRxQueryXOverruleTorviCurve::queryX(const ZnRxObject* object, const ZnRxClass* protocol) const {
  // Asking where a curve stands is dear, so only the one question is let through to it.
  if (!ZnRxClass::isDerivedFrom(protocol, ZnDbAssocDependencyPE::desc()))
    return ZnRxQueryXOverrule::queryX(object, protocol);
  const torvi::Kind* kind = torvi::kindOfType(torvi::centerObjectWithCurve(ZnDbCurve::cast(object)).kind);
  return kind && kind->dependencyExtension ? kind->dependencyExtension()
                                           : ZnRxQueryXOverrule::queryX(object, protocol);
}
