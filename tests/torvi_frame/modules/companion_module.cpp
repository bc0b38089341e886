#include "quorl/rx/dynamic_linker.h"
#include "quorl/rx/registry.h"
#include "quorl/rx/services.h"

namespace {
constexpr const wchar_t* kService = L"QuorlTorviPYXService";
}

extern "C" int znrxGetApiVersion() { return kZnRxApiVersion; }

extern "C" int znrxEntryPoint(int message, void* argument) {
  if (message == static_cast<int>(ZnRxModuleMessage::kLoad)) {
    ZnRxDynamicLinker::instance().announce(argument);
    znrxRegisterService(kService);
  } else if (message == static_cast<int>(ZnRxModuleMessage::kUnload)) {
    delete ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary"))->remove(kService);
  }
  return 0;
}
