// The command TORVI.REPORT: what center objects a drawing has.
#pragma once

#include "torvi/host/commands.h"

namespace companion {

// Takes nothing; what it tells stands in exchange/report.h. Coordinates are the world's.
Quorl::ErrorStatus report(ZnRxCommandContext& context);

} // namespace companion
