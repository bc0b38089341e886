// Services: names under which modules say that they are there.
#pragma once

#include "quorl/rx/class_members.h"

class ZnRxService : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxService)

public:
  explicit ZnRxService(const ZnString& name = {})
      : name_(name) {}
  const ZnString& name() const { return name_; }

private:
  ZnString name_;
};

// Puts a service of that name into the "ServiceDictionary", or finds the one that is there; null for an
// empty name. Whoever removes it from the dictionary deletes it. Modules compare the pointer only.
ZnRxService* znrxRegisterService(const ZnString& name);
bool znrxServiceIsRegistered(const ZnString& name);
