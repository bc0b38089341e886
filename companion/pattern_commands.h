// The commands CENTERPATTERN, CENTERPATTERN.EDIT and CENTERPATTERN.PREVIEW.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// Arguments: "edges" and those of pattern_options.h. Result: "created", the pattern's handle; "added", how
// many edges auto fill gave; "outside", the edges that stand beside its center line: those of a row have a
// mark all the same, those of a ring none; "ring", whether it is one. The pattern is made, or nothing.
Quorl::ErrorStatus centerPattern(ZnRxCommandContext& context);

// Arguments: "objects", one handle of a pattern; "clear", which takes all edges away; "remove" and "add",
// edges; those of pattern_options.h but "type", which a pattern keeps; "overshoots", each with "key", "start"
// and "end", the key being the center line's as the pattern has it now. Taking edges away suspends auto fill,
// which would bring them back. Result: "added", "outside" and "ring" as above. All is changed, or nothing.
Quorl::ErrorStatus centerPatternEdit(ZnRxCommandContext& context);

// Arguments: those of CENTERPATTERN, and "cursor", the point that the next pick might be. Result: "added";
// "curves", what would be drawn, each with "type" ("line" or "arc"), "start", "end", "center", "normal",
// "radius", "startAngle", "endAngle" (degrees, as arcs have them), "layer", "linetype" and "linetypeScale";
// "linetypes", each with "name", "dashes" and "scaledToFit". The drawing stays untouched.
Quorl::ErrorStatus centerPatternPreview(ZnRxCommandContext& context);

} // namespace companion
