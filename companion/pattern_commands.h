// The commands CENTERPATTERN, CENTERPATTERN.EDIT and CENTERPATTERN.PREVIEW.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// What they take and tell stands in exchange/center_commands.h.

// The pattern is made, or nothing.
Quorl::ErrorStatus centerPattern(ZnRxCommandContext& context);

// All is changed, or nothing. Taking edges away suspends auto fill, which would bring them back.
Quorl::ErrorStatus centerPatternEdit(ZnRxCommandContext& context);

// What would be drawn; the drawing stays untouched.
Quorl::ErrorStatus centerPatternPreview(ZnRxCommandContext& context);

} // namespace companion
