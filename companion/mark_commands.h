// The making of one mark, as the command CENTERMARK and others do it.
#pragma once

#include "torvi/host/association.h"

namespace companion {

// A mark on the edge, or nothing at all: a failure on the way, or a first evaluation that fails, takes back
// what was made, and why says what was wrong in a few words.
Quorl::ErrorStatus createMark(ZnDbDatabase& database, const ZnDbFullSubentPath& edge, ZnDbObjectId& markId,
                              ZnString& why);

} // namespace companion
