#include "quorl/rx/dynamic_linker.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "quorl/rx/host_globals.h"
#include "quorl/rx/print.h"
#include "quorl/rx/registry.h"

ZNRX_DEFINE_ABSTRACT(ZnRxDynamicLinker, ZnRxObject)

namespace fs = std::filesystem;

// The address of a module's record is its application id.
struct ZnRxDynamicLinker::Module {
  ModuleInfo info;
  void* library = nullptr;
  int (*entryPoint)(int message, void* argument) = nullptr;
  bool announced = false;
  int running = 0; // messages under way: code of the module is on the stack

  int tell(ZnRxModuleMessage message, void* argument) {
    ++running;
    const int answer = entryPoint(static_cast<int>(message), argument);
    --running;
    return answer;
  }
};

namespace {

std::vector<ZnString> defaultModulePath() {
  std::vector<ZnString> folders;
  const char* environment = std::getenv("QUORL_MODULE_PATH");
  std::string_view rest = environment ? environment : "";
  while (!rest.empty()) {
    const size_t end = std::min(rest.find(':'), rest.size());
    if (end > 0) folders.push_back(ZnString::fromUtf8(rest.substr(0, end)));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  for (const ZnString& folder : {Quorl::programFolder(), Quorl::libraryFolder()})
    if (!folder.isEmpty()) folders.push_back(folder);
  return folders;
}

ZnString fileNameOf(const ZnString& name) {
  return ZnString::fromUtf8(fs::path(name.utf8()).filename().string());
}

ZnString systemError() {
  const char* text = dlerror();
  return ZnString::fromUtf8(text ? text : "unknown error");
}

} // namespace

ZnRxDynamicLinker::ZnRxDynamicLinker()
    : path_(defaultModulePath()) {}
ZnRxDynamicLinker::~ZnRxDynamicLinker() = default;

ZnRxDynamicLinker& ZnRxDynamicLinker::instance() {
  return *ZnRxDynamicLinker::cast(znrxSysRegistry()->at(L"DynamicLinker"));
}

Quorl::ErrorStatus ZnRxDynamicLinker::load(const ZnString& name, bool asCommand) {
  lastError_.clear();
  if (find(name)) return Quorl::eOk;
  const std::string file = locate(name);
  if (file.empty())
    return fail(Quorl::eNotFound, ZnString(L"module \"") + name + L"\" is not on the module path");

  // On the list before its code runs: a module may load others, which may ask for this one.
  modules_.push_back(std::make_unique<Module>());
  Module& module = *modules_.back();
  module.info.name = fileNameOf(name);
  module.info.file = ZnString::fromUtf8(file);
  module.info.byCommand = asCommand;
  Quorl::ErrorStatus status = open(module);
  if (status == Quorl::eOk) status = start(module);
  if (status != Quorl::eOk) close(module);
  return status;
}

// The version is asked before anything else of the module is called: code for another interface can't be
// trusted with any other call.
Quorl::ErrorStatus ZnRxDynamicLinker::open(Module& module) {
  const ZnString& file = module.info.file;
  module.library = dlopen(file.utf8().c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!module.library) return fail(Quorl::eInvalidInput, file + L": can't be loaded: " + systemError());

  const auto version = reinterpret_cast<int (*)()>(dlsym(module.library, "znrxGetApiVersion"));
  if (!version) return fail(Quorl::eInvalidInput, file + L": exports no znrxGetApiVersion");
  const int found = version();
  if (found != kZnRxApiVersion) {
    ZnString text;
    text.format(L": built for interface version 0x%X, expected 0x%X", static_cast<unsigned>(found),
                static_cast<unsigned>(kZnRxApiVersion));
    return fail(Quorl::eVersionMismatch, file + text);
  }
  module.entryPoint = reinterpret_cast<int (*)(int, void*)>(dlsym(module.library, "znrxEntryPoint"));
  if (!module.entryPoint) return fail(Quorl::eInvalidInput, file + L": exports no znrxEntryPoint");
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxDynamicLinker::start(Module& module) {
  const int answer = module.tell(ZnRxModuleMessage::kLoad, &module);
  // What the module loaded in turn may have failed; that is not this module's failure.
  lastError_.clear();
  if (answer == 0) return Quorl::eOk;
  ZnString text;
  text.format(L": refused to load with answer %d", answer);
  return fail(Quorl::eInvalidInput, module.info.file + text);
}

Quorl::ErrorStatus ZnRxDynamicLinker::unload(const ZnString& name) {
  lastError_.clear();
  Module* module = find(name);
  if (!module) return fail(Quorl::eKeyNotFound, ZnString(L"module \"") + name + L"\" is not loaded");
  const ZnString& known = module->info.name;
  if (module->running > 0) return fail(Quorl::eVetoed, known + L" is in the middle of a message");
  if (module->info.locks > 0) {
    ZnString text;
    text.format(L"%s is locked %d times", known.c_str(), module->info.locks);
    return fail(Quorl::eVetoed, text);
  }
  if (!module->announced) return fail(Quorl::eVetoed, known + L" never announced itself");
  unloadNow(*module);
  return Quorl::eOk;
}

// A module that unloads others while it goes, or that is caught in a message, is passed by: the list is
// read anew after each.
void ZnRxDynamicLinker::unloadAll() {
  for (;;) {
    const auto last = std::find_if(modules_.rbegin(), modules_.rend(),
                                   [](const auto& module) { return module->running == 0; });
    if (last == modules_.rend()) return;
    unlockApplication(last->get());
    unloadNow(**last);
  }
}

void ZnRxDynamicLinker::unloadNow(Module& module) {
  module.tell(ZnRxModuleMessage::kUnload, &module);
  close(module);
}

void ZnRxDynamicLinker::close(Module& module) {
  void* library = module.library;
  std::erase_if(modules_, [&module](const auto& held) { return held.get() == &module; });
  if (library) dlclose(library);
}

bool ZnRxDynamicLinker::isLoaded(const ZnString& name) const { return find(name) != nullptr; }

Quorl::ErrorStatus ZnRxDynamicLinker::announce(void* applicationId) {
  Module* module = findById(applicationId);
  if (!module) return Quorl::eKeyNotFound;
  module->announced = true;
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxDynamicLinker::lockModule(void* applicationId) {
  Module* module = findById(applicationId);
  if (!module) return Quorl::eKeyNotFound;
  ++module->info.locks;
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxDynamicLinker::unlockModule(void* applicationId) {
  Module* module = findById(applicationId);
  if (!module) return Quorl::eKeyNotFound;
  if (module->info.locks == 0) return Quorl::eNothingToDo;
  --module->info.locks;
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxDynamicLinker::unlockApplication(void* applicationId) {
  Module* module = findById(applicationId);
  if (!module) return Quorl::eKeyNotFound;
  if (module->info.locks == 0) return Quorl::eNothingToDo;
  module->info.locks = 0;
  return Quorl::eOk;
}

Quorl::ErrorStatus ZnRxDynamicLinker::notifyDependency(const ZnString& serviceName, bool begin) {
  const ZnRxDictionary* services = ZnRxDictionary::cast(znrxSysRegistry()->at(L"ServiceDictionary"));
  ZnRxObject* service = services ? services->at(serviceName) : nullptr;
  if (!service) return Quorl::eKeyNotFound;
  // A module may load or unload others when told, so the ids are collected first.
  std::vector<const Module*> told;
  for (const auto& module : modules_) told.push_back(module.get());
  for (const Module* id : told)
    if (Module* module = findById(id))
      module->tell(begin ? ZnRxModuleMessage::kDependencyBegun : ZnRxModuleMessage::kDependencyEnded,
                   service);
  return Quorl::eOk;
}

std::vector<ZnRxDynamicLinker::ModuleInfo> ZnRxDynamicLinker::modules() const {
  std::vector<ModuleInfo> infos;
  for (const auto& module : modules_) infos.push_back(module->info);
  return infos;
}

ZnRxDynamicLinker::Module* ZnRxDynamicLinker::find(const ZnString& name) const {
  const ZnString wanted = fileNameOf(name);
  for (const auto& module : modules_)
    if (module->info.name == wanted) return module.get();
  return nullptr;
}

ZnRxDynamicLinker::Module* ZnRxDynamicLinker::findById(const void* applicationId) const {
  for (const auto& module : modules_)
    if (module.get() == applicationId) return module.get();
  return nullptr;
}

// Always a whole path: a bare name would send the system along its own library folders.
std::string ZnRxDynamicLinker::locate(const ZnString& name) const {
  const fs::path wanted(name.utf8());
  std::error_code error;
  if (wanted.has_parent_path()) {
    const fs::path file = fs::absolute(wanted, error);
    return fs::is_regular_file(file, error) ? file.string() : std::string();
  }
  for (const ZnString& folder : path_) {
    const fs::path file = fs::absolute(fs::path(folder.utf8()) / wanted, error);
    if (fs::is_regular_file(file, error)) return file.string();
  }
  return {};
}

Quorl::ErrorStatus ZnRxDynamicLinker::fail(Quorl::ErrorStatus status, const ZnString& text) {
  lastError_ = text;
  return status;
}

Quorl::ErrorStatus znrxLoadModule(const ZnString& name, bool printIt, bool asCommand) {
  ZnRxDynamicLinker& linker = ZnRxDynamicLinker::instance();
  const Quorl::ErrorStatus status = linker.load(name, asCommand);
  if (!printIt) return status;
  if (status == Quorl::eOk)
    znutPrintf(L"%s loaded.\n", name.c_str());
  else
    znutPrintf(L"%s\n", linker.lastError().c_str());
  return status;
}

Quorl::ErrorStatus znrxUnloadModule(const ZnString& name) {
  return ZnRxDynamicLinker::instance().unload(name);
}

bool znrxModuleIsLoaded(const ZnString& name) { return ZnRxDynamicLinker::instance().isLoaded(name); }

void znrxUnloadAllModules() { ZnRxDynamicLinker::instance().unloadAll(); }
