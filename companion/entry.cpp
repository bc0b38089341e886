// The companion as a module: it says that it is there, and brings its commands.
#include <memory>

#include "companion/annotate.h"
#include "companion/association_commands.h"
#include "companion/center_kind.h"
#include "companion/report.h"
#include "torvi/host/database.h"
#include "torvi/host/export.h"

namespace companion {

namespace {

constexpr const wchar_t* kService = L"QuorlTorviPYXService";
constexpr const wchar_t* kModuleService = L"ZnDbTorviLYXService";
constexpr const wchar_t* kGroup = L"TORVI";

// Those that are for all kinds.
constexpr CommandRow kCommands[] = {
    {L"REASSOCIATE", reassociate},
    {L"DISASSOCIATE", disassociate},
    {L"TORVI.ANNOTATE", annotate},
    {L"TORVI.REPORT", report},
};

void* application = nullptr;

ZnRxDynamicLinker* linker() { return ZnRxDynamicLinker::cast(znrxSysRegistry()->at(L"DynamicLinker")); }

ZnRxDictionary* services() { return ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary")); }

// A name that another module has taken is left to it.
void addCommands() {
  const auto add = [](std::span<const CommandRow> rows) {
    for (const CommandRow& row : rows) ZnRxCommandRegistry::instance().addCommand(kGroup, row.name, row.run);
  };
  add(kCommands);
  for (const CenterKind* kind : centerKinds()) add(kind->commands);
}

void load(void* applicationId) {
  application = applicationId;
  if (ZnRxDynamicLinker* host = linker()) host->announce(application);
  znrxRegisterService(kService);
  addCommands();
  // The commands call the module's code: it stays loaded as long as they are here.
  if (ZnRxDynamicLinker* host = linker()) host->notifyDependency(kModuleService, true);
}

void unload() {
  if (ZnRxDynamicLinker* host = linker()) host->notifyDependency(kModuleService, false);
  ZnRxCommandRegistry::instance().removeGroup(kGroup);
  if (ZnRxDictionary* dictionary = services()) delete dictionary->remove(kService);
  application = nullptr;
}

// Another module began, or ended, to depend on the commands.
void dependency(bool begun, const void* service) {
  ZnRxDynamicLinker* host = linker();
  const ZnRxDictionary* dictionary = services();
  if (!host || !dictionary || service != dictionary->at(kService)) return;
  if (begun)
    host->lockModule(application);
  else
    host->unlockModule(application);
}

} // namespace

} // namespace companion

extern "C" TORVI_EXPORT int znrxGetApiVersion() { return kZnRxApiVersion; }

extern "C" TORVI_EXPORT int znrxEntryPoint(int message, void* argument) {
  switch (static_cast<ZnRxModuleMessage>(message)) {
  case ZnRxModuleMessage::kLoad:
    companion::load(argument);
    break;
  case ZnRxModuleMessage::kUnload:
    companion::unload();
    break;
  case ZnRxModuleMessage::kDependencyBegun:
    companion::dependency(true, argument);
    break;
  case ZnRxModuleMessage::kDependencyEnded:
    companion::dependency(false, argument);
    break;
  }
  return 0;
}
