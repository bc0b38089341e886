#include "quorl/view/share_db.h"

#include "quorl/db/entity/viewport.h"

namespace ShareDB {

Quorl::ErrorStatus getViewportIdFromIdPath(const ZnArray<ZnDbObjectId>& path, ZnDbObjectId& viewport) {
  viewport.setNull();
  for (const ZnDbObjectId id : path) {
    if (id.isErased() || !id.isDerivedFrom(ZnDbViewport::desc())) continue;
    viewport = id;
    return Quorl::eOk;
  }
  return Quorl::eKeyNotFound;
}

} // namespace ShareDB
