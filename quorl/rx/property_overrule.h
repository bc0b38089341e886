// Overrules of reading and writing a property.
#pragma once

#include "quorl/rx/member_overrule.h"

class ZnRxProperty;
class ZnRxValue;

class ZnRxPropertyOverrule : public ZnRxMemberOverrule {
  ZNRX_DECLARE_MEMBERS(ZnRxPropertyOverrule)

public:
  // The base goes on to the next overrule in line, at the end to the property's own operation.
  virtual Quorl::ErrorStatus getValue(const ZnRxProperty* property, const ZnRxObject* object,
                                      ZnRxValue& value) const;
  virtual Quorl::ErrorStatus setValue(const ZnRxProperty* property, ZnRxObject* object,
                                      const ZnRxValue& value) const;

private:
  friend class ZnRxProperty;
  // The property overrule after this one, or the first for null; null at the end.
  static const ZnRxPropertyOverrule* next(const ZnRxProperty& property, const ZnRxPropertyOverrule* after);
};
