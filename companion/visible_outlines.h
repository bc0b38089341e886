// The outlines of what a drawing shows.
#pragma once

#include "companion/outlines.h"
#include "torvi/host/association.h"

namespace companion {

// Closed entities, and chains of open ones that meet end to end, seen along z.
std::vector<Outline> visibleOutlines(ZnDbObjectId space);

} // namespace companion
