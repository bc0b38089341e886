// The detector of center objects, by which the host knows them without their module.
#pragma once

#include "quorl/db/core/object_id.h"
#include "quorl/rx/class_members.h"
#include "quorl/rx/res_buf.h"

class ZnDbTorviPE : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnDbTorviPE)

public:
  // Whether the object is a center mark pattern that shows its whole pitch circle. context receives the
  // pattern's flags (full circle, marks shown) and replaces what the list held.
  virtual bool isFullPitchCircle(ZnDbObjectId id, ZnResBufList& context) const = 0;
  virtual bool isCenterLine(ZnDbObjectId id) const = 0;
  virtual bool isCenterMark(ZnDbObjectId id) const = 0;
};
