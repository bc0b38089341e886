// The commands CENTERMARK, REASSOCIATE and DISASSOCIATE, and the making of one mark, which others use too.
#pragma once

#include "torvi/host/association.h"
#include "torvi/host/commands.h"

namespace companion {

// A mark on the edge, or nothing at all: a failure on the way, or a first evaluation that fails, takes back
// what was made, and why says what was wrong in a few words.
Quorl::ErrorStatus createMark(ZnDbDatabase& database, const ZnDbFullSubentPath& edge, ZnDbObjectId& markId,
                              ZnString& why);

// Whether the last evaluation of the center object came to nothing.
bool hasEvaluationFailed(ZnDbObjectId centerObject);

// What they take and tell stands in exchange/center_commands.h. All marks of a call are made, or none.
Quorl::ErrorStatus centerMark(ZnRxCommandContext& context);

// One center object and what it follows from now on: one edge for a mark, two, with picks, for what stands
// between edges.
Quorl::ErrorStatus reassociate(ZnRxCommandContext& context);

// The objects keep their shape and follow nothing any more. All let go of their edges, or none.
Quorl::ErrorStatus disassociate(ZnRxCommandContext& context);

} // namespace companion
