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

// Arguments: "edges", see object_naming.h. Result: "created", the handles of the marks in the edges' order.
// All of them are made, or none.
Quorl::ErrorStatus centerMark(ZnRxCommandContext& context);

// Arguments: "objects", one handle of a center object, and "edges", what it follows from now on: one edge for
// a mark, two, with "picks", for what stands between edges; see line_commands.h.
Quorl::ErrorStatus reassociate(ZnRxCommandContext& context);

// Arguments: "objects", handles of center objects. They keep their shape and follow nothing any more. All let
// go of their edges, or none.
Quorl::ErrorStatus disassociate(ZnRxCommandContext& context);

} // namespace companion
