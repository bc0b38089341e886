// Makes the curves within center mark patterns answer for the dependencies that stand on them.
#pragma once

#include "torvi/host/export.h"
#include "torvi/host/runtime.h"

class TORVI_EXPORT ZnRxQueryXOverruleTorviCurve : public ZnRxQueryXOverrule {
  ZNRX_DECLARE_MEMBERS(ZnRxQueryXOverruleTorviCurve)

public:
  // The one overrule of the process; for lines and arcs.
  static ZnRxQueryXOverruleTorviCurve* instance();

  bool isApplicable(const ZnRxObject* object) const override;
  ZnRxObject* queryX(const ZnRxObject* object, const ZnRxClass* protocol) const override;
};
