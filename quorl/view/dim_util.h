// Factors for dimensions of what is seen through a viewport.
#pragma once

#include "quorl/base/error_status.h"
#include "quorl/db/core/object_id.h"

class ZnDimUtil {
public:
  // The viewport's scale: paper units a model unit. A failure (the status of opening it as a viewport) leaves
  // the factor alone.
  static Quorl::ErrorStatus calcDimLFac(ZnDbObjectId viewport, double& factor);
};
