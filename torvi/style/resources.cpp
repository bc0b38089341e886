#include "torvi/style/resources.h"

namespace {
ZnUtResource::Handle library = nullptr;
}

void ZnTorviResources::load() {
  if (library) return;
  ZnString path(L"en-US\\");
  zndbGetResourceFolder(path);
  path += L"ZnDbTorviRes.dll";
  library = ZnUtResource::loadDll(path, 0);
}

void ZnTorviResources::release() {
  if (ZnUtResource::freeDll(library)) library = nullptr;
}

bool ZnTorviResources::isLoaded() { return library != nullptr; }

ZnString ZnTorviResources::text(unsigned number) {
  ZnString text;
  text.loadString(ZnRxResourceInstance(library), number);
  return text;
}
