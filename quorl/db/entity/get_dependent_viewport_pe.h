// Which viewport an annotation on a sheet depends on.
#pragma once

#include "quorl/db/core/object_id.h"
#include "quorl/rx/class_members.h"

class ZnDbGetDependentViewportPE : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbGetDependentViewportPE)

public:
  // Null for an object that depends on none. followOthers lets objects answer on which this one depends.
  // scale becomes the scale with which the object was last made, 0 when that is not known.
  virtual ZnDbObjectId getDependentViewport(ZnDbObjectId id, bool followOthers, double& scale) const = 0;
};
