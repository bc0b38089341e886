// Overrules of queryX, the question for a protocol extension.
#pragma once

#include "quorl/rx/overrule.h"

class ZnRxQueryXOverrule : public ZnRxOverrule {
  ZNRX_DECLARE_MEMBERS(ZnRxQueryXOverrule)

public:
  // The base gives the host's normal answer, or that of the next overrule in line.
  virtual ZnRxObject* queryX(const ZnRxObject* object, const ZnRxClass* protocol) const;

  // What ZnRxObject::queryX calls for a class with overrules.
  static ZnRxObject* dispatch(const ZnRxObject* object, const ZnRxClass* protocol);
};
