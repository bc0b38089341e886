#include <algorithm>

#include "quorl/db/core/database_reactor.h"
#include "quorl/db/core/event_reactor.h"
#include "quorl/rx/registry.h"

ZNRX_DEFINE_CLASS(ZnDbDatabaseReactor, ZnRxObject)
ZNRX_DEFINE_CLASS(ZnRxEventReactor, ZnRxObject)
ZNRX_DEFINE_ABSTRACT(ZnRxEvent, ZnRxObject)

ZnRxEvent& ZnRxEvent::instance() {
  static ZnRxEvent* event = new ZnRxEvent;
  return *event;
}

// The registry hands the event object to modules, which know it by name only.
static const bool registeredEvent = (znrxSysRegistry()->put(L"ZnRxEvent", &ZnRxEvent::instance()), true);

bool ZnRxEvent::holds(const ZnRxEventReactor* reactor) const {
  return std::find(reactors_.begin(), reactors_.end(), reactor) != reactors_.end();
}

void ZnRxEvent::addReactor(ZnRxEventReactor* reactor) {
  if (reactor && !holds(reactor)) reactors_.push_back(reactor);
}

void ZnRxEvent::removeReactor(ZnRxEventReactor* reactor) {
  reactors_.erase(std::remove(reactors_.begin(), reactors_.end(), reactor), reactors_.end());
}
