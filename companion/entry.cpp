// The companion as a module: it says that it is there, and brings its commands.
#include <memory>

#include "companion/annotate.h"
#include "companion/commands.h"
#include "companion/line_commands.h"
#include "companion/mark_commands.h"
#include "companion/pattern_commands.h"
#include "companion/report.h"
#include "torvi/host/database.h"
#include "torvi/host/export.h"

namespace companion {

namespace {

constexpr const wchar_t* kService = L"QuorlTorviPYXService";
constexpr const wchar_t* kGroup = L"TORVI";

struct CommandRow {
  const wchar_t* name;
  Quorl::ErrorStatus (*run)(ZnRxCommandContext&);
};

constexpr CommandRow kCommands[] = {
    {L"CENTERMARK", centerMark},
    {L"REASSOCIATE", reassociate},
    {L"DISASSOCIATE", disassociate},
    {L"CENTERLINE", centerLine},
    {L"EDGEEXTENSION", edgeExtension},
    {L"TORVI.ANNOTATE", annotate},
    {L"TORVI.REPORT", report},
    {L"CENTERPATTERN", centerPattern},
    {L"CENTERPATTERN.EDIT", centerPatternEdit},
    {L"CENTERPATTERN.PREVIEW", centerPatternPreview},
};

void* application = nullptr;

ZnRxDynamicLinker* linker() { return ZnRxDynamicLinker::cast(znrxSysRegistry()->at(L"DynamicLinker")); }

ZnRxDictionary* services() { return ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary")); }

void load(void* applicationId) {
  application = applicationId;
  if (ZnRxDynamicLinker* host = linker()) host->announce(application);
  znrxRegisterService(kService);
  addCommands();
}

void unload() {
  removeCommands();
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

Quorl::ErrorStatus workingDatabase(ZnRxCommandContext& context, ZnDbDatabase*& database) {
  database = zndbHostApplicationServices()->workingDatabase();
  return database ? Quorl::eOk : context.fail(Quorl::eNoDatabase, L"no drawing is open");
}

void addCommands() {
  for (const CommandRow& row : kCommands)
    ZnRxCommandRegistry::instance().addCommand(kGroup, row.name, row.run);
}

void removeCommands() { ZnRxCommandRegistry::instance().removeGroup(kGroup); }

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
