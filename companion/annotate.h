// The command TORVI.ANNOTATE: center marks and patterns for the circles of the current space, and center
// lines for its slots and strips.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// What it takes and tells stands in exchange/annotate.h. Circles round one center get one mark, on the
// outermost, and none when one of them carries a mark already. What can't be made leaves nothing behind and
// stops none of the others.
Quorl::ErrorStatus annotate(ZnRxCommandContext& context);

} // namespace companion
