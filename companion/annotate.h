// The command TORVI.ANNOTATE: a center mark for every circle of the current space.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// Arguments: "minRadius" and "maxRadius", in drawing units, and "arcs", the least span in degrees of an arc
// that gets a mark (180 without it). Circles round one center get one mark, on the outermost, and none when
// one of them carries a mark already. Result: "created", the marks' handles; "marked" and "skipped", how many
// centers had a mark, and how many circles and arcs were outside the limits; "failures", each with "edge" and
// "why". A mark that can't be made leaves nothing behind and stops none of the others.
Quorl::ErrorStatus annotate(ZnRxCommandContext& context);

} // namespace companion
