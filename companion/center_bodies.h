// Walks the center objects of a space.
#pragma once

#include <functional>

#include "torvi/core/action_body.h"

namespace companion {

// The body of each center object that is there, open for reading; in no particular order.
void visitCenterBodies(ZnDbObjectId space, const std::function<void(const ZnDbTorviActionBody&)>& visit);

} // namespace companion
