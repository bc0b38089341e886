#include "quorl/rx/property.h"

#include "quorl/rx/property_overrule.h"

ZNRX_DEFINE_ABSTRACT(ZnRxProperty, ZnRxMember)

Quorl::ErrorStatus ZnRxProperty::getValue(const ZnRxObject* object, ZnRxValue& value) const {
  // A property that fails halfway must not leave a half answer with its caller.
  ZnRxValue answer = value;
  const ZnRxPropertyOverrule* first = ZnRxPropertyOverrule::next(*this, nullptr);
  const auto status = first ? first->getValue(this, object, answer) : subGetValue(object, answer);
  if (status == Quorl::eOk) value = answer;
  return status;
}

Quorl::ErrorStatus ZnRxProperty::setValue(ZnRxObject* object, const ZnRxValue& value) const {
  const ZnRxPropertyOverrule* first = ZnRxPropertyOverrule::next(*this, nullptr);
  return first ? first->setValue(this, object, value) : subSetValue(object, value);
}

Quorl::ErrorStatus ZnRxProperty::subGetValue(const ZnRxObject*, ZnRxValue&) const {
  return Quorl::eNotProvided;
}

Quorl::ErrorStatus ZnRxProperty::subSetValue(ZnRxObject*, const ZnRxValue&) const {
  return Quorl::eNotProvided;
}
