// How the caller of a command names things in a drawing: by handles, as texts.
#pragma once

#include <string>

#include "exchange/drawing_values.h"
#include "torvi/host/association.h"

namespace companion {

// "1A" to an existing, unerased object; null id for anything else.
ZnDbObjectId objectOf(ZnDbDatabase& database, const std::string& handle);

// False when a handle names nothing or the entity has no such edge.
bool edgeOf(ZnDbDatabase& database, const exchange::Edge& edge, ZnDbFullSubentPath& path);

std::string nameOf(ZnDbObjectId object); // its handle
// "2F/1A" for the entity 1A seen through the block reference 2F; empty for an empty path.
std::string pathText(const ZnDbCompoundObjectId& path);

} // namespace companion
