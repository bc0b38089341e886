// A member with a value that can be read from an object, and maybe written.
#pragma once

#include "quorl/rx/member.h"
#include "quorl/rx/value.h"

class ZnRxProperty : public ZnRxMember {
  ZNRX_DECLARE_MEMBERS(ZnRxProperty)

public:
  using ZnRxMember::ZnRxMember;

  // Through the overrules of the member, then the property's own operation. On failure value is as it was.
  Quorl::ErrorStatus getValue(const ZnRxObject* object, ZnRxValue& value) const;
  Quorl::ErrorStatus setValue(ZnRxObject* object, const ZnRxValue& value) const;

protected:
  friend class ZnRxPropertyOverrule;
  // eNotProvided where a property has no such side.
  virtual Quorl::ErrorStatus subGetValue(const ZnRxObject* object, ZnRxValue& value) const;
  virtual Quorl::ErrorStatus subSetValue(ZnRxObject* object, const ZnRxValue& value) const;
};
