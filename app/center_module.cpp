#include "app/center_module.h"

#include "app/failure.h"
#include "quorl/rx/dynamic_linker.h"

namespace app {

namespace {

constexpr const wchar_t* kModule = L"ZnDbTorvi.lyx";
constexpr const wchar_t* kCompanion = L"ZnTorvi.pyx";

// Why the module is not there, as the linker put it.
std::string& loadError() {
  static std::string text;
  return text;
}

} // namespace

bool loadCenterModule() {
  loadError().clear();
  if (znrxLoadModule(kModule, false, true) != Quorl::eOk)
    loadError() = ZnRxDynamicLinker::instance().lastError().utf8();
  // Of the companion, too, which the module loads by itself.
  return ZnRxDynamicLinker::instance().lastError().utf8().find("llocate memory") == std::string::npos;
}

void unloadCenterModule() { znrxUnloadAllModules(); }

bool hasCommand(const wchar_t* name) { return ZnRxCommandRegistry::instance().find(name) != nullptr; }

std::string missingCommand(const wchar_t* name) {
  const std::string command = "the command " + Quorl::toUtf8(name) + " is not there: ";
  if (!loadError().empty()) return command + loadError();
  return command + "the companion module \"" + Quorl::toUtf8(kCompanion) + "\" is not loaded";
}

bool runCommand(const wchar_t* name, CommandCall& call, std::string& why) {
  const ZnRxCommand* command = ZnRxCommandRegistry::instance().find(name);
  if (!command) {
    why = missingCommand(name);
    return false;
  }
  const Quorl::ErrorStatus status = command->run(call);
  if (status == Quorl::eOk) return true;
  why = call.message().isEmpty() ? statusSentence(status) : call.message().utf8();
  return false;
}

} // namespace app
