// What the running application tells the database library.
#pragma once

#include "quorl/db/core/object_id.h"

class ZnDbHostApplicationServices {
public:
  virtual ~ZnDbHostApplicationServices() = default;
  // The drawing on which commands work; null when there is none.
  ZnDbDatabase* workingDatabase() const { return workingDatabase_; }
  // Also makes the drawing's values those of the drawing's system variables.
  void setWorkingDatabase(ZnDbDatabase* database);
  // The host's kind of product; modules with a companion stay away from kind 4.
  virtual int productKind() const;
  // The viewport in which the user works; null outside viewports.
  ZnDbObjectId activeViewportId() const { return activeViewport_; }
  void setActiveViewportId(ZnDbObjectId viewport) { activeViewport_ = viewport; }

private:
  ZnDbDatabase* workingDatabase_ = nullptr;
  ZnDbObjectId activeViewport_;
};

// Never null; the program may put its own in place.
ZnDbHostApplicationServices* zndbHostApplicationServices();
void zndbSetHostApplicationServices(ZnDbHostApplicationServices* services);
