#include "quorl/rx/services.h"

#include "quorl/rx/registry.h"

ZNRX_DEFINE_CLASS(ZnRxService, ZnRxObject)

namespace {
ZnRxDictionary* services() { return ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary")); }
} // namespace

ZnRxService* znrxRegisterService(const ZnString& name) {
  ZnRxDictionary* dictionary = services();
  if (!dictionary || name.isEmpty()) return nullptr;
  if (ZnRxService* known = ZnRxService::cast(dictionary->at(name))) return known;
  auto* service = new ZnRxService(name);
  dictionary->put(name, service);
  return service;
}

bool znrxServiceIsRegistered(const ZnString& name) {
  const ZnRxDictionary* dictionary = services();
  return dictionary && dictionary->has(name);
}
