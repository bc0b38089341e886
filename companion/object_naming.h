// How the caller of a command names things in a drawing: by handles, as texts.
#pragma once

#include "torvi/host/association.h"
#include "torvi/host/commands.h"

namespace companion {

// "1A" to an existing, unerased object; null id for anything else.
ZnDbObjectId objectOf(ZnDbDatabase& database, const ZnRxCommandValue& handle);

// {"path": ["2F", "1A"], "index": 0}: the outermost block reference first, the entity last, and the number of
// the edge in the entity. False when a handle names nothing or the entity has no such edge.
bool edgeOf(ZnDbDatabase& database, const ZnRxCommandValue& edge, ZnDbFullSubentPath& path);

// "2F/1A" for the entity 1A seen through the block reference 2F; empty for an empty path.
ZnString pathText(const ZnDbCompoundObjectId& path);

} // namespace companion
