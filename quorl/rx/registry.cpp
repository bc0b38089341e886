#include "quorl/rx/registry.h"

#include "quorl/rx/class_dictionary.h"
#include "quorl/rx/dynamic_linker.h"

namespace {

ZnRxDictionary* newRegistry() {
  // A static object of another library may be the first to ask.
  ZnRxClassDictionary::rxInit();
  ZnRxDynamicLinker::rxInit();
  auto* registry = new ZnRxDictionary;
  registry->put(L"DynamicLinker", new ZnRxDynamicLinker);
  registry->put(L"ServiceDictionary", new ZnRxDictionary);
  registry->put(L"ClassDictionary", new ZnRxClassDictionary);
  return registry;
}

} // namespace

ZnRxDictionary* znrxSysRegistry() {
  static ZnRxDictionary* registry = newRegistry();
  return registry;
}
