// A module for the linker's tests: it tells on the command line what it is told, registers a class and a
// service of its own, and depends on the module that it loads.
#include "quorl/rx/dynamic_linker.h"
#include "quorl/rx/print.h"
#include "quorl/rx/registry.h"
#include "quorl/rx/services.h"

#ifndef API_VERSION
#define API_VERSION kZnRxApiVersion
#endif
#ifndef LOAD_ANSWER
#define LOAD_ANSWER 0
#endif

namespace {

const ZnString kName(MODULE_NAME);
void* application = nullptr;
ZnRxService* service = nullptr;

ZnRxDynamicLinker* linker() { return ZnRxDynamicLinker::cast(znrxSysRegistry()->at(L"DynamicLinker")); }

[[maybe_unused]] void load(void* applicationId) {
  application = applicationId;
#ifndef NO_ANNOUNCEMENT
  linker()->announce(application);
#endif
  service = znrxRegisterService(kName + L"Service");
  newZnRxClass((kName + L"Class").c_str(), L"ZnRxObject");
#ifdef LOADS
  if (znrxLoadModule(LOADS, false, true) == Quorl::eOk) linker()->notifyDependency(L"goodService", true);
#endif
}

[[maybe_unused]] void unload() {
#ifdef LOADS
  linker()->notifyDependency(L"goodService", false);
#endif
  deleteZnRxClass(znrxFindZnRxClass(kName + L"Class"));
  delete ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary"))->remove(kName + L"Service");
}

} // namespace

#ifndef NO_VERSION
extern "C" int znrxGetApiVersion() { return API_VERSION; }
#endif

#ifndef NO_ENTRY
extern "C" int znrxEntryPoint(int message, void* argument) {
  znutPrintf(L"%s %d;", kName.c_str(), message);
  const bool own = argument == service;
  switch (static_cast<ZnRxModuleMessage>(message)) {
  case ZnRxModuleMessage::kLoad:
    load(argument);
    return LOAD_ANSWER;
  case ZnRxModuleMessage::kUnload:
    unload();
    break;
  case ZnRxModuleMessage::kDependencyBegun:
    if (own) linker()->lockModule(application);
    break;
  case ZnRxModuleMessage::kDependencyEnded:
    if (own) linker()->unlockModule(application);
    break;
  }
  return 0;
}
#endif
