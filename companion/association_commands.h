// The commands REASSOCIATE and DISASSOCIATE. What they take and tell stands in exchange/center_commands.h.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// One center object and what it follows from now on: one edge for a mark, two, with picks, for what stands
// between edges.
Quorl::ErrorStatus reassociate(ZnRxCommandContext& context);

// The objects keep their shape and follow nothing any more. All let go of their edges, or none.
Quorl::ErrorStatus disassociate(ZnRxCommandContext& context);

} // namespace companion
