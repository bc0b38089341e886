// The living drawings and their proxies: when a class comes its objects become themselves, when it goes they
// become proxies again.
#pragma once

#include <vector>

#include "quorl/db/core/event_reactor.h"
#include "quorl/db/core/object_id.h"

class ZnDbProxyRegistry : public ZnRxEventReactor, public ZnRxClassWatcher {
public:
  // Lives as long as the process, and listens from the start.
  static ZnDbProxyRegistry& instance();

  // A proxy that entered a drawing; told once, more often does no harm.
  void note(ZnDbObjectId proxy);

  // The undo history of a drawing is forgotten when objects in it change their class: states that are kept
  // can only be read by the class that wrote them.
  void hierarchyBuilt() override;
  void classToBeDeleted(const ZnRxClass* cls) override;

  void databaseConstructed(ZnDbDatabase* database) override;
  void databaseToBeDestroyed(ZnDbDatabase* database) override;

private:
  struct Drawing {
    ZnDbDatabase* database = nullptr;
    std::vector<ZnDbObjectId>
        proxies; // by order of coming; ids of what is no proxy any more stay till the next sweep
  };
  void awaken(Drawing& drawing);
  std::vector<Drawing> drawings_;
};
