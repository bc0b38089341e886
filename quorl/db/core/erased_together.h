// What an object took along when it was erased: just that comes back with it, and not what had gone before.
#pragma once

#include <vector>

#include "quorl/db/core/object.h"

class ZnDbErasedTogether {
public:
  // Erases what is live among the ids, whoever else knows of it.
  template<class Ids> void erase(const Ids& ids) {
    ids_.clear();
    for (const ZnDbObjectId id : ids)
      if (!id.isErased()) ids_.push_back(id);
    turn(true);
  }
  void bringBack() { turn(false); }

private:
  void turn(bool erasing) {
    // Erasing one may erase others of the list.
    const std::vector<ZnDbObjectId> now = ids_;
    for (const ZnDbObjectId id : now) {
      ZnDbHolder<ZnDbObject> object;
      if (object.openForWrite(id, true, true) == Quorl::eOk && object->isErased() != erasing)
        object->erase(erasing);
    }
  }

  std::vector<ZnDbObjectId> ids_;
};
