// The command TORVI.ANNOTATE: center marks and patterns for the circles of the current space, and center
// lines for its slots and strips.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// Arguments: "minRadius" and "maxRadius", in drawing units, and "arcs", the least span in degrees of an arc
// that gets a mark (180 without it); "patterns", whether rings and rows of holes become patterns (true
// without it), and "align", how far a hole may be moved to lie exactly on its ring or row, as a share of its
// radius (0 without it). Circles round one center get one mark, on the outermost, and none when one of them
// carries a mark already. Result: "created", the handles of all that was made; "patterns", each with
// "handle", "type" ("ring" or "row"), "evidence", "showsCenterMark" and "aligned", the farthest move;
// "inexactPatterns", how many rings and rows were left alone because their holes do not
// lie on them exactly; "holes", each with "edge" and the handle that it "belongsTo"; "marked" and "skipped",
// how many centers had a mark, and how many circles and arcs were outside the limits; "passedOver", arcs
// within the limits that are no feature of the part, and "failures", each with "what", "edge" and "why". What
// can't be made leaves nothing behind and stops none of the others. Slots and strips are looked for when
// "centerLines" and "strips" say so; see line_finds.h for what they add.
Quorl::ErrorStatus annotate(ZnRxCommandContext& context);

} // namespace companion
