// The command CENTERPATTERN.PREVIEW.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// What would be drawn; the drawing stays untouched. What it takes and tells stands in
// exchange/center_commands.h.
Quorl::ErrorStatus centerPatternPreview(ZnRxCommandContext& context);

} // namespace companion
