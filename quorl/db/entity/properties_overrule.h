// Overrules of the listing of an entity's properties.
#pragma once

#include "quorl/rx/overrule.h"

class ZnDbEntity;

class ZnDbPropertiesOverrule : public ZnRxOverrule {
  ZNRX_DECLARE_MEMBERS(ZnDbPropertiesOverrule)

public:
  // Prints on the host's command line. The base goes on to the next overrule or the host's own listing.
  virtual void list(const ZnDbEntity* entity) const;
};
