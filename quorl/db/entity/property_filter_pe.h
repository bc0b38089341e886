// What a class tells a filter by properties about itself.
#pragma once

#include "quorl/db/core/object_id.h"
#include "quorl/rx/class_members.h"

class ZnDbPropertyFilterCustomizationPE : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbPropertyFilterCustomizationPE)

public:
  // Whether the filter leaves the class out of its list.
  virtual bool isHiddenFromFilter(const ZnRxClass* cls) const = 0;
  // Makes an object of the class for the filter to read properties from; null id where none is needed.
  // False on failure.
  virtual bool makeSampleEntity(ZnDbDatabase* database, const ZnRxClass* cls, ZnDbObjectId& sample) const = 0;
};
