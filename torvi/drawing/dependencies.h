// Dependencies of an action on an object of the drawing.
#pragma once

#include "torvi/host/association.h"

namespace torvi {

enum class DependencyAccess { kRead, kReadWrite };

// The host's status; the id is that of the new dependency, owned by the body's action.
Quorl::ErrorStatus addDependencyTo(ZnDbAssocActionBody& body, ZnDbObjectId object, DependencyAccess access,
                                   ZnDbObjectId& dependencyId);

} // namespace torvi
