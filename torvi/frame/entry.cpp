#include "torvi/frame/entry.h"

#include "torvi/frame/registration.h"
#include "torvi/host/database.h"
#include "torvi/style/resources.h"
#include "torvi/style/set_layer.h"

namespace {

constexpr const wchar_t* kService = L"ZnDbTorviLYXService";
constexpr const wchar_t* kCompanionService = L"QuorlTorviPYXService";
constexpr const wchar_t* kCompanionFile = L"ZnTorvi.pyx";

// The upper half of the host's interface version, 26, is what the module's binary depends on.
constexpr int kApiVersion = 0x1A0000;
static_assert(kApiVersion == kZnRxApiVersion);

struct Module {
  void* applicationId = nullptr;
  void* service = nullptr;
};
Module module;

template<class T> T* fromRegistry(const wchar_t* name) { return T::cast(znrxSysRegistry()->at(name)); }

// The companion may have come up by itself; a host without a side for user commands never has one.
void loadCompanion() {
  if (znrxServiceIsRegistered(kCompanionService)) return;
  if (zndbHostApplicationServices()->productKind() == kProductWithoutCommands) return;
  znrxLoadModule(kCompanionFile, false, true);
}

// A step that fails does not stop those after it: what is missing is missing alone.
void start(void* applicationId) {
  if (auto* linker = fromRegistry<ZnRxDynamicLinker>(L"DynamicLinker")) linker->announce(applicationId);
  module.applicationId = applicationId;
  module.service = znrxRegisterService(kService);
  ZnTorviResources::load();
  registerTorvi();
  loadCompanion();
}

// Texts go last: what goes before may still want to say something.
void stop() {
  if (auto* services = fromRegistry<ZnRxDictionary>(L"ServiceDictionary")) delete services->remove(kService);
  module.service = nullptr;
  withdrawTorvi();
  forgetTorviLayerOverrides();
  ZnTorviResources::release();
  module.applicationId = nullptr;
}

// Each module hears of every service; this one keeps itself in memory for its own.
void dependencyChanged(const void* service, bool begun) {
  if (!service || service != module.service) return;
  auto* linker = fromRegistry<ZnRxDynamicLinker>(L"DynamicLinker");
  if (!linker) return;
  if (begun)
    linker->lockModule(module.applicationId);
  else
    linker->unlockModule(module.applicationId);
}

} // namespace

int znrxEntryPoint(int message, void* argument) {
  switch (static_cast<ZnRxModuleMessage>(message)) {
  case ZnRxModuleMessage::kLoad:
    start(argument);
    break;
  case ZnRxModuleMessage::kUnload:
    stop();
    break;
  case ZnRxModuleMessage::kDependencyBegun:
    dependencyChanged(argument, true);
    break;
  case ZnRxModuleMessage::kDependencyEnded:
    dependencyChanged(argument, false);
    break;
  }
  return 0;
}

int znrxGetApiVersion() { return kApiVersion; }
