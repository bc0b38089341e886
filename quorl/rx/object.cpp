#include "quorl/rx/object.h"

#include <functional>

#include "quorl/rx/class.h"
#include "quorl/rx/query_overrule.h"

ZnRxClass* ZnRxObject::gpDesc = nullptr;

void ZnRxObject::rxInit() {
  if (!gpDesc) gpDesc = newZnRxClass(L"ZnRxObject", nullptr);
}

static const bool registeredObject = (ZnRxObject::rxInit(), true);

ZnRxClass* ZnRxObject::isA() const { return gpDesc; }

bool ZnRxObject::isKindOf(const ZnRxClass* kind) const { return isA()->isDerivedFrom(kind); }

ZnRxObject* ZnRxObject::queryX(const ZnRxClass* protocol) const {
  const ZnRxClass* own = isA();
  if (own->hasOverrules()) return ZnRxQueryXOverrule::dispatch(this, protocol);
  return own->queryX(protocol);
}

ZnRxObject* ZnRxObject::clone() const { return nullptr; }

Quorl::ErrorStatus ZnRxObject::copyFrom(const ZnRxObject*) { return Quorl::eNotProvided; }

bool ZnRxObject::isEqualTo(const ZnRxObject* other) const { return this == other; }

int ZnRxObject::comparedTo(const ZnRxObject* other) const {
  if (this == other) return 0;
  return std::less<const ZnRxObject*>()(this, other) ? -1 : 1;
}
