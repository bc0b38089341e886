#include "quorl/base/resource.h"

#include <dlfcn.h>

#include <algorithm>

namespace {

using ResourceTable = const ZnRxResourceText* (*)();

ResourceTable tableOf(ZnUtResource::Handle handle) {
  return reinterpret_cast<ResourceTable>(dlsym(handle, "znrxResourceTable"));
}

} // namespace

ZnUtResource::Handle ZnUtResource::loadDll(const ZnString& path, unsigned /*flags*/, void* /*extra*/) {
  std::string file = path.utf8();
  std::replace(file.begin(), file.end(), '\\', '/');
  Handle handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle && !tableOf(handle)) {
    dlclose(handle);
    return nullptr;
  }
  return handle;
}

bool ZnUtResource::freeDll(Handle handle) { return handle && dlclose(handle) == 0; }

const wchar_t* ZnRxResourceInstance::text(unsigned number) const {
  if (!handle_) return nullptr;
  for (const ZnRxResourceText* entry = tableOf(handle_)(); entry->text; ++entry)
    if (entry->number == number) return entry->text;
  return nullptr;
}
