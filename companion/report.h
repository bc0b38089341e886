// The command TORVI.REPORT: what center objects a drawing has.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// No arguments. Result: "centers", one object each, in order of handles, with "handle", "kind",
// "associative", "layer", "linetype", "edges" (handles, "2F/1A" for an entity seen through a reference),
// "center", "radius", "transform" (four rows) and "curves", each with "index", "key", "type" ("line" or
// "arc"), "start", "end", "center", "radius", "startAngle", "endAngle" (degrees), "visible" and "linetype".
// A center line also has "startExtension", "endExtension", "startOvershoot" and "endOvershoot", in drawing
// units. A pattern also has "type" ("polar" or "linear"), "fullPCD", "showCenterMark", "members", each with
// "edge" and "key", "referenceEdge" and "overshoots", each with the "key" of a center line, "start" and
// "end". Coordinates are the world's; what an object or a curve does not have is null.
Quorl::ErrorStatus report(ZnRxCommandContext& context);

} // namespace companion
