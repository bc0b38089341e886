// Loads and unloads modules, and keeps those loaded that others depend on.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "quorl/rx/class_members.h"

// The interface version that a module must be built for; what its znrxGetApiVersion has to return.
constexpr int kZnRxApiVersion = 0x1A0000;

// First argument of a module's `int znrxEntryPoint(int message, void* argument)`. The argument is the
// application id for the first two and the service for the dependency messages. A module answers 0; any
// other answer to kLoad refuses the load.
enum class ZnRxModuleMessage : int { kLoad = 1, kUnload = 2, kDependencyBegun = 10, kDependencyEnded = 11 };

// The linker of the process stands in the registry as "DynamicLinker"; application ids are opaque.
class ZnRxDynamicLinker : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxDynamicLinker)

public:
  ZnRxDynamicLinker();
  ~ZnRxDynamicLinker() override;
  static ZnRxDynamicLinker& instance();

  // Loading. A name without folder is looked for along the module path, a name with one is taken as it
  // stands. A module is known by its file name: loading one that is there already is eOk and does nothing,
  // and one unload lets it go. eNotFound, eVersionMismatch, eInvalidInput (a missing export, an unresolved
  // symbol, a refused load). Every failure leaves nothing loaded and its text in lastError.
  Quorl::ErrorStatus load(const ZnString& name, bool asCommand);
  // eKeyNotFound when it isn't loaded; eVetoed while it is locked, in the middle of a message, or has never
  // announced itself.
  Quorl::ErrorStatus unload(const ZnString& name);
  // In reverse order of loading, whatever the locks; for the end of the process.
  void unloadAll();
  bool isLoaded(const ZnString& name) const;

  // What modules call. A module announces itself once while it loads: it is up and can be unloaded.
  // Locks count; unlockApplication drops them all. eKeyNotFound for an unknown id, eNothingToDo for an
  // unlock without lock.
  Quorl::ErrorStatus announce(void* applicationId);
  Quorl::ErrorStatus lockModule(void* applicationId);
  Quorl::ErrorStatus unlockModule(void* applicationId);
  Quorl::ErrorStatus unlockApplication(void* applicationId);

  // Tells every loaded module that another one began, or ended, to depend on the service; the module that
  // offers it locks or unlocks itself. eKeyNotFound when no such service is registered.
  Quorl::ErrorStatus notifyDependency(const ZnString& serviceName, bool begin);

  // Folders, searched in order. To begin with: those of the environment's QUORL_MODULE_PATH, separated by
  // colons, then the running program's, then that of the host's library.
  const std::vector<ZnString>& modulePath() const { return path_; }
  void setModulePath(const std::vector<ZnString>& folders) { path_ = folders; }

  struct ModuleInfo {
    ZnString name;          // file name without folder
    ZnString file;          // the whole path
    bool byCommand = false; // loaded for a command, not at start or by hand
    int locks = 0;
  };
  // In order of loading.
  std::vector<ModuleInfo> modules() const;

  // One sentence on the last failure, or empty after a success.
  const ZnString& lastError() const { return lastError_; }

private:
  struct Module;
  using ModuleList = std::vector<std::unique_ptr<Module>>;
  Module* find(const ZnString& name) const;
  Module* findById(const void* applicationId) const;
  std::string locate(const ZnString& name) const;
  Quorl::ErrorStatus open(Module& module);
  Quorl::ErrorStatus start(Module& module);
  void close(Module& module);
  void unloadNow(Module& module);
  Quorl::ErrorStatus fail(Quorl::ErrorStatus status, const ZnString& text);

  ModuleList modules_;
  std::vector<ZnString> path_;
  ZnString lastError_;
};

// The linker's operations as modules call them. With printIt, success and failure are told on the
// command line; asCommand marks a load that a command asked for.
Quorl::ErrorStatus znrxLoadModule(const ZnString& name, bool printIt = false, bool asCommand = false);
Quorl::ErrorStatus znrxUnloadModule(const ZnString& name);
bool znrxModuleIsLoaded(const ZnString& name);
void znrxUnloadAllModules();
