#include "torvi/host/class_registration.h"

#include <cstdio>
#include <cstdlib>

namespace {

// True when the class stands and is the stored one; stops where it is another.
bool isRegistered(const ZnRxClass* stored, const wchar_t* name) {
  if (!stored) return false;
  const ZnRxClass* found = znrxFindZnRxClass(name);
  if (found && found != stored) {
    std::fputs("Class mismatch\n", stderr);
    std::abort();
  }
  return found != nullptr;
}

} // namespace

void torviRegisterBodyClass(ZnRxClass*& stored, const wchar_t* name, const wchar_t* parent,
                            ZnRxConstructor constructor) {
  if (isRegistered(stored, name)) return;
  stored = newZnRxClass(name, parent, kTorviClassVersion, kTorviClassMaintenanceVersion, kTorviProxyFlags,
                        constructor, name, kTorviAppName);
}

void torviRegisterPlainClass(ZnRxClass*& stored, const wchar_t* name, const wchar_t* parent,
                             ZnRxConstructor constructor) {
  if (isRegistered(stored, name)) return;
  stored = newZnRxClass(name, parent, 0, 0, 0, constructor, nullptr, nullptr);
}
