#include "quorl/rx/query_overrule.h"

ZNRX_DEFINE_ABSTRACT(ZnRxQueryXOverrule, ZnRxOverrule)

ZnRxObject* ZnRxQueryXOverrule::queryX(const ZnRxObject* object, const ZnRxClass* protocol) const {
  if (const ZnRxQueryXOverrule* next = ZnRxOverrule::firstApplicable<ZnRxQueryXOverrule>(object, this))
    return next->queryX(object, protocol);
  return object->isA()->queryX(protocol);
}

ZnRxObject* ZnRxQueryXOverrule::dispatch(const ZnRxObject* object, const ZnRxClass* protocol) {
  if (const ZnRxQueryXOverrule* first = ZnRxOverrule::firstApplicable<ZnRxQueryXOverrule>(object))
    return first->queryX(object, protocol);
  return object->isA()->queryX(protocol);
}
