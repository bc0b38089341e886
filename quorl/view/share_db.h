// Questions about paths of ids that several parts of the host ask alike.
#pragma once

#include "quorl/base/array.h"
#include "quorl/base/error_status.h"
#include "quorl/db/core/object_id.h"

namespace ShareDB {
// The first viewport of the path that is not erased; eKeyNotFound and a null id when there is none.
Quorl::ErrorStatus getViewportIdFromIdPath(const ZnArray<ZnDbObjectId>& path, ZnDbObjectId& viewport);
} // namespace ShareDB
