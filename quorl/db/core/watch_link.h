// Reverse links: who watches an object adds a link to its slot, and is notified when it changes.
#pragma once

#include "quorl/db/core/object_id.h"

// A link belongs to the watcher, which destroys it before itself; it takes itself out of the ring of the
// watched object. Links follow from the watcher's own fields and are never filed.
struct ZnDbWatchLink {
  ZnDbWatchLink(ZnDbObjectId watcherId, ZnDbObjectId watchedId);
  ~ZnDbWatchLink();
  ZnDbWatchLink(const ZnDbWatchLink&) = delete;
  ZnDbWatchLink& operator=(const ZnDbWatchLink&) = delete;

  const ZnDbObjectId watcher;
  const ZnDbObjectId watched;
  ZnDbWatchLink* next = nullptr;
  ZnDbWatchLink* previous = nullptr;
};
