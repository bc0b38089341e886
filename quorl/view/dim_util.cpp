#include "quorl/view/dim_util.h"

#include "quorl/db/entity/viewport.h"

Quorl::ErrorStatus ZnDimUtil::calcDimLFac(ZnDbObjectId viewportId, double& factor) {
  const ZnDbHolder<ZnDbViewport> viewport(viewportId);
  if (!viewport.isOpen()) return viewport.status();
  factor = viewport->customScale();
  return Quorl::eOk;
}
