// Which viewports show a drawing view of model geometry.
#pragma once

#include "quorl/db/core/object_id.h"

class DbBrevixUtil {
public:
  // True for a viewport that a drawing view names. The outputs may be null; they get the view representation
  // and the view that it is taken by, and stay as they are for any other id.
  static bool checkBrevixViewport(ZnDbObjectId id, ZnDbObjectId* viewRepId = nullptr,
                                  ZnDbObjectId* viewId = nullptr);
};
