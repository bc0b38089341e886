#include "quorl/db/core/watch_link.h"

// The slot points at the oldest link, whose previous is the youngest: both ends are at hand.
ZnDbWatchLink::ZnDbWatchLink(ZnDbObjectId watcherId, ZnDbObjectId watchedId)
    : watcher(watcherId)
    , watched(watchedId) {
  ZnDbWatchLink*& head = watched.slot()->watchers;
  if (!head) {
    head = next = previous = this;
    return;
  }
  next = head;
  previous = head->previous;
  previous->next = this;
  head->previous = this;
}

ZnDbWatchLink::~ZnDbWatchLink() {
  ZnDbWatchLink*& head = watched.slot()->watchers;
  if (next == this) {
    head = nullptr;
    return;
  }
  previous->next = next;
  next->previous = previous;
  if (head == this) head = next;
}
