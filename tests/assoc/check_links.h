// Whether dependencies and the rings of what they watch agree, in a whole drawing: called at the end of
// cases.
#pragma once

#include <vector>

#include "quorl/base/string.h"
#include "quorl/db/core/database.h"

// One line a fault; empty when every link stands where it must and none stands anywhere else.
std::vector<ZnString> linkFaults(const ZnDbDatabase& database);
