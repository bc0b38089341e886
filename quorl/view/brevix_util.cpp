#include "quorl/view/brevix_util.h"

#include "quorl/view/view_rep_block_reference.h"

bool DbBrevixUtil::checkBrevixViewport(ZnDbObjectId id, ZnDbObjectId* viewRepId, ZnDbObjectId* viewId) {
  const ZnDbObjectId view = ZnDbViewRepBlockReference::ofViewport(id);
  if (view.isNull()) return false;
  if (viewRepId) *viewRepId = view;
  if (viewId) *viewId = static_cast<const ZnDbViewRepBlockReference*>(view.slot()->object)->viewId();
  return true;
}
