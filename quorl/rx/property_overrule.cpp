#include "quorl/rx/property_overrule.h"

#include "quorl/rx/property.h"

ZNRX_DEFINE_ABSTRACT(ZnRxPropertyOverrule, ZnRxMemberOverrule)

Quorl::ErrorStatus ZnRxPropertyOverrule::getValue(const ZnRxProperty* property, const ZnRxObject* object,
                                                  ZnRxValue& value) const {
  if (!property) return Quorl::eInvalidInput;
  const ZnRxPropertyOverrule* following = next(*property, this);
  return following ? following->getValue(property, object, value) : property->subGetValue(object, value);
}

Quorl::ErrorStatus ZnRxPropertyOverrule::setValue(const ZnRxProperty* property, ZnRxObject* object,
                                                  const ZnRxValue& value) const {
  if (!property) return Quorl::eInvalidInput;
  const ZnRxPropertyOverrule* following = next(*property, this);
  return following ? following->setValue(property, object, value) : property->subSetValue(object, value);
}

const ZnRxPropertyOverrule* ZnRxPropertyOverrule::next(const ZnRxProperty& property,
                                                       const ZnRxPropertyOverrule* after) {
  if (property.overrules().empty() || !ZnRxOverrule::isOverruling()) return nullptr;
  bool passed = after == nullptr;
  for (const ZnRxMemberOverrule* overrule : property.overrules()) {
    const ZnRxPropertyOverrule* candidate = ZnRxPropertyOverrule::cast(overrule);
    if (candidate && passed) return candidate;
    passed = passed || candidate == after;
  }
  return nullptr;
}
